#include <algorithm>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "files/paths.h"
#include "files/user_error.h"
#include "output.h"
#include "reading.h"
#include "report/frame.h"
#include "report/page.h"
#include "report/subject.h"

namespace {

namespace fs = std::filesystem;
using Commands::Notes;
using Commands::ReportOptions;

bool isFolder(const std::string& path) {
  std::error_code ignored;
  return path != "-" && fs::is_directory(Paths::fromText(path), ignored);
}

/// The page of a document in a folder: model.html for model.xml.
std::string makePagePath(const std::string& folder, const std::string& document) {
  const fs::path name = document == "-" ? "stdin" : Paths::fromText(document).stem();
  return Paths::toText(Paths::fromText(folder) / name) + ".html";
}

/// Where the pages of the documents are written, each.
std::vector<std::string> listPages(const ReportOptions& options) {
  if (!isFolder(options.out)) {
    if (options.in.size() > 1)
      throw UserError(
          "the pages of several documents are written to a folder; name one that is "
          "there with -o");
    return {options.out};
  }
  std::vector<std::string> pages;
  for (const std::string& path : options.in) {
    pages.push_back(makePagePath(options.out, path));
    if (std::count(pages.begin(), pages.end(), pages.back()) > 1)
      throw UserError(pages.back() + ": would be the page of two documents; nothing was written");
  }
  return pages;
}

void reportOne(const std::string& path, const std::string& page, const ReportOptions& options,
               Notes& notes) {
  OutputFile output = Commands::openOutput(page);
  Report::requireReplaceable(output);
  Documents::Document document(Documents::readFile(path, options.reading.form), options.reading);
  const Report::Labels labels = Report::chooseLabels(document, options.units);
  Commands::tellReading(document, notes);
  Commands::tellPhase("checking", path, notes);
  const Report::Subject subject(document, options.selection);
  notes.setPhase("making the page");
  output.create();
  output.write(Report::makePage(subject.tell(labels, Report::findDate(document))));
  output.commit();
}

}  // namespace

namespace Commands {

Status report(const ReportOptions& options, Notes& notes) {
  const std::vector<std::string> pages = listPages(options);
  std::size_t page = 0;
  return readEach(options.in, notes, [&](const std::string& path) {
    reportOne(path, pages.at(page++), options, notes);
  });
}

}  // namespace Commands
