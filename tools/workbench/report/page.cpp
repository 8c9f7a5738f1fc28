#include "report/page.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "files/paths.h"
#include "report/assets.h"
#include "report/html.h"
#include "report/svg.h"
#include "report/table.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Documents::Form;
using Found::Foundation;

constexpr std::size_t mostFindings = 50;  // more of them are folded

const char* describeForm(Form form) {
  if (form == Form::legacy) return "Legacy model";
  if (form == Form::csv) return "Table (CSV)";
  return form == Form::json ? "Data (JSON)" : "Exchange document";
}

class PageMaker {
 public:
  explicit PageMaker(const Content& shown)
      : content(shown),
        foundations(shown.manager.getFoundations()),
        title(
            escapeName(Paths::toText(Paths::fromText(shown.document.getShownPath()).filename()))) {
    for (const Foundation* foundation : foundations) places.emplace(foundation, places.size());
    for (const Checks::Finding& finding : content.findings.list())
      if (finding.foundation == nullptr || places.count(finding.foundation) > 0)
        findings.push_back(finding);
  }

  std::string make() {
    printHead();
    page += "<body>\n";
    printHeader();
    page += "<main>\n";
    if (foundations.empty()) {
      page += "<p class=\"lead\">The document holds no foundations.</p>\n";
    } else {
      printLegend();
      printPart(Part::area, "Area stiffness");
      printPart(Part::line, "Line stiffness");
      printTable();
    }
    printFindings();
    page += "</main>\n<footer>Made by kvfound " KVFOUND_VERSION ".</footer>\n";
    if (!foundations.empty()) append(page, "<script>{}</script>\n", script);
    page += "</body>\n</html>\n";
    return std::move(page);
  }

 private:
  /// Nothing is loaded, and no script runs but the page's own, whatever a document holds.
  void printHead() {
    append(page,
           "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
           "'unsafe-inline'; script-src 'sha256-{}'\">\n"
           "<meta name=\"generator\" content=\"kvfound\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<title>Beddings of {}</title>\n<style>{}</style>\n</head>\n",
           scriptSha256, title, styleSheet);
  }

  void printHeader() {
    append(page, "<header>\n<p class=\"over\">Beddings of</p>\n<h1>{}</h1>\n<ul class=\"facts\">\n",
           title);
    printFact("Form", describeForm(content.document.getForm()));
    if (content.document.getSheet() == nullptr) printVersion();
    printCount();
    printFact("Largest stiffness", DisplayText::fromNumber(content.manager.getMaxFoundationValue()),
              "length of the longest vector (x, y, z) of an area or a line, or of a rotation");
    printCurrent();
    printUnits();
    printCheck();
    page += "</ul>\n";
    if (!foundations.empty())
      page +=
          "<nav aria-label=\"Sections\"><a href=\"#area\">Area stiffness</a> <a "
          "href=\"#line\">Line stiffness</a> <a href=\"#values\">All values</a> <a "
          "href=\"#findings\">Findings</a></nav>\n";
    page += "</header>\n";
  }

  /// `text` and `remark` are HTML.
  void printFact(const char* name, const std::string& text, const std::string& remark = "") {
    append(page, "<li>{} <strong>{}</strong>", name, text);
    if (!remark.empty()) append(page, " <small>{}</small>", remark);
    page += "</li>\n";
  }

  void printVersion() {
    const bool isLegacy = content.document.getForm() == Form::legacy;
    const std::optional<std::string> stated = content.document.getRoot().readText(
        isLegacy ? Documents::Legacy::version : Documents::Exchange::version);
    if (isLegacy) return printFact("Version", stated ? escapeName(*stated) : "not stated");
    printFact("Version", Documents::getVersion(content.document.getForm()),
              stated ? "the document states " + escapeName(*stated) : "the document states none");
  }

  void printCount() {
    const auto generated = std::count_if(foundations.begin(), foundations.end(),
                                         [](const Foundation* f) { return f->isGenerated(); });
    printFact("Foundations", std::to_string(foundations.size()),
              fmt::format("{} with area, {} with line, {} generated", countWith(Part::area),
                          countWith(Part::line), generated));
  }

  std::size_t countWith(Part part) const {
    return static_cast<std::size_t>(
        std::count_if(foundations.begin(), foundations.end(),
                      [part](Foundation* f) { return hasPart(part, *f); }));
  }

  void printCurrent() {
    const Foundation* const current = content.manager.getCurrentFoundation();
    if (current == nullptr) return printFact("Current foundation", "none");
    printFact("Current foundation", fmt::format("<bdi>{}</bdi>", escapeName(current->getName())),
              fmt::format("number {}", current->getNumber()));
  }

  void printUnits() {
    const Units& units = content.units;
    if (units.force.empty()) return printFact("Units", "not stated", "values as in the document");
    printFact("Units", fmt::format("{}, {}", escape(units.force), escape(units.length)),
              "labels only");
  }

  void printCheck() {
    if (findings.empty()) return printFact("Check", "no findings");
    printFact("Check", fmt::format(R"(<a class="warn" href="#findings">{}</a>)",
                                   count(findings.size(), "finding")));
  }

  void printLegend() {
    page +=
        "<ul class=\"legend\" aria-label=\"Legend\">\n"
        "<li class=\"bar\">stiffness, on a logarithmic scale</li>\n"
        "<li class=\"zero\">zero</li>\n"
        "<li class=\"beyond\">beyond the scale: negative, infinite or not a number</li>\n"
        "<li><b>\xE2\x80\x93</b> no value</li>\n"
        "<li><b class=\"f\">T \xE2\x86\x90\xE2\x86\x92</b> fails in tension</li>\n"
        "<li><b class=\"f\">C \xE2\x86\x92\xE2\x86\x90</b> fails in compression</li>\n"
        "<li><b class=\"f\">mode</b> fails in another mode, which the table tells</li>\n"
        "<li><b>\xE2\x97\x8F current</b> the current foundation</li>\n"
        "<li><b>\xE2\x89\x88</b> rounded; the table has all digits</li>\n"
        "</ul>\n";
  }

  void printPart(Part part, const char* heading) {
    const std::string name = getName(part);
    append(page, "<section>\n<h2 id=\"{}\">{}</h2>\n", name, heading);
    if (countWith(part) == 0)
      append(page, "<p class=\"lead\">No foundation has a part for {}s.</p>\n", name);
    else
      appendPictures(content, part, page);
    page += "</section>\n";
  }

  void printTable() {
    page +=
        "<section>\n<h2 id=\"values\">All values</h2>\n"
        "<p class=\"hint\" hidden>A heading sorts the table by its column.</p>\n"
        "<div class=\"scroll\" role=\"region\" aria-labelledby=\"values\" tabindex=\"0\">\n";
    appendTable(content, page);
    page += "</div>\n</section>\n";
  }

  void printFindings() {
    page += "<section>\n<h2 id=\"findings\">Findings of the check</h2>\n";
    if (findings.empty()) {
      page += "<p class=\"lead\">Nothing looks wrong.</p>\n</section>\n";
      return;
    }
    page += "<p class=\"lead\">The document can be read, but these places look wrong.</p>\n";
    const std::size_t shown = std::min(findings.size(), mostFindings);
    printFindings(0, shown);
    if (shown < findings.size()) {
      append(page,
             "<p class=\"closed\">Findings that are folded are not printed.</p>\n"
             "<details><summary>{}</summary>\n",
             showSpan("Finding", shown + 1, findings.size()));
      printFindings(shown, findings.size());
      page += "</details>\n";
    }
    page += "</section>\n";
  }

  void printFindings(std::size_t first, std::size_t last) {
    page += "<ul class=\"findings\">\n";
    for (; first < last; ++first) printFinding(findings[first]);
    page += "</ul>\n";
  }

  void printFinding(const Checks::Finding& finding) {
    append(page, "<li><span class=\"place\">line {}, column {}</span> ", finding.position.line,
           finding.position.column);
    if (finding.foundation != nullptr) printLink(*finding.foundation);
    append(page, "{}</li>\n", escape(limitMarks(finding.sentence)));
  }

  void printLink(const Foundation& foundation) {
    constexpr std::size_t longestName = 60;
    const std::string name = showName(foundation.getName());
    append(page, R"(<a href="#{}">foundation {}, {}</a> )", makeRowId(places.at(&foundation)),
           foundation.getNumber(), escape(DisplayText::shorten(name, longestName)));
  }

  const Content& content;
  const std::vector<Foundation*>& foundations;
  std::vector<Checks::Finding> findings;  // of the document and of the foundations that are shown
  std::unordered_map<const Foundation*, std::size_t> places;  // in the list
  std::string title;                                          // the file's name, escaped
  std::string page;
};

}  // namespace

bool isPage(std::string_view text) {
  const std::string_view start = "<!DOCTYPE html>";  // which no document of beddings has
  return text.substr(0, start.size()) == start &&
         text.find(R"(<meta name="generator" content="kvfound">)") != text.npos;
}

std::string makePage(const Content& content) { return PageMaker(content).make(); }

}  // namespace Report
