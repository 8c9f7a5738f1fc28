#include "report/descriptions.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "report/html.h"
#include "report/text.h"

namespace Report {
namespace {

using Found::Foundation;

std::string describeRange(const Scale& range) {
  const std::string least = writeRounded(range.getLeast());
  const std::string greatest = writeRounded(range.getGreatest());
  return range.getLeast() == range.getGreatest() ? least : fmt::format("{} to {}", least, greatest);
}

/// With a space before it; empty where there is nothing to tell.
std::string describeDirection(const Summary& summary, const Direction& direction) {
  std::string text;
  if (!summary.range.isEmpty()) text = describeRange(summary.range) + showUnit(direction);
  const auto add = [&text](std::size_t number, const std::string& what) {
    if (number > 0) text = join(text, fmt::format("{} {}", number, what));
  };
  add(summary.zeros, "zero");
  add(summary.lacking, "without a value");
  for (const auto& [failure, number] : summary.failures)
    add(number, (number == 1 ? "fails in " : "fail in ") + nameFailure(failure));
  if (summary.beyond > 0)
    text = join(text, fmt::format(R"(<b class="warn">{} {}</b>)", summary.beyond, notOnScale));
  return (text.empty() ? "" : " ") + text;
}

std::string describeScale(const char* what, const Scale& scale, const Direction& direction) {
  if (scale.isEmpty()) return "";
  return fmt::format(" Logarithmic scale of {}: {} to {}{}.", what, writePower(scale.getStart()),
                     writePower(scale.getEnd()), showUnit(direction));
}

}  // namespace

std::string describeGroup(const std::vector<Summary>& summaries,
                          const std::vector<Direction>& directions) {
  std::string text;
  for (std::size_t i = 0; i < directions.size(); ++i)
    append(text, " <span><b>{}</b>{}</span>", directions[i].name,
           describeDirection(summaries[i], directions[i]));
  return text;
}

std::string describeScales(const Scales& scales, const std::vector<Direction>& directions) {
  return describeScale("translation", scales.translation, directions.front()) +
         describeScale("rotation", scales.rotation, directions.back());
}

std::string describeLacking(const std::vector<Foundation*>& foundations, Part part) {
  constexpr std::size_t few = 10;  // that are counted at a glance
  std::vector<int> numbers;
  for (Foundation* const foundation : foundations)
    if (!hasPart(part, *foundation)) numbers.push_back(foundation->getNumber());
  if (numbers.empty()) return "";
  const std::string total = numbers.size() > few ? fmt::format(" ({})", numbers.size()) : "";
  return fmt::format(" No {} part{}: {}.", getName(part), total, showRanges(std::move(numbers)));
}

std::string describeColumns(const std::vector<Summary>& summaries) {
  const bool doAnyFail = std::any_of(summaries.begin(), summaries.end(),
                                     [](const Summary& of) { return !of.failures.empty(); });
  return std::string(doAnyFail
                         ? " Fails: in tension or compression of that direction, only a small "
                           "residual stiffness is left."
                         : "") +
         " Factor: the tangential factor.";
}

std::vector<std::string> listFailures(const std::vector<Direction>& directions,
                                      const std::vector<Bar>& bars) {
  std::vector<std::string> failures;
  for (std::size_t i = 0; i < bars.size(); ++i)
    if (bars[i].failure != Foundation::None)
      failures.push_back(std::string(directions[i].name) + " " + nameFailure(bars[i].failure));
  return failures;
}

std::string describeFailures(const std::vector<Direction>& directions,
                             const std::vector<Bar>& bars) {
  const std::vector<std::string> failures = listFailures(directions, bars);
  return failures.empty() ? "none" : fmt::format("{}", fmt::join(failures, ", "));
}

std::string describeUnits(const Units& units) {
  if (units.force.empty()) return "not stated";
  return fmt::format("{}, {}", escape(units.force), escape(units.length));
}

std::string describeDate(const Date& date) {
  return date.isOfFile || date.text.empty() ? date.text : "read " + date.text;
}

const char* describeForm(Documents::Form form) {
  using Documents::Form;
  if (form == Form::legacy) return "Legacy model";
  if (form == Form::csv) return "Table (CSV)";
  return form == Form::json ? "Data (JSON)" : "Exchange document";
}

std::string showUnit(const Direction& direction) {
  return direction.unit.empty() ? "" : " " + escape(direction.unit);
}

}  // namespace Report
