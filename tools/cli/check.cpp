#include <algorithm>
#include <cstdio>
#include <new>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "checks/findings.h"
#include "checks/rules.h"
#include "commands.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "reading.h"
#include "results/check_results.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

using Commands::CheckOptions;
using Commands::Message;
using Commands::Notes;
using Commands::Status;
using Results::CheckedFile;

/// A line each.
void print(const Checks::Findings& findings, const std::string& shownPath, std::ostream& out) {
  const std::string file = DisplayText::fromName(shownPath);
  const std::string warning = Terminal::Painter(stdout).paint(Terminal::Style::yellow, "warning:");
  for (const Checks::Finding& finding : findings.list())
    out << file << ':' << finding.position.line << ':' << finding.position.column << ": " << warning
        << ' ' << finding.sentence << '\n';
}

/// Checks one document after the other. One that cannot be read does not keep the others from being
/// checked.
class Checker {
 public:
  Checker(const CheckOptions& given, std::ostream& results, Notes& messages)
      : options(given), out(results), notes(messages) {}

  void check(const std::string& path) {
    try {
      checkContent(path, Documents::readFile(path, options.reading.form));
    } catch (const UserError& error) {
      fail(path, error.what(), "");
    } catch (const std::bad_alloc&) {
      fail(path, path + ": is too large for the memory of this machine", "");
    }
  }

  /// Prints what is not printed document by document.
  Status finish() {
    if (options.format == CheckOptions::Format::json) out << Results::makeCheckJson(files);
    if (options.format == CheckOptions::Format::sarif) out << Results::makeSarif(files);
    return status;
  }

 private:
  bool isForPeople() const { return options.format == CheckOptions::Format::text; }

  void checkContent(const std::string& path, Files::Content content) {
    // Where an error stands in columns of characters, only the bytes tell.
    const std::string bytes = isForPeople() ? "" : content.bytes;
    try {
      Documents::Document document(std::move(content), options.reading);
      document.requireReadable();
      Commands::tellPhase("checking", path, notes);
      const Checks::Findings findings = Checks::find(document);
      notes.setPhase("");  // standard output may be the same terminal
      add(path, document, findings);
    } catch (const UserError& error) {
      fail(path, error.what(), bytes);
    }
  }

  void add(const std::string& path, const Documents::Document& document,
           const Checks::Findings& findings) {
    if (isForPeople())
      print(findings, document.getShownPath(), out);
    else
      files.push_back(Results::makeCheckedFile(path, document, findings));
    if (!findings.isEmpty()) status = std::max(status, Status::findings);
  }

  void fail(const std::string& path, const std::string& error, const std::string& bytes) {
    notes.tellError(error);
    status = Status::error;
    if (isForPeople()) return;
    const std::string shownPath = path == "-" ? "standard input" : path;
    const Message message = Commands::readError(error, {shownPath});
    files.push_back(
        Results::makeUnreadFile(path, shownPath, bytes, message.position, message.sentence));
  }

  const CheckOptions& options;
  std::ostream& out;
  Notes& notes;
  std::vector<CheckedFile> files;
  Status status = Status::done;
};

}  // namespace

Status Commands::check(const CheckOptions& options, std::ostream& out, Notes& notes) {
  Checker checker(options, out, notes);
  std::size_t number = 0;
  for (const std::string& path : options.paths) {
    notes.setFile(++number, options.paths.size());
    tellPhase("reading", path, notes);
    checker.check(path);
  }
  notes.setPhase("");
  return checker.finish();
}
