#include <cstdio>

#include "commands.h"
#include "documents/document.h"
#include "reading.h"
#include "show_formats.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_writer.h"
#include "terminal.h"

namespace {

Units getUnits(const Documents::Document& document) {
  return document.getSheet() != nullptr ? document.getSheet()->units : Units();
}

}  // namespace

namespace Commands {

Status show(const ShowOptions& options, std::ostream& out, Notes& notes) {
  Documents::Document document(Documents::readFile(options.path, options.reading.form),
                               options.reading);
  tellReading(document, notes);
  document.keep(options.selection);
  Found::FoundationManager& manager = document.getFoundations();
  switch (options.format) {
    case ShowOptions::Format::table:
      manager.updateFoundationMaximum();
      ShowFormats::printTable(manager, out, Terminal::getWidth(stdout), Terminal::Painter(stdout));
      break;
    case ShowOptions::Format::json:
      Spreadsheets::writeJson(manager, getUnits(document), out);
      break;
    case ShowOptions::Format::csv:
      Spreadsheets::writeCsv(manager, options.reading.dialect, getUnits(document), out);
      break;
  }
  return Status::done;
}

}  // namespace Commands
