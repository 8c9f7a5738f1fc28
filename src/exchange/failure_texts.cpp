#include "exchange/failure_texts.h"

#include <utility>

namespace Found::Umo {
namespace {

constexpr std::pair<Foundation::Failure, const char*> failureTexts[] = {
    {Foundation::Tension, "tension"},
    {Foundation::None, "none"},
    {Foundation::Compression, "compression"},
};

}  // namespace

std::optional<Foundation::Failure> failureFromText(const std::string& text) {
  for (const auto& [failure, name] : failureTexts)
    if (text == name) return failure;
  return std::nullopt;
}

std::string failureToText(Foundation::Failure failure) {
  for (const auto& [value, name] : failureTexts)
    if (failure == value) return name;
  return {};
}

}  // namespace Found::Umo
