#include "exchange/documents.h"

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"

using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Found::Umo::BeddingWriter;

namespace ExchangeTest {

std::string makeDocument(const std::string& inside) {
  return "<?xml version=\"1.0\"?>\n<Exchange>" + inside + "</Exchange>\n";
}

std::string makePrinted(const std::vector<std::string>& elements) {
  std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  if (elements.empty()) return text + "<Exchange />\n";
  text += "<Exchange>\n";
  for (const std::string& element : elements) text += "  " + element + "\n";
  return text + "</Exchange>\n";
}

std::string write(const FoundationManager& manager, const std::string& version) {
  KvXmlN::Document document("Exchange");
  const Tools::VersionText versionText(version);
  BeddingWriter(manager, versionText).write(document.getRoot());
  return print(document);
}

void readText(FoundationManager& manager, const std::string& text, const std::string& version,
              Found::Umo::ReadMessenger* messenger) {
  const std::unique_ptr<KvXmlN::Document> document = parse(text);
  const Tools::VersionText versionText(version);
  BeddingReader reader(manager, versionText);
  reader.setMessenger(messenger);
  reader.read(document->getRoot());
}

}  // namespace ExchangeTest
