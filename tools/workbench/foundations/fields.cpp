#include "foundations/fields.h"

#include <cmath>
#include <optional>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "kv/xml_n.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Fields {
namespace {

using Found::Foundation;

template <bool (Foundation::*GetVector)(KvVector3D&) const, double KvVector3D::*component>
Value getComponent(Foundation& foundation) {
  KvVector3D vector;
  if (!(foundation.*GetVector)(vector)) return {};
  return vector.*component;
}

template <bool (Foundation::*GetVector)(KvVector3D&) const,
          void (Foundation::*SetVector)(const KvVector3D*), double KvVector3D::*component>
void setComponent(Foundation& foundation, const Value& value) {
  KvVector3D vector;
  const bool isThere = (foundation.*GetVector)(vector);
  const double* const number = std::get_if<double>(&value);
  if (number == nullptr && !isThere) return;
  vector.*component = number != nullptr ? *number : 0.0;
  const bool goes = number == nullptr && !(vector != KvVector3D());
  (foundation.*SetVector)(goes ? nullptr : &vector);
}

template <Foundation::Failure (Foundation::*GetFailure)()>
Value getFailure(Foundation& foundation) {
  return Failures::getWord((foundation.*GetFailure)());
}

template <void (Foundation::*SetFailure)(Foundation::Failure)>
void setFailure(Foundation& foundation, const Value& value) {
  (foundation.*SetFailure)(Failures::read(std::get<std::string>(value)).value());
}

template <auto Get>
Value get(Foundation& foundation) {
  return (foundation.*Get)();
}

template <class Held, auto Set>
void set(Foundation& foundation, const Value& value) {
  (foundation.*Set)(std::get<Held>(value));
}

/// The library takes a zero of the other sign for the one that it has.
template <void (Foundation::*Set)(double)>
void setFactor(Foundation& foundation, const Value& value) {
  (foundation.*Set)(1.0);
  (foundation.*Set)(std::get<double>(value));
}

template <bool (Foundation::*Get)(KvVector3D&) const, void (Foundation::*Set)(const KvVector3D*),
          double KvVector3D::*component>
Field makeStiffness(const char* name) {
  return {name, Type::stiffness, getComponent<Get, component>, setComponent<Get, Set, component>};
}

template <Foundation::Failure (Foundation::*Get)(), void (Foundation::*Set)(Foundation::Failure)>
Field makeFailure(const char* name) {
  return {name, Type::failure, getFailure<Get>, setFailure<Set>};
}

template <double KvVector3D::*component>
Field makeArea(const char* name) {
  return makeStiffness<&Foundation::getDispArea, &Foundation::setDispArea, component>(name);
}

template <double KvVector3D::*component>
Field makeLine(const char* name) {
  return makeStiffness<&Foundation::getDispLine, &Foundation::setDispLine, component>(name);
}

std::optional<double> readNumber(const std::string& text) {
  KvXmlN::Data element("number");
  element.setAttribute("value", text, true);
  return KvXmlN::AttributeIn::readDouble(element, "value");
}

std::optional<int> readInteger(const std::string& text) {
  KvXmlN::Data element("number");
  element.setAttribute("value", text, true);
  return KvXmlN::AttributeIn::readInteger(element, "value");
}

Value parseNumber(const std::string& text, const char* advice) {
  const std::optional<double> number = readNumber(text);
  if (!number || !std::isfinite(*number)) throw std::invalid_argument(advice);
  return *number;
}

}  // namespace

const std::vector<Field>& list() {
  static const auto& fields = *new const std::vector<Field>{
      {"number", Type::integer, get<&Foundation::getNumber>, set<int, &Foundation::setNumber>},
      {"name", Type::text, get<&Foundation::getName>, set<std::string, &Foundation::setName>},
      {"generated", Type::flag, get<&Foundation::isGenerated>,
       set<bool, &Foundation::setGenerated>},
      makeArea<&KvVector3D::x>("areaX"),
      makeArea<&KvVector3D::y>("areaY"),
      makeArea<&KvVector3D::z>("areaZ"),
      makeFailure<&Foundation::getFailAreaZ, &Foundation::setFailAreaZ>("areaFailureZ"),
      {"areaFactor", Type::factor, get<&Foundation::getFactorArea>,
       setFactor<&Foundation::setFactorArea>},
      makeLine<&KvVector3D::x>("lineX"),
      makeLine<&KvVector3D::y>("lineY"),
      makeLine<&KvVector3D::z>("lineZ"),
      makeStiffness<&Foundation::getRotLine, &Foundation::setRotLine, &KvVector3D::x>(
          "lineRotationX"),
      makeFailure<&Foundation::getFailLineX, &Foundation::setFailLineX>("lineFailureX"),
      makeFailure<&Foundation::getFailLineY, &Foundation::setFailLineY>("lineFailureY"),
      makeFailure<&Foundation::getFailLineZ, &Foundation::setFailLineZ>("lineFailureZ"),
      {"lineFactor", Type::factor, get<&Foundation::getFactorLine>,
       setFactor<&Foundation::setFactorLine>},
  };
  return fields;
}

const Field* find(std::string_view name) {
  for (const Field& field : list())
    if (field.name == name) return &field;
  return nullptr;
}

Value parse(const Field& field, const std::string& text) {
  switch (field.type) {
    case Type::integer:
      if (const std::optional<int> number = readInteger(text); number && *number > 0)
        return *number;
      throw std::invalid_argument("a whole number from 1 on");
    case Type::text:
      if (!text.empty() && Utf8::isXmlText(text)) return text;
      throw std::invalid_argument("a text in UTF-8, without control characters");
    case Type::flag:
      if (text == "yes" || text == "true") return true;
      if (text == "no" || text == "false" || text.empty()) return false;
      throw std::invalid_argument("yes or no");
    case Type::stiffness:
      if (text.empty() || text == "-") return {};
      return parseNumber(text, "a number such as 1500 or 2.5e4, or nothing");
    case Type::failure:
      if (text.empty()) return std::string("none");
      if (Failures::read(text)) return text;
      throw std::invalid_argument("tension, compression or none");
    case Type::factor:
      break;
  }
  return parseNumber(text.empty() ? "0" : text, "a number such as 0.1");
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
