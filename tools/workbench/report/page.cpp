#include "report/page.h"

#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "report/descriptions.h"
#include "report/distribution.h"
#include "report/facts.h"
#include "report/finding_list.h"
#include "report/frame.h"
#include "report/html.h"
#include "report/table.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Found::Foundation;

/// What a sheet of paper tells of the document at its foot.
std::string nameOnSheet(const Content& content, const std::string& file) {
  constexpr std::size_t longest = 45;  // so that there is room for the date
  const std::string name = DisplayText::shorten(file, longest);
  return join(join(name, content.isSelection() ? countShown(content) + " foundations" : ""),
              describeDate(content.date));
}

class PageMaker {
 public:
  explicit PageMaker(const Content& shown)
      : content(shown),
        foundations(shown.manager.getFoundations()),
        frame({nameFile(shown.document.getShownPath()), "Beddings of", "", !foundations.empty()}) {
    frame.sheet = nameOnSheet(content, frame.title);
  }

  std::string make() {
    const std::vector<Checks::Finding> findings = listFindings(content);
    openPage(frame, page);
    appendFacts(content, findings.size(), page);
    printSections();
    closeHeader(page);
    if (foundations.empty()) {
      page += "<p class=\"lead\">The document holds no foundations.</p>\n";
    } else {
      printPart(Part::area, "Area stiffness");
      printPart(Part::line, "Line stiffness");
      printWithoutPart();
    }
    appendFindings(content, findings, page);
    if (isLarge()) printText();
    closePage(frame, page);
    return std::move(page);
  }

 private:
  bool isLarge() const { return foundations.size() > mostRows; }

  void printSections() {
    if (foundations.empty()) return;
    page +=
        "<nav aria-label=\"Sections\"><a href=\"#area\">Area stiffness</a> <a "
        "href=\"#line\">Line stiffness</a> ";
    if (countWith(foundations, Part::none) > 0)
      page += "<a href=\"#none\">Without any stiffness</a> ";
    page += "<a href=\"#findings\">Findings</a>";
    if (isLarge()) page += " <a href=\"#values\">All values</a>";
    page += "</nav>\n";
  }

  void printPart(Part part, const char* heading) {
    const std::string name = getName(part);
    append(page, "<section>\n<h2 id=\"{}\">{}</h2>\n", name, heading);
    if (countWith(foundations, part) == 0) {
      append(page, "<p class=\"lead\">No foundation has a part for {}s.</p>\n</section>\n", name);
      return;
    }
    const std::vector<Direction> directions = listDirections(part, content.units);
    const std::vector<Summary> summaries = summarize(foundations, part);
    const Scales scales = makeScales(directions, summaries);
    append(page, "<p class=\"lead\">{}</p>\n",
           describeScales(scales, directions) + describeLacking(foundations, part) +
               describeColumns(summaries));
    if (isLarge()) {
      append(page, "<p class=\"ranges\">{}</p>\n", describeGroup(summaries, directions));
      appendDistribution(content, part, scales, page);
    }
    printTable(part, scales);
    page += "</section>\n";
  }

  void printTable(Part part, const Scales& scales) {
    append(page, "<div class=\"scroll\" role=\"region\" aria-labelledby=\"{}\" tabindex=\"0\">\n",
           getName(part));
    appendTable(content, part, scales, page);
    page += "</div>\n<p class=\"rest\" hidden></p>\n";
  }

  void printWithoutPart() {
    if (countWith(foundations, Part::none) == 0) return;
    page += "<section>\n<h2 id=\"none\">Without any stiffness</h2>\n";
    printTable(Part::none, {});
    page += "</section>\n";
  }

  void printText() {
    page +=
        "<section>\n<h2 id=\"values\">All values as text</h2>\n"
        "<p class=\"lead\">A line for each foundation, with a tab between two values.</p>\n"
        "<details class=\"text\"><summary>Show the text</summary>\n<pre id=\"data\" tabindex=\"0\" "
        "role=\"region\" aria-labelledby=\"values\">\n";
    appendText(content, page);
    page += "</pre>\n</details>\n</section>\n";
  }

  const Content& content;
  const std::vector<Foundation*>& foundations;
  Frame frame;
  std::string page;
};

}  // namespace

std::string makePage(const Content& content) { return PageMaker(content).make(); }

}  // namespace Report
