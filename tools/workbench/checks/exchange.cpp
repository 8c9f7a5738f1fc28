#include <optional>
#include <string>

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
    if (entry.fate == Fate::unknown || entry.fate == Fate::ofFirstVersion)
      return findings.add(element.getPosition(),
                          showElement(element) + (entry.fate == Fate::unknown
                                                      ? " is no bedding; it is skipped"
                                                      : " is a bedding of version 1.0 only; it is "
                                                        "skipped"));
    const ElementWord& word = findWord(element);
    checkAttributes(element, word, findings);
    checkHasNoChildren(element, findings);
    const bool isWhole = &word == &Exchange::whole;
    if (!isWhole) checkNumber(entry);
    if (checkHasName(element)) checkClashes(entry, isWhole);
  }

 private:
  static const ElementWord& findWord(const Element& bedding) {
    const std::string& name = bedding.getName();
    return name == Exchange::whole.name   ? Exchange::whole
           : name == Exchange::curve.name ? Exchange::curve
                                          : Exchange::surface;
  }

  void checkNumber(const Entry& entry) {
    const Element& element = entry.element;
    if (!element.readText(Exchange::number))
      return findings.add(element.getPosition(),
                          showElement(element) + " has no Number; it is skipped");
    const KvXmlPosition here = element.locate(Exchange::number);
    const std::string shown = showAttribute(element, Exchange::number) + " ";
    if (!entry.number)
      return findings.add(
          here, shown + tellNoInteger(element, Exchange::number) + "; the bedding is skipped");
    const std::string number = std::to_string(*entry.number);
    if (!element.readInteger(Exchange::number))
      findings.add(here, shown + "is no whole number; it is read as " + number);
    if (entry.fate == Fate::numberTooSmall)
      findings.add(here, "the number " + number + " is below 1; the bedding is skipped");
  }

  bool checkHasName(const Element& element) {
    const std::optional<std::string> name = element.readText(Exchange::name);
    if (name && !name->empty()) return true;
    findings.add(element.locate(Exchange::name),
                 name ? "the Name is empty; the bedding is skipped"
                      : showElement(element) + " has no Name; it is skipped");
    return false;
  }

  void checkClashes(const Entry& entry, bool isWhole) {
    if (entry.numberHolder != nullptr) isWhole ? tellGivenNumber(entry) : tellTakenNumber(entry);
    if (entry.nameHolder != nullptr) tellTakenName(entry);
  }

  /// The first version numbers by what it has read from the container, without a look at others.
  void tellGivenNumber(const Entry& entry) {
    const KvXmlPosition here = entry.element.getPosition();
    findings.add(here, "the bedding is read as number " + std::to_string(*entry.number) +
                           ", which the one " +
                           showPlace(entry.numberHolder->element.getPosition(), here) +
                           " has; both foundations will have it");
  }

  void tellTakenNumber(const Entry& entry) {
    const KvXmlPosition first = entry.numberHolder->element.getPosition();
    const KvXmlPosition here = entry.element.locate(Exchange::number);
    const std::string place = showPlace(first, here);
    const std::string number = std::to_string(*entry.number);
    findings.add(here,
                 entry.fate == Fate::otherPart
                     ? "the foundation number " + number + " " + quoteName(entry) +
                           " is in two parts; the first, " + place +
                           ", is read, and this one is lost"
                     : "the number " + number + " is taken by the bedding " + place +
                           "; this one is skipped",
                 first);
  }

  void tellTakenName(const Entry& entry) {
    const KvXmlPosition here = entry.element.locate(Exchange::name);
    findings.add(here, "the name " + quoteName(entry) + " is taken by the bedding " +
                           showPlace(entry.nameHolder->element.locate(Exchange::name), here) +
                           "; this one is read as " + quote(entry.foundation->getName()));
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
