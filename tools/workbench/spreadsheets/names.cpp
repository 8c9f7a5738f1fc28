#include "spreadsheets/names.h"

#include <optional>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "found/foundation_manager.h"
#include "spreadsheets/sheet.h"
#include "text/display_text.h"
#include "text/near_name.h"
#include "text/wording.h"

namespace Spreadsheets {
namespace {

/// Where the names are told, or which they are.
std::string tellNames() {
  if (Wording::get().fields != nullptr) return Wording::get().fields;
  return fmt::format("there are {}", fmt::join(listNames(), ", "));
}

std::vector<std::string_view> collectNames() {
  std::vector<std::string_view> names;
  for (const Fields::Field& field : Fields::list()) names.emplace_back(field.name);
  names.emplace_back(currentField);
  return names;
}

}  // namespace

const std::vector<std::string_view>& listNames() {
  static const auto* const names = new std::vector<std::string_view>(collectNames());
  return *names;
}

bool isName(std::string_view name) { return name == currentField || Fields::find(name) != nullptr; }

std::string describeUnknown(const char* kind, std::string_view name) {
  const std::vector<std::string> names(listNames().begin(), listNames().end());
  const std::optional<std::string> near = findNearName(std::string(name), names);
  return fmt::format("there is no {} \"{}\"; {}", kind,
                     DisplayText::shorten(DisplayText::fromName(std::string(name)), 60),
                     near ? "did you mean " + *near + "?" : tellNames());
}

std::string makeDefaultName(int number) {
  return Found::FoundationManager().giveNextFoundationName(number);
}

}  // namespace Spreadsheets
