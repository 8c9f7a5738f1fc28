#include "faults/documents.h"

namespace FaultTest {

struct Container::Document {
  explicit Document(const Lines& lines) : top(lines.front()) { append(top, lines); }
  KvXmlN::Data top;
};

Container::Container(const Lines& lines) : document(std::make_unique<Document>(lines)) {}

Container::~Container() = default;

KvXmlN::Data& Container::get() const { return document->top; }

}  // namespace FaultTest
