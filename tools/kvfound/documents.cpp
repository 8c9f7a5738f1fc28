#include "documents.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <random>
#include <string_view>
#include <vector>

#include "found/bedding_reader.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "note_messenger.h"

namespace Documents {
namespace {

namespace fs = std::filesystem;

std::string describeError() { return std::strerror(errno); }

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// A file that holds what a pipe delivered, for as long as this object lives: the library reads
/// files by path, and a document is looked at more than once.
class PipeCopy {
 public:
  PipeCopy(std::FILE* pipe, const std::string& shownPath) {
    File copy(std::fopen(path.c_str(), "wbx"));  // never one that exists
    if (copy == nullptr) fail(shownPath);
    isMade = true;
    std::error_code ignored;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, ignored);
    if (fill(pipe, copy.get())) return;
    const int reason = errno;
    copy.reset();
    erase();
    errno = reason;
    fail(shownPath);
  }
  ~PipeCopy() { erase(); }
  PipeCopy(const PipeCopy&) = delete;
  PipeCopy& operator=(const PipeCopy&) = delete;

  std::string getPath() const { return path; }

 private:
  static std::string makePath() {
    std::error_code error;
    const fs::path folder = fs::temp_directory_path(error);
    if (error) throw UserError("there is no folder for temporary files: " + error.message());
    std::random_device random;
    return (folder / ("kvfound-" + std::to_string(random()) + ".xml")).string();
  }

  static bool fill(std::FILE* pipe, std::FILE* copy) {
    std::array<char, 1 << 16> buffer{};
    while (const std::size_t got = std::fread(buffer.data(), 1, buffer.size(), pipe))
      if (std::fwrite(buffer.data(), 1, got, copy) != got) return false;
    return std::ferror(pipe) == 0 && std::fflush(copy) == 0;
  }

  void erase() const {
    if (isMade) std::remove(path.c_str());
  }

  [[noreturn]] void fail(const std::string& shownPath) const {
    throw UserError(shownPath + " cannot be copied to " + path + ": " + describeError());
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

/// False when the text cannot be meant as XML; what is wrong with it otherwise, the parser tells.
bool isXml(std::ifstream file) {
  constexpr std::string_view byteOrderMarks = "\xEF\xBB\xBF\xFE\xFF";
  char first = '<';
  while (file >> first && byteOrderMarks.find(first) != byteOrderMarks.npos) {
  }
  return !file || first == '<' || first == '\0';
}

bool hasChild(const KvXmlN::Data& element, std::initializer_list<const char*> names) {
  for (const KvXmlN::Data* child : element.getChildren())
    for (const char* name : names)
      if (child->getName() == name) return true;
  return false;
}

/// Adds all elements that hold beddings, in document order.
void listContainers(const KvXmlN::Data& top, std::vector<const KvXmlN::Data*>& containers) {
  if (hasChild(top, {"Bedding", "CurveBedding", "SurfaceBedding"})) {
    containers.push_back(&top);
    return;
  }
  for (const KvXmlN::Data* child : top.getChildren()) listContainers(*child, containers);
}

/// The version when none is given: only the first has "Bedding" elements.
std::string guessVersion(const std::vector<const KvXmlN::Data*>& containers) {
  for (const KvXmlN::Data* container : containers)
    if (hasChild(*container, {"Bedding"})) return "1.0";
  return currentVersion;
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
                    "> must start on a line of its own, behind the line of the XML declaration");
  std::vector<const KvXmlN::Data*> containers;
  listContainers(root, containers);
  if (containers.empty())
    throw UserError(shownPath + ": there are no beddings in <" + root.getName() +
                    ">; a legacy model or an exchange document can be read");

  const Tools::VersionText versionText(version.value_or(guessVersion(containers)));
  NoteMessenger messenger(notes, "kvfound: " + shownPath + ": ");
  Found::Umo::BeddingReader reader(manager, versionText);
  reader.setMessenger(&messenger);
  for (const KvXmlN::Data* container : containers) reader.read(*container);
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
  if (path == "-") {
    const PipeCopy copy(stdin, "standard input");
    return readFile(copy.getPath(), "standard input", version, manager, notes);
  }
  std::error_code ignored;
  const fs::file_status status = fs::status(path, ignored);
  if (!fs::exists(status) || fs::is_regular_file(status) || fs::is_directory(status))
    return readFile(path, path, version, manager, notes);
  const File pipe(std::fopen(path.c_str(), "rb"));
  if (pipe == nullptr) throw UserError(path + ": cannot be opened: " + describeError());
  const PipeCopy copy(pipe.get(), path);
  readFile(copy.getPath(), path, version, manager, notes);
}

}  // namespace Documents
