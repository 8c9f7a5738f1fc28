#include "report/table.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "report/html.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Found::Foundation;

/// The columns of a part that some foundation has.
struct Columns {
  Part part;
  std::vector<Direction> directions;
};

class TableMaker {
 public:
  TableMaker(const Content& shown, std::string& target)
      : content(shown), foundations(shown.manager.getFoundations()), page(target) {
    for (const Part part : {Part::area, Part::line})
      if (std::any_of(foundations.begin(), foundations.end(),
                      [part](Foundation* f) { return hasPart(part, *f); }))
        parts.push_back({part, listDirections(part, shown.units)});
  }

  void print() {
    page += "<table class=\"of";
    for (const Columns& columns : parts) append(page, " {}", getName(columns.part));
    page += "\">\n<thead>\n<tr>";
    printHeading("No", R"(rowspan="2" class="num")");
    printHeading("Name", "rowspan=\"2\"");
    printHeading("Marks", "rowspan=\"2\"");
    for (const Columns& columns : parts) printGroup(columns);
    page += "</tr>\n<tr>";
    for (const Columns& columns : parts) printHeadings(columns);
    page += "</tr>\n</thead>\n<tbody>\n";
    for (std::size_t i = 0; i < foundations.size(); ++i) printRow(*foundations[i], i);
    page += "</tbody>\n</table>\n";
  }

 private:
  void printHeading(const std::string& text, const std::string& attributes) {
    append(page, R"(<th scope="col" data-column="{}" {}>{}</th>)", column++, attributes, text);
  }

  void printGroup(const Columns& columns) {
    const std::vector<Direction>& all = columns.directions;
    append(page, R"(<th scope="colgroup" class="part" colspan="{}">{})", all.size() + 2,
           columns.part == Part::area ? "Area" : "Line");
    if (!all.front().unit.empty()) {
      append(page, " <small>{}", escape(all.front().unit));
      if (all.back().isRotation) append(page, ", rotation {}", escape(all.back().unit));
      page += "</small>";
    }
    page += "</th>";
  }

  void printHeadings(const Columns& columns) {
    const char* attributes = "class=\"num part\"";
    for (const Direction& direction : columns.directions) {
      printHeading(direction.name, attributes);
      attributes = "class=\"num\"";
    }
    printHeading("Fails", "class=\"text\"");
    printHeading("Factor", "class=\"num\"");
  }

  void printRow(Foundation& foundation, std::size_t place) {
    const bool isCurrent = &foundation == content.manager.getCurrentFoundation();
    const std::size_t found = content.findings.count(foundation);
    append(page, "<tr{}", isCurrent ? " class=\"c\"" : "");
    if (found > 0) append(page, " id=\"{}\"", makeRowId(place));
    page += '>';
    printDigits(std::to_string(foundation.getNumber()));
    append(page, "<th scope=\"row\">{}", escapeName(foundation.getName()));
    const std::string findings =
        found == 0 ? "" : R"(<a class="warn" href="#findings">)" + count(found, "finding") + "</a>";
    printCell(join(listMarks(isCurrent, foundation.isGenerated()), findings));
    for (const Columns& columns : parts) printPart(columns, foundation);
    page += "</tr>\n";
  }

  void printPart(const Columns& columns, Foundation& foundation) {
    const std::vector<Bar> bars = listBars(columns.part, foundation);
    const bool isThere = hasPart(columns.part, foundation);
    std::string failures;
    for (std::size_t i = 0; i < bars.size(); ++i) {
      printNumber(isThere && bars[i].isPresent, bars[i].value);
      if (bars[i].failure == Foundation::None) continue;
      failures += (failures.empty() ? "" : ",<br>") + std::string(columns.directions[i].name) +
                  " " + nameFailure(bars[i].failure);
    }
    if (!isThere)
      printCell(absent);
    else if (failures.empty())
      printCell("none");
    else
      printCell(failures, " class=\"f\"");
    printNumber(isThere, columns.part == Part::area ? foundation.getFactorArea()
                                                    : foundation.getFactorLine());
  }

  void printNumber(bool isPresent, double value) {
    printDigits(isPresent ? DisplayText::fromNumber(value) : absent);
  }

  /// Long numbers may be broken on paper.
  void printDigits(const std::string& number) {
    constexpr std::size_t longest = 6;
    printCell(number, number.size() > longest ? " class=\"v\"" : "");
  }

  /// Large tables stay small: the style sheet knows the columns, and no cell has an end tag.
  void printCell(const std::string& text, const char* attributes = "") {
    append(page, "<td{}>{}", attributes, text);
  }

  const Content& content;
  const std::vector<Foundation*>& foundations;
  std::vector<Columns> parts;
  std::size_t column = 0;
  std::string& page;
};

}  // namespace

void appendTable(const Content& content, std::string& page) { TableMaker(content, page).print(); }

std::string makeRowId(std::size_t place) { return fmt::format("row-{}", place + 1); }

}  // namespace Report
