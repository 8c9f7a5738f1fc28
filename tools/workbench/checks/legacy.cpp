#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "checks/attributes.h"
#include "checks/rules.h"

namespace Checks {
namespace {

using Found::Foundation;
using Found::FoundationManager;
using KvXmlN::AttributeIn;
using KvXmlN::Data;

/// The list of foundations that is read.
class ListCheck {
 public:
  ListCheck(const FoundationManager& manager, Findings& target) : read(manager), findings(target) {}

  void check(const Data& list) {
    checkAttributes(list, Elements::foundations, findings);
    auto foundation = read.getFoundations().begin();
    for (const Data* child : list.getChildren())
      if (child->getName() != Elements::found.name)
        findings.add(child->getPosition(), showElement(*child) + " is no element of <" +
                                               Elements::foundations.name + ">; it is skipped");
      else if (foundation != read.getFoundations().end())
        checkFoundation(*child, **foundation++);
    // An empty name is how a model tells that there is none.
    const std::string current = AttributeIn::readString(list, "CURRENT").value_or("");
    if (!current.empty() && read.getCurrentFoundation() == nullptr)
      findings.add(
          locate(list, "CURRENT"),
          showAttribute(list, "CURRENT") + " names no foundation; none will be the current one");
  }

 private:
  /// `foundation`: as `element` was read.
  void checkFoundation(const Data& element, const Foundation& foundation) {
    checkAttributes(element, Elements::found, findings);
    checkHasNoChildren(element, findings);
    checkNumberText(element, std::to_string(foundation.getNumber()));
    checkNumber(locate(element, "NUMBER"), foundation.getNumber());
    checkName(locate(element, "NAME"), foundation.getName());
  }

  void checkNumberText(const Data& element, const std::string& number) {
    const std::string consequence = "; it is read as number " + number;
    const KvXmlPosition here = locate(element, "NUMBER");
    const std::optional<int> given = AttributeIn::readInteger(element, "NUMBER");
    if (!AttributeIn::readString(element, "NUMBER"))
      findings.add(here, "<FOUND> has no NUMBER" + consequence);
    else if (!given)
      findings.add(here, showAttribute(element, "NUMBER") + " " + tellNoInteger(element, "NUMBER") +
                             consequence);
    else if (*given == -1)
      findings.add(here, showAttribute(element, "NUMBER") + " counts as missing" + consequence);
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

  const FoundationManager& read;
  Findings& findings;
  std::unordered_map<int, KvXmlPosition> numbers;
  std::unordered_map<std::string, KvXmlPosition> names;
};

/// Adds all lists of foundations below `top`, in document order.
void findLists(const Data& top, std::vector<const Data*>& lists) {
  for (const Data* child : top.getChildren())
    if (child->getName() == Elements::foundations.name)
      lists.push_back(child);
    else
      findLists(*child, lists);
}

}  // namespace

void checkLegacy(const Documents::Tree& tree, const FoundationManager& read, Findings& findings) {
  std::vector<const Data*> lists;
  findLists(tree.document->getRoot(), lists);
  if (lists.empty()) return;
  ListCheck(read, findings).check(*lists.front());
  const KvXmlPosition first = lists.front()->getPosition();
  std::for_each(lists.begin() + 1, lists.end(), [&](const Data* list) {
    const KvXmlPosition here = list->getPosition();
    findings.add(here, "only the first <FOUNDATIONS> of a model is read, " +
                           showPlace(first, here) + "; this one is skipped");
  });
}

}  // namespace Checks
