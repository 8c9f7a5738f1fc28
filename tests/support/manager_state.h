#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "support/foundations.h"

namespace TestSupport {

/// All that a foundation holds, as a line; null is "null".
inline std::string describeWhole(Found::Foundation* foundation) {
  if (foundation == nullptr) return "null";
  return std::to_string(foundation->getNumber()) + " <" + foundation->getName() + "> " +
         describeValues(*foundation) + (foundation->getChanged() ? " changed" : "");
}

/// All that a manager shows, without a pointer, so that two managers can be compared: a line each
/// for the foundations of the live list and those of the removed list, and where the current one
/// stands.
inline std::vector<std::string> describeState(const Found::FoundationManager& manager) {
  std::vector<std::string> lines;
  std::string current = manager.getCurrentFoundation() == nullptr ? "none" : "elsewhere";
  const auto addList = [&](const std::string& title, const std::vector<Found::Foundation*>& list) {
    for (Found::Foundation* foundation : list) lines.push_back(title + describeWhole(foundation));
    const auto place = std::find(list.begin(), list.end(), manager.getCurrentFoundation());
    if (current == "elsewhere" && place != list.end())
      current = title + std::to_string(place - list.begin());
  };
  addList("live ", manager.getFoundations());
  addList("removed ", manager.getRemovedFoundations());
  lines.push_back("current " + current);
  lines.push_back("maximum " + std::to_string(manager.getMaxFoundationValue()));
  return lines;
}

}  // namespace TestSupport
