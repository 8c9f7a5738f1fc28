#include "report/distribution.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "report/descriptions.h"
#include "report/html.h"
#include "report/strip.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Found::Foundation;

constexpr std::size_t columns = 48;  // of a histogram
constexpr std::size_t mostNamed = 12;

struct Value {
  Foundation* foundation;
  double exponent;  // of ten
};

/// The values of a direction.
struct Values {
  std::vector<Value> onScale;
  std::vector<Foundation*> zeros;
  std::vector<std::pair<double, Foundation*>> beyond;  // by their size
};

Values listValues(const std::vector<Foundation*>& foundations, Part part, std::size_t direction) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  Values values;
  for (Foundation* const foundation : foundations) {
    if (!hasPart(part, *foundation)) continue;
    const Bar bar = listBars(part, *foundation)[direction];
    if (isDrawable(bar))
      values.onScale.push_back({foundation, std::log10(bar.value)});
    else if (isBeyond(bar))
      values.beyond.emplace_back(std::isnan(bar.value) ? infinity : std::fabs(bar.value),
                                 foundation);
    else if (bar.isPresent)
      values.zeros.push_back(foundation);
  }
  return values;
}

/// Values a power of ten and three times the distance of the quartiles outside of the quartiles,
/// the farthest first.
std::vector<Foundation*> listFar(const std::vector<Value>& values) {
  std::vector<double> sorted(values.size());
  std::transform(values.begin(), values.end(), sorted.begin(),
                 [](const Value& value) { return value.exponent; });
  std::sort(sorted.begin(), sorted.end());
  if (sorted.empty()) return {};
  const double lower = sorted[sorted.size() / 4];
  const double upper = sorted[sorted.size() * 3 / 4];
  const double fence = std::max(1.0, 3.0 * (upper - lower));
  const auto measure = [&](const Value& value) {
    return std::max(lower - value.exponent, value.exponent - upper);
  };
  std::vector<Value> far;
  std::copy_if(values.begin(), values.end(), std::back_inserter(far),
               [&](const Value& value) { return measure(value) > fence; });
  std::stable_sort(far.begin(), far.end(),
                   [&](const Value& a, const Value& b) { return measure(a) > measure(b); });
  std::vector<Foundation*> foundations(far.size());
  std::transform(far.begin(), far.end(), foundations.begin(),
                 [](const Value& value) { return value.foundation; });
  return foundations;
}

/// Zero is what many have, or what somebody forgot.
bool areZerosOdd(const Values& values) {
  return values.zeros.size() * 4 < values.onScale.size() + values.zeros.size();
}

/// Those whose value has no place on the scale, the largest first, zeros among others, and values
/// that are far from the others.
std::vector<Foundation*> listOdd(const Values& values) {
  std::vector<std::pair<double, Foundation*>> beyond = values.beyond;
  std::stable_sort(beyond.begin(), beyond.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<Foundation*> odd(beyond.size());
  std::transform(beyond.begin(), beyond.end(), odd.begin(),
                 [](const auto& value) { return value.second; });
  if (areZerosOdd(values)) odd.insert(odd.end(), values.zeros.begin(), values.zeros.end());
  const std::vector<Foundation*> far = listFar(values.onScale);
  odd.insert(odd.end(), far.begin(), far.end());
  return odd;
}

class DistributionMaker {
 public:
  DistributionMaker(const Content& shown, Part shownPart, const Scales& scalesOfPart,
                    std::string& target)
      : content(shown),
        part(shownPart),
        directions(listDirections(part, shown.units)),
        scales(scalesOfPart),
        page(target) {
    for (std::size_t i = 0; i < directions.size(); ++i)
      values.push_back(listValues(content.manager.getFoundations(), part, i));
  }

  void print() {
    const bool hasScale = !scales.translation.isEmpty() || !scales.rotation.isEmpty();
    if (hasScale) printOnScale();
    printOdd();
  }

 private:
  void printOnScale() {
    page += "<div class=\"spread\">\n";
    for (std::size_t i = 0; i < directions.size(); ++i)
      if (!values[i].onScale.empty()) drawHistogram(i);
    page += "</div>\n<details class=\"counts\"><summary>The same as a table</summary>\n";
    printDecades(0, std::min<std::size_t>(3, directions.size()), scales.translation);
    if (directions.size() > 3) printDecades(3, directions.size(), scales.rotation);
    page += "</details>\n";
  }

  std::vector<std::size_t> countIn(std::size_t direction, std::size_t parts,
                                   const Scale& scale) const {
    std::vector<std::size_t> counts(parts);
    for (const Value& value : values[direction].onScale) {
      // Divided last, so that a power of ten stands where its decade starts.
      const double place = (value.exponent - scale.getStart()) * static_cast<double>(parts) /
                           (scale.getEnd() - scale.getStart());
      ++counts[std::min(parts - 1, static_cast<std::size_t>(std::max(0.0, place)))];
    }
    return counts;
  }

  void drawHistogram(std::size_t direction) {
    const Scale& scale = scales.get(directions[direction]);
    const std::vector<std::size_t> counts = countIn(direction, columns, scale);
    const std::size_t most = *std::max_element(counts.begin(), counts.end());
    append(page,
           "<figure>\n<figcaption><b>{}</b>{} <small>{}, at most {} in a column</small>"
           "</figcaption>\n<svg viewBox=\"0 0 {} 1\" preserveAspectRatio=\"none\" "
           "aria-hidden=\"true\"><path d=\"",
           directions[direction].name, showUnit(directions[direction]),
           count(values[direction].onScale.size(), "value"), most, columns);
    for (std::size_t i = 0; i < columns; ++i) {
      if (counts[i] == 0) continue;
      // A single one is seen beside thousands.
      const double height =
          std::max(0.02, static_cast<double>(counts[i]) / static_cast<double>(most));
      append(page, "M{} 1v-{:.3g}h1V1", i, height);
    }
    page += "\"/></svg>\n";
    appendAxis(scale, page);
    page += "\n</figure>\n";
  }

  void printDecades(std::size_t first, std::size_t last, const Scale& scale) {
    if (scale.isEmpty()) return;
    page += "<table>\n<thead><tr><th scope=\"col\">Values";
    for (std::size_t i = first; i < last; ++i)
      append(page, R"(<th scope="col" class="num">{})", directions[i].name);
    page += "</tr></thead>\n<tbody>\n";
    std::vector<std::vector<std::size_t>> counts;
    const auto decades = static_cast<std::size_t>(scale.getEnd() - scale.getStart());
    for (std::size_t i = first; i < last; ++i) counts.push_back(countIn(i, decades, scale));
    for (std::size_t decade = 0; decade < decades; ++decade) {
      const bool isEmpty = std::all_of(counts.begin(), counts.end(),
                                       [decade](const auto& of) { return of[decade] == 0; });
      if (isEmpty) continue;
      const int power = scale.getStart() + static_cast<int>(decade);
      append(page, "<tr><th scope=\"row\">{} to {}{}{}", writePower(power), writePower(power + 1),
             showUnit(directions[first]), isEnd(power + 1, scale) ? ", both included" : "");
      for (const auto& of : counts) append(page, "<td>{}", of[decade]);
      page += "</tr>\n";
    }
    page += "</tbody>\n</table>\n";
  }

  /// True for a power of ten that is the greatest value, and so stands in the row before it.
  static bool isEnd(int power, const Scale& scale) {
    return power == scale.getEnd() && scale.placePower(std::log10(scale.getGreatest())) == 1.0;
  }

  void printOdd() {
    std::string items;
    for (std::size_t i = 0; i < directions.size(); ++i) {
      const std::vector<Foundation*> odd = listOdd(values[i]);
      if (odd.empty()) continue;
      append(items, "<li><b>{}</b>", directions[i].name);
      for (std::size_t k = 0; k < std::min(odd.size(), mostNamed); ++k)
        append(items, R"({} <a href="#number={}">foundation {}, <bdi>{}</bdi></a>: {}{})",
               k == 0 ? "" : ";", odd[k]->getNumber(), odd[k]->getNumber(),
               escape(shortenName(odd[k]->getName())),
               DisplayText::fromNumber(listBars(part, *odd[k])[i].value), showUnit(directions[i]));
      if (odd.size() > mostNamed) append(items, " and {} more", odd.size() - mostNamed);
      items += "</li>\n";
    }
    if (items.empty()) {
      page += "<p class=\"lead\">No value is far from the others.</p>\n";
      return;
    }
    append(
        page,
        "<p class=\"lead\">Odd ones: their value is {}; or zero, where less than a quarter are; or "
        "it lies more than a power of ten, and more than three times the distance of the "
        "quartiles, beyond the quartiles.</p>\n<ul class=\"odd\">\n{}</ul>\n",
        notOnScale, items);
  }

  const Content& content;
  Part part;
  std::vector<Direction> directions;
  const Scales& scales;
  std::vector<Values> values;
  std::string& page;
};

}  // namespace

void appendDistribution(const Content& content, Part part, const Scales& scales,
                        std::string& page) {
  DistributionMaker(content, part, scales, page).print();
}

}  // namespace Report
