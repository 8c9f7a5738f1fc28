#include "models/source.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "documents/markup.h"
#include "documents/vocabulary.h"

namespace Models {
namespace {

using Documents::Document;
using Documents::Entries;
using Documents::Entry;

std::vector<Documents::Note> listPlaced(Document& document) {
  std::vector<Documents::Note> placed;
  for (Documents::Note& note : Documents::listNotes(document))
    if (note.position.line > 0) placed.push_back(std::move(note));  // others count what was read
  return placed;
}

/// Names are UTF-8 whatever this is.
std::string nameEncoding(const Document& document) {
  if (document.getCharset().isUtf8()) return "utf-8";
  const std::string_view declared = Markup::readEncoding(document.getContent().bytes);
  const bool isTrue = !declared.empty() && declared != "UTF-8" && declared != "utf-8";
  return isTrue ? std::string(declared) : "windows-1252";
}

bool isReadWhole(Document& document) {
  const auto isRead = [](const Entry& entry) { return entry.foundation != nullptr; };
  return std::all_of(
      document.getEntries().begin(), document.getEntries().end(),
      [&](const Entries& entries) { return std::all_of(entries.begin(), entries.end(), isRead); });
}

/// Those of its form, or the columns of a table.
Spreadsheets::FieldSet listFields(const Document& document) {
  Spreadsheets::FieldSet fields;
  if (document.getForm() == Documents::Form::csv) {
    for (const Spreadsheets::Column& column : document.getSheet()->columns)
      if (column.field != nullptr) fields.add(*column.field);
    return fields;
  }
  for (const Fields::Field& field : Fields::list())
    if (Documents::carries(document.getForm(), field.name)) fields.add(field);
  return fields;
}

}  // namespace

std::vector<std::string> Source::listLines() const {
  std::vector<std::string> lines;
  lines.reserve(notes.size());
  for (const Documents::Note& note : notes)
    lines.push_back(fmt::format("{}:{}:{}: {}", content.shownPath, note.position.line,
                                note.position.column, note.sentence));
  return lines;
}

std::shared_ptr<Source> describe(Document& document, const Documents::ReadOptions& options) {
  auto source = std::make_shared<Source>();
  source->options = options;
  source->form = document.getForm();
  source->encoding = nameEncoding(document);
  source->units = document.getUnits();
  source->labels = document.getLabels();
  if (document.getSheet() != nullptr) source->dialect = document.getSheet()->dialect;
  source->fields = listFields(document);
  source->notes = listPlaced(document);
  source->isReadWhole = isReadWhole(document);
  source->content = document.takeContent();
  return source;
}

std::unique_ptr<Read> read(Files::Content content, const Documents::ReadOptions& options) {
  Document document(std::move(content), options);
  document.requireReadable();
  auto result = std::make_unique<Read>();
  result->source = describe(document, options);
  // The document must not delete what is taken over.
  result->foundations = document.getFoundations();
  document.getFoundations() = Found::FoundationManager();
  return result;
}

}  // namespace Models
