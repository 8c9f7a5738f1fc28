#include "documents/spelling.h"

#include <variant>

#include <fmt/format.h>

#include "foundations/failures.h"
#include "foundations/fields.h"
#include "text/display_text.h"

namespace Spelling {
namespace {

using Documents::AttributeWord;
using Documents::Kind;
using Found::Foundation;

/// A failure mode as this kind of attribute writes it, as a number or a word.
std::string spellFailure(const std::string& word, Kind kind) {
  const Foundation::Failure mode = Failures::read(word).value();
  if (kind == Kind::failureNumber) return std::to_string(static_cast<int>(mode));
  return Failures::find(mode) != nullptr ? word : "";
}

/// True for an attribute that means the same as its absence.
bool isNeedless(const AttributeWord& word, const Fields::Value& value) {
  if (word.kind == Kind::failureNumber) return value == Fields::Value("none");
  const bool isStiffness = word.kind == Kind::stiffness || word.kind == Kind::lineStiffness;
  return isStiffness && std::holds_alternative<std::monostate>(value);
}

}  // namespace

std::optional<std::string> spell(const AttributeWord& word, Foundation& foundation) {
  const Fields::Value value = Fields::find(word.field)->get(foundation);
  if (const auto* const flag = std::get_if<bool>(&value)) return *flag ? "1" : "0";
  if (const auto* const integer = std::get_if<int>(&value)) return std::to_string(*integer);
  if (const auto* const number = std::get_if<double>(&value))
    return DisplayText::fromNumber(*number);
  if (std::holds_alternative<std::monostate>(value)) return std::nullopt;
  const auto& text = std::get<std::string>(value);
  return word.kind == Kind::identity ? text : spellFailure(text, word.kind);
}

std::string makeElement(const Documents::ElementWord& word, Foundation& foundation,
                        const Documents::TagStyle& style, const Charset& charset) {
  std::string element = std::string("<") + word.name;
  for (const AttributeWord& attribute : word.attributes) {
    if (isNeedless(attribute, Fields::find(attribute.field)->get(foundation))) continue;
    const std::string value = spell(attribute, foundation).value();
    element += fmt::format("{}{}={}{}{}", style.separator, attribute.name, style.quote,
                           charset.writeValue(value, style.quote), style.quote);
  }
  return element + style.closing;
}

}  // namespace Spelling
