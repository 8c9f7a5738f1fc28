#include "documents.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <random>

#include "kv/xml_error.h"

namespace Documents {
namespace {

namespace fs = std::filesystem;

std::string describe(const std::string& path) { return path == "-" ? "standard input" : path; }

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

/// Why the library could not read the file at `path`, which it does not tell.
std::string explainRefusal(const std::string& path) {
  if (fs::is_directory(path)) return "this is a folder, not a file";
  const std::ifstream file(path);
  if (!file) return "cannot be opened: " + describeError();
  return "no XML document: its first line does not contain \"xml\"";
}

void readFile(const std::string& path, const std::string& shownPath,
              Found::FoundationManager& manager) {
  try {
    if (!manager.readXml(path)) throw UserError(shownPath + ": " + explainRefusal(path));
  } catch (const KvXmlError& error) {
    throw UserError(shownPath + ":" + std::to_string(error.getLine()) + ":" +
                    std::to_string(error.getColumn()) + ": " + error.getReason());
  }
}

}  // namespace

void read(const std::string& path, Found::FoundationManager& manager) {
  if (path != "-") return readFile(path, describe(path), manager);
  const InputCopy copy;
  readFile(copy.getPath(), describe(path), manager);
}

}  // namespace Documents
