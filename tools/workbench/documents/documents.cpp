#include "documents/documents.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <system_error>
#include <vector>

#include "documents/note_messenger.h"
#include "files/paths.h"
#include "found/bedding_reader.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace Documents {
namespace {

namespace fs = std::filesystem;

constexpr const char* firstVersion = "1.0";

std::string describeError() { return std::strerror(errno); }

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

void copy(std::FILE* from, std::FILE* to) {
  std::array<char, 1 << 16> buffer{};
  while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), from))
    if (std::fwrite(buffer.data(), 1, got, to) != got) break;
  if (std::ferror(from) != 0 || std::fflush(to) != 0)
    throw std::system_error(errno, std::generic_category());
}

[[noreturn]] void fail(const std::string& shownPath, const KvXmlError& error) {
  throw UserError(shownPath + ":" + std::to_string(error.getLine()) + ":" +
                  std::to_string(error.getColumn()) + ": " + error.getReason());
}

/// A legacy document is parsed from its second line on, and so looked at in the same way.
bool isLegacy(std::ifstream file) {
  std::string firstLine;
  std::getline(file, firstLine);
  try {
    return KvXmlTree(file).findRoot(legacyRoot, true) != nullptr;
  } catch (const KvXmlError&) {
    return false;
  }
}

/// False when the text cannot be meant as XML; what is wrong with it otherwise, the parser tells.
bool isXml(std::ifstream file) {
  constexpr std::string_view byteOrderMarks = "\xEF\xBB\xBF\xFE\xFF";
  char first = '<';
  while (file >> first && byteOrderMarks.find(first) != byteOrderMarks.npos) {
  }
  return !file || first == '<' || first == '\0';
}

constexpr const char* firstBedding = "Bedding";  // of the first version only

template <class Test>
bool hasChild(const KvXmlN::Data& element, const Test& test) {
  const std::vector<KvXmlN::Data*>& children = element.getChildren();
  return std::any_of(children.begin(), children.end(),
                     [&test](const KvXmlN::Data* child) { return test(*child); });
}

void addContainers(const KvXmlN::Data& top, std::vector<const KvXmlN::Data*>& containers) {
  if (hasChild(top, isBedding)) {
    containers.push_back(&top);
    return;
  }
  for (const KvXmlN::Data* child : top.getChildren()) addContainers(*child, containers);
}

/// Adds all elements that are named as those that hold beddings.
void addNamed(const KvXmlN::Data& top, std::vector<const KvXmlN::Data*>& containers) {
  if (top.getName() == emptyContainer) containers.push_back(&top);
  for (const KvXmlN::Data* child : top.getChildren()) addNamed(*child, containers);
}

/// Numbers with a point between them.
bool isVersion(const std::string& text) {
  bool isNumber = false;
  for (const char c : text) {
    const bool isDigit = c >= '0' && c <= '9';
    if (!isDigit && (c != '.' || !isNumber)) return false;
    isNumber = isDigit;
  }
  return isNumber;
}

bool isFirstVersion(const std::vector<const KvXmlN::Data*>& containers,
                    const std::optional<std::string>& version) {
  if (version) {
    if (!isVersion(*version))
      throw UserError("\"" + *version + "\" is no version; give 1.0, or a later one such as 2.0");
    return Tools::VersionText(*version).isEqualTo(firstVersion);
  }
  const auto isOfFirst = [](const KvXmlN::Data& child) { return child.getName() == firstBedding; };
  return std::any_of(containers.begin(), containers.end(), [&](const KvXmlN::Data* container) {
    return hasChild(*container, isOfFirst);
  });
}

/// Parses from the stream's position on.
std::unique_ptr<KvXmlN::Document> parse(std::ifstream file, const std::string& shownPath) {
  try {
    return std::make_unique<KvXmlN::Document>(file);
  } catch (const KvXmlError& error) {
    fail(shownPath, error);
  }
}

Tree parseLegacy(const Input& input) {
  std::ifstream file = input.open();
  std::string firstLine;
  std::getline(file, firstLine);
  Tree tree{input.getShownPath(), Form::legacy, nullptr, {}};
  tree.document = parse(std::move(file), tree.shownPath);
  return tree;
}

Tree parseExchange(const Input& input, const std::optional<std::string>& version) {
  const std::string& shownPath = input.getShownPath();
  if (!isXml(input.open())) throw UserError(shownPath + ": this is no XML document");
  Tree tree{shownPath, Form::exchange, nullptr, {}};
  tree.document = parse(input.open(), shownPath);
  KvXmlN::Data& root = tree.document->getRoot();
  if (root.getName() == legacyRoot)
    throw UserError(shownPath + ": <" + legacyRoot +
                    "> must start on a line of its own, behind the line of the XML declaration");
  tree.containers = listContainers(root);
  if (tree.containers.empty())
    throw UserError(shownPath + ": there are no beddings in <" + root.getName() +
                    ">; a legacy model or an exchange document can be read, a Kvml listing cannot");
  if (isFirstVersion(tree.containers, version)) tree.form = Form::firstExchange;
  return tree;
}

void readLegacy(const Input& input, Found::FoundationManager& manager) {
  try {
    if (manager.readXml(input.getPath())) return;
  } catch (const KvXmlError& error) {
    fail(input.getShownPath(), error);
  }
  throw UserError(input.getShownPath() +
                  ": the first line must be an XML declaration, <?xml version=\"1.0\"?>");
}

}  // namespace

Input::Input(const std::string& asked) : path(asked), shownPath(asked) {
  if (asked.empty()) throw UserError("the name of the file to read is empty");
  if (asked == "-") {
    shownPath = "standard input";
    copyFrom(stdin);
    return;
  }
  std::error_code ignored;
  const fs::file_status status = fs::status(Paths::fromText(path), ignored);
  if (!fs::exists(status) || fs::is_regular_file(status)) return;
  if (fs::is_directory(status)) throw UserError(path + ": this is a folder, not a file");
  const File pipe(std::fopen(path.c_str(), "rb"));
  if (pipe == nullptr) throw UserError(path + ": cannot be opened: " + describeError());
  copyFrom(pipe.get());
}

std::ifstream Input::open() const {
  std::ifstream file(path);
  if (!file) throw UserError(shownPath + ": cannot be opened: " + describeError());
  return file;
}

void Input::copyFrom(std::FILE* pipe) {
  try {
    copied =
        std::make_unique<TemporaryFile>(TemporaryFile::findFolder(), TemporaryFile::Readers::owner);
    const File file(std::fopen(copied->getPath().c_str(), "wb"));
    if (file == nullptr) throw std::system_error(errno, std::generic_category());
    copy(pipe, file.get());
  } catch (const std::system_error& error) {
    throw UserError(shownPath +
                    ": cannot be copied to a temporary file: " + error.code().message());
  }
  path = copied->getPath();
}

bool isBedding(const KvXmlN::Data& element) {
  const std::string& name = element.getName();
  return name == firstBedding || name == "CurveBedding" || name == "SurfaceBedding";
}

std::vector<const KvXmlN::Data*> listContainers(const KvXmlN::Data& root) {
  const auto isNamed = [](const KvXmlN::Data* element) {
    return element->getName() == emptyContainer;
  };
  std::vector<const KvXmlN::Data*> containers;
  addContainers(root, containers);
  // Beside elements that are named so, one with a child of that name holds something else.
  const auto firstOther = std::stable_partition(containers.begin(), containers.end(), isNamed);
  if (firstOther != containers.begin()) containers.erase(firstOther, containers.end());
  if (!containers.empty() || root.getName() == listingRoot) return containers;
  addNamed(root, containers);
  return containers;
}

std::string getVersion(Form form) { return form == Form::firstExchange ? firstVersion : "current"; }

Tree parse(const Input& input, const std::optional<std::string>& version) {
  return isLegacy(input.open()) ? parseLegacy(input) : parseExchange(input, version);
}

Reading read(const Input& input, const std::optional<std::string>& version,
             Found::FoundationManager& manager, std::ostream& notes) {
  if (isLegacy(input.open())) {
    readLegacy(input, manager);
    return {Form::legacy, 0};
  }
  const Tree tree = parseExchange(input, version);
  NoteMessenger messenger(notes, "kvfound: " + tree.shownPath + ": ");
  const Tools::VersionText versionText(getVersion(tree.form));
  Found::Umo::BeddingReader reader(manager, versionText);
  reader.setMessenger(&messenger);
  for (const KvXmlN::Data* container : tree.containers) reader.read(*container);
  return {tree.form, messenger.getNumberOfNotes()};
}

}  // namespace Documents
