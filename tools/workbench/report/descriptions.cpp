#include "report/descriptions.h"

#include <algorithm>

#include <fmt/format.h>

#include "report/html.h"
#include "report/text.h"

namespace Report {
namespace {

using Found::Foundation;

std::string describeRange(const Scale& range) {
  const std::string least = showValue(range.getLeast());
  const std::string greatest = showValue(range.getGreatest());
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
    text = join(text, fmt::format(R"(<b class="warn">{} beyond the scale</b>)", summary.beyond));
  return (text.empty() ? "" : " ") + text;
}

std::string describeScale(const char* what, const Scale& scale, const Direction& direction) {
  if (scale.isEmpty()) return "";
  return fmt::format(" Logarithmic scale of {}: 10^{} to 10^{}{}.", what, scale.getStart(),
                     scale.getEnd(), showUnit(direction));
}

}  // namespace

std::string describeGroup(const std::vector<Foundation*>& foundations, Part part,
                          const std::vector<Direction>& directions) {
  const std::vector<Summary> summaries = summarize(foundations, part);
  std::string text;
  for (std::size_t i = 0; i < directions.size(); ++i)
    append(text, " <span><b>{}</b>{}</span>", directions[i].name,
           describeDirection(summaries[i], directions[i]));
  const auto without = std::count_if(foundations.begin(), foundations.end(),
                                     [part](Foundation* f) { return !hasPart(part, *f); });
  if (without > 0)
    append(text, " <span>{} without {} part</span>", without,
           part == Part::area ? "an area" : "a line");
  return text;
}

std::string describeScales(const Scales& scales, const std::vector<Direction>& directions) {
  return describeScale("translation", scales.translation, directions.front()) +
         describeScale("rotation", scales.rotation, directions.back());
}

std::string showUnit(const Direction& direction) {
  return direction.unit.empty() ? "" : " " + escape(direction.unit);
}

}  // namespace Report
