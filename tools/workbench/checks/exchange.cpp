#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "checks/attributes.h"
#include "checks/rules.h"

namespace Checks {
namespace {

using KvXmlN::AttributeIn;
using KvXmlN::Data;

/// The number that a text starts with, which is what the reader takes.
std::optional<int> startOfNumber(const std::string& text) {
  try {
    return std::stoi(text);
  } catch (const std::logic_error&) {
    return std::nullopt;
  }
}

/// Numbers and names as the reader gives them, in document order.
class BeddingCheck {
 public:
  BeddingCheck(bool firstVersion, Findings& target)
      : isFirstVersion(firstVersion), findings(target) {}

  void check(const Data& container) {
    countInContainer = 0;
    for (const Data* child : container.getChildren()) checkChild(*child);
  }

 private:
  void checkChild(const Data& child) {
    const std::string& name = child.getName();
    if (name == Elements::curveBedding.name) return checkNumbered(child, Elements::curveBedding);
    if (name == Elements::surfaceBedding.name)
      return checkNumbered(child, Elements::surfaceBedding);
    if (name == Elements::bedding.name && isFirstVersion) return checkBedding(child);
    findings.add(child.getPosition(),
                 showElement(child) + (name == Elements::bedding.name
                                           ? " is a bedding of version 1.0 only; it is skipped"
                                           : " is no bedding; it is skipped"));
  }

  void checkNumbered(const Data& element, const Element& known) {
    checkAttributes(element, known, findings);
    checkHasNoChildren(element, findings);
    const std::optional<int> number = readNumber(element);
    const std::optional<std::string> name = readName(element);
    if (number && name && isFree(element, *number, *name)) accept(element, *number, *name);
  }

  /// The first version numbers by what it has read from the container, without a look at others.
  void checkBedding(const Data& element) {
    checkAttributes(element, Elements::bedding, findings);
    checkHasNoChildren(element, findings);
    const std::optional<std::string> name = readName(element);
    if (!name) return;
    const int number = countInContainer + 1;
    const auto holder = numbers.find(number);
    if (holder != numbers.end())
      findings.add(element.getPosition(),
                   "the bedding is read as number " + std::to_string(number) + ", which the one " +
                       showPlace(holder->second->getPosition(), element.getPosition()) +
                       " has; both foundations will have it");
    accept(element, number, *name);
  }

  /// The number of a bedding that is not skipped for want of one.
  std::optional<int> readNumber(const Data& element) {
    const std::optional<std::string> text = AttributeIn::readString(element, "Number");
    if (!text) {
      findings.add(element.getPosition(), showElement(element) + " has no Number; it is skipped");
      return std::nullopt;
    }
    const KvXmlPosition here = locate(element, "Number");
    const std::string shown = showAttribute(element, "Number") + " ";
    const std::optional<int> number = startOfNumber(*text);
    if (!number) {
      findings.add(here, shown + tellNoInteger(element, "Number") + "; the bedding is skipped");
      return std::nullopt;
    }
    if (!AttributeIn::readInteger(element, "Number"))
      findings.add(here, shown + "is no whole number; it is read as " + std::to_string(*number));
    if (*number >= 1) return number;
    findings.add(here,
                 "the number " + std::to_string(*number) + " is below 1; the bedding is skipped");
    return std::nullopt;
  }

  /// The name of a bedding that is not skipped for want of one.
  std::optional<std::string> readName(const Data& element) {
    std::optional<std::string> name = AttributeIn::readString(element, "Name");
    if (name && !name->empty()) return name;
    findings.add(locate(element, "Name"),
                 name ? "the Name is empty; the bedding is skipped"
                      : showElement(element) + " has no Name; it is skipped");
    return std::nullopt;
  }

  bool isFree(const Data& element, int number, const std::string& name) {
    const auto holder = numbers.find(number);
    if (holder == numbers.end()) return true;
    const Data& first = *holder->second;
    const KvXmlPosition here = locate(element, "Number");
    const std::string place = showPlace(first.getPosition(), here);
    const std::string shown = std::to_string(number);
    findings.add(
        here,
        areParts(first, element, name)
            ? "the foundation number " + shown + " " + quote(name) +
                  " is in two parts; the first, " + place + ", is read, and this one is lost"
            : "the number " + shown + " is taken by the bedding " + place + "; this one is skipped",
        first.getPosition());
    return false;
  }

  /// True when the two, which have the same number, are line and area of one foundation.
  static bool areParts(const Data& first, const Data& second, const std::string& name) {
    return first.getName() != Elements::bedding.name && first.getName() != second.getName() &&
           AttributeIn::readString(first, "Name") == name;
  }

  /// Takes note of a bedding that is read, under another name if it must be.
  void accept(const Data& element, int number, const std::string& name) {
    const KvXmlPosition here = locate(element, "Name");
    const auto [first, isNew] = names.emplace(name, here);
    if (!isNew) {
      const std::string changed = makeFreeName(name);
      findings.add(here, "the name " + quote(name) + " is taken by the bedding " +
                             showPlace(first->second, here) + "; this one is read as " +
                             quote(changed));
      names.emplace(changed, here);
    }
    numbers.emplace(number, &element);
    ++countInContainer;
  }

  std::string makeFreeName(const std::string& wanted) {
    int& counter = counters[wanted];  // no name is ever freed: those before need no second try
    std::string candidate;
    do candidate = wanted + "_" + std::to_string(++counter);
    while (names.count(candidate) > 0);
    return candidate;
  }

  const bool isFirstVersion;
  Findings& findings;
  std::unordered_map<int, const Data*> numbers;
  std::unordered_map<std::string, KvXmlPosition> names;
  std::unordered_map<std::string, int> counters;
  int countInContainer = 0;
};

}  // namespace

void checkExchange(const Documents::Tree& tree, Findings& findings) {
  BeddingCheck check(tree.form == Documents::Form::firstExchange, findings);
  for (const Data* container : tree.containers) check.check(*container);
}

}  // namespace Checks
