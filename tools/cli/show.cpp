#include <cstdio>

#include "commands.h"
#include "documents/document.h"
#include "reading.h"
#include "show_formats.h"
#include "terminal.h"

namespace Commands {

Status show(const ShowOptions& options, std::ostream& out, std::ostream& notes) {
  Documents::Document document(Documents::readFile(options.path), options.version);
  tellReading(document, notes);
  document.keep(options.selection);
  Found::FoundationManager& manager = document.getFoundations();
  manager.updateFoundationMaximum();
  switch (options.format) {
    case ShowOptions::Format::table:
      ShowFormats::printTable(manager, out, Terminal::getWidth(stdout), Terminal::Painter(stdout));
      break;
    case ShowOptions::Format::json:
      ShowFormats::printJson(manager, out);
      break;
    case ShowOptions::Format::csv:
      ShowFormats::printCsv(manager, out);
      break;
  }
  return Status::done;
}

}  // namespace Commands
