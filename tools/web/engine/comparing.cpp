#include "comparing/differences.h"

#include <unordered_map>

#include "answers.h"
#include "comparing/units.h"
#include "other.h"
#include "report/changes.h"
#include "report/subject.h"
#include "report/text.h"
#include "text/display_text.h"

/// How two documents differ.
namespace Engine::Answers {
namespace {

using Comparing::Difference;
using Documents::Document;
using Found::Foundation;

/// Both documents, open.
struct Pair {
  Pair(Session& session, const Request& request)
      : first(session.open()),
        other(request),
        second(other.getContent(), other.getOptions()),
        isComplete(session.getSource().notes.empty() && other.isReadWhole()) {}

  Standing first;
  Other other;
  Document second;
  bool isComplete;
};

Comparing::Options readOptions(const Request& request) {
  using Matching::Key;
  Comparing::Options options;
  const std::string by = request.getText("by");
  if (by == "number") options.keys = {Key::number};
  if (by == "name") options.keys = {Key::name};
  options.relative = request.getNumber("relative");
  if (!(options.relative >= 0.0 && options.relative <= 1.0))
    throw UserError("relative: a share from 0 to 1");
  return options;
}

/// Where foundations stand.
class Places {
 public:
  explicit Places(Document& document) {
    for (const Foundation* foundation : document.getFoundations().getFoundations())
      places.emplace(foundation, places.size());
  }

  template <class FindRow>
  long find(const Foundation* foundation, const FindRow& findRow) const {
    return foundation == nullptr ? -1 : static_cast<long>(findRow(places.at(foundation)));
  }

 private:
  std::unordered_map<const Foundation*, std::size_t> places;
};

const char* getKind(const Difference& difference) {
  if (difference.pair.first == nullptr) return "added";
  return difference.pair.second == nullptr ? "removed" : "changed";
}

Json listDifferences(Pair& pair, const std::vector<Difference>& differences) {
  const Places first(pair.first.get());
  const Places second(pair.second);
  const Units units = pair.first.get().getLabels();
  Json listed = Json::array();
  for (const Difference& difference : differences) {
    const auto [before, after] = difference.pair;
    listed.push_back(
        {{"kind", getKind(difference)},
         {"foundation", Fields::describe(before != nullptr ? *before : *after)},
         {"first", first.find(before, [&](std::size_t i) { return pair.first.findRow(i); })},
         {"second", second.find(after, [&](std::size_t i) { return pair.other.findRow(i); })},
         {"fields", listFields(difference.fields, units)}});
  }
  return listed;
}

std::string describeCurrent(Document& document) {
  const Foundation* const current = document.getFoundations().getCurrentFoundation();
  return current != nullptr ? Fields::describe(*current) : "none";
}

Report::Side makeSide(Document& document) {
  return {document, Report::showUnits(document.getLabels()), Report::findDate(document)};
}

}  // namespace

Json compare(Session& session, const Request& request) {
  Pair pair(session, request);
  Document& first = pair.first.get();
  const auto note = Comparing::compareUnits(pair.second, first);
  const Comparing::Differences differences =
      Comparing::compare(first, pair.second, readOptions(request));
  const std::string current =
      differences.isCurrentSame
          ? ""
          : "current foundation: " + describeCurrent(first) + " -> " + describeCurrent(pair.second);
  return {{"isSame", differences.isEmpty()},
          {"isComplete", pair.isComplete},
          {"differences", listDifferences(pair, differences.foundations)},
          {"current", current},
          {"unitNote",
           note ? DisplayText::fromName(note->about.getShownPath() + ": " + note->sentence) : ""},
          {"isUnitWarning", note && note->isWarning}};
}

std::string comparePage(Session& session, const Request& request) {
  Pair pair(session, request);
  Document& first = pair.first.get();
  Comparing::compareUnits(pair.second, first);
  const Comparing::Options options = readOptions(request);
  const Comparing::Differences differences = Comparing::compare(first, pair.second, options);
  return Report::makeChangesPage(
      {makeSide(first), makeSide(pair.second), differences, options.relative, pair.isComplete});
}

}  // namespace Engine::Answers
