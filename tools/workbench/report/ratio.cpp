#include "report/ratio.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "report/html.h"
#include "report/text.h"

namespace Report {
namespace {

constexpr double axisEnd = 2.0;

}  // namespace

std::optional<double> findRatio(const Fields::Difference& field) {
  const double* const before = std::get_if<double>(&field.first);
  const double* const after = std::get_if<double>(&field.second);
  if (before == nullptr || after == nullptr || !std::isfinite(*before)) return std::nullopt;
  const double ratio = *after / *before;
  const bool isLost = !std::isfinite(ratio) || (ratio == 0.0 && *after != 0.0);
  return isLost ? std::nullopt : std::make_optional(ratio);
}

std::string showRatio(double ratio) {
  constexpr int most = 3;
  constexpr int all = 15;         // that two doubles of decimal fractions share
  if (ratio == 0.0) ratio = 0.0;  // no zero has a sign
  const std::string text = limitDigits(ratio, most);
  const bool isExact = text == limitDigits(ratio, all);
  return (isExact ? "\xC3\x97" : "\xE2\x89\x88") + ("\xC2\xA0" + text);  // on one line
}

void appendRatioBar(double ratio, std::string& page) {
  const double end = std::clamp(ratio, 0.0, axisEnd);
  append(page,
         R"(<td class="ratio"><svg aria-hidden="true"><line x1="50%" x2="{:.4g}%" y1="50%" )"
         R"(y2="50%"/>)",
         100.0 * end / axisEnd);
  if (ratio > axisEnd) page += R"(<path class="end" d="M0 0l9 8-9 8z"/>)";
  if (ratio < 0.0) page += R"(<path d="M0 0l-9 8 9 8z"/>)";
  page += "</svg>";
}

void appendRatioAxis(std::string& page) {
  page +=
      "<th scope=\"col\" class=\"ratio\"><span class=\"said\">Ratio on a scale</span> "
      "<span class=\"axis\"><i style=\"left:0%\">0</i> <i style=\"left:50%\">1</i> "
      "<i style=\"left:100%\">2</i></span></th>";
}

}  // namespace Report
