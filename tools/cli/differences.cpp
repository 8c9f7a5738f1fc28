#include "differences.h"

#include <cstdio>

#include "foundations/fields.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

using Comparing::Difference;
using Found::Foundation;
using Terminal::Style;

void print(const Difference& difference, const Terminal::Painter& painter, std::ostream& out) {
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

void Commands::printDifferences(const std::vector<Difference>& differences, std::ostream& out) {
  const Terminal::Painter painter(stdout);
  for (const Difference& difference : differences) print(difference, painter, out);
}

void Commands::tellChanges(const Documents::Document& document, const Editing::Wish& wish,
                           std::ostream& out, std::ostream& notes) {
  const std::vector<Difference> differences = Comparing::listDifferences(wish.pairs);
  printDifferences(differences, out);
  if (differences.empty())
    notes << "kvfound: " << DisplayText::fromName(document.getShownPath()) << ": nothing changes\n";
}
