#include "report/svg.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "report/descriptions.h"
#include "report/html.h"
#include "report/scale.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Found::Foundation;
using Foundations = std::vector<Foundation*>;

constexpr std::size_t rowsOfPicture = 12;  // three on a sheet of A4
constexpr std::size_t rowsOfGroup = 60;
constexpr std::size_t longestName = 28;
constexpr std::size_t longestNumber = 4;
constexpr std::size_t longestUnit = 14;        // of an axis
constexpr std::size_t longestUnitOfValue = 9;  // such as kNm/m/rad

std::string showPercent(double share) {
  std::string text = fmt::format("{:.1f}", 100.0 * share);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + "%";
}

/// A power of ten. Few fonts have all digits as superscripts.
std::string drawPower(int exponent) {
  return fmt::format(R"(10<tspan dy="-.45em">{}</tspan>)", exponent);
}

/// Letters and arrows, so that no colour is needed.
std::string drawFailure(Foundation::Failure failure) {
  if (failure == Foundation::None) return "";
  const Failures::Mode* const mode = Failures::find(failure);
  if (mode == nullptr) return "<tspan> mode</tspan>";  // the table has its number
  return fmt::format("<tspan> {} {}</tspan>", mode->letter, mode->arrows);
}

/// Draws pictures of a part. Places along the bars are in per cent; the style sheet puts directions
/// beside or below one another and rows below one another, as the window allows. It goes by the
/// order of elements, so that there is little to write for a bar.
class Drawing {
 public:
  Drawing(const Content& shown, Part shownPart, const std::vector<Summary>& all,
          std::string& target)
      : content(shown),
        foundations(shown.manager.getFoundations()),
        part(shownPart),
        directions(listDirections(part, shown.units)),
        summaries(all),
        scales(makeScales(directions, summaries)),
        page(target) {}

  const std::vector<Direction>& getDirections() const { return directions; }
  const Scales& getScales() const { return scales; }

  /// Of some of the foundations.
  void drawRows(std::size_t first, std::size_t last) {
    const bool isWhole = foundations.size() <= rowsOfPicture;
    open(last - first, isWhole ? "" : ", " + showSpan("row", first + 1, last));
    for (const Direction& direction : directions) {
      openAxis(direction);
      page += "</g>";
    }
    page += '\n';
    for (std::size_t i = first; i < last; ++i) drawRow(*foundations[i], i - first);
    page += "</svg>\n";
  }

  /// All foundations in one row.
  void drawOverview() {
    open(1, fmt::format(", a tick for each value of all {} foundations", foundations.size()));
    for (std::size_t i = 0; i < directions.size(); ++i) {
      openAxis(directions[i]);
      drawTicks(i);
      page += "</g>";
    }
    append(page, "\n<g style=\"--i:0\"><g><text>All {}</text></g></g>\n</svg>\n",
           foundations.size());
  }

 private:
  void open(std::size_t rows, const std::string& which) {
    append(page,
           R"(<svg class="picture {0}" style="--rows:{1}" role="img" aria-describedby="about-{0}">)"
           "<title>{2} stiffness{3}</title>\n",
           getName(part), rows, part == Part::area ? "Area" : "Line", which);
  }

  void openAxis(const Direction& direction) {
    append(page, R"(<g class="d"><text>{}</text>)", direction.name);
    if (!direction.unit.empty())
      append(page, R"(<text class="u">{}</text>)",
             escape(DisplayText::shorten(direction.unit, longestUnit)));
    const Scale& scale = scales.get(direction);
    if (scale.isEmpty()) return;
    append(page, R"(<text class="a">{}</text><text class="a e">{}</text>)",
           drawPower(scale.getStart()), drawPower(scale.getEnd()));
    for (int power = scale.getStart(); power < scale.getEnd(); power += scale.getStep())
      drawTick(scale.placePower(power));
    drawTick(1.0);
  }

  void drawTick(double place) { append(page, R"(<rect x="{}"/>)", showPercent(place)); }

  void drawTicks(std::size_t direction) {
    page += "<g>";
    if (summaries[direction].beyond > 0) page += R"(<line class="x" x2="100%"/>)";
    if (summaries[direction].zeros > 0) page += R"(<line class="z"/>)";
    for (const int place : listPlaces(direction)) drawTick(place / placesOfScale);
    page += "</g>";
  }

  /// Where values of all foundations stand on the scale of a direction, each place once.
  std::set<int> listPlaces(std::size_t direction) const {
    std::set<int> places;
    for (Foundation* foundation : foundations) {
      if (!hasPart(part, *foundation)) continue;
      const Bar bar = listBars(part, *foundation)[direction];
      if (!isDrawable(bar)) continue;
      const double place = scales.get(directions[direction]).place(bar.value);
      places.insert(static_cast<int>(std::lround(placesOfScale * place)));
    }
    return places;
  }

  void drawRow(Foundation& foundation, std::size_t row) {
    const bool isCurrent = &foundation == content.manager.getCurrentFoundation();
    const bool isThere = hasPart(part, foundation);
    page += "<g";
    if (isCurrent && isThere) page += R"( class="c")";
    if (!isThere) append(page, R"( class="l{}")", isCurrent ? " c" : "");
    append(page, R"( style="--i:{}">)", row);
    drawName(foundation, isCurrent);
    if (isThere) {
      const std::vector<Bar> bars = listBars(part, foundation);
      for (std::size_t i = 0; i < bars.size(); ++i) drawBar(bars[i], directions[i]);
    } else {
      append(page, "<text>no {} part</text>", getName(part));
    }
    page += "</g>\n";
  }

  /// A long name is shortened here; a name of wide letters is cut off by the style sheet.
  void drawName(const Foundation& foundation, bool isCurrent) {
    const std::string number = std::to_string(foundation.getNumber());
    const std::string name = showName(foundation.getName());
    // A number that is too long for its place stands in front of the name.
    const bool hasRoom = number.size() <= longestNumber;
    append(page, "<text>{}</text><g><text>{}</text>", hasRoom ? number : "",
           escape(DisplayText::shorten(hasRoom ? name : number + " " + name, longestName)));
    const std::string marks =
        (isCurrent ? "\xE2\x97\x8F " : "") + listMarks(isCurrent, foundation.isGenerated());
    const std::size_t found = content.findings.count(foundation);
    const std::string findings =
        found == 0 ? "" : "<tspan class=\"w\">" + count(found, "finding") + "</tspan>";
    if (!marks.empty() || found > 0) append(page, "<text>{}</text>", join(marks, findings));
    page += "</g>";
  }

  /// A bar and its value. A missing value gets both too, since the style sheet counts elements.
  void drawBar(const Bar& bar, const Direction& direction) {
    const bool isBeyond = Report::isBeyond(bar);
    if (isDrawable(bar))
      append(page, R"(<line x2="{}"/>)", showPercent(scales.get(direction).place(bar.value)));
    else if (isBeyond)
      page += R"(<line class="x" x2="100%"/>)";
    else
      page += bar.isPresent ? R"(<line class="z"/>)" : "<line/>";
    append(page, "<text{}>{}{}</text>", isBeyond ? R"( class="w")" : "",
           bar.isPresent ? showValue(bar.value) + drawUnit(direction) : absent,
           drawFailure(bar.failure));
  }

  /// Where there are many values, their unit stands only at the axes.
  std::string drawUnit(const Direction& direction) const {
    if (direction.unit.empty() || foundations.size() > rowsOfGroup ||
        DisplayText::measure(direction.unit) > longestUnitOfValue)
      return "";
    return "<tspan class=\"u\">" + showUnit(direction) + "</tspan>";
  }

  static constexpr double placesOfScale = 400.0;  // more than can be told apart

  const Content& content;
  const Foundations& foundations;
  Part part;
  std::vector<Direction> directions;
  const std::vector<Summary>& summaries;  // of all foundations
  Scales scales;
  std::string& page;
};

/// Makes the pictures of a part and describes them.
class PartMaker {
 public:
  PartMaker(const Content& content, Part shownPart, Drawing& pictures, std::string& target)
      : foundations(content.manager.getFoundations()),
        part(shownPart),
        drawing(pictures),
        page(target) {}

  void print() {
    append(page,
           R"(<p class="lead" id="about-{}">A row for each foundation, a bar for each direction.)"
           "{} The table below has all values.</p>\n",
           getName(part), describeScales(drawing.getScales(), drawing.getDirections()));
    if (foundations.size() <= rowsOfGroup) return drawPictures(0, foundations.size());
    drawing.drawOverview();
    append(page,
           "<p class=\"ranges\">{}</p>\n"
           "<p class=\"closed\">Groups that are closed are not printed.</p>\n",
           describe(foundations));
    for (std::size_t first = 0; first < foundations.size(); first += rowsOfGroup)
      printGroup(first, std::min(first + rowsOfGroup, foundations.size()));
  }

 private:
  void printGroup(std::size_t first, std::size_t last) {
    const Foundations group(foundations.data() + first, foundations.data() + last);
    append(page, "<details{}><summary>{} of {} <span class=\"ranges\">{}</span></summary>\n",
           first == 0 ? " open" : "", showSpan("Row", first + 1, last), foundations.size(),
           describe(group));
    drawPictures(first, last);
    page += "</details>\n";
  }

  std::string describe(const Foundations& group) const {
    return describeGroup(group, part, drawing.getDirections());
  }

  void drawPictures(std::size_t first, std::size_t last) {
    for (; first < last; first += rowsOfPicture)
      drawing.drawRows(first, std::min(first + rowsOfPicture, last));
  }

  const Foundations& foundations;
  Part part;
  Drawing& drawing;
  std::string& page;
};

}  // namespace

void appendPictures(const Content& content, Part part, std::string& page) {
  const std::vector<Summary> summaries = summarize(content.manager.getFoundations(), part);
  Drawing drawing(content, part, summaries, page);
  PartMaker(content, part, drawing, page).print();
}

}  // namespace Report
