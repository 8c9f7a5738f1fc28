#include "report/facts.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "report/descriptions.h"
#include "report/frame.h"
#include "report/html.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Documents::Form;
using Found::Foundation;

std::string warn(const std::string& text) {
  return text.empty() ? "" : R"(<span class="warn">)" + text + "</span>";
}

/// The greatest finite stiffness of a kind and where it is.
class Largest {
 public:
  void include(const Bar& bar, const Foundation& of, const char* name) {
    if (isBeyond(bar)) ++beyond;
    if (!isDrawable(bar) || bar.value < value) return;
    if (bar.value > value) {
      value = bar.value;
      where.clear();
      direction = name;
    }
    if (where.empty() || where.back() != &of) where.push_back(&of);
  }

  bool isThere() const { return !where.empty() || beyond > 0; }

  /// The value with its unit; the exact one is at hand where this is rounded.
  std::string showValue(const Direction& unit) const {
    if (where.empty()) return "none";
    return fmt::format(R"(<span title="{}">{}</span>{})", DisplayText::fromNumber(value),
                       writeRounded(value), showUnit(unit));
  }

  std::string showPlace() const {
    return join(where.empty() ? "" : namePlace(),
                beyond == 0 ? "" : warn(fmt::format("beside {} {}", beyond, notOnScale)));
  }

 private:
  std::string namePlace() const {
    const Foundation& first = *where.front();
    return fmt::format("{} of foundation {}, <bdi>{}</bdi>{}", direction, first.getNumber(),
                       escape(shortenName(first.getName())),
                       where.size() == 1 ? "" : fmt::format(", and of {} more", where.size() - 1));
  }

  double value = 0.0;
  std::vector<const Foundation*> where;  // with that value, each once
  const char* direction = "";            // of the first
  std::size_t beyond = 0;
};

class FactMaker {
 public:
  FactMaker(const Content& shown, std::string& target)
      : content(shown), foundations(shown.manager.getFoundations()), page(target) {}

  void print(std::size_t findings) {
    page += "<ul class=\"facts\">\n";
    printFact("Form", describeForm(content.document.getForm()));
    if (content.document.getSheet() == nullptr) printVersion();
    if (!content.date.text.empty())
      printFact(content.date.isOfFile ? "Saved" : "Read", escape(content.date.text));
    printCount();
    printLargest();
    printCurrent();
    printUnits();
    printCheck(findings);
    page += "</ul>\n";
  }

 private:
  void printFact(const std::string& name, const std::string& text, const std::string& remark = "") {
    appendFact(name, text, remark, page);
  }

  void printVersion() {
    const Form form = content.document.getForm();
    const bool isLegacy = form == Form::legacy;
    const std::optional<std::string> stated = content.document.getRoot().readText(
        isLegacy ? Documents::Legacy::version : Documents::Exchange::version);
    const bool isRead = isLegacy || stated == Documents::getVersion(form);
    printFact("Version", stated ? escapeName(*stated) : "not stated",
              isRead                        ? ""
              : form == Form::firstExchange ? "read as 1.0"
                                            : "read as the current one");
  }

  void printCount() {
    const auto generated = std::count_if(foundations.begin(), foundations.end(),
                                         [](const Foundation* f) { return f->isGenerated(); });
    printFact("Foundations", countShown(content),
              (content.isSelection() ? "a selection: " : "") +
                  fmt::format("{} with area, {} with line, {} generated",
                              countWith(foundations, Part::area),
                              countWith(foundations, Part::line), generated));
  }

  void printLargest() {
    for (const Part part : {Part::area, Part::line}) {
      const std::vector<Direction> directions = listDirections(part, content.units);
      Largest moved;
      Largest turned;
      for (Foundation* const foundation : foundations) {
        if (!hasPart(part, *foundation)) continue;
        const std::vector<Bar> bars = listBars(part, *foundation);
        for (std::size_t i = 0; i < bars.size(); ++i)
          (directions[i].isRotation ? turned : moved)
              .include(bars[i], *foundation, directions[i].name);
      }
      printLargest(part == Part::area ? "Largest area stiffness" : "Largest line stiffness", moved,
                   directions.front());
      printLargest("Largest rotational stiffness", turned, directions.back());
    }
  }

  void printLargest(const char* name, const Largest& largest, const Direction& direction) {
    if (largest.isThere()) printFact(name, largest.showValue(direction), largest.showPlace());
  }

  void printCurrent() {
    const Foundation* const current = content.current;
    if (current == nullptr) return printFact("Current foundation", "none");
    printFact("Current foundation", fmt::format("<bdi>{}</bdi>", escapeName(current->getName())),
              fmt::format("number {}", current->getNumber()));
  }

  void printUnits() {
    const bool areThere = !content.units.force.empty();
    printFact("Units", describeUnits(content.units),
              areThere ? tellWhoNamesUnits() : "values as in the document");
  }

  std::string tellWhoNamesUnits() const {
    if (content.unitsFrom == UnitsFrom::document) return "as the document says";
    const Units& ofDocument = content.documentUnits;
    if (ofDocument.force.empty() || ofDocument == content.units)
      return "as the user says; nothing is converted";
    return warn("as the user says, but the document says " + describeUnits(ofDocument) +
                "; nothing is converted");
  }

  void printCheck(std::size_t findings) {
    if (findings == 0) return printFact("Check", "no findings");
    printFact("Check", fmt::format(R"(<a class="warn" href="#findings">{}</a>)",
                                   count(findings, "finding")));
  }

  const Content& content;
  const std::vector<Foundation*>& foundations;
  std::string& page;
};

}  // namespace

void appendFacts(const Content& content, std::size_t findings, std::string& page) {
  FactMaker(content, page).print(findings);
}

std::string countShown(const Content& content) {
  return std::to_string(content.manager.getFoundations().size()) +
         (content.isSelection() ? fmt::format(" of {}", content.total) : "");
}

}  // namespace Report
