#include <cstdint>
#include <string>

#include "property.h"
#include "xml_suite/judgement.h"

// What stands before a root element, above all a document type, and what stands in it and behind
// it. Whatever both XML libraries accept, libxml2 accepts too, or it passes on purpose; it is read
// alike, printed alike, and prints the same again. An input is a document as it is.

namespace {

using XmlSuite::Deviation;
using XmlSuite::Judgement;

/// References to entities of a document's own are refused, and what else is refused does no harm.
bool isHarmless(Deviation deviation) { return deviation == Deviation::refused; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const Judgement judgement = XmlSuite::judge(text);
  for (const Deviation deviation : judgement.deviations)
    Fuzz::require(isHarmless(deviation), "the document is taken as libxml2 takes it",
                  list(judgement.deviations) + "\n" + judgement.details);
  return 0;
}
