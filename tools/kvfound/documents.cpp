#include "documents.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <random>

#include "found/bedding_reader.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "note_messenger.h"

namespace Documents {
namespace {

namespace fs = std::filesystem;

std::string describeError() { return std::strerror(errno); }

/// Standard input as a file, for as long as this object lives: the library reads files by path.
class InputCopy {
 public:
  InputCopy() {
    struct Close {
      void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(
        std::fopen(path.c_str(), "wbx"));  // never one that exists
    if (file == nullptr) fail();
    isMade = true;
    char buffer[1 << 16];
    while (const std::size_t got = std::fread(buffer, 1, sizeof buffer, stdin))
      if (std::fwrite(buffer, 1, got, file.get()) != got) fail();
    if (std::ferror(stdin) != 0 || std::fflush(file.get()) != 0) fail();
  }
  ~InputCopy() { erase(); }
  InputCopy(const InputCopy&) = delete;
  InputCopy& operator=(const InputCopy&) = delete;

  std::string getPath() const { return path; }

 private:
  static std::string makePath() {
    std::random_device random;
    return (fs::temp_directory_path() / ("kvfound-" + std::to_string(random()) + ".xml")).string();
  }

  void erase() const {
    if (isMade) std::remove(path.c_str());
  }

  [[noreturn]] void fail() const {
    const std::string reason = describeError();
    erase();
    throw UserError("standard input cannot be copied to " + path + ": " + reason);
  }

  const std::string path = makePath();
  bool isMade = false;
};

constexpr const char* legacyRoot = "SMOD";
constexpr const char* currentVersion = "current";

[[noreturn]] void fail(const std::string& shownPath, const KvXmlError& error) {
  throw UserError(shownPath + ":" + std::to_string(error.getLine()) + ":" +
                  std::to_string(error.getColumn()) + ": " + error.getReason());
}

/// Opens the file; a folder can be opened too, but not read.
std::ifstream open(const std::string& path, const std::string& shownPath) {
  std::error_code ignored;
  if (fs::is_directory(path, ignored))
    throw UserError(shownPath + ": this is a folder, not a file");
  std::ifstream file(path);
  if (!file) throw UserError(shownPath + ": cannot be opened: " + describeError());
  return file;
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

bool isXml(std::ifstream file) {
  std::string start;
  file >> start;
  constexpr const char* byteOrderMark = "\xEF\xBB\xBF";
  if (start.rfind(byteOrderMark, 0) == 0) start.erase(0, std::strlen(byteOrderMark));
  return !start.empty() && start[0] == '<';
}

bool hasChild(const KvXmlN::Data& element, std::initializer_list<const char*> names) {
  for (const KvXmlN::Data* child : element.getChildren())
    for (const char* name : names)
      if (child->getName() == name) return true;
  return false;
}

/// The first element in document order that holds beddings, or null.
const KvXmlN::Data* findContainer(const KvXmlN::Data& top) {
  if (hasChild(top, {"Bedding", "CurveBedding", "SurfaceBedding"})) return &top;
  for (const KvXmlN::Data* child : top.getChildren())
    if (const KvXmlN::Data* const container = findContainer(*child)) return container;
  return nullptr;
}

KvXmlN::Document parse(std::ifstream file, const std::string& shownPath) {
  try {
    return KvXmlN::Document(file);
  } catch (const KvXmlError& error) {
    fail(shownPath, error);
  }
}

void readExchange(const std::string& path, const std::string& shownPath,
                  const std::optional<std::string>& version, Found::FoundationManager& manager,
                  std::ostream& notes) {
  if (!isXml(open(path, shownPath))) throw UserError(shownPath + ": this is no XML document");
  const KvXmlN::Document document = parse(open(path, shownPath), shownPath);
  const KvXmlN::Data& root = document.getRoot();
  if (root.getName() == legacyRoot)
    throw UserError(shownPath + ": <" + legacyRoot +
                    "> must not start on the first line, which is for the XML declaration");
  const KvXmlN::Data* const container = findContainer(root);
  if (container == nullptr)
    throw UserError(shownPath + ": there are no beddings in <" + root.getName() +
                    ">; a legacy model or an exchange document can be read");

  const Tools::VersionText versionText(
      version.value_or(hasChild(*container, {"Bedding"}) ? "1.0" : currentVersion));
  NoteMessenger messenger(notes, "kvfound: " + shownPath + ": ");
  Found::Umo::BeddingReader reader(manager, versionText);
  reader.setMessenger(&messenger);
  reader.read(*container);
}

void readFile(const std::string& path, const std::string& shownPath,
              const std::optional<std::string>& version, Found::FoundationManager& manager,
              std::ostream& notes) {
  if (!isLegacy(open(path, shownPath)))
    return readExchange(path, shownPath, version, manager, notes);
  try {
    if (manager.readXml(path)) return;
  } catch (const KvXmlError& error) {
    fail(shownPath, error);
  }
  throw UserError(shownPath +
                  ": the first line must be an XML declaration, <?xml version=\"1.0\"?>");
}

}  // namespace

void read(const std::string& path, const std::optional<std::string>& version,
          Found::FoundationManager& manager, std::ostream& notes) {
  if (path != "-") return readFile(path, path, version, manager, notes);
  const InputCopy copy;
  readFile(copy.getPath(), "standard input", version, manager, notes);
}

}  // namespace Documents
