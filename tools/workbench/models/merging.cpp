#include "models/merging.h"

#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "comparing/units.h"
#include "documents/editing.h"
#include "foundations/copying.h"
#include "models/rendering.h"

namespace Models {
namespace {

using Documents::Document;
using Found::Foundation;

void collect(const Editing::Wish& wish, Document& into, const std::vector<std::size_t>& items,
             Merged& merged) {
  const std::vector<Foundation*>& before = into.getFoundations().getFoundations();
  std::unordered_map<const Foundation*, std::size_t> places;
  for (std::size_t i = 0; i < before.size(); ++i) places[before[i]] = items[i];
  for (const Matching::Pair& pair : wish.pairs) {
    if (pair.first == nullptr) {
      merged.added.push_back(Copying::duplicate(*pair.second));
      continue;
    }
    std::vector<Fields::Difference> fields = Fields::compare(*pair.first, *pair.second);
    if (!fields.empty()) merged.changes.push_back({places.at(pair.first), std::move(fields)});
  }
}

}  // namespace

Merged merge(Snapshot& target, const std::vector<std::unique_ptr<Snapshot>>& sources,
             Comparing::OnClash rule) {
  Rendering into(target, {target.source->form, {}});
  into.requireFields();  // its rotations stay, since merging sets other fields
  Document& document = into.getDocument();
  Editing::Draft draft(document);
  Comparing::Merger merger(document, draft, rule);
  Merged merged;
  std::vector<std::unique_ptr<Rendering>> renderings;  // which the merger knows by foundations
  for (const auto& source : sources) {
    Rendering& rendering = *renderings.emplace_back(renderWhole(*source));
    for (const std::string& lost : rendering.getLostRotations()) merged.losses.push_back(lost);
    Document& in = rendering.getDocument();
    if (const auto note = Comparing::compareUnits(in, document))
      merged.unitNotes.push_back(note->about.getShownPath() + ": " + note->sentence);
    merger.merge(in);
  }
  for (const Losses::Loss& loss : merger.getLosses())
    merged.losses.push_back(loss.foundation + ": " + loss.sentence);
  merged.clashes = merger.getClashes();
  merged.leftOut = merger.getLeftOut();
  collect(draft.makeWish(), document, into.listItems(document), merged);
  return merged;
}

std::string makeLine(const Comparing::Refusal& refusal) {
  const auto& [file, position, foundation, sentence] = refusal;
  std::string place = file + ":";
  if (position.line > 0) place += std::to_string(position.line) + ":";
  if (position.column > 0) place += std::to_string(position.column) + ":";
  return fmt::format("{} {} {}", place, foundation, sentence);
}

}  // namespace Models
