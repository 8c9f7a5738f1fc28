#include "faults/documents.h"
#include "support/newer_documents.h"

namespace FaultTest {

/// Printed and parsed again, so that a reader finds it as it comes from a file.
struct Container::Document {
  explicit Document(const Lines& lines) {
    KvXmlN::Document made(lines.front());
    append(made.getRoot(), lines);
    parsed = TestSupport::parse(TestSupport::print(made));
  }
  std::unique_ptr<KvXmlN::Document> parsed;
};

Container::Container(const Lines& lines) : document(std::make_unique<Document>(lines)) {}

Container::~Container() = default;

KvXmlN::Data& Container::get() const { return document->parsed->getRoot(); }

}  // namespace FaultTest
