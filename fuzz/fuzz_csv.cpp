#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "any_sheet.h"
#include "spreadsheets/csv_writer.h"
#include "support/comma_locale.h"

// Any bytes as a table, under each sign before decimals. What is accepted writes and reads back the
// same, and an edit changes one row of it.

namespace {

using Documents::Document;
using Fuzz::require;

void checkDialects(Document& document) {
  for (const char separator : {',', ';', '\t'})
    for (const char decimal : {'.', ','})
      Fuzz::checkWriting(document, Documents::Form::csv,
                         [&](const auto& manager, const Units& units, std::ostream& out) {
                           Spreadsheets::writeCsv(manager, {separator, decimal}, units, out);
                         });
}

/// Null where the row of a foundation cannot be written in the encoding of the table, or where the
/// table reads in another one without what the row had.
std::unique_ptr<Document> tryToEdit(Document& document, const Editing::Wish& wish) {
  try {
    auto edited = Editing::edit(document, wish);
    const bool isOfOtherCharset =
        edited != nullptr && edited->getCharset().isUtf8() != document.getCharset().isUtf8();
    return isOfOtherCharset ? nullptr : std::move(edited);
  } catch (const UserError&) {
    return nullptr;
  }
}

void checkEdit(Document& document) {
  Editing::Draft draft(document);
  if (draft.getFoundations().getFoundations().empty()) return;
  draft.getCopy(0).setNumber(4711);
  const auto edited = tryToEdit(document, draft.makeWish());
  if (edited == nullptr) return;
  const auto& before = document.getFoundations().getFoundations();
  const auto& after = edited->getFoundations().getFoundations();
  require(after.size() == before.size(), "an edit keeps the rows", edited->getContent().bytes);
  require(after[0]->getNumber() == 4711, "an edit is read", edited->getContent().bytes);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TestSupport::CommaLocale comma;
  const std::string input = Fuzz::takeAll(data, size);
  const Spreadsheets::Dialect dialects[] = {{}, {{}, '.'}, {{}, ','}};
  for (const Spreadsheets::Dialect& dialect : dialects) {
    Documents::ReadOptions options;
    options.form = Documents::Form::csv;
    options.dialect = dialect;
    const auto document = Fuzz::openSheet(input, options);
    if (document == nullptr || document->getForm() != Documents::Form::csv) continue;
    checkDialects(*document);
    Fuzz::checkUnchanged(*document);
    checkEdit(*document);
  }
  return 0;
}
