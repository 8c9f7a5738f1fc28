#include "foundations/fields.h"

#include <utility>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "text/display_text.h"
#include "text/encoding.h"

namespace Fields {
namespace {

using Found::Foundation;

template <bool (Foundation::*GetVector)(KvVector3D&) const, double KvVector3D::*component>
Value getComponent(Foundation& foundation) {
  KvVector3D vector;
  if (!(foundation.*GetVector)(vector)) return {};
  return vector.*component;
}

template <Foundation::Failure (Foundation::*GetFailure)()>
Value getFailure(Foundation& foundation) {
  return Failures::getWord((foundation.*GetFailure)());
}

template <auto Get>
Value get(Foundation& foundation) {
  return (foundation.*Get)();
}

}  // namespace

const std::vector<Field>& list() {
  static const std::vector<Field> fields = {
      {"number", get<&Foundation::getNumber>},
      {"name", get<&Foundation::getName>},
      {"generated", get<&Foundation::isGenerated>},
      {"areaX", getComponent<&Foundation::getDispArea, &KvVector3D::x>},
      {"areaY", getComponent<&Foundation::getDispArea, &KvVector3D::y>},
      {"areaZ", getComponent<&Foundation::getDispArea, &KvVector3D::z>},
      {"areaFailureZ", getFailure<&Foundation::getFailAreaZ>},
      {"areaFactor", get<&Foundation::getFactorArea>},
      {"lineX", getComponent<&Foundation::getDispLine, &KvVector3D::x>},
      {"lineY", getComponent<&Foundation::getDispLine, &KvVector3D::y>},
      {"lineZ", getComponent<&Foundation::getDispLine, &KvVector3D::z>},
      {"lineRotationX", getComponent<&Foundation::getRotLine, &KvVector3D::x>},
      {"lineFailureX", getFailure<&Foundation::getFailLineX>},
      {"lineFailureY", getFailure<&Foundation::getFailLineY>},
      {"lineFailureZ", getFailure<&Foundation::getFailLineZ>},
      {"lineFactor", get<&Foundation::getFactorLine>},
  };
  return fields;
}

bool areAlike(const Value& a, const Value& b) {
  const auto hasNone = [](const Value& value) {
    return std::holds_alternative<std::monostate>(value);
  };
  if (hasNone(a) != hasNone(b)) return (hasNone(a) ? b : a) == Value(0.0);
  const auto isNan = [](const Value& value) {
    const double* const number = std::get_if<double>(&value);
    return number != nullptr && *number != *number;
  };
  const auto isText = [](const Value& value) { return std::holds_alternative<std::string>(value); };
  if (isText(a) && isText(b))
    return Encoding::toUtf8(std::get<std::string>(a)) == Encoding::toUtf8(std::get<std::string>(b));
  return a == b || (isNan(a) && isNan(b));
}

std::vector<Difference> compare(Foundation& first, Foundation& second) {
  std::vector<Difference> differences;
  for (const Field& field : list()) {
    Value before = field.get(first);
    Value after = field.get(second);
    if (!areAlike(before, after))
      differences.push_back({field, std::move(before), std::move(after)});
  }
  return differences;
}

std::string show(const Value& value) {
  struct Printer {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(bool flag) const { return flag ? "yes" : "no"; }
    std::string operator()(int number) const { return std::to_string(number); }
    std::string operator()(double number) const { return DisplayText::fromNumber(number); }
    std::string operator()(const std::string& text) const { return DisplayText::fromName(text); }
  };
  return std::visit(Printer(), value);
}

std::string describe(const Foundation& foundation) {
  return fmt::format(R"(number {} "{}")", foundation.getNumber(),
                     DisplayText::fromName(foundation.getName()));
}

}  // namespace Fields
