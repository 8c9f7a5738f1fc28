#include "report_table.h"

#include <string>
#include <vector>

#include "display_text.h"
#include "report_html.h"

namespace {

using Found::Foundation;
using Found::FoundationManager;
using ReportBars::Bar;
using ReportBars::Direction;
using ReportBars::Part;
using ReportHtml::escape;

constexpr const char* absent = "\xE2\x80\x93";  // a dash

constexpr Part parts[] = {Part::area, Part::line};

std::string showFailure(const char* direction, Foundation::Failure failure) {
  switch (failure) {
    case Foundation::None:
      return "";
    case Foundation::Tension:
      return std::string(direction) + " tension";
    case Foundation::Compression:
      return std::string(direction) + " compression";
  }
  return std::string(direction) + " mode " + std::to_string(static_cast<int>(failure));
}

class TablePrinter {
 public:
  TablePrinter(const FoundationManager& shown, const ReportBars::Units& units, std::ostream& target)
      : manager(shown), out(target) {
    for (const Part part : parts) directions.push_back(ReportBars::listDirections(part, units));
  }

  void print() {
    out << "<table>\n<thead>\n<tr>";
    printHeading("No", R"(rowspan="2" class="num")");
    printHeading("Name", "rowspan=\"2\"");
    printHeading("Marks", "rowspan=\"2\"");
    for (const Part part : parts) printGroup(part);
    out << "</tr>\n<tr>";
    for (const Part part : parts) printHeadings(part);
    out << "</tr>\n</thead>\n<tbody>\n";
    for (Foundation* foundation : manager.getFoundations()) printRow(*foundation);
    out << "</tbody>\n</table>\n";
  }

 private:
  const std::vector<Direction>& getDirections(Part part) const {
    return directions[part == Part::area ? 0 : 1];
  }

  void printHeading(const std::string& text, const std::string& attributes) {
    out << R"(<th scope="col" data-column=")" << column++ << '"'
        << (attributes.empty() ? "" : " " + attributes) << '>' << text << "</th>";
  }

  void printGroup(Part part) {
    const std::vector<Direction>& all = getDirections(part);
    out << R"(<th scope="colgroup" class="part" colspan=")" << all.size() + 2 << "\">"
        << (part == Part::area ? "Area" : "Line");
    if (!all.front().unit.empty()) {
      out << " <small>" << escape(all.front().unit);
      if (all.back().isRotation) out << ", rotation " << escape(all.back().unit);
      out << "</small>";
    }
    out << "</th>";
  }

  void printHeadings(Part part) {
    bool isFirst = true;
    for (const Direction& direction : getDirections(part)) {
      printHeading(direction.name, isFirst ? "class=\"num part\"" : "class=\"num\"");
      isFirst = false;
    }
    printHeading("Fails", "class=\"text\"");
    printHeading("Factor", "class=\"num\"");
  }

  void printRow(Foundation& foundation) {
    const bool isCurrent = &foundation == manager.getCurrentFoundation();
    out << "<tr" << (isCurrent ? " class=\"c\"" : "") << '>';
    printCell(std::to_string(foundation.getNumber()));
    out << "<th scope=\"row\"><bdi>" << ReportHtml::showName(foundation.getName()) << "</bdi></th>";
    const bool isGenerated = foundation.isGenerated();
    printCell(std::string(isCurrent ? "current" : "") + (isCurrent && isGenerated ? ", " : "") +
              (isGenerated ? "generated" : ""));
    for (const Part part : parts) printPart(part, foundation);
    out << "</tr>\n";
  }

  void printPart(Part part, Foundation& foundation) {
    const std::vector<Direction>& all = getDirections(part);
    const std::vector<Bar> bars = ReportBars::listBars(part, foundation);
    const bool isThere = ReportBars::hasPart(part, foundation);
    std::string failures;
    for (std::size_t i = 0; i < all.size(); ++i) {
      printNumber(isThere && bars[i].isPresent, bars[i].value);
      const std::string failure = showFailure(all[i].name, bars[i].failure);
      if (!failure.empty()) failures += (failures.empty() ? "" : ",<br>") + failure;
    }
    if (!isThere)
      printCell(absent);
    else if (failures.empty())
      printCell("none");
    else
      printCell(failures, "f");
    printNumber(isThere,
                part == Part::area ? foundation.getFactorArea() : foundation.getFactorLine());
  }

  void printNumber(bool isPresent, double value) {
    isPresent ? printCell(DisplayText::fromNumber(value)) : printCell(absent);
  }

  /// The style sheet knows the columns, so that large tables stay small.
  void printCell(const std::string& text, const std::string& classes = "") {
    out << "<td" << (classes.empty() ? "" : " class=\"" + classes + "\"") << '>' << text << "</td>";
  }

  const FoundationManager& manager;
  std::vector<std::vector<Direction>> directions;
  std::size_t column = 0;
  std::ostream& out;
};

}  // namespace

void ReportTable::print(const FoundationManager& manager, const ReportBars::Units& units,
                        std::ostream& out) {
  TablePrinter(manager, units, out).print();
}
