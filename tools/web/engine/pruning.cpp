#include "models/pruning.h"

#include <new>
#include <optional>

#include <fmt/format.h>

#include "answers.h"
#include "files/memory_stream.h"
#include "foundations/copying.h"
#include "foundations/keep_list.h"
#include "text/display_text.h"

/// Removing what nothing needs.
namespace Engine::Answers {
namespace {

using Found::Foundation;

/// What is left, and what became of each row; null for one that goes.
struct Pruned {
  Rows rows;
  std::vector<Foundation*> after;
  std::unique_ptr<Models::Snapshot> snapshot;
  std::vector<std::string> unmatched;
};

std::vector<std::string> describe(const std::vector<std::string>& unmatched) {
  std::vector<std::string> lines;
  lines.reserve(unmatched.size());
  for (const std::string& line : unmatched)
    lines.push_back("there is no foundation \"" + DisplayText::fromName(line) + "\"");
  return lines;
}

std::vector<std::string> requireMatches(KeepList& list, const Found::FoundationManager& manager,
                                        bool ignoresMissing) {
  for (const Foundation* foundation : manager.getFoundations()) list.usesFoundation(foundation);
  std::vector<std::string> unmatched = describe(list.listUnmatched());
  if (!unmatched.empty() && !list.hasMatched())
    throw DetailedError("the list names none of the foundations; nothing is removed", unmatched);
  if (!unmatched.empty() && !ignoresMissing)
    throw DetailedError("the list names foundations that the document lacks; nothing is removed",
                        unmatched);
  return unmatched;
}

Pruned tryPruning(const Session& session, const Request& request) {
  Pruned pruned;
  pruned.snapshot = session.takeSnapshot();
  Found::FoundationManager& manager = pruned.snapshot->copies;
  Pruning::Options options = {request.getFlag("generated"), nullptr,
                              request.getFlag("keepNumbers")};
  const bool hasList = request.values.contains("usedBy");
  if (!options.isGenerated && !hasList) throw UserError("tell what to prune");
  const std::string text = request.getText("usedBy");
  Files::MemoryStream in(text);
  std::optional<KeepList> list;
  if (hasList) {
    options.user = &list.emplace(in);
    if (in.bad()) throw std::bad_alloc();  // or the list would end where memory runs out
    pruned.unmatched = requireMatches(*list, manager, request.getFlag("ignoreMissing"));
  }
  Pruning::prune(options, session.getSource().form, manager);
  // Both are in the same order.
  auto stays = manager.getFoundations().begin();
  for (std::size_t i = 0; i < session.getRows().size(); ++i) {
    Foundation* const copy = pruned.snapshot->items[i].copy;
    const bool isThere = stays != manager.getFoundations().end() && *stays == copy;
    pruned.after.push_back(isThere ? copy : nullptr);
    if (!isThere) continue;
    ++stays;
    Row row = session.getRows()[i];
    row.isCurrent = manager.getCurrentFoundation() == copy;
    if (copy->getNumber() != row.foundation->getNumber())
      row.foundation = Copying::duplicate(*copy);
    pruned.rows.push_back(std::move(row));
  }
  return pruned;
}

/// Places of the document that mean foundations by their old numbers.
std::vector<std::string> listStale(const Session& session, const Pruned& pruned) {
  Standing standing = session.open();
  std::vector<Matching::Pair> pairs;
  std::size_t place = 0;
  for (Foundation* before : standing.get().getFoundations().getFoundations()) {
    const long row = standing.findRow(place++);
    if (row >= 0) pairs.push_back({before, pruned.after[static_cast<std::size_t>(row)]});
  }
  std::vector<std::string> lines = pruned.unmatched;
  for (const Documents::Note& note : Pruning::listStale(standing.get(), pairs))
    lines.push_back(
        fmt::format("{}:{}: {}", note.position.line, note.position.column, note.sentence));
  return lines;
}

}  // namespace

Json previewPrune(Session& session, const Request& request) {
  const Pruned pruned = tryPruning(session, request);
  Json removed = Json::array();
  Json renumbered = Json::array();
  for (std::size_t i = 0; i < pruned.after.size(); ++i) {
    const Foundation& before = *session.getRows()[i].foundation;
    const Foundation* const after = pruned.after[i];
    if (after == nullptr)
      removed.push_back(Fields::describe(before));
    else if (after->getNumber() != before.getNumber())
      renumbered.push_back(fmt::format("{} -> {}", before.getNumber(), Fields::describe(*after)));
  }
  return {{"summary", fmt::format("{} removed, {} kept", removed.size(), pruned.rows.size())},
          {"removed", std::move(removed)},
          {"renumbered", std::move(renumbered)},
          {"warnings", listStale(session, pruned)}};
}

Json prune(Session& session, const Request& request) {
  Pruned pruned = tryPruning(session, request);
  if (pruned.rows == session.getRows()) return {{"label", ""}, {"indexes", Json::array()}};
  session.change("pruning", std::move(pruned.rows));
  return {{"label", "pruning"}, {"indexes", Json::array()}};
}

}  // namespace Engine::Answers
