#include <cstdio>
#include <sstream>
#include <string>

#include "commands.h"
#include "comparing/differences.h"
#include "differences.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "output.h"
#include "reading.h"
#include "report/changes.h"
#include "report/frame.h"
#include "report/subject.h"
#include "report/text.h"
#include "results/diff_json.h"
#include "terminal.h"

namespace {

using Commands::DiffOptions;
using Comparing::Differences;
using Documents::Document;
using Found::Foundation;
using Format = DiffOptions::Format;

void requireWritable(const OutputFile& output, Format format) {
  if (format == Format::html)
    Report::requireReplaceable(output);
  else
    Commands::requireAbsent(output);
}

std::string describeCurrent(Document& document) {
  const Foundation* const current = document.getFoundations().getCurrentFoundation();
  return current != nullptr ? Fields::describe(*current) : "none";
}

std::string makeText(const Differences& differences, Document& first, Document& second,
                     const DiffOptions& options) {
  std::ostringstream out;
  const bool isFile = options.out != "-";
  Commands::printDifferences(differences.foundations,
                             isFile ? Terminal::Painter() : Terminal::Painter(stdout), out);
  if (!differences.isCurrentSame)
    out << "current foundation: " << describeCurrent(first) << " -> " << describeCurrent(second)
        << '\n';
  return out.str();
}

Report::Side makeSide(Document& document) {
  return {document, Report::showUnits(document.getLabels()), Report::findDate(document)};
}

std::string makePage(const Differences& differences, Document& first, Document& second,
                     const DiffOptions& options, bool isComplete) {
  return Report::makeChangesPage(
      {makeSide(first), makeSide(second), differences, options.relative, isComplete});
}

std::string makeResult(const Differences& differences, Document& first, Document& second,
                       const DiffOptions& options, bool isComplete) {
  if (options.format == Format::json)
    return Results::makeDiffJson(first, second, differences, isComplete);
  if (options.format == Format::html)
    return makePage(differences, first, second, options, isComplete);
  return makeText(differences, first, second, options);
}

}  // namespace

namespace Commands {

Status diff(const DiffOptions& options, Notes& notes) {
  if (options.first == "-" && options.second == "-")
    throw UserError("A and B cannot both come from standard input");
  OutputFile output = openOutput(options.out);
  requireWritable(output, options.format);
  tellPhase("reading", options.first, notes);
  Document first(Documents::readFile(options.first, options.reading.form), options.reading);
  std::size_t skipped = tellReading(first, notes);
  tellPhase("reading", options.second, notes);
  Document second(Documents::readFile(options.second, options.reading.form), options.reading);
  skipped += tellReading(second, notes);
  compareUnits(second, first, notes);

  notes.setPhase("comparing");
  const Differences differences =
      Comparing::compare(first, second, {options.keys, options.relative});
  output.create();
  output.write(makeResult(differences, first, second, options, skipped == 0));
  notes.setPhase("");  // standard output may be the same terminal
  output.commit();
  if (differences.isEmpty() && skipped > 0)
    notes.tell({Message::Level::warning,
                "incomplete",
                "",
                {},
                "",
                "what was read is alike, but not everything could be read"});
  return differences.isEmpty() && skipped == 0 ? Status::done : Status::findings;
}

}  // namespace Commands
