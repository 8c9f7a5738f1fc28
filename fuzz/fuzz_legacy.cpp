#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "found/foundation_manager.h"
#include "kv/xml_error.h"
#include "kv/xml_tree.h"
#include "memory_file.h"
#include "property.h"
#include "support/comma_locale.h"
#include "support/foundations.h"
#include "support/manager_state.h"

// A legacy file is read, written and read again; an input is the file.

namespace {

using Found::Foundation;
using Found::FoundationManager;
using Fuzz::MemoryFile;
using Fuzz::require;
using TestSupport::describeState;

std::string join(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

void requireSame(const FoundationManager& a, const FoundationManager& b, const char* property) {
  require(describeState(a) == describeState(b), property,
          join(describeState(a)) + "differs from\n" + join(describeState(b)));
}

std::string print(const KvXmlTree& tree) {
  std::ostringstream out;
  tree.putToStream(out);
  return out.str();
}

/// Without white space between elements, which may change.
std::string collapse(const std::string& text) {
  constexpr const char* blanks = " \t\r\n";
  std::string collapsed;
  for (std::size_t at = 0; at < text.size(); ++at) {
    collapsed += text[at];
    const std::size_t next = std::min(text.find_first_not_of(blanks, at + 1), text.size());
    if (text[at] == '>' && (next == text.size() || text[next] == '<')) at = next - 1;
  }
  return collapsed;
}

/// What was printed prints the same.
void checkPrinted(const std::string& printed) {
  std::istringstream in(printed);
  require(collapse(print(KvXmlTree(in))) == collapse(printed), "what was printed prints the same",
          printed);
}

std::string write(const FoundationManager& manager) {
  static const MemoryFile file;
  file.store("");
  std::ofstream out(file.getPath());
  manager.writeXml(out);
  out.close();
  require(out.good(), "the document is written");
  return file.load();
}

bool read(FoundationManager& manager, const std::string& text) {
  static const MemoryFile file;
  file.store(text);
  return manager.readXml(file.getPath());
}

/// Whether the first line tells XML.
bool isRecognised(const std::string& text) {
  constexpr std::size_t longest = 1023;
  std::string line = text.substr(0, std::min(text.find('\n'), longest));
  for (char& c : line) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return line.find("xml") != line.npos;
}

/// What is written of `foundation` replaces what `target` has; what is absent is not written.
void overwrite(Foundation& target, Foundation& foundation) {
  target.setName(foundation.getName());
  KvVector3D v;
  if (foundation.getDispArea(v)) target.setDispArea(&v);
  if (foundation.getDispLine(v)) target.setDispLine(&v);
  if (foundation.getRotLine(v)) target.setRotLine(&v);
  if (foundation.getFailAreaZ() != 0) target.setFailAreaZ(foundation.getFailAreaZ());
  if (foundation.getFailLineX() != 0) target.setFailLineX(foundation.getFailLineX());
  if (foundation.getFailLineY() != 0) target.setFailLineY(foundation.getFailLineY());
  if (foundation.getFailLineZ() != 0) target.setFailLineZ(foundation.getFailLineZ());
  target.setFactorArea(foundation.getFactorArea());
  target.setFactorLine(foundation.getFactorLine());
  target.setGenerated(foundation.isGenerated());
}

/// The foundations as a file keeps them: those of the same number become one.
void mergeNumbers(const FoundationManager& from, FoundationManager& to) {
  for (Foundation* foundation : from.getFoundations()) {
    Foundation* target = to.findFoundation(foundation->getNumber());
    if (target == nullptr) {
      target = new Foundation(*foundation);
      target->setNumber(foundation->getNumber());
      to.add(target);
    }
    overwrite(*target, *foundation);
  }
  if (const Foundation* const current = from.getCurrentFoundation())
    to.setCurrentFoundation(to.findFoundation(current->getName()));
}

/// Foundations that were read are written and read back.
void checkRoundTrip(const FoundationManager& manager) {
  const std::string printed = write(manager);
  FoundationManager again;
  require(read(again, printed), "a written file is recognised", printed);
  FoundationManager expected;
  mergeNumbers(manager, expected);
  // A file does not tell it; that of an element whose vectors are alike reads as unchanged.
  for (const FoundationManager* each : {&again, &expected})
    for (Foundation* foundation : each->getFoundations()) foundation->setChanged(false);
  requireSame(again, expected, "what was written reads back");
  std::istringstream in(printed);
  require(print(KvXmlTree(in)) == printed, "a written document prints the same", printed);
  const bool isMerged = again.getFoundations().size() < manager.getFoundations().size();
  if (!isMerged)
    require(write(again) == printed, "what was read back is written the same", printed);
}

/// How many numbers of foundations no element below `list` tells.
std::size_t countMissing(const FoundationManager& manager, KvXmlData& list) {
  std::set<int> numbers;
  for (const Foundation* foundation : manager.getFoundations())
    numbers.insert(foundation->getNumber());
  for (const KvXmlData* child : list.getChildren()) {
    const KvXmlAttributeData* const told = child->findAttribute("NUMBER");
    const bool isNumbered = child->getName() == "FOUND" && told != nullptr;
    if (isNumbered && told->checkValue(told->getInteger())) numbers.erase(told->getInteger());
  }
  return numbers.size();
}

/// The document that foundations were read from is updated with them.
void checkUpdate(const FoundationManager& manager, const std::string& text) {
  std::istringstream in(text.substr(text.find('\n') + 1));
  KvXmlTree tree(in);
  const std::string first = print(tree);
  checkPrinted(first);

  KvXmlData* const root = tree.open("SMOD", false);
  KvXmlData* const list = root != nullptr ? tree.open("FOUNDATIONS", false) : nullptr;
  const std::size_t missing = list != nullptr ? countMissing(manager, *list) : 0;
  const std::size_t elements = list != nullptr ? list->getChildren().size() : 0;
  tree.setCurrent(root);
  manager.updateXml(&tree);
  require(tree.getCurrent() == root, "the cursor is back", first);
  if (list != nullptr)
    require(list->getChildren().size() == elements + missing,
            "an element is made for a number that none tells", first);
  const std::string updated = print(tree);
  checkPrinted(updated);
  tree.setCurrent(root);
  manager.updateXml(&tree);
  require(print(tree) == updated, "a second update changes nothing", updated);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TestSupport::CommaLocale comma;
  const std::string text(reinterpret_cast<const char*>(data), size);
  FoundationManager manager;
  manager.setCurrentFoundation(manager.giveFoundation("before"));
  manager.setMaxFoundationValue(7.0);
  const std::vector<std::string> before = describeState(manager);

  try {
    const bool isRead = read(manager, text);
    require(isRead == isRecognised(text), "the first line decides");
    require(isRead || describeState(manager) == before, "what is not recognised changes nothing");
    if (!isRead) return 0;
  } catch (const KvXmlError& error) {
    require(describeState(manager) == before, "what is malformed changes nothing");
    const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
    require(error.getLine() >= 1 && error.getLine() <= lines && error.getColumn() >= 1,
            "an error is in the file", error.what());
    return 0;
  }

  manager.setMaxFoundationValue(0.0);
  checkRoundTrip(manager);
  if (text.find('\n') != text.npos) checkUpdate(manager, text);
  return 0;
}
