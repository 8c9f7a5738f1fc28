#include "exchange/failure_texts.h"

#include <string_view>
#include <utility>

namespace Found::Umo {
namespace {

constexpr std::pair<Foundation::Failure, std::string_view> failureTexts[] = {
    {Foundation::Tension, "tension"},
    {Foundation::None, "none"},
    {Foundation::Compression, "compression"},
};

}  // namespace

std::optional<Foundation::Failure> failureFromText(std::string_view text) {
  for (const auto& [failure, name] : failureTexts)
    if (text == name) return failure;
  return std::nullopt;
}

std::string failureToText(Foundation::Failure failure) {
  for (const auto& [value, name] : failureTexts)
    if (failure == value) return std::string(name);
  return {};
}

}  // namespace Found::Umo
