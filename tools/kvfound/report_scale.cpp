#include "report_scale.h"

#include <algorithm>
#include <cmath>

namespace ReportScale {

using Found::Foundation;
using ReportBars::Bar;
using ReportBars::Direction;
using ReportBars::Part;

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

double Scale::place(double value) const {
  constexpr double shortest = 0.01;
  return std::max(placePower(std::log10(value)), shortest);
}

double Scale::placePower(double exponent) const {
  return (exponent - getStart()) / (getEnd() - getStart());
}

Scales::Scales(const std::vector<Foundation*>& foundations, Part part) {
  const std::vector<Direction> directions = ReportBars::listDirections(part, {});
  for (Foundation* foundation : foundations) {
    if (!ReportBars::hasPart(part, *foundation)) continue;
    const std::vector<Bar> bars = ReportBars::listBars(part, *foundation);
    for (std::size_t i = 0; i < bars.size(); ++i)
      if (ReportBars::isDrawable(bars[i]))
        (directions[i].isRotation ? rotation : translation).include(bars[i].value);
  }
}

}  // namespace ReportScale
