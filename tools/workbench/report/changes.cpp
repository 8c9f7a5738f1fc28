#include "report/changes.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "files/paths.h"
#include "found/foundation_manager.h"
#include "report/bars.h"
#include "report/change_tables.h"
#include "report/descriptions.h"
#include "report/frame.h"
#include "report/html.h"
#include "report/listing.h"
#include "report/text.h"
#include "text/display_text.h"

namespace Report {
namespace {

using Comparing::Difference;
using Found::Foundation;
using Foundations = std::vector<Foundation*>;

/// "folder/model.xml", where there is a folder.
std::string nameWithFolder(const std::string& shownPath) {
  const std::string folder = Paths::toText(Paths::fromText(shownPath).parent_path());
  return (folder.empty() ? "" : nameFile(folder) + "/") + nameFile(shownPath);
}

struct FileNames {
  std::string before;
  std::string after;
};

/// Documents of the same name are told apart by their folders.
FileNames nameFiles(const std::string& before, const std::string& after) {
  if (nameFile(before) != nameFile(after)) return {nameFile(before), nameFile(after)};
  return {nameWithFolder(before), nameWithFolder(after)};
}

bool isNamed(const Units& units) { return !units.force.empty(); }

/// The units of both sides: one that names none is taken for the same.
bool areAlike(const Units& before, const Units& after) {
  return before == after || !isNamed(before) || !isNamed(after);
}

std::string describeFoundation(const Foundation* foundation) {
  if (foundation == nullptr) return "none";
  return fmt::format("number {}, <bdi>{}</bdi>", foundation->getNumber(),
                     escapeName(foundation->getName()));
}

/// Where areas and lines have tables of their own, one without either stands among the areas.
bool isInLines(Foundation* foundation) { return hasPart(Part::line, *foundation); }
bool isInAreas(Foundation* foundation) {
  return hasPart(Part::area, *foundation) || !isInLines(foundation);
}

Foundations select(const Foundations& foundations, bool (*isIn)(Foundation*)) {
  Foundations selected;
  std::copy_if(foundations.begin(), foundations.end(), std::back_inserter(selected), isIn);
  return selected;
}

/// What a sheet of paper tells of a document at its foot.
std::string nameOnSheet(const std::string& name, const Side& side) {
  constexpr std::size_t longest = 25;  // so that there is room for both, with their dates
  return join(DisplayText::shorten(name, longest), describeDate(side.date));
}

class ChangesMaker {
 public:
  explicit ChangesMaker(const Changes& shown)
      : content(shown),
        names(
            nameFiles(shown.before.document.getShownPath(), shown.after.document.getShownPath())) {
    if (areAlike(shown.before.units, shown.after.units))
      units = isNamed(shown.before.units) ? shown.before.units : shown.after.units;
    for (const Difference& difference : shown.differences.foundations)
      if (difference.pair.first == nullptr)
        came.push_back(difference.pair.second);
      else if (difference.pair.second == nullptr)
        went.push_back(difference.pair.first);
      else
        changed.push_back(difference);
  }

  std::string make() {
    const Frame frame = {names.before + " to " + names.after, "Changes from",
                         nameOnSheet(names.before, content.before) + " to " +
                             nameOnSheet(names.after, content.after)};
    openPage(frame, page);
    printFacts();
    printSections();
    closeHeader(page);
    printSummary();
    printChanged();
    printWhole(came, content.after, "came", "Came", names.after);
    printWhole(went, content.before, "went", "Went", names.before);
    closePage(frame, page);
    return std::move(page);
  }

 private:
  void printFact(const std::string& name, const std::string& text, const std::string& remark = "") {
    appendFact(name, text, remark, page);
  }

  void printFacts() {
    page += "<ul class=\"facts\">\n";
    printSide("Before", names.before, content.before);
    printSide("After", names.after, content.after);
    printCounts();
    printCurrent();
    printUnits();
    if (content.relative > 0.0)
      printFact("Tolerance", DisplayText::fromNumber(content.relative),
                "of the larger value, for stiffness and factors");
    page += "</ul>\n";
  }

  void printSide(const char* what, const std::string& name, const Side& side) {
    printFact(what, fmt::format("<bdi>{}</bdi>", escape(name)),
              join(describeForm(side.document.getForm()), escape(describeDate(side.date))));
  }

  void printCounts() {
    std::size_t fields = 0;
    for (const Difference& difference : changed) fields += difference.fields.size();
    const std::size_t before = countFoundations(content.before);
    const std::size_t after = countFoundations(content.after);
    printFact("Changed", std::to_string(changed.size()), fields > 0 ? count(fields, "field") : "");
    printFact("Came", std::to_string(came.size()));
    printFact("Went", std::to_string(went.size()));
    printFact("Alike", std::to_string(after - came.size() - changed.size()),
              fmt::format("{} before, {} after", count(before, "foundation"), after));
  }

  static std::size_t countFoundations(const Side& side) {
    return side.document.getFoundations().getFoundations().size();
  }

  static const Foundation* getCurrent(const Side& side) {
    return side.document.getFoundations().getCurrentFoundation();
  }

  void printCurrent() {
    const Foundation* const after = getCurrent(content.after);
    const std::string before = describeFoundation(getCurrent(content.before));
    const bool isSame = content.differences.isCurrentSame && before == describeFoundation(after);
    printFact("Current foundation", describeFoundation(after),
              isSame ? "as before" : "before: " + before);
  }

  void printUnits() {
    const Units& before = content.before.units;
    const Units& after = content.after.units;
    if (!areAlike(before, after))
      return printFact("Units", "<span class=\"warn\">not the same</span>",
                       fmt::format("before: {}; after: {}; values are compared as they are",
                                   describeUnits(before), describeUnits(after)));
    printFact("Units", describeUnits(units), tellWhoNamesUnits());
  }

  std::string tellWhoNamesUnits() const {
    const bool isBefore = isNamed(content.before.units);
    const bool isAfter = isNamed(content.after.units);
    if (isBefore && isAfter) return "as both documents say";
    if (!isBefore && !isAfter) return "values as in the documents";
    return fmt::format("as <bdi>{}</bdi> says; <bdi>{}</bdi> names none, and is taken for the same",
                       escape(isBefore ? names.before : names.after),
                       escape(isBefore ? names.after : names.before));
  }

  void printSections() {
    if (content.differences.foundations.empty()) return;
    page += "<nav aria-label=\"Sections\">";
    if (!changed.empty()) page += "<a href=\"#changed\">Changed</a> ";
    if (!came.empty()) page += "<a href=\"#came\">Came</a> ";
    if (!went.empty()) page += "<a href=\"#went\">Went</a>";
    page += "</nav>\n";
  }

  void printSummary() {
    const bool areSame = content.differences.foundations.empty();
    const bool areUnitsAlike = areAlike(content.before.units, content.after.units);
    if (!areUnitsAlike)
      append(page, "<p class=\"sum warn\">{} their units are not the same.</p>\n",
             areSame ? "The numbers are alike, but" : "Numbers are compared, although");
    if (areSame && areUnitsAlike && content.isComplete)
      page += "<p class=\"sum\">The foundations are alike.</p>\n";
    if (areSame && !content.isComplete)
      page +=
          "<p class=\"sum warn\">What was read is alike, but not everything could be read.</p>\n";
    if (!areSame && !content.isComplete)
      page +=
          "<p class=\"sum warn\">Not everything could be read: there may be more changes.</p>\n";
    if (!content.differences.isCurrentSame)
      page += "<p class=\"sum\">The current foundation is another one.</p>\n";
  }

  void openSection(const char* id, const char* heading, const std::string& lead) {
    append(page, "<section>\n<h2 id=\"{}\">{}</h2>\n<p class=\"lead\">{}</p>\n", id, heading, lead);
  }

  void printChanged() {
    if (changed.empty()) return;
    Listing listing = listChanged(changed, units);
    std::string lead = "Foundations of both documents, by their number and name before.";
    if (listing.hasRatio())
      lead +=
          " Ratios are those of the value after to the value before, which has none where it was "
          "0. "
          "Bars start at 1, which is no change; an arrow stands where a ratio lies beyond the "
          "scale.";
    openSection("changed", "Changed", lead);
    appendListing(std::move(listing), page);
    page += "</section>\n";
  }

  void printWhole(const Foundations& foundations, const Side& side, const char* id,
                  const char* heading, const std::string& name) {
    if (foundations.empty()) return;
    openSection(id, heading, fmt::format("Only in <bdi>{}</bdi>.", escape(name)));
    const auto list = [&](const char* suffix, const Foundations& some,
                          const std::vector<Part>& parts) {
      return listWhole(std::string(heading) + suffix, some, getCurrent(side), parts,
                       isNamed(side.units) ? side.units : units);
    };
    Listing both = list("", foundations, {Part::area, Part::line});
    if (both.isPrintable()) {
      appendListing(std::move(both), page);
    } else {
      appendListing(list(", area", select(foundations, isInAreas), {Part::area}), page);
      appendListing(list(", line", select(foundations, isInLines), {Part::line}), page);
    }
    page += "</section>\n";
  }

  const Changes& content;
  FileNames names;
  Units units;  // empty where the documents do not name the same
  std::vector<Difference> changed;
  Foundations came;
  Foundations went;
  std::string page;
};

}  // namespace

std::string makeChangesPage(const Changes& content) { return ChangesMaker(content).make(); }

}  // namespace Report
