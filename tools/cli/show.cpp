#include <cstdio>
#include <ostream>
#include <string>

#include "commands.h"
#include "documents/document.h"
#include "documents/units.h"
#include "files/user_error.h"
#include "reading.h"
#include "show_formats.h"
#include "spreadsheets/csv_writer.h"
#include "spreadsheets/json_writer.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

using Commands::Notes;
using Commands::ShowOptions;

/// What stands above the table of one of several documents.
std::string makeHeading(const std::string& shownPath, bool isFirst) {
  const Terminal::Painter painter(stdout);
  return (isFirst ? "" : "\n") +
         painter.paint(Terminal::Style::bold, DisplayText::fromName(shownPath) + ":") + "\n";
}

void showOne(const std::string& path, const ShowOptions& options, bool& isFirst, std::ostream& out,
             Notes& notes) {
  Documents::Document document(Documents::readFile(path, options.reading.form), options.reading);
  const Units units = Documents::chooseUnits(document, options.units);
  Commands::tellReading(document, notes);
  document.keep(options.selection);
  Found::FoundationManager& manager = document.getFoundations();
  notes.setPhase("");  // standard output may be the same terminal
  if (options.paths.size() > 1) out << makeHeading(document.getShownPath(), isFirst);
  isFirst = false;
  switch (options.format) {
    case ShowOptions::Format::table:
      manager.updateFoundationMaximum();
      ShowFormats::printTable(manager, units, out, Terminal::getWidth(stdout),
                              Terminal::Painter(stdout));
      break;
    case ShowOptions::Format::json:
      Spreadsheets::writeJson(manager, units, out);
      break;
    case ShowOptions::Format::csv:
      Spreadsheets::writeCsv(manager, options.reading.dialect, units, out);
      break;
  }
}

}  // namespace

namespace Commands {

Status show(const ShowOptions& options, std::ostream& out, Notes& notes) {
  // What is printed reads back as one document.
  if (options.paths.size() > 1 && options.format != ShowOptions::Format::table)
    throw UserError("JSON and CSV hold the foundations of one document; show one after the other");
  bool isFirst = true;
  return readEach(options.paths, notes,
                  [&](const std::string& path) { showOne(path, options, isFirst, out, notes); });
}

}  // namespace Commands
