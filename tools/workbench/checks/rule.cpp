#include "checks/rule.h"

#include <iterator>

const std::vector<const Checks::Rule*>& Checks::Rules::list() {
  static constexpr const Rule* all[] = {
      &unknownAttribute, &unknownElement, &misplacedElement, &secondList,     &otherVersion,
      &unreadableValue,  &infiniteValue,  &negativeValue,    &unknownFailure, &missingNumber,
      &unreadableNumber, &numberBelowOne, &sameNumber,       &missingName,    &sameName,
      &twoParts,         &unknownCurrent};
  static const auto* const rules = new std::vector<const Rule*>(std::begin(all), std::end(all));
  return *rules;
}
