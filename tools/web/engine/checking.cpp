#include <unordered_map>

#include "answers.h"
#include "checks/rules.h"
#include "excerpt.h"

/// What the check finds.
namespace Engine::Answers {

Json check(Session& session) {
  Standing standing = session.open();
  Documents::Document& document = standing.get();
  const Checks::Findings findings = Checks::find(document);
  std::unordered_map<const Found::Foundation*, long> rows;
  for (const Found::Foundation* foundation : document.getFoundations().getFoundations())
    rows.emplace(foundation, standing.findRow(rows.size()));
  const Lines lines(session.getBytes(standing));
  Json found = Json::array();
  for (const Checks::Finding& finding : findings.list()) {
    const auto row = rows.find(finding.foundation);
    found.push_back(
        {{"line", finding.position.line},
         {"column", lines.countColumn(finding.position)},
         {"severity", "warning"},
         {"rule", finding.rule->name},
         {"description", finding.rule->description},
         {"sentence", finding.sentence},
         {"foundation", finding.foundation != nullptr ? Fields::describe(*finding.foundation) : ""},
         {"index", row != rows.end() ? row->second : -1},
         {"excerpt", lines.cut(finding.position)}});
  }
  return found;
}

}  // namespace Engine::Answers
