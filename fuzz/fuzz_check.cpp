#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "any_document.h"
#include "checks/rules.h"
#include "memory_use.h"
#include "text/utf8.h"

// Any bytes are checked.

namespace {

using Checks::Finding;
using Documents::Document;
using Found::Foundation;
using Fuzz::require;

/// Sentences go to terminals, a line each.
void checkSentence(const std::string& sentence) {
  require(!sentence.empty() && Utf8::isValid(sentence), "a finding is text", sentence);
  const auto isControl = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F;
  };
  require(std::none_of(sentence.begin(), sentence.end(), isControl),
          "a finding has no control characters", sentence);
}

void check(Document& document) {
  const Checks::Findings findings = Checks::find(document);
  const std::vector<Foundation*>& foundations = document.getFoundations().getFoundations();
  std::size_t owned = 0;
  KvXmlPosition last{1, 1};
  for (const Finding& finding : findings.list()) {
    checkSentence(finding.sentence);
    require(std::tie(last.line, last.column) <=
                std::tie(finding.position.line, finding.position.column),
            "findings come in the order of the document", finding.sentence);
    last = finding.position;
    if (finding.foundation == nullptr) continue;
    ++owned;
    require(
        std::find(foundations.begin(), foundations.end(), finding.foundation) != foundations.end(),
        "a finding is about a foundation that was read", finding.sentence);
  }
  std::size_t counted = 0;
  for (const Foundation* foundation : foundations) counted += findings.count(*foundation);
  require(counted == owned, "findings are counted by their foundations");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = Fuzz::takeAll(data, size);
  const Fuzz::MemoryUse use;
  const auto document = Fuzz::open(bytes);
  if (document != nullptr) check(*document);
  Fuzz::requireLittle(use, size);
  return 0;
}
