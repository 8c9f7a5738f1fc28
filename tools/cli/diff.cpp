#include <ostream>
#include <string>

#include "commands.h"
#include "comparing/differences.h"
#include "differences.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "reading.h"
#include "results/diff_json.h"

namespace {

using Comparing::Differences;
using Documents::Document;
using Found::Foundation;

std::string describeCurrent(Document& document) {
  const Foundation* const current = document.getFoundations().getCurrentFoundation();
  return current != nullptr ? Fields::describe(*current) : "none";
}

void print(const Differences& differences, Document& first, Document& second, std::ostream& out) {
  Commands::printDifferences(differences.foundations, out);
  if (!differences.isCurrentSame)
    out << "current foundation: " << describeCurrent(first) << " -> " << describeCurrent(second)
        << '\n';
}

}  // namespace

namespace Commands {

Status diff(const DiffOptions& options, std::ostream& out, Notes& notes) {
  if (options.first == "-" && options.second == "-")
    throw UserError("A and B cannot both come from standard input");
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
  notes.setPhase("");
  if (options.format == DiffOptions::Format::json)
    out << Results::makeDiffJson(first, second, differences, skipped == 0);
  else
    print(differences, first, second, out);
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
