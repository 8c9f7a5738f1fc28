#include "checks/attributes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "text/display_text.h"

namespace Checks {
namespace {

using Documents::AttributeWord;
using Documents::Element;
using Documents::ElementWord;
using Documents::Kind;

/// What is wrong with an attribute and what a reader makes of it.
struct Wrong {
  const Rule& rule;
  std::string sentence;  // without the attribute
};

/// None when nothing is wrong.
using Fault = std::optional<Wrong>;

Fault judgeFlag(const Element& element, const std::string& name) {
  if (element.readInteger(name)) return std::nullopt;
  return Wrong{Rules::unreadableValue,
               describeNonInteger(element, name) + "; it is read as 0, which is not generated"};
}

Fault judgeNumber(const Element& element, const std::string& name, bool isPartOfLine) {
  const std::optional<double> value = element.readNumber(name);
  if (!value) return Wrong{Rules::unreadableValue, "is no number; it is read as 0"};
  if (isPartOfLine && std::isnan(*value))
    return Wrong{Rules::infiniteValue,
                 "is not finite; the line stiffness that it belongs to is not read"};
  if (!std::isfinite(*value))
    return Wrong{Rules::infiniteValue,
                 "is not finite; it is read as " + DisplayText::fromNumber(*value)};
  if (*value < 0.0) return Wrong{Rules::negativeValue, "is negative; it is read as it is"};
  return std::nullopt;
}

std::string showNumber(const Failures::Mode& mode) {
  return fmt::format("{} ({})", static_cast<int>(mode.value), mode.word);
}

Fault judgeFailureNumber(const Element& element, const std::string& name) {
  const std::optional<int> value = element.readInteger(name);
  if (!value)
    return Wrong{Rules::unknownFailure,
                 describeNonInteger(element, name) + "; it is read as 0, no failure"};
  if (Failures::find(static_cast<Found::Foundation::Failure>(*value)) != nullptr)
    return std::nullopt;
  const auto& [tension, none, compression] = Failures::modes;
  return Wrong{Rules::unknownFailure,
               fmt::format("is none of {}, {} and {}; it is kept as it is", showNumber(tension),
                           showNumber(none), showNumber(compression))};
}

Fault judgeFailureText(const Element& element, const std::string& name) {
  if (Failures::find(element.readText(name).value_or("")) != nullptr) return std::nullopt;
  const auto& [tension, none, compression] = Failures::modes;
  return Wrong{Rules::unknownFailure,
               fmt::format(R"(is none of "{}", "{}" and "{}"; it is read as {})", tension.word,
                           none.word, compression.word, none.word)};
}

Fault judge(const Element& element, const AttributeWord& attribute) {
  switch (attribute.kind) {
    case Kind::identity:
      break;
    case Kind::flag:
      return judgeFlag(element, attribute.name);
    case Kind::stiffness:
    case Kind::factor:
      return judgeNumber(element, attribute.name, false);
    case Kind::lineStiffness:
      return judgeNumber(element, attribute.name, true);
    case Kind::failureNumber:
      return judgeFailureNumber(element, attribute.name);
    case Kind::failureWord:
      return judgeFailureText(element, attribute.name);
  }
  return std::nullopt;
}

/// Attributes that declare or have a namespace are accepted on every element.
bool isOfNamespace(const std::string& name) {
  return name == "xmlns" || name.find(':') != name.npos;
}

}  // namespace

void checkAttributes(const Element& element, const ElementWord& known, Findings& findings) {
  for (const std::string& name : element.listAttributeNames()) {
    const auto attribute =
        std::find_if(known.attributes.begin(), known.attributes.end(),
                     [&name](const AttributeWord& candidate) { return candidate.name == name; });
    if (attribute != known.attributes.end()) {
      if (const Fault fault = judge(element, *attribute))
        findings.add(fault->rule, element.locate(name),
                     showAttribute(element, name) + " " + fault->sentence);
    } else if (!isOfNamespace(name)) {
      findings.add(Rules::unknownAttribute, element.locate(name),
                   showText(name) + " is no attribute of <" + known.name + ">; it is not read");
    }
  }
}

void checkHasNoChildren(const Element& element, Findings& findings) {
  for (const Element& child : element.listChildren())
    findings.add(
        Rules::unknownElement, child.getPosition(),
        showElement(child) + " is no element of " + showElement(element) + "; it is skipped");
}

std::string describeNonInteger(const Element& element, const std::string& name) {
  const std::optional<double> value = element.readNumber(name);
  const bool isBeyond = value && std::fabs(*value) > std::numeric_limits<int>::max();
  return isBeyond ? "is out of range" : "is no whole number";
}

}  // namespace Checks
