#include "report/strip.h"

#include <fmt/format.h>

#include "report/html.h"

namespace Report {
namespace {

/// The element of each direction's mark and the attribute that places it. Rotation has a strip of
/// its own.
struct Mark {
  const char* element;
  const char* place;
};
constexpr Mark marks[] = {{"circle", "cx"}, {"rect", "x"}, {"ellipse", "cx"}, {"rect", "x"}};
constexpr std::size_t rotation = 3;

std::string showPercent(double share) {
  std::string text = fmt::format("{:.1f}", 100.0 * share);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + "%";
}

std::string drawMark(std::size_t direction, const std::string& place) {
  const Mark& mark = marks[direction];
  return fmt::format(R"(<{} {}="{}"/>)", mark.element, mark.place, place);
}

}  // namespace

void appendStrip(const std::vector<Bar>& bars, std::size_t first, std::size_t last,
                 const Scale& scale, std::string& page) {
  append(page, R"(<td class="plot{}"><svg aria-hidden="true">)", first == rotation ? " turn" : "");
  for (; first < last; ++first) {
    const Bar& bar = bars[first];
    if (isDrawable(bar))
      page += drawMark(first, showPercent(scale.place(bar.value)));
    else if (bar.isPresent && bar.value == 0.0)
      page += drawMark(first, std::to_string(placeOfZero));
  }
  page += "</svg>";
}

void appendAxis(const Scale& scale, std::string& page) {
  constexpr int mostLabels = 4;
  const int length = scale.getEnd() - scale.getStart();
  int step = scale.getStep();
  while (length / step >= mostLabels) step *= 2;
  page += "<span class=\"axis\"><i>0</i>";
  for (int power = scale.getStart(); power <= scale.getEnd(); power += step)
    append(page, " <i style=\"left:{}\">{}</i>", showPercent(scale.placePower(power)),
           writePower(power));
  page += "</span>";
}

void appendSample(std::size_t direction, std::string& page) {
  append(page, R"(<svg class="mark{}" aria-hidden="true">{}</svg> )",
         direction == rotation ? " turn" : "", drawMark(direction, "50%"));
}

}  // namespace Report
