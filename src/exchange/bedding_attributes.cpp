#include "exchange/bedding_attributes.h"

#include <charconv>
#include <string>

#include "exchange/failure_texts.h"

namespace Found::Umo {
namespace {

/// As std::stoi() converts, but without exceptions, and alike under every process locale.
std::optional<int> startOfNumber(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
  if (first == std::string::npos) return std::nullopt;
  const char* begin = text.data() + first;
  const char* const end = text.data() + text.size();
  // After the last character of a std::string comes a zero, so begin[1] can be read.
  if (*begin == '+' && begin[1] != '-') ++begin;
  int number = 0;
  if (std::from_chars(begin, end, number).ec != std::errc()) return std::nullopt;
  return number;
}

}  // namespace

Foundation::Failure readFailureAttribute(const KvXmlN::Data& element, const std::string& key) {
  const KvXmlN::AttributeData* const attribute = element.findAttribute(key);
  if (attribute == nullptr) return Foundation::None;
  return failureFromText(attribute->getData()).value_or(Foundation::None);
}

std::optional<int> readNumberAttribute(const KvXmlN::Data& element, const std::string& key) {
  const KvXmlN::AttributeData* const attribute = element.findAttribute(key);
  if (attribute == nullptr) return std::nullopt;
  return startOfNumber(attribute->getData());
}

}  // namespace Found::Umo
