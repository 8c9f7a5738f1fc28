#include "documents/containers.h"

#include <algorithm>

#include "documents/vocabulary.h"

namespace Documents {
namespace {

using KvXmlN::Data;

void addContainers(Data& top, std::vector<Data*>& containers) {
  if (hasChild(top, isBedding)) {
    containers.push_back(&top);
    return;
  }
  for (Data* child : top.getChildren()) addContainers(*child, containers);
}

bool isNamedContainer(const Data* element) { return element->getName() == Exchange::container; }

/// Adds all elements with the usual name of a container.
void addNamed(Data& top, std::vector<Data*>& containers) {
  if (isNamedContainer(&top)) containers.push_back(&top);
  for (Data* child : top.getChildren()) addNamed(*child, containers);
}

}  // namespace

bool isBedding(const Data& element) {
  const std::string& name = element.getName();
  return name == Exchange::whole.name || name == Exchange::curve.name ||
         name == Exchange::surface.name;
}

bool isWholeBedding(const Data& element) { return element.getName() == Exchange::whole.name; }

bool hasChild(const Data& element, bool (*test)(const Data&)) {
  const std::vector<Data*>& children = element.getChildren();
  return std::any_of(children.begin(), children.end(),
                     [test](const Data* child) { return test(*child); });
}

std::vector<Data*> listContainers(Data& root) {
  std::vector<Data*> containers;
  addContainers(root, containers);
  // When some have the usual name, the others are no containers: their children are something else.
  const auto firstOther =
      std::stable_partition(containers.begin(), containers.end(), isNamedContainer);
  if (firstOther != containers.begin()) containers.erase(firstOther, containers.end());
  if (!containers.empty() || root.getName() == Kvml::root) return containers;
  addNamed(root, containers);
  return containers;
}

}  // namespace Documents
