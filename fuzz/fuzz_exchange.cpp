#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "exchange/messengers.h"
#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "found/foundation_manager.h"
#include "kv/xml_error.h"
#include "kv/xml_n.h"
#include "property.h"
#include "support/comma_locale.h"
#include "support/foundations.h"
#include "support/manager_state.h"
#include "support/newer_documents.h"

// An exchange document is read, written and read again. The first byte of an input is the version
// and whether the manager holds foundations already; the rest is the document.

namespace {

using ExchangeTest::Messages;
using ExchangeTest::RecordingMessenger;
using Found::Foundation;
using Found::FoundationManager;
using Found::Umo::BeddingReader;
using Found::Umo::BeddingWriter;
using Fuzz::require;
using KvXmlN::Document;
using TestSupport::describeState;
using TestSupport::parse;
using TestSupport::print;
using Tools::VersionText;

std::string join(const Messages& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

/// Foundations that clash with those of a document, and one that is null.
void fill(FoundationManager& manager) {
  for (const char* name : {"A", "A_1", "Found0003"}) {
    Foundation& added = TestSupport::addFoundation(
        manager, static_cast<int>(manager.getFoundations().size()) + 1, name);
    TestSupport::setDispArea(added, 1.0, 0.0, 2.0);
    TestSupport::setRotLine(added, 3.0, 0.0, 0.0);
  }
  manager.add(nullptr);
}

Messages read(FoundationManager& manager, const Document& document, const VersionText& version) {
  RecordingMessenger messenger;
  BeddingReader reader(manager, version);
  reader.setMessenger(&messenger);
  reader.read(document.getRoot());
  return messenger.messages;
}

std::string write(const FoundationManager& manager, const VersionText& version) {
  Document document("Exchange");
  BeddingWriter(manager, version).write(document.getRoot());
  return print(document);
}

void checkMessages(const Messages& messages, std::size_t elements, std::size_t added) {
  const auto renames = static_cast<std::size_t>(std::count_if(
      messages.begin(), messages.end(),
      [](const std::string& message) { return message.rfind("onNameChanged", 0) == 0; }));
  require(messages.size() == elements - added + renames + 1, "each refusal is told once",
          join(messages));
  require(messages.back() == "onReadFinished " + std::to_string(added), "the count is told last",
          join(messages));
}

/// Of those from `first` on no name is empty or taken, and where elements tell numbers, none of
/// these is either.
void checkIdentities(const FoundationManager& manager, std::size_t first, bool isFirstVersion) {
  std::set<std::string> names;
  std::set<int> numbers;
  for (std::size_t i = 0; i < manager.getFoundations().size(); ++i) {
    const Foundation* const foundation = manager.getFoundations()[i];
    if (foundation == nullptr) continue;
    const bool isNewName = names.insert(foundation->getName()).second;
    const bool isNewNumber = numbers.insert(foundation->getNumber()).second;
    if (i < first) continue;
    require(isNewName && !foundation->getName().empty(), "names are unique", foundation->getName());
    require(foundation->getNumber() >= 1, "numbers are positive", foundation->getName());
    require(isNewNumber || isFirstVersion, "numbers are unique", foundation->getName());
  }
}

/// A vector as it comes back: what counts as null is not written, and reads as zeros.
KvVector3D pass(const KvVector3D& v) { return v.isNull() ? KvVector3D() : v; }

void passArea(Foundation& from, Foundation& to) {
  KvVector3D v;
  from.getDispArea(v);
  v = pass(v);
  to.setDispArea(&v);
  to.setFailAreaZ(from.getFailAreaZ());
  to.setFactorArea(from.getFactorArea());
}

void passLine(Foundation& from, Foundation& to) {
  KvVector3D v;
  from.getDispLine(v);
  v = pass(v);
  to.setDispLine(&v);
  from.getRotLine(v);
  v = KvVector3D(pass(v).x, 0.0, 0.0);
  to.setRotLine(&v);
  to.setFailLineY(from.getFailLineY());
  to.setFailLineZ(from.getFailLineZ());
  to.setFactorLine(from.getFactorLine());
}

/// What foundations are when they were written and read back: version "1.0" numbers them anew, any
/// other drops those without stiffness, and of two parts the area.
void passAll(const FoundationManager& from, FoundationManager& to, bool isFirstVersion) {
  for (Foundation* foundation : from.getFoundations()) {
    if (foundation == nullptr) continue;
    const bool hasLine = isFirstVersion || foundation->hasLineValues();
    const bool hasArea = isFirstVersion || (!hasLine && foundation->hasAreaValues());
    if (!hasLine && !hasArea) continue;
    const int place = static_cast<int>(to.getFoundations().size()) + 1;
    Foundation& passed = TestSupport::addFoundation(
        to, isFirstVersion ? place : foundation->getNumber(), foundation->getName());
    if (hasArea) passArea(*foundation, passed);
    if (hasLine) passLine(*foundation, passed);
    passed.setChanged(true);
  }
}

void checkRoundTrip(const FoundationManager& manager, const VersionText& version,
                    bool isFirstVersion) {
  const std::string printed = write(manager, version);
  const auto document = parse(printed);
  require(print(*document) == printed, "what was written prints the same", printed);
  FoundationManager again;
  const Messages messages = read(again, *document, version);
  const std::size_t written = document->getRoot().getChildren().size();
  checkMessages(messages, written, again.getFoundations().size());

  FoundationManager expected;
  passAll(manager, expected, isFirstVersion);
  for (Foundation* foundation : again.getFoundations()) foundation->setChanged(true);
  require(describeState(again) == describeState(expected), "what was written reads back",
          join(describeState(again)) + "differs from\n" + join(describeState(expected)));
  FoundationManager third;
  passAll(again, third, isFirstVersion);
  const bool isStable =
      describeState(third) == describeState(again) && written == again.getFoundations().size();
  if (isStable) require(write(again, version) == printed, "it is written the same", printed);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TestSupport::CommaLocale comma;
  if (size == 0) return 0;
  const bool isFirstVersion = (data[0] & 1) == 0;
  const bool isFilled = (data[0] & 2) != 0;
  const VersionText version(isFirstVersion ? "1.0" : "2.0");
  std::unique_ptr<Document> document;
  try {
    document = parse(std::string(data + 1, data + size));
  } catch (const KvXmlError&) {
    return 0;
  }

  FoundationManager manager;
  if (isFilled) fill(manager);
  const std::size_t first = manager.getFoundations().size();
  const std::size_t elements = document->getRoot().getChildren().size();
  const Messages messages = read(manager, *document, version);
  checkMessages(messages, elements, manager.getFoundations().size() - first);
  checkIdentities(manager, first, isFirstVersion);

  FoundationManager silent;
  if (isFilled) fill(silent);
  BeddingReader(silent, version).read(document->getRoot());
  require(describeState(silent) == describeState(manager), "messages change nothing");

  checkRoundTrip(manager, version, isFirstVersion);
  const std::size_t written = parse(write(manager, version))->getRoot().getChildren().size();
  BeddingWriter(manager, version).write(document->getRoot());
  require(document->getRoot().getChildren().size() == elements + written,
          "elements are appended to those there");
  return 0;
}
