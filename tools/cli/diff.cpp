#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/documents.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "foundations/matching.h"
#include "terminal.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;

std::string describeCurrent(const FoundationManager& manager) {
  const Foundation* const current = manager.getCurrentFoundation();
  return current != nullptr ? Fields::describe(*current) : "none";
}

/// The fields that differ, a line each.
std::vector<std::string> compare(const Matching::Pair& pair) {
  std::vector<std::string> changes;
  for (const Fields::Field& field : Fields::list()) {
    const Fields::Value before = field.get(*pair.first);
    const Fields::Value after = field.get(*pair.second);
    if (!Fields::areAlike(before, after))
      changes.push_back(std::string(field.name) + ": " + Fields::show(before) + " -> " +
                        Fields::show(after));
  }
  return changes;
}

/// True when nothing differs.
bool printChanges(const Matching::Pair& pair, const Terminal::Painter& painter, std::ostream& out) {
  if (pair.first == nullptr || pair.second == nullptr) {
    const bool isAdded = pair.first == nullptr;
    const Terminal::Style style = isAdded ? Terminal::Style::green : Terminal::Style::red;
    const std::string line =
        (isAdded ? "+ " : "- ") + Fields::describe(isAdded ? *pair.second : *pair.first);
    out << painter.paint(style, line) << "\n";
    return false;
  }
  const std::vector<std::string> changes = compare(pair);
  if (changes.empty()) return true;
  out << painter.paint(Terminal::Style::yellow, "~ " + Fields::describe(*pair.first)) << "\n";
  for (const std::string& change : changes) out << "    " << change << "\n";
  return false;
}

}  // namespace

namespace Commands {

Status diff(const DiffOptions& options, std::ostream& out, std::ostream& notes) {
  if (options.first == "-" && options.second == "-")
    throw UserError("A and B cannot both come from standard input");
  FoundationManager first;
  FoundationManager second;
  const std::size_t skipped = Documents::read(options.first, options.version, first, notes).notes +
                              Documents::read(options.second, options.version, second, notes).notes;

  using Matching::Key;
  const std::vector<Matching::Pair> pairs =
      Matching::match(first.getFoundations(), second.getFoundations(), {Key::number, Key::name});
  const Terminal::Painter painter(stdout);
  bool areAlike = true;
  bool isSameCurrent = first.getCurrentFoundation() == second.getCurrentFoundation();  // no two
  for (const Matching::Pair& pair : pairs) {
    areAlike = printChanges(pair, painter, out) && areAlike;
    const bool wasCurrent = pair.first != nullptr && pair.first == first.getCurrentFoundation();
    if (wasCurrent && pair.second != nullptr)
      isSameCurrent = pair.second == second.getCurrentFoundation();
  }
  if (!isSameCurrent)
    out << "current foundation: " << describeCurrent(first) << " -> " << describeCurrent(second)
        << "\n";
  if (areAlike && isSameCurrent && skipped > 0)
    notes << "kvfound: what was read is alike, but not everything could be read\n";
  return areAlike && isSameCurrent && skipped == 0 ? Status::done : Status::findings;
}

}  // namespace Commands
