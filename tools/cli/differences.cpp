#include "differences.h"

#include <cstdio>

#include "foundations/fields.h"
#include "text/display_text.h"

namespace {

using Commands::Message;
using Comparing::Difference;
using Found::Foundation;
using Terminal::Style;

std::string describe(const Fields::Difference& field) {
  return std::string(field.field.name) + ": " + Fields::show(field.first) + " -> " +
         Fields::show(field.second);
}

std::string makeLines(const Difference& difference, const Terminal::Painter& painter) {
  const auto [first, second] = difference.pair;
  const auto makeLine = [&](Style style, const char* sign, const Foundation& foundation) {
    return painter.paint(style, sign + Fields::describe(foundation)) + "\n";
  };
  if (first == nullptr) return makeLine(Style::green, "+ ", *second);
  if (second == nullptr) return makeLine(Style::red, "- ", *first);
  std::string lines = makeLine(Style::yellow, "~ ", *first);
  for (const Fields::Difference& field : difference.fields)
    lines += "    " + describe(field) + "\n";
  return lines;
}

Message makeMessage(const Difference& difference, const std::string& file) {
  const auto [first, second] = difference.pair;
  const auto make = [&file](const char* kind, const Foundation& foundation,
                            const std::string& sentence) -> Message {
    return {Message::Level::note, kind, file, {}, Fields::describe(foundation), sentence};
  };
  if (first == nullptr) return make("added", *second, "is added");
  if (second == nullptr) return make("removed", *first, "is removed");
  std::string sentence;
  for (const Fields::Difference& field : difference.fields)
    sentence += (sentence.empty() ? "" : "; ") + describe(field);
  return make("changed", *first, sentence);
}

}  // namespace

void Commands::printDifferences(const std::vector<Difference>& differences,
                                const Terminal::Painter& painter, std::ostream& out) {
  for (const Difference& difference : differences) out << makeLines(difference, painter);
}

void Commands::tellChanges(const Documents::Document& document, const Editing::Wish& wish,
                           std::ostream* out, Notes& notes) {
  const std::string file = DisplayText::fromName(document.getShownPath());
  const std::vector<Difference> differences = Comparing::listDifferences(wish.pairs);
  notes.setPhase("");  // standard output may be the same terminal
  if (out != nullptr) printDifferences(differences, Terminal::Painter(stdout), *out);
  const Terminal::Painter painter(stderr);
  if (out == nullptr)
    for (const Difference& difference : differences)
      notes.tell(makeMessage(difference, file), makeLines(difference, painter));
  if (differences.empty())
    notes.tell({Message::Level::note, "unchanged", file, {}, "", "nothing changes"});
}
