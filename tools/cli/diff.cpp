#include <cstdio>
#include <ostream>
#include <string>

#include "commands.h"
#include "comparing/differences.h"
#include "documents/document.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "reading.h"
#include "terminal.h"

namespace {

using Comparing::Difference;
using Comparing::Differences;
using Documents::Document;
using Found::Foundation;

std::string describeCurrent(Document& document) {
  const Foundation* const current = document.getFoundations().getCurrentFoundation();
  return current != nullptr ? Fields::describe(*current) : "none";
}

void print(const Difference& difference, const Terminal::Painter& painter, std::ostream& out) {
  using Terminal::Style;
  const auto [first, second] = difference.pair;
  const auto printLine = [&](Style style, const char* sign, const Foundation& foundation) {
    out << painter.paint(style, sign + Fields::describe(foundation)) << '\n';
  };
  if (first == nullptr) return printLine(Style::green, "+ ", *second);
  if (second == nullptr) return printLine(Style::red, "- ", *first);
  printLine(Style::yellow, "~ ", *first);
  for (const Fields::Difference& field : difference.fields)
    out << "    " << field.field.name << ": " << Fields::show(field.first) << " -> "
        << Fields::show(field.second) << '\n';
}

}  // namespace

namespace Commands {

Status diff(const DiffOptions& options, std::ostream& out, std::ostream& notes) {
  if (options.first == "-" && options.second == "-")
    throw UserError("A and B cannot both come from standard input");
  Document first(Documents::readFile(options.first), options.version);
  std::size_t skipped = tellReading(first, notes);
  Document second(Documents::readFile(options.second), options.version);
  skipped += tellReading(second, notes);

  const Differences differences = Comparing::compare(first, second);
  const Terminal::Painter painter(stdout);
  for (const Difference& difference : differences.foundations) print(difference, painter, out);
  if (!differences.isCurrentSame)
    out << "current foundation: " << describeCurrent(first) << " -> " << describeCurrent(second)
        << '\n';
  if (differences.isEmpty() && skipped > 0)
    notes << "kvfound: what was read is alike, but not everything could be read\n";
  return differences.isEmpty() && skipped == 0 ? Status::done : Status::findings;
}

}  // namespace Commands
