#include <cstdint>
#include <string>

#include "any_sheet.h"
#include "spreadsheets/json_writer.h"
#include "support/comma_locale.h"

// Any bytes as data. What is accepted writes and reads back the same.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TestSupport::CommaLocale comma;
  Documents::ReadOptions options;
  options.form = Documents::Form::json;
  const auto document = Fuzz::openSheet(Fuzz::takeAll(data, size), options);
  if (document == nullptr || document->getForm() != Documents::Form::json) return 0;
  Fuzz::checkWriting(*document, Documents::Form::json,
                     [](Found::FoundationManager& manager, const Units& units, std::ostream& out) {
                       Spreadsheets::writeJson(manager, units, out);
                     });
  Fuzz::checkUnchanged(*document);
  return 0;
}
