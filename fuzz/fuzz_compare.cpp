#include <cstdint>
#include <string>

#include "any_document.h"
#include "comparing/differences.h"
#include "memory_use.h"

// Any document is compared with itself and with another one.

namespace {

using Comparing::Difference;
using Documents::Document;
using Fuzz::require;

const std::string other =
    "<?xml version='1.0'?>\n<SMOD><FOUNDATIONS CURRENT='B'><FOUND NUMBER='1' NAME='A' "
    "FZAREA='1'/><FOUND NUMBER='2' NAME='B' FXX='2' FAILYLINE='7'/><FOUND NUMBER='2' NAME='A'/>"
    "<FOUND NUMBER='2' NAME='B'/></FOUNDATIONS></SMOD>";

std::size_t count(Document& document) { return document.getFoundations().getFoundations().size(); }

/// What one document lacks and what the other does account for their sizes.
void checkSizes(Document& first, Document& second) {
  std::size_t removed = 0;
  std::size_t added = 0;
  for (const Difference& difference : Comparing::compare(first, second).foundations) {
    const auto& [before, after] = difference.pair;
    require(before != nullptr || after != nullptr, "a difference is about a foundation");
    if (after == nullptr) ++removed;
    if (before == nullptr) ++added;
    const bool isInBoth = before != nullptr && after != nullptr;
    require(isInBoth == !difference.fields.empty(), "what both have differs in some field");
    for (const Fields::Difference& field : difference.fields)
      require(!Fields::areAlike(field.first, field.second), "a field differs", field.field.name);
  }
  require(count(first) + added == count(second) + removed,
          "foundations are in both documents or missing in one");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = Fuzz::takeAll(data, size);
  const Fuzz::MemoryUse use;
  const auto document = Fuzz::open(bytes);
  if (document == nullptr) return 0;
  const auto same = Fuzz::open(bytes);
  require(Comparing::compare(*document, *same).isEmpty(), "a document is like itself");
  const auto fixed = Fuzz::open(other);
  checkSizes(*document, *fixed);
  checkSizes(*fixed, *document);
  Fuzz::requireLittle(use, 2 * size + other.size());
  return 0;
}
