#include "models/merging.h"

#include <utility>

#include <fmt/format.h>

#include "answers.h"
#include "excerpt.h"
#include "foundations/copying.h"
#include "other.h"
#include "text/display_text.h"

/// Taking foundations of another document over.
namespace Engine::Answers {
namespace {

using Comparing::OnClash;
using Models::Merged;

OnClash readRule(const Request& request) {
  const std::pair<const char*, OnClash> rules[] = {{"rename", OnClash::rename},
                                                   {"renumber", OnClash::renumber},
                                                   {"skip", OnClash::skip},
                                                   {"replace", OnClash::replace}};
  for (const auto& [name, rule] : rules)
    if (request.getText("onClash") == name) return rule;
  return OnClash::refuse;
}

std::unique_ptr<Models::Snapshot> open(const Other& other) {
  auto read = Models::read(other.getContent(), other.getOptions());
  auto snapshot = std::make_unique<Models::Snapshot>();
  snapshot->source = read->source;
  for (const Found::Foundation* foundation : read->foundations.getFoundations())
    snapshot->add(*foundation, snapshot->items.size());
  return snapshot;
}

Merged merge(const Session& session, const Other& other, const Request& request) {
  const auto target = session.takeSnapshot();
  std::vector<std::unique_ptr<Models::Snapshot>> sources;
  sources.push_back(open(other));
  return Models::merge(*target, sources, readRule(request));
}

Json listRefusals(const std::vector<Comparing::Refusal>& refusals, const Lines& lines) {
  Json listed = Json::array();
  for (const Comparing::Refusal& refusal : refusals)
    listed.push_back({{"file", refusal.file},
                      {"line", refusal.position.line},
                      {"column", lines.countColumn(refusal.position)},
                      {"foundation", refusal.foundation},
                      {"sentence", refusal.sentence}});
  return listed;
}

Json listDifferences(const Session& session, const Merged& merged) {
  const Units& units = session.getSource().labels;
  Json listed = Json::array();
  for (const Merged::Change& change : merged.changes)
    listed.push_back({{"kind", "changed"},
                      {"foundation", Fields::describe(*session.getRow(change.item).foundation)},
                      {"first", change.item},
                      {"second", -1},
                      {"fields", listFields(change.fields, units)}});
  for (const auto& added : merged.added)
    listed.push_back({{"kind", "added"},
                      {"foundation", Fields::describe(*added)},
                      {"first", -1},
                      {"second", -1},
                      {"fields", Json::array()}});
  return listed;
}

std::vector<std::string> listLines(const std::vector<Comparing::Refusal>& refusals) {
  std::vector<std::string> lines;
  lines.reserve(refusals.size());
  for (const Comparing::Refusal& refusal : refusals) lines.push_back(Models::makeLine(refusal));
  return lines;
}

}  // namespace

Json previewMerge(Session& session, const Request& request) {
  const Other other(request);
  const Merged merged = merge(session, other, request);
  const Lines lines(other.getContent().bytes);
  Json unitNotes = Json::array();
  for (const std::string& note : merged.unitNotes) unitNotes.push_back(DisplayText::fromName(note));
  return {
      {"isPossible", merged.clashes.empty()},
      {"summary", fmt::format("{} added, {} changed", merged.added.size(), merged.changes.size())},
      {"differences", listDifferences(session, merged)},
      {"clashes", listRefusals(merged.clashes, lines)},
      {"leftOut", listRefusals(merged.leftOut, lines)},
      {"losses", merged.losses},
      {"unitNotes", std::move(unitNotes)}};
}

Json merge(Session& session, const Request& request) {
  const Other other(request);
  Merged merged = merge(session, other, request);
  if (!merged.clashes.empty())
    throw DetailedError("numbers or names clash; nothing was merged", listLines(merged.clashes));
  Rows rows = session.getRows();
  std::vector<std::size_t> indexes;
  for (const Merged::Change& change : merged.changes) {
    std::shared_ptr<Found::Foundation> changed = Copying::duplicate(*rows[change.item].foundation);
    for (const Fields::Difference& field : change.fields) field.field.set(*changed, field.second);
    rows[change.item].foundation = std::move(changed);
    indexes.push_back(change.item);
  }
  for (std::unique_ptr<Found::Foundation>& added : merged.added) {
    indexes.push_back(rows.size());
    rows.push_back({std::move(added), Models::nowhere});
  }
  const std::string label = "merging " + DisplayText::fromName(other.getContent().shownPath);
  if (!indexes.empty()) session.change(label, std::move(rows));
  return {{"label", indexes.empty() ? "" : label}, {"indexes", indexes}};
}

}  // namespace Engine::Answers
