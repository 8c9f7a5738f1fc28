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
  std::vector<Foundation*> foundations;
  std::size_t skipped = 0;
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries) {
      checkPlace(document, entry.element);
      const bool isRead = entry.fate == Entry::Fate::read || entry.fate == Entry::Fate::renamed;
      require((entry.foundation != nullptr) == isRead, "what is read is a foundation",
              entry.element.getName());
      if (isRead) foundations.push_back(entry.foundation);
      if (entry.fate != Entry::Fate::read) ++skipped;
    }
  require(foundations == document.getFoundations().getFoundations(),
          "each foundation is read from an entry");
  const bool isTold = document.getForm() != Documents::Form::legacy;
  require(Documents::countNotes(document) == (isTold ? skipped : 0),
          "whatever is not read as it is counts");
  require(Documents::listNotes(document).size() ==
              (isTold ? skipped + document.getEntries().size() : 0),
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
