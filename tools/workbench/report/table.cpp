#include "report/table.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "report/descriptions.h"
#include "report/html.h"
#include "report/paper.h"
#include "report/strip.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Found::Foundation;

constexpr std::size_t translations = 3;  // the first directions of a part

std::string showDigits(const Bar& bar, bool isThere) {
  return isThere && bar.isPresent ? DisplayText::fromNumber(bar.value) : absent;
}

/// `link` starts a link that leads to the findings, and may be empty.
std::string showMarks(const Content& content, const Foundation& foundation, const char* link) {
  const std::size_t found = content.findings.count(foundation);
  const bool isCurrent = &foundation == content.current;
  const std::string findings =
      found == 0 ? "" : link + count(found, "finding") + (*link == '\0' ? "" : "</a>");
  return join(listMarks(isCurrent, foundation.isGenerated()), findings);
}

const char* getHeading(Part part) { return part == Part::area ? "Area" : "Line"; }

void appendValue(const std::string& text, bool isBeyond, std::string& page) {
  append(page, "<td{}>{}", isBeyond ? " class=\"w\"" : "", text);
}

/// Which columns of the text hold what a part has.
std::size_t findField(Part part, std::size_t number) {
  constexpr std::size_t ofArea = 3;
  constexpr std::size_t ofLine = 8;
  return (part == Part::area ? ofArea : ofLine) + number;
}

class TableMaker {
 public:
  TableMaker(const Content& shown, Part shownPart, const Scales& scalesOfPart, std::string& target)
      : content(shown),
        foundations(shown.manager.getFoundations()),
        part(shownPart),
        directions(listDirections(part, shown.units)),
        scales(scalesOfPart),
        page(target) {}

  void print() {
    const bool isStatic = foundations.size() <= mostRows;
    append(page, R"(<table class="values {}{}{}" data-part="{}")", getName(part), chooseSheet(),
           hasMarks() ? "" : " unmarked", getName(part));
    if (!isStatic) page += " hidden";
    printStyle();
    page += ">\n<thead>\n<tr>";
    printHeadings();
    page += "</tr>\n</thead>\n<tbody>\n";
    for (std::size_t i = 0; i < foundations.size() && isStatic; ++i)
      if (hasPart(part, *foundations[i])) printRow(*foundations[i], i);
    page += "</tbody>\n</table>\n";
  }

 private:
  bool hasMarks() const {
    return std::any_of(foundations.begin(), foundations.end(), [this](Foundation* foundation) {
      return hasPart(part, *foundation) && !showMarks(content, *foundation, "").empty();
    });
  }

  /// What paper the table needs, and smaller letters where even a broad one is not enough.
  const char* chooseSheet() const {
    // Of all but numbers; lines have a second scale.
    double width = (part == Part::line ? 108 : 90) + (hasMarks() ? 10 : 0);
    for (std::size_t i = 0; i < directions.size(); ++i) {
      constexpr const char* gap = "  ";
      double column = std::max(Paper::measure("123456"), Paper::measure(directions[i].unit));
      for (Foundation* foundation : foundations)
        if (hasPart(part, *foundation))
          column =
              std::max(column, Paper::measure(showDigits(listBars(part, *foundation)[i], true)));
      width += column + Paper::measure(gap);
    }
    if (width <= Paper::narrow) return "";
    return width <= Paper::broad ? " broad" : " broad dense";
  }

  void printStyle() {
    const auto share = [](const Scale& scale) {
      return fmt::format("{:.4g}%", 100.0 * scale.getStep() / (scale.getEnd() - scale.getStart()));
    };
    std::string style;
    if (!scales.translation.isEmpty()) append(style, "--grid-step:{};", share(scales.translation));
    if (!scales.rotation.isEmpty()) append(style, "--turn-step:{};", share(scales.rotation));
    if (!style.empty()) append(page, " style=\"{}\"", style);
  }

  void printField(const std::string& text, const char* kind, std::size_t field) {
    append(page, R"(<th scope="col" class="{}" data-field="{}">{}</th>)", kind, field, text);
  }

  void printHeadings() {
    printField("No", "num", 0);
    printField("Name", "text", 1);
    printField("Marks", "text", 2);
    if (part == Part::none) return;
    for (std::size_t i = 0; i < directions.size(); ++i) {
      if (i == 0)
        printAxis(getHeading(part) + std::string(" stiffness"), 0, translations,
                  scales.translation);
      if (i == translations) printAxis("Rotation", i, i + 1, scales.rotation);
      printField(showDirection(i), "num", findField(part, i));
    }
    printField("Fails", "text fails", findField(part, directions.size()));
    printField("Factor", "num", findField(part, directions.size() + 1));
  }

  /// The name of a direction with its mark, where it has one, and its unit.
  std::string showDirection(std::size_t place) const {
    const Direction& direction = directions[place];
    std::string text;
    if (!scales.get(direction).isEmpty()) appendSample(place, text);
    text += direction.name;
    if (!direction.unit.empty()) append(text, " <small>{}</small>", escape(direction.unit));
    return text;
  }

  void printAxis(const std::string& name, std::size_t first, std::size_t last, const Scale& scale) {
    if (scale.isEmpty()) return;
    append(page, R"(<th scope="col" class="plot" data-first="{}" data-last="{}")", first, last);
    append(page, R"( data-start="{}" data-end="{}" data-zero="{}">{} )", scale.getStart(),
           scale.getEnd(), placeOfZero, name);
    appendAxis(scale, page);
    page += "</th>";
  }

  void printRow(Foundation& foundation, std::size_t place) {
    const bool isCurrent = &foundation == content.current;
    const bool isAddressed = content.findings.count(foundation) > 0 && isFirstPart(foundation);
    append(page, "<tr{}", isCurrent ? " class=\"c\"" : "");
    if (isAddressed) append(page, " id=\"row-{}\"", place + 1);
    append(page, "><td>{}<th scope=\"row\">{}", foundation.getNumber(),
           escapeName(foundation.getName()));
    append(page, "<td>{}", showMarks(content, foundation, R"(<a class="warn" href="#findings">)"));
    if (part != Part::none) printPart(foundation);
    page += "</tr>\n";
  }

  bool isFirstPart(Foundation& foundation) const {
    return part != Part::line || !hasPart(Part::area, foundation);
  }

  void printPart(Foundation& foundation) {
    const std::vector<Bar> bars = listBars(part, foundation);
    for (std::size_t i = 0; i < bars.size(); ++i) {
      if (i == 0 && !scales.translation.isEmpty())
        appendStrip(bars, 0, translations, scales.translation, page);
      if (i == translations && !scales.rotation.isEmpty())
        appendStrip(bars, i, i + 1, scales.rotation, page);
      appendValue(showDigits(bars[i], true), isBeyond(bars[i]), page);
    }
    const std::vector<std::string> failures = listFailures(directions, bars);
    if (failures.empty())
      page += "<td class=\"t\">none";
    else
      append(page, "<td class=\"t f\">{}", fmt::join(failures, ",<br>"));
    const double factor = getFactor(part, foundation);
    appendValue(DisplayText::fromNumber(factor), isBeyond(factor), page);
  }

  const Content& content;
  const std::vector<Foundation*>& foundations;
  Part part;
  std::vector<Direction> directions;
  const Scales& scales;
  std::string& page;
};

void appendFields(Part part, Foundation& foundation, const std::vector<Direction>& directions,
                  std::string& page) {
  const bool isThere = hasPart(part, foundation);
  const std::vector<Bar> bars = listBars(part, foundation);
  for (const Bar& bar : bars) page += '\t' + showDigits(bar, isThere);
  append(page, "\t{}\t{}", isThere ? describeFailures(directions, bars) : absent,
         isThere ? DisplayText::fromNumber(getFactor(part, foundation)) : absent);
}

}  // namespace

void appendTable(const Content& content, Part part, const Scales& scales, std::string& page) {
  TableMaker(content, part, scales, page).print();
}

void appendText(const Content& content, std::string& page) {
  page += "No\tName\tMarks";
  for (const Part part : {Part::area, Part::line}) {
    for (const Direction& direction : listDirections(part, content.units))
      append(page, "\t{} {}{}", getHeading(part), direction.name,
             direction.unit.empty() ? "" : " (" + escape(direction.unit) + ")");
    append(page, "\t{0} fails\t{0} factor", getHeading(part));
  }
  page += '\n';
  const std::vector<Direction> area = listDirections(Part::area, content.units);
  const std::vector<Direction> line = listDirections(Part::line, content.units);
  for (Foundation* const foundation : content.manager.getFoundations()) {
    append(page, "{}\t{}\t{}", foundation->getNumber(), escapeName(foundation->getName()),
           showMarks(content, *foundation, ""));
    appendFields(Part::area, *foundation, area, page);
    appendFields(Part::line, *foundation, line, page);
    page += '\n';
  }
}

std::string makeAddress(const Content& content, const Foundation& foundation, std::size_t place) {
  if (content.manager.getFoundations().size() > mostRows)
    return fmt::format("#number={}", foundation.getNumber());
  return fmt::format("#row-{}", place + 1);
}

}  // namespace Report
