#include "report/svg.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "foundations/failures.h"
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
  return "10<tspan dy=\"-.45em\">" + std::to_string(exponent) + "</tspan>";
}

/// Letters and arrows, so that no colour is needed.
std::string drawFailure(Foundation::Failure failure) {
  if (failure == Foundation::None) return "";
  const Failures::Mode* const mode = Failures::find(failure);
  if (mode == nullptr) return "<tspan> mode</tspan>";  // the table has its number
  return std::string("<tspan> ") + mode->letter + " " + mode->arrows + "</tspan>";
}

std::string showUnit(const Direction& direction) {
  return direction.unit.empty() ? "" : " " + escape(direction.unit);
}

/// Draws pictures of a part. Places along the bars are in per cent; the style sheet puts directions
/// beside or below one another and rows below one another, as the window allows. It goes by the
/// order of elements, so that there is little to write for a bar.
class Drawing {
 public:
  Drawing(const Content& shown, Part shownPart, const std::vector<Summary>& all,
          std::ostream& target)
      : content(shown),
        foundations(shown.manager.getFoundations()),
        part(shownPart),
        directions(listDirections(part, shown.units)),
        summaries(all),
        scales(makeScales(directions, summaries)),
        out(target) {}

  const Scales& getScales() const { return scales; }

  /// Of some of the foundations.
  void drawRows(std::size_t first, std::size_t last) {
    const bool isWhole = foundations.size() <= rowsOfPicture;
    open(last - first, isWhole ? "" : ", " + showSpan("row", first + 1, last));
    for (const Direction& direction : directions) {
      openAxis(direction);
      out << "</g>";
    }
    out << '\n';
    for (std::size_t i = first; i < last; ++i) drawRow(*foundations[i], i - first);
    out << "</svg>\n";
  }

  /// All foundations in one row.
  void drawOverview() {
    open(1,
         ", a tick for each value of all " + std::to_string(foundations.size()) + " foundations");
    for (std::size_t i = 0; i < directions.size(); ++i) {
      openAxis(directions[i]);
      drawTicks(i);
      out << "</g>";
    }
    out << "\n<g style=\"--i:0\"><g><text>All " << foundations.size()
        << "</text></g></g>\n</svg>\n";
  }

 private:
  void open(std::size_t rows, const std::string& which) {
    const std::string name = getName(part);
    out << "<svg class=\"picture " << name << "\" style=\"--rows:" << rows
        << R"(" role="img" aria-describedby="about-)" << name << "\"><title>"
        << (part == Part::area ? "Area" : "Line") << " stiffness" << which << "</title>\n";
  }

  void openAxis(const Direction& direction) {
    out << R"(<g class="d"><text>)" << direction.name << "</text>";
    if (!direction.unit.empty())
      out << "<text class=\"u\">" << escape(DisplayText::shorten(direction.unit, longestUnit))
          << "</text>";
    const Scale& scale = scales.get(direction);
    if (scale.isEmpty()) return;
    out << "<text class=\"a\">" << drawPower(scale.getStart()) << R"(</text><text class="a e">)"
        << drawPower(scale.getEnd()) << "</text>";
    for (int power = scale.getStart(); power < scale.getEnd(); power += scale.getStep())
      drawTick(scale.placePower(power));
    drawTick(1.0);
  }

  void drawTick(double place) { out << "<rect x=\"" << showPercent(place) << "\"/>"; }

  void drawTicks(std::size_t direction) {
    out << "<g>";
    if (summaries[direction].beyond > 0) out << R"(<line class="x" x2="100%"/>)";
    if (summaries[direction].zeros > 0) out << "<line class=\"z\"/>";
    for (const int place : listPlaces(direction)) drawTick(place / placesOfScale);
    out << "</g>";
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
    out << "<g";
    if (isCurrent && isThere) out << " class=\"c\"";
    if (!isThere) out << " class=\"l" << (isCurrent ? " c" : "") << '"';
    out << " style=\"--i:" << row << "\">";
    drawName(foundation, isCurrent);
    if (isThere) {
      const std::vector<Bar> bars = listBars(part, foundation);
      for (std::size_t i = 0; i < bars.size(); ++i) drawBar(bars[i], directions[i]);
    } else {
      out << "<text>no " << getName(part) << " part</text>";
    }
    out << "</g>\n";
  }

  /// What has no room is cut off, in the text where it is long, in the window of the name where its
  /// letters are wide.
  void drawName(const Foundation& foundation, bool isCurrent) {
    const std::string number = std::to_string(foundation.getNumber());
    const std::string name = showName(foundation.getName());
    // A number that is too long for its place stands in front of the name.
    const bool hasRoom = number.size() <= longestNumber;
    out << "<text>" << (hasRoom ? number : "") << "</text><g><text>"
        << escape(DisplayText::shorten(hasRoom ? name : number + " " + name, longestName))
        << "</text>";
    const std::string marks =
        (isCurrent ? "\xE2\x97\x8F " : "") + listMarks(isCurrent, foundation.isGenerated());
    const std::size_t found = content.findings.count(foundation);
    const std::string findings =
        found == 0 ? "" : "<tspan class=\"w\">" + count(found, "finding") + "</tspan>";
    if (!marks.empty() || found > 0) out << "<text>" << join(marks, findings) << "</text>";
    out << "</g>";
  }

  /// A bar and its value, also where there is none: the style sheet counts them.
  void drawBar(const Bar& bar, const Direction& direction) {
    const bool isBeyond = Report::isBeyond(bar);
    if (isDrawable(bar))
      out << R"(<line x2=")" << showPercent(scales.get(direction).place(bar.value)) << "\"/>";
    else if (isBeyond)
      out << R"(<line class="x" x2="100%"/>)";
    else
      out << (bar.isPresent ? "<line class=\"z\"/>" : "<line/>");
    out << (isBeyond ? "<text class=\"w\">" : "<text>")
        << (bar.isPresent ? showValue(bar.value) + drawUnit(direction) : absent)
        << drawFailure(bar.failure) << "</text>";
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
  std::ostream& out;
};

/// Tells in words what foundations have, so that the odd one is found in a group that is closed.
class Teller {
 public:
  Teller(const Content& content, Part shownPart)
      : part(shownPart), directions(listDirections(part, content.units)) {}

  std::string tell(const Foundations& foundations) const {
    const std::vector<Summary> summaries = summarize(foundations, part);
    std::string text;
    for (std::size_t i = 0; i < directions.size(); ++i)
      text += " <span><b>" + std::string(directions[i].name) + "</b>" +
              tellDirection(summaries[i], directions[i]) + "</span>";
    const auto without = std::count_if(foundations.begin(), foundations.end(),
                                       [this](Foundation* f) { return !hasPart(part, *f); });
    if (without > 0)
      text += " <span>" + std::to_string(without) + " without " +
              (part == Part::area ? "an area part" : "a line part") + "</span>";
    return text;
  }

  /// From where to where the scales go.
  std::string tellScales(const Scales& scales) const {
    return tellScale("translation", scales, directions.front()) +
           (part == Part::line ? tellScale("rotation", scales, directions.back()) : "");
  }

 private:
  static std::string tellDirection(const Summary& summary, const Direction& direction) {
    std::string text;
    if (!summary.range.isEmpty()) text = tellRange(summary.range) + showUnit(direction);
    const auto add = [&text](std::size_t number, const std::string& what) {
      if (number > 0) text = join(text, std::to_string(number) + " " + what);
    };
    add(summary.zeros, "zero");
    add(summary.lacking, "without a value");
    for (const auto& [failure, number] : summary.failures)
      add(number, (number == 1 ? "fails in " : "fail in ") + nameFailure(failure));
    if (summary.beyond > 0)
      text = join(text,
                  "<b class=\"warn\">" + std::to_string(summary.beyond) + " beyond the scale</b>");
    return (text.empty() ? "" : " ") + text;
  }

  static std::string tellRange(const Scale& range) {
    const std::string least = showValue(range.getLeast());
    const std::string greatest = showValue(range.getGreatest());
    return range.getLeast() == range.getGreatest() ? least : least + " to " + greatest;
  }

  static std::string tellScale(const char* what, const Scales& scales, const Direction& direction) {
    const Scale& scale = scales.get(direction);
    if (scale.isEmpty()) return "";
    return std::string(" Logarithmic scale of ") + what + ": 10^" +
           std::to_string(scale.getStart()) + " to 10^" + std::to_string(scale.getEnd()) +
           showUnit(direction) + ".";
  }

  Part part;
  std::vector<Direction> directions;
};

/// Prints the pictures with what is told of them.
class PartPrinter {
 public:
  PartPrinter(const Content& content, Part shownPart, Drawing& pictures, std::ostream& target)
      : foundations(content.manager.getFoundations()),
        part(shownPart),
        drawing(pictures),
        teller(content, part),
        out(target) {}

  void print() {
    out << R"(<p class="lead" id="about-)" << getName(part)
        << "\">A row for each foundation, a bar for each direction."
        << teller.tellScales(drawing.getScales()) << " The table below has all values.</p>\n";
    if (foundations.size() <= rowsOfGroup) return drawPictures(0, foundations.size());
    drawing.drawOverview();
    out << "<p class=\"ranges\">" << teller.tell(foundations)
        << "</p>\n<p class=\"closed\">Groups that are closed are not printed.</p>\n";
    for (std::size_t first = 0; first < foundations.size(); first += rowsOfGroup)
      printGroup(first, std::min(first + rowsOfGroup, foundations.size()));
  }

 private:
  void printGroup(std::size_t first, std::size_t last) {
    const Foundations group(foundations.begin() + static_cast<std::ptrdiff_t>(first),
                            foundations.begin() + static_cast<std::ptrdiff_t>(last));
    out << "<details" << (first == 0 ? " open" : "") << "><summary>"
        << showSpan("Row", first + 1, last) << " of " << foundations.size()
        << " <span class=\"ranges\">" << teller.tell(group) << "</span></summary>\n";
    drawPictures(first, last);
    out << "</details>\n";
  }

  void drawPictures(std::size_t first, std::size_t last) {
    for (; first < last; first += rowsOfPicture)
      drawing.drawRows(first, std::min(first + rowsOfPicture, last));
  }

  const Foundations& foundations;
  Part part;
  Drawing& drawing;
  Teller teller;
  std::ostream& out;
};

}  // namespace

void printPictures(const Content& content, Part part, std::ostream& out) {
  const std::vector<Summary> summaries = summarize(content.manager.getFoundations(), part);
  Drawing drawing(content, part, summaries, out);
  PartPrinter(content, part, drawing, out).print();
}

}  // namespace Report
