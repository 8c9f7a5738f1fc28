#include "report_svg.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "display_text.h"
#include "report_html.h"
#include "report_scale.h"
#include "report_text.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using ReportBars::Bar;
using ReportBars::Direction;
using ReportBars::Part;
using ReportHtml::escape;
using ReportScale::Scale;
using ReportScale::Scales;
using ReportText::showValue;
using Foundations = std::vector<Foundation*>;

constexpr std::size_t rowsOfPicture = 25;  // on a sheet of A4
constexpr std::size_t rowsOfGroup = 50;
constexpr double widestName = 28.0;        // in small letters
constexpr double widestMarkedName = 22.0;  // a mark may stand behind it
constexpr std::size_t longestNumber = 5;
constexpr double gap = 3.0;  // between directions, in per cent

// Arrows that pull at a support or push it, and letters, so that no colour is needed.
constexpr const char* tensionMark = " T<tspan class=\"k\"> \xE2\x86\x90\xE2\x86\x92</tspan>";
constexpr const char* compressionMark = " C<tspan class=\"k\"> \xE2\x86\x92\xE2\x86\x90</tspan>";

std::string showPercent(double value) {
  char buffer[64];
  const auto result = std::to_chars(buffer, std::end(buffer), value, std::chars_format::fixed, 2);
  std::string text(buffer, result.ptr);
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text + "%";
}

/// A power of ten. Few fonts have all digits as superscripts.
std::string drawPower(int exponent) {
  return R"(10<tspan class="s" dy="-.45em">)" + std::to_string(exponent) + "</tspan>";
}

std::string showFailure(Foundation::Failure failure) {
  switch (failure) {
    case Foundation::None:
      return "";
    case Foundation::Tension:
      return tensionMark;
    case Foundation::Compression:
      return compressionMark;
  }
  return " mode " + std::to_string(static_cast<int>(failure));  // a document may hold any number
}

std::string makeUnitText(const Direction& direction) {
  return direction.unit.empty() ? "" : " " + escape(direction.unit);
}

std::string makeUnitSpan(const Direction& direction) {
  return direction.unit.empty() ? "" : "<tspan>" + makeUnitText(direction) + "</tspan>";
}

/// Prints pictures of a part. Across, they are laid out in per cent, so that they fit any window
/// without being scaled; downwards, the style sheet places the rows, since a narrow window needs
/// higher ones. It also tells what the classes mean, which are short since there are so many.
class Drawing {
 public:
  Drawing(const FoundationManager& shown, Part shownPart, const ReportBars::Units& units,
          std::ostream& target)
      : foundations(shown.getFoundations()),
        current(shown.getCurrentFoundation()),
        part(shownPart),
        directions(ReportBars::listDirections(part, units)),
        scales(foundations, part),
        width((100.0 - gap * static_cast<double>(directions.size() - 1)) /
              static_cast<double>(directions.size())),
        out(target) {}

  void print() {
    if (foundations.size() <= rowsOfGroup) return printPictures(0, foundations.size());
    printOverview();
    for (std::size_t first = 0; first < foundations.size(); first += rowsOfGroup)
      printGroup(first, std::min(first + rowsOfGroup, foundations.size()));
  }

 private:
  void printGroup(std::size_t first, std::size_t last) {
    out << "<details" << (first == 0 ? " open" : "") << "><summary>" << first + 1 << " to " << last
        << " of " << foundations.size() << describeGroup(first, last) << "</summary>\n";
    printPictures(first, last);
    out << "</details>\n";
  }

  /// With the range of the values, so that the odd one is found without opening all groups.
  std::string describeGroup(std::size_t first, std::size_t last) const {
    const Foundations group(foundations.begin() + static_cast<std::ptrdiff_t>(first),
                            foundations.begin() + static_cast<std::ptrdiff_t>(last));
    const Scale range = Scales(group, part).get(directions[0]);
    std::string text = range.isEmpty() ? "" : describeRange(range) + makeUnitText(directions[0]);
    const std::size_t beyond = countBeyond(group);
    if (beyond > 0)
      text += " <b class=\"warn\">" + std::to_string(beyond) +
              (beyond == 1 ? " value" : " values") + " beyond the scale</b>";
    return "<span>" + text + "</span>";
  }

  std::size_t countBeyond(const Foundations& group) const {
    std::size_t number = 0;
    for (Foundation* foundation : group) {
      const std::vector<Bar> bars = ReportBars::listBars(part, *foundation);
      number +=
          static_cast<std::size_t>(std::count_if(bars.begin(), bars.end(), ReportBars::isBeyond));
    }
    return number;
  }

  static std::string describeRange(const Scale& scale) {
    return showValue(scale.getLeast()) + " to " + showValue(scale.getGreatest());
  }

  void printPictures(std::size_t first, std::size_t last) {
    for (; first < last; first += rowsOfPicture)
      printPicture(first, std::min(first + rowsOfPicture, last));
  }

  void printPicture(std::size_t first, std::size_t last) {
    const std::string range =
        foundations.size() == 1
            ? ""
            : ", foundations " + std::to_string(first + 1) + " to " + std::to_string(last);
    openPicture(last - first, range, "A row for each foundation, a bar for each direction.");
    for (std::size_t i = first; i < last; ++i) printRow(*foundations[i], i - first);
    out << "</svg>\n";
  }

  void printOverview() {
    openPicture(1, ", all foundations",
                "A tick for each value: one far from the others stands out.");
    out << R"(<g class="r o" style="--i:0"><text class="n">All )" << foundations.size()
        << "</text>";
    for (std::size_t i = 0; i < directions.size(); ++i) printTicks(i);
    out << "</g></svg>\n";
  }

  void openPicture(std::size_t rows, const std::string& range, const std::string& description) {
    out << R"(<svg class="picture" style="--rows:)" << rows << R"(" role="img"><title>)"
        << (part == Part::area ? "Area" : "Line") << " stiffness" << range << "</title><desc>"
        << description << describeScales() << " The table below has all values.</desc>\n";
    for (std::size_t i = 0; i < directions.size(); ++i) printAxis(i);
  }

  std::string describeScales() const {
    std::string text;
    for (const Direction* direction : {&directions.front(), &directions.back()}) {
      const Scale& scale = scales.get(*direction);
      const bool isTold = direction != &directions.front() && !direction->isRotation;
      if (isTold || scale.isEmpty()) continue;
      text += std::string(" Logarithmic scale of ") +
              (direction->isRotation ? "rotation" : "translation") + ": " + "10^" +
              std::to_string(scale.getStart()) + " to 10^" + std::to_string(scale.getEnd()) +
              makeUnitText(*direction) + ".";
    }
    return text;
  }

  void printAxis(std::size_t direction) {
    const double start = getStart(direction);
    const std::string& unit = directions[direction].unit;
    out << R"(<text class="h" x=")" << showPercent(start) << "\">" << directions[direction].name
        << "</text>";
    if (!unit.empty())
      out << R"(<text class="e hu" x=")" << showPercent(start + width) << "\">" << escape(unit)
          << "</text>";
    const Scale& scale = scales.get(directions[direction]);
    if (!scale.isEmpty()) {
      out << R"(<text class="a" x=")" << showPercent(start) << "\">" << drawPower(scale.getStart())
          << R"(</text><text class="a e" x=")" << showPercent(start + width) << "\">"
          << drawPower(scale.getEnd()) << "</text>";
      for (int power = scale.getStart(); power < scale.getEnd(); power += scale.getStep())
        printGridLine(start + width * scale.placePower(power));
      printGridLine(start + width);
    }
    out << '\n';
  }

  void printGridLine(double place) {
    const std::string x = showPercent(place);
    out << R"(<line class="g" x1=")" << x << "\" x2=\"" << x << R"(" y2="100%"/>)";
  }

  void printRow(Foundation& foundation, std::size_t row) {
    const bool isCurrent = &foundation == current;
    const bool isThere = ReportBars::hasPart(part, foundation);
    out << "<g class=\"r" << (isCurrent ? " c" : "") << (isThere ? "" : " l")
        << "\" style=\"--i:" << row << "\">";
    printName(foundation, isCurrent);
    if (isThere) {
      const std::vector<Bar> bars = ReportBars::listBars(part, foundation);
      for (std::size_t i = 0; i < bars.size(); ++i) printBar(bars[i], i);
    } else {
      out << "<text>no " << ReportBars::getName(part) << " part</text>";
    }
    out << "</g>\n";
  }

  void printName(const Foundation& foundation, bool isCurrent) {
    const std::string number = std::to_string(foundation.getNumber());
    const std::string name = DisplayText::fromName(foundation.getName());
    const bool isGenerated = foundation.isGenerated();
    // A number that is too long for its place stands in front of the name.
    const bool hasRoom = number.size() <= longestNumber;
    if (hasRoom) out << "<text class=\"no\">" << number << "</text>";
    out << "<text class=\"n\">"
        << escape(ReportText::shortenName(hasRoom ? name : number + " " + name,
                                          isCurrent || isGenerated ? widestMarkedName : widestName))
        << "</text>";
    if (isCurrent || isGenerated)
      out << "<text class=\"m\">" << (isCurrent ? "\xE2\x97\x8F current" : "")
          << (isCurrent && isGenerated ? ", " : "") << (isGenerated ? "generated" : "")
          << "</text>";
  }

  void printBar(const Bar& bar, std::size_t direction) {
    const double start = getStart(direction);
    const std::string x1 = showPercent(start);
    if (ReportBars::isDrawable(bar))
      printLine("", x1, start + width * scales.get(directions[direction]).place(bar.value));
    else if (ReportBars::isBeyond(bar))
      printLine("x", x1, start + width);
    else if (bar.isPresent)
      printLine("z", x1, start);
    out << "<text";
    if (direction > 0) out << " x=\"" << x1 << '"';
    if (ReportBars::isBeyond(bar)) out << " class=\"w\"";
    out << '>' << (bar.isPresent ? showValue(bar.value) : "\xE2\x80\x93");
    if (bar.isPresent) out << makeUnitSpan(directions[direction]);
    const std::string failure = showFailure(bar.failure);
    if (!failure.empty()) out << "<tspan class=\"f\">" << failure << "</tspan>";
    out << "</text>";
  }

  void printLine(const char* kind, const std::string& x1, double x2) {
    out << "<line";
    if (*kind != '\0') out << " class=\"" << kind << '"';
    if (x1 != "0%") out << " x1=\"" << x1 << '"';
    out << " x2=\"" << showPercent(x2) << "\"/>";
  }

  /// The values of all foundations in a direction. A place is drawn once, however many it has.
  void printTicks(std::size_t direction) {
    Scale range;
    std::set<std::string> places;
    for (Foundation* foundation : foundations) {
      if (!ReportBars::hasPart(part, *foundation)) continue;
      const Bar bar = ReportBars::listBars(part, *foundation)[direction];
      if (!ReportBars::isDrawable(bar)) continue;
      range.include(bar.value);
      const double place =
          std::round(400.0 * scales.get(directions[direction]).place(bar.value)) / 400.0;
      places.insert(showPercent(getStart(direction) + width * place));
    }
    if (range.isEmpty()) return;
    for (const std::string& x : places)
      out << R"(<line class="t" x1=")" << x << "\" x2=\"" << x << R"(" y2=".75em"/>)";
    out << "<text x=\"" << showPercent(getStart(direction)) << "\">" << describeRange(range)
        << "</text>";
  }

  double getStart(std::size_t direction) const {
    return static_cast<double>(direction) * (width + gap);
  }

  const Foundations& foundations;
  const Foundation* current;
  Part part;
  std::vector<Direction> directions;
  Scales scales;
  double width;  // of a direction, in per cent
  std::ostream& out;
};

}  // namespace

void ReportSvg::print(const FoundationManager& manager, Part part, const ReportBars::Units& units,
                      std::ostream& out) {
  Drawing(manager, part, units, out).print();
}
