#include <algorithm>
#include <cstdint>
#include <string>

#include "any_document.h"
#include "checks/rules.h"
#include "memory_use.h"
#include "report/page.h"
#include "text/utf8.h"

// The report of any document.

namespace {

using Documents::Document;
using Fuzz::require;

std::size_t count(const std::string& page, const std::string& part) {
  std::size_t number = 0;
  for (std::size_t at = page.find(part); at != page.npos; at = page.find(part, at + 1)) ++number;
  return number;
}

/// Whatever a document holds, it adds no element and no script to the page.
void checkPage(const std::string& page, std::size_t foundations, std::size_t findings) {
  require(Utf8::isValid(page), "a page is in UTF-8", page);
  const std::string end = "</html>\n";
  require(page.size() > end.size() && page.compare(page.size() - end.size(), end.size(), end) == 0,
          "a page is whole", page);
  require(count(page, "<script") == (foundations > 0 ? 1U : 0U), "a page has its own script only",
          page);
  require(count(page, "<tr") == (foundations > 0 ? foundations + 2 : 0),
          "the table has a row for each foundation", page);
  require(count(page, "<li><span class=\"place\">") == findings,
          "a page has a line for each finding", page);
  const auto isControl = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\n') || byte == 0x7F;
  };
  require(std::none_of(page.begin(), page.end(), isControl), "a page has no control characters",
          page);
}

void report(Document& document) {
  const Checks::Findings findings = Checks::find(document);
  const std::size_t foundations = document.getFoundations().getFoundations().size();
  document.getFoundations().updateFoundationMaximum();
  for (const Units& units : {Units{}, Units{"kN", "m"}})
    checkPage(Report::makePage({document, document.getFoundations(), findings, units}), foundations,
              findings.list().size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = Fuzz::takeAll(data, size);
  const Fuzz::MemoryUse use;
  const auto document = Fuzz::open(bytes);
  if (document != nullptr) report(*document);
  Fuzz::requireLittle(use, size);
  return 0;
}
