#pragma once

#include <optional>
#include <string>

#include "checks/rules.h"

namespace ChecksTest {

/// A legacy model, the first of whose `lines` is line 4.
inline std::string makeModel(const std::string& lines) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS>\n" + lines + "\n</FOUNDATIONS>\n</SMOD>\n";
}

/// An exchange document, the first of whose `lines` is line 2.
inline std::string makeExchange(const std::string& lines) {
  return "<Beddings>\n" + lines + "\n</Beddings>\n";
}

/// What is found in a document, a line each: line and column, then the sentence.
inline std::string check(const std::string& bytes,
                         const std::optional<std::string>& version = std::nullopt) {
  Documents::Document document({"file", "", bytes}, {version, {}, {}});
  const Checks::Findings findings = Checks::find(document);
  std::string text;
  for (const Checks::Finding& finding : findings.list())
    text += std::to_string(finding.position.line) + ":" + std::to_string(finding.position.column) +
            ": " + finding.sentence + "\n";
  return text;
}

}  // namespace ChecksTest
