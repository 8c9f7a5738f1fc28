#include "checks/rule.h"

const std::vector<const Checks::Rule*>& Checks::Rules::list() {
  static const std::vector<const Rule*> rules = {
      &unknownAttribute, &unknownElement, &misplacedElement, &secondList,     &otherVersion,
      &unreadableValue,  &infiniteValue,  &negativeValue,    &unknownFailure, &missingNumber,
      &unreadableNumber, &numberBelowOne, &sameNumber,       &missingName,    &sameName,
      &twoParts,         &unknownCurrent};
  return rules;
}
