#include <optional>
#include <string>

#include <fmt/format.h>

#include "checks/attributes.h"
#include "checks/rules.h"
#include "documents/vocabulary.h"

namespace Checks {
namespace {

namespace Exchange = Documents::Exchange;
using Documents::Element;
using Documents::ElementWord;
using Documents::Entries;
using Documents::Entry;
using Fate = Entry::Fate;

class BeddingCheck {
 public:
  explicit BeddingCheck(Findings& target) : findings(target) {}

  void check(const Entry& entry) {
    const Element& element = entry.element;
    if (entry.fate == Fate::unknown)
      return findings.add(Rules::unknownElement, element.getPosition(),
                          showElement(element) + " is no bedding; it is skipped");
    if (entry.fate == Fate::ofFirstVersion)
      return findings.add(Rules::otherVersion, element.getPosition(),
                          fmt::format("{} is a bedding of version {} only; it is skipped",
                                      showElement(element), Documents::firstVersion));
    if (entry.fate == Fate::outside)
      return findings.add(
          Rules::misplacedElement, element.getPosition(),
          showElement(element) + " stands where no beddings are read; it is skipped");
    const ElementWord& word = *Exchange::findWord(element.getName());
    checkAttributes(element, word, findings);
    checkHasNoChildren(element, findings);
    const bool isWhole = &word == &Exchange::whole;
    if (!isWhole) checkNumber(entry);
    if (checkHasName(element)) checkClashes(entry, isWhole);
  }

 private:
  void checkNumber(const Entry& entry) {
    const Element& element = entry.element;
    if (!element.readText(Exchange::number))
      return reportMissing(Rules::missingNumber, element, Exchange::number);
    const KvXmlPosition here = element.locate(Exchange::number);
    const std::string shown = showAttribute(element, Exchange::number);
    if (!entry.number)
      return findings.add(Rules::unreadableNumber, here,
                          fmt::format("{} {}; the bedding is skipped", shown,
                                      describeNonInteger(element, Exchange::number)));
    if (!element.readInteger(Exchange::number))
      findings.add(Rules::unreadableNumber, here,
                   fmt::format("{} is no whole number; it is read as {}", shown, *entry.number));
    if (entry.fate == Fate::numberTooSmall)
      findings.add(Rules::numberBelowOne, here,
                   fmt::format("the number {} is below 1; the bedding is skipped", *entry.number));
  }

  bool checkHasName(const Element& element) {
    const std::optional<std::string> name = element.readText(Exchange::name);
    if (!name)
      reportMissing(Rules::missingName, element, Exchange::name);
    else if (name->empty())
      findings.add(Rules::missingName, element.locate(Exchange::name),
                   fmt::format("the {} is empty; the bedding is skipped", Exchange::name));
    return name && !name->empty();
  }

  void reportMissing(const Rule& rule, const Element& element, const char* attribute) {
    findings.add(rule, element.getPosition(),
                 fmt::format("{} has no {}; it is skipped", showElement(element), attribute));
  }

  void checkClashes(const Entry& entry, bool isWhole) {
    if (entry.numberHolder != nullptr)
      isWhole ? reportSharedNumber(entry) : reportTakenNumber(entry);
    if (entry.nameHolder != nullptr) reportTakenName(entry);
  }

  /// In the first version a bedding gets the number of those read from its container so far,
  /// whether or not another foundation has it.
  void reportSharedNumber(const Entry& entry) {
    const KvXmlPosition here = entry.element.getPosition();
    findings.add(
        Rules::sameNumber, here,
        fmt::format("the bedding is read as number {}, which the one {} has; both "
                    "foundations will have it",
                    *entry.number, showPlace(entry.numberHolder->element.getPosition(), here)));
  }

  void reportTakenNumber(const Entry& entry) {
    const KvXmlPosition first = entry.numberHolder->element.getPosition();
    const KvXmlPosition here = entry.element.locate(Exchange::number);
    const std::string place = showPlace(first, here);
    const bool isOtherPart = entry.fate == Fate::otherPart;
    findings.add(
        isOtherPart ? Rules::twoParts : Rules::sameNumber, here,
        isOtherPart
            ? fmt::format(
                  "the foundation number {} {} is in two parts; hosts keep only the first, {}",
                  *entry.number, quoteName(entry), place)
            : fmt::format("the number {} is taken by the bedding {}; this one is skipped",
                          *entry.number, place),
        first);
  }

  void reportTakenName(const Entry& entry) {
    const KvXmlPosition first = entry.nameHolder->element.locate(Exchange::name);
    const KvXmlPosition here = entry.element.locate(Exchange::name);
    findings.add(
        Rules::sameName, here,
        fmt::format("the name {} is taken by the bedding {}; this one is read as {}",
                    quoteName(entry), showPlace(first, here), quote(entry.foundation->getName())));
  }

  static std::string quoteName(const Entry& entry) {
    return quote(entry.element.readText(Exchange::name).value_or(""));
  }

  Findings& findings;
};

}  // namespace

void checkExchange(Documents::Document& document, Findings& findings) {
  BeddingCheck check(findings);
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries) check.check(entry);
}

}  // namespace Checks
