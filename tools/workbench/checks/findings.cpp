#include "checks/findings.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "text/display_text.h"

namespace Checks {

void Findings::add(const Rule& rule, KvXmlPosition position, std::string sentence) {
  add(rule, position, std::move(sentence), position);
}

void Findings::add(const Rule& rule, KvXmlPosition position, std::string sentence,
                   KvXmlPosition owner) {
  findings.push_back({&rule, position, std::move(sentence), owner, nullptr});
}

void Findings::arrange(const Owners& owners) {
  const auto isBefore = [](const Finding& a, const Finding& b) {
    return std::tie(a.position.line, a.position.column) <
           std::tie(b.position.line, b.position.column);
  };
  std::stable_sort(findings.begin(), findings.end(), isBefore);
  for (Finding& finding : findings) {
    const auto owner = owners.find({finding.owner.line, finding.owner.column});
    if (owner == owners.end()) continue;
    finding.foundation = owner->second;
    ++counts[owner->second];
  }
}

std::size_t Findings::count(const Found::Foundation& foundation) const {
  const auto counted = counts.find(&foundation);
  return counted == counts.end() ? 0 : counted->second;
}

std::string showText(const std::string& text) {
  constexpr std::size_t longest = 60;
  return DisplayText::shorten(DisplayText::fromName(text), longest);
}

std::string quote(const std::string& text) { return '"' + showText(text) + '"'; }

std::string showAttribute(const Documents::Element& element, const std::string& name) {
  return name + "=" + quote(element.readText(name).value_or(""));
}

std::string showElement(const Documents::Element& element) {
  return "<" + showText(element.getName()) + ">";
}

std::string showPlace(KvXmlPosition earlier, KvXmlPosition here) {
  if (earlier.line == here.line) return fmt::format("in column {} of this line", earlier.column);
  return fmt::format("in line {}", earlier.line);
}

}  // namespace Checks
