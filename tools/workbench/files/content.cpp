#include "files/content.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>

#include "files/paths.h"
#include "files/user_error.h"

namespace Files {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

constexpr std::size_t mostAtOnce = 1 << 24;

/// False at the end.
bool readMore(std::FILE* file, std::size_t length, Content& content) {
  const std::size_t before = content.bytes.size();
  content.bytes.resize(before + length);
  const std::size_t got = std::fread(&content.bytes[before], 1, length, file);
  content.bytes.resize(before + got);
  if (std::ferror(file) != 0)
    throw FileError(content.shownPath, std::string("cannot be read: ") + std::strerror(errno),
                    errno);
  return got == length;
}

/// Room for all of a file at once, and for what parsers want behind its end.
void reserve(Content& content) {
  constexpr std::size_t room = 256;
  std::error_code ignored;
  const std::uintmax_t size = fs::file_size(Paths::fromText(content.path), ignored);
  if (size < content.bytes.max_size() - room)
    content.bytes.reserve(static_cast<std::size_t>(size) + room);
}

void readAll(std::FILE* file, Wanted isWanted, Content& content) {
  try {
    if (!content.path.empty()) reserve(content);
    bool hasMore = readMore(file, lengthOfStart, content);
    if (!isWanted(content.bytes)) return;
    while (hasMore) hasMore = readMore(file, std::min(content.bytes.size(), mostAtOnce), content);
  } catch (const std::bad_alloc&) {
    throw FileError(content.shownPath, "is too large for the memory of this machine", ENOMEM);
  }
}

/// The path of a regular file; empty for a pipe or a device.
std::string findFile(const std::string& path) {
  std::error_code ignored;
  const fs::file_status status = fs::status(Paths::fromText(path), ignored);
  if (fs::is_directory(status)) throw FileError(path, "this is a folder, not a file", EISDIR);
  return fs::is_regular_file(status) ? path : "";
}

}  // namespace

Content read(const std::string& path, Wanted isWanted) {
  if (path.empty()) throw FileError("", "the name of the file to read is empty", ENOENT);
  Content content;
  if (path == "-") {
    content.shownPath = "standard input";
    readAll(stdin, isWanted, content);
    return content;
  }
  content.shownPath = path;
  content.path = findFile(path);
  const File file(std::fopen(path.c_str(), "rb"));
  if (file == nullptr)
    throw FileError(path, std::string("cannot be opened: ") + std::strerror(errno), errno);
  readAll(file.get(), isWanted, content);
  return content;
}

}  // namespace Files
