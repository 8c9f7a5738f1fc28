#include "report/scale.h"

#include <algorithm>
#include <cmath>

namespace Report {

using Found::Foundation;

void Scale::include(double value) {
  least = std::min(least, value);
  greatest = std::max(greatest, value);
}

int Scale::getStart() const {
  constexpr double distance = 0.2;
  return static_cast<int>(std::floor(std::log10(least) - distance));
}

int Scale::getEnd() const { return static_cast<int>(std::ceil(std::log10(greatest))); }

int Scale::getStep() const {
  constexpr int mostLines = 6;
  const int decades = getEnd() - getStart();
  for (const int step : {1, 2, 5, 10, 20, 50})
    if (decades <= step * mostLines) return step;
  return 200;
}

double Scale::place(double value) const { return placePower(std::log10(value)); }

double Scale::placePower(double exponent) const {
  return (exponent - getStart()) / (getEnd() - getStart());
}

void Summary::include(const Bar& bar) {
  if (isDrawable(bar))
    range.include(bar.value);
  else if (isBeyond(bar))
    ++beyond;
  else if (bar.isPresent)
    ++zeros;
  else
    ++lacking;
  if (bar.failure != Foundation::None) ++failures[bar.failure];
}

std::vector<Summary> summarize(const std::vector<Foundation*>& foundations, Part part) {
  std::vector<Summary> summaries(listDirections(part, {}).size());
  for (Foundation* foundation : foundations) {
    if (!hasPart(part, *foundation)) continue;
    const std::vector<Bar> bars = listBars(part, *foundation);
    for (std::size_t i = 0; i < bars.size(); ++i) summaries[i].include(bars[i]);
  }
  return summaries;
}

Scales makeScales(const std::vector<Direction>& directions, const std::vector<Summary>& summaries) {
  Scales scales;
  for (std::size_t i = 0; i < directions.size(); ++i) {
    const Scale& range = summaries[i].range;
    if (range.isEmpty()) continue;
    Scale& scale = directions[i].isRotation ? scales.rotation : scales.translation;
    scale.include(range.getLeast());
    scale.include(range.getGreatest());
  }
  return scales;
}

}  // namespace Report
