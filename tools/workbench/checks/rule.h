#pragma once

#include <vector>

/// What is looked for in documents.
namespace Checks {

/// One kind of finding. Its name never changes: scripts rely on it.
struct Rule {
  const char* name;
  const char* description;  // a sentence for the user
};

namespace Rules {

inline constexpr Rule unknownAttribute = {
    "unknown-attribute", "An attribute has a name that no reader knows, and is not read."};
inline constexpr Rule unknownElement = {
    "unknown-element", "An element stands where readers know none of its name, and is skipped."};
inline constexpr Rule misplacedElement = {
    "misplaced-element", "A foundation stands where no foundations are read, and is skipped."};
inline constexpr Rule secondList = {
    "second-list", "A model has several lists of foundations, of which only the first is read."};
inline constexpr Rule otherVersion = {
    "other-version", "A bedding belongs to another version of the document, and is skipped."};
inline constexpr Rule unreadableValue = {
    "unreadable-value", "An attribute holds no number of its kind, and is read as 0."};
inline constexpr Rule infiniteValue = {"infinite-value",
                                       "A stiffness or factor is infinite or not a number."};
inline constexpr Rule negativeValue = {"negative-value", "A stiffness or factor is negative."};
inline constexpr Rule unknownFailure = {"unknown-failure",
                                        "A failure is none of those that there are."};
inline constexpr Rule missingNumber = {"missing-number", "A foundation has no number."};
inline constexpr Rule unreadableNumber = {
    "unreadable-number", "The number of a foundation is no whole number that can be read."};
inline constexpr Rule numberBelowOne = {
    "number-below-one", "The number of a bedding is below 1, and the bedding is skipped."};
inline constexpr Rule sameNumber = {"same-number", "Two foundations have the same number."};
inline constexpr Rule missingName = {"missing-name",
                                     "A bedding has no name or an empty one, and is skipped."};
inline constexpr Rule sameName = {"same-name", "Two foundations have the same name."};
inline constexpr Rule twoParts = {
    "two-parts", "A foundation is in two parts, of which hosts keep only the first."};
inline constexpr Rule unknownCurrent = {
    "unknown-current", "The current foundation is one that the document does not hold."};

/// All of them, in the order above.
const std::vector<const Rule*>& list();

}  // namespace Rules
}  // namespace Checks
