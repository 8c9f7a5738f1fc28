#include <cstdint>
#include <string>
#include <vector>

#include "any_document.h"
#include "documents/notes.h"
#include "memory_use.h"

// Any bytes are opened as a document, as each version; its foundations are read and its elements
// found in the bytes.

namespace {

using Documents::ByteRange;
using Documents::Document;
using Documents::Element;
using Documents::Entries;
using Documents::Entry;
using Found::Foundation;
using Fuzz::require;

void checkPlace(const Document& document, const Element& element) {
  const std::string& bytes = document.getContent().bytes;
  const ByteRange range = document.locate(element);
  require(range.begin < range.end && range.end <= bytes.size(), "an element stands in the bytes",
          element.getName());
  const std::string text = bytes.substr(range.begin, range.end - range.begin);
  const std::string tag = "<" + element.getName();
  require(text.compare(0, tag.size(), tag) == 0, "an element starts with its tag", text);
  require(text.back() == '>', "an element ends with a tag", text);
}

/// Entries become foundations in the order in which these are read.
void checkEntries(Document& document) {
  using Fate = Entry::Fate;
  std::vector<Foundation*> foundations;
  std::size_t told = 0;
  const bool isModel = document.getForm() == Documents::Form::legacy;
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries) {
      checkPlace(document, entry.element);
      const bool isFirst = entry.fate == Fate::read || entry.fate == Fate::renamed;
      require((entry.foundation != nullptr) == (isFirst || entry.fate == Fate::otherPart),
              "what is read is a foundation", entry.element.getName());
      if (isFirst) foundations.push_back(entry.foundation);
      const bool isWhole = entry.fate == Fate::read || entry.fate == Fate::otherPart;
      if (isModel ? entry.fate == Fate::outside : !isWhole) ++told;
    }
  require(foundations == document.getFoundations().getFoundations(),
          "each foundation is read from an entry");
  require(Documents::countNotes(document) == told, "whatever is not read as it is counts");
  const std::size_t lists = isModel ? 0 : document.listLists().size();
  require(Documents::listNotes(document).size() == told + lists,
          "whatever counts is told, and each container");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = Fuzz::takeAll(data, size);
  for (const char* const version : {"1.0", "2.0"}) {
    const auto document = Fuzz::open(bytes, version);
    if (document != nullptr) checkEntries(*document);
  }
  const Fuzz::MemoryUse use;
  const auto document = Fuzz::open(bytes);
  if (document != nullptr) checkEntries(*document);
  Fuzz::requireLittle(use, size);
  return 0;
}
