#include "checks/rule.h"

const std::vector<const Checks::Rule*>& Checks::Rules::list() {
  static const auto& rules = *new const std::vector<const Rule*>{
      &unknownAttribute, &unknownElement, &misplacedElement, &secondList,     &otherVersion,
      &unreadableValue,  &infiniteValue,  &negativeValue,    &unknownFailure, &missingNumber,
      &unreadableNumber, &numberBelowOne, &sameNumber,       &missingName,    &sameName,
      &twoParts,         &unknownCurrent};
  return rules;
}
