#include "report/finding_list.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

#include <fmt/format.h>

#include "report/html.h"
#include "report/table.h"
#include "report/text.h"

namespace Report {
namespace {

using Checks::Finding;
using Found::Foundation;

constexpr std::size_t mostOpen = 50;
constexpr std::size_t mostFolded = 1000;

using Places = std::unordered_map<const Foundation*, std::size_t>;

/// Where the foundations that are shown stand among themselves.
Places findPlaces(const Content& content) {
  Places places;
  for (const Foundation* foundation : content.manager.getFoundations())
    places.emplace(foundation, places.size());
  return places;
}

class ListMaker {
 public:
  ListMaker(const Content& shown, const std::vector<Finding>& list, std::string& target)
      : content(shown), findings(list), places(findPlaces(shown)), page(target) {}

  void print() {
    page += "<section>\n<h2 id=\"findings\">Findings of the check</h2>\n";
    if (findings.empty()) {
      page += "<p class=\"lead\">Nothing looks wrong.</p>\n</section>\n";
      return;
    }
    page += "<p class=\"lead\">The document can be read, but these places look wrong.</p>\n";
    const std::size_t open = std::min(findings.size(), mostOpen);
    printList(0, open);
    if (open < findings.size()) printFolded(open);
    page += "</section>\n";
  }

 private:
  void printFolded(std::size_t first) {
    const std::size_t last = std::min(findings.size(), first + mostFolded);
    append(page,
           "<p class=\"closed\">Findings that are folded are not printed.</p>\n"
           "<details><summary>{}</summary>\n",
           showSpan("Finding", first + 1, last));
    printList(first, last);
    page += "</details>\n";
    const std::size_t left = findings.size() - last;
    if (left > 0)
      append(page, "<p class=\"lead\">{} not listed here; the check lists them all.</p>\n",
             left == 1 ? "1 more is" : fmt::format("{} more are", left));
  }

  void printList(std::size_t first, std::size_t last) {
    page += "<ul class=\"findings\">\n";
    for (; first < last; ++first) printFinding(findings[first]);
    page += "</ul>\n";
  }

  void printFinding(const Finding& finding) {
    append(page, "<li><span class=\"place\">line {}, column {}</span> ", finding.position.line,
           finding.position.column);
    if (finding.foundation != nullptr) printLink(*finding.foundation);
    append(page, "{}</li>\n", escape(limitMarks(finding.sentence)));
  }

  void printLink(const Foundation& foundation) {
    append(page, R"(<a href="{}">foundation {}, <bdi>{}</bdi></a> )",
           makeAddress(content, foundation, places.at(&foundation)), foundation.getNumber(),
           escape(shortenName(foundation.getName())));
  }

  const Content& content;
  const std::vector<Finding>& findings;
  Places places;
  std::string& page;
};

}  // namespace

std::vector<Finding> listFindings(const Content& content) {
  const Places places = findPlaces(content);
  std::vector<Finding> findings;
  for (const Finding& finding : content.findings.list())
    if (finding.foundation == nullptr || places.count(finding.foundation) > 0)
      findings.push_back(finding);
  return findings;
}

void appendFindings(const Content& content, const std::vector<Finding>& findings,
                    std::string& page) {
  ListMaker(content, findings, page).print();
}

}  // namespace Report
