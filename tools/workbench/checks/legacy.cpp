#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "checks/attributes.h"
#include "checks/rules.h"
#include "documents/vocabulary.h"

namespace Checks {
namespace {

namespace Legacy = Documents::Legacy;
using Documents::Element;
using Documents::Entry;
using Found::Foundation;

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
        findings.add(entry.element.getPosition(), showElement(entry.element) +
                                                      " is no element of <" + Legacy::list.name +
                                                      ">; it is skipped");
    // An empty name is how a model tells that there is none.
    const std::string current = list.readText(Legacy::current).value_or("");
    if (!current.empty() && document.getFoundations().getCurrentFoundation() == nullptr)
      findings.add(list.locate(Legacy::current),
                   showAttribute(list, Legacy::current) +
                       " names no foundation; none will be the current one");
  }

 private:
  /// `foundation`: as `element` was read.
  void checkFoundation(const Element& element, const Foundation& foundation) {
    checkAttributes(element, Legacy::foundation, findings);
    checkHasNoChildren(element, findings);
    checkNumberText(element, std::to_string(foundation.getNumber()));
    checkNumber(element.locate(Legacy::number), foundation.getNumber());
    checkName(element.locate(Legacy::name), foundation.getName());
  }

  void checkNumberText(const Element& element, const std::string& number) {
    const std::string consequence = "; it is read as number " + number;
    const KvXmlPosition here = element.locate(Legacy::number);
    const std::optional<int> given = element.readInteger(Legacy::number);
    if (!element.readText(Legacy::number))
      findings.add(here, "<FOUND> has no NUMBER" + consequence);
    else if (!given)
      findings.add(here, showAttribute(element, Legacy::number) + " " +
                             tellNoInteger(element, Legacy::number) + consequence);
    else if (*given == -1)
      findings.add(here,
                   showAttribute(element, Legacy::number) + " counts as missing" + consequence);
  }

  void checkNumber(KvXmlPosition here, int number) {
    const auto [first, isNew] = numbers.emplace(number, here);
    if (!isNew)
      findings.add(here, "the number " + std::to_string(number) + " was given before, " +
                             showPlace(first->second, here) +
                             "; both foundations will have it, and an update of a document merges "
                             "them");
  }

  void checkName(KvXmlPosition here, const std::string& name) {
    const auto [first, isNew] = names.emplace(name, here);
    if (!isNew)
      findings.add(here, "the name " + quote(name) + " was given before, " +
                             showPlace(first->second, here) +
                             "; both foundations will have it, and CURRENT finds only the first");
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
  if (lists.empty()) return;
  ListCheck(document, findings).check(lists.front());
  const KvXmlPosition first = lists.front().getPosition();
  std::for_each(lists.begin() + 1, lists.end(), [&](const Element& list) {
    const KvXmlPosition here = list.getPosition();
    findings.add(here, "only the first <FOUNDATIONS> of a model is read, " +
                           showPlace(first, here) + "; this one is skipped");
  });
}

}  // namespace Checks
