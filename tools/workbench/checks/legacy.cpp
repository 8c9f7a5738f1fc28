#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <fmt/format.h>

#include "checks/attributes.h"
#include "checks/rules.h"
#include "documents/vocabulary.h"

namespace Checks {
namespace {

namespace Legacy = Documents::Legacy;
using Documents::Element;
using Documents::Entry;
using Found::Foundation;

constexpr int notNumbered = -1;  // is read as if there were no number

/// The list of foundations that is read.
class ListCheck {
 public:
  ListCheck(Documents::Document& model, Findings& target) : document(model), findings(target) {}

  void check(const Element& list) {
    checkAttributes(list, Legacy::list, findings);
    for (const Entry& entry : document.getEntries().front())
      if (entry.foundation != nullptr)
        checkFoundation(entry.element, *entry.foundation);
      else
        findings.add(Rules::unknownElement, entry.element.getPosition(),
                     fmt::format("{} is no element of <{}>; it is skipped",
                                 showElement(entry.element), Legacy::list.name));
    // A model without a current foundation may have an empty name here.
    const std::string current = list.readText(Legacy::current).value_or("");
    if (!current.empty() && document.getFoundations().getCurrentFoundation() == nullptr)
      findings.add(Rules::unknownCurrent, list.locate(Legacy::current),
                   fmt::format("{} names no foundation; none will be the current one",
                               showAttribute(list, Legacy::current)));
  }

 private:
  /// `foundation`: as `element` was read.
  void checkFoundation(const Element& element, const Foundation& foundation) {
    checkAttributes(element, Legacy::foundation, findings);
    checkHasNoChildren(element, findings);
    checkNumberText(element, foundation.getNumber());
    checkNumber(element.locate(Legacy::number), foundation.getNumber());
    checkName(element.locate(Legacy::name), foundation.getName());
  }

  void checkNumberText(const Element& element, int number) {
    const std::string fault = describeFault(element);
    if (fault.empty()) return;
    const bool isMissing = !element.readText(Legacy::number);
    findings.add(isMissing ? Rules::missingNumber : Rules::unreadableNumber,
                 element.locate(Legacy::number),
                 fmt::format("{}; it is read as number {}", fault, number));
  }

  /// What is wrong with the attribute; empty when nothing is.
  static std::string describeFault(const Element& element) {
    if (!element.readText(Legacy::number))
      return fmt::format("<{}> has no {}", Legacy::foundation.name, Legacy::number);
    const std::optional<int> given = element.readInteger(Legacy::number);
    if (given && *given != notNumbered) return "";
    return showAttribute(element, Legacy::number) + " " +
           (given ? "counts as missing" : describeNonInteger(element, Legacy::number));
  }

  void checkNumber(KvXmlPosition here, int number) {
    const auto [first, isNew] = numbers.emplace(number, here);
    if (!isNew)
      findings.add(Rules::sameNumber, here,
                   fmt::format("the number {} was given before, {}; both foundations will "
                               "have it, and an update of a document merges them",
                               number, showPlace(first->second, here)));
  }

  void checkName(KvXmlPosition here, const std::string& name) {
    const auto [first, isNew] = names.emplace(name, here);
    if (!isNew)
      findings.add(Rules::sameName, here,
                   fmt::format("the name {} was given before, {}; both foundations will "
                               "have it, and {} finds only the first",
                               quote(name), showPlace(first->second, here), Legacy::current));
  }

  Documents::Document& document;
  Findings& findings;
  std::unordered_map<int, KvXmlPosition> numbers;
  std::unordered_map<std::string, KvXmlPosition> names;
};

/// Adds all lists of foundations below `top`, in document order.
void findLists(const Element& top, std::vector<Element>& lists) {
  for (const Element& child : top.listChildren())
    if (child.getName() == Legacy::list.name)
      lists.push_back(child);
    else
      findLists(child, lists);
}

}  // namespace

void checkLegacy(Documents::Document& document, Findings& findings) {
  std::vector<Element> lists;
  findLists(document.getRoot(), lists);
  for (const Entry& entry : document.getEntries().back())
    findings.add(Rules::misplacedElement, entry.element.getPosition(),
                 fmt::format("{} stands where no foundations are read; it is skipped",
                             showElement(entry.element)));
  if (lists.empty()) return;
  ListCheck(document, findings).check(lists.front());
  const KvXmlPosition first = lists.front().getPosition();
  std::for_each(lists.begin() + 1, lists.end(), [&](const Element& list) {
    const KvXmlPosition here = list.getPosition();
    findings.add(Rules::secondList, here,
                 fmt::format("only the first <{}> of a model is read, {}; this one is skipped",
                             Legacy::list.name, showPlace(first, here)));
  });
}

}  // namespace Checks
