#include "files/output_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "files/paths.h"
#include "files/user_error.h"

namespace {

namespace fs = std::filesystem;

void print(std::ostream& out, const std::string& text) {
  out.write(text.data(), static_cast<std::streamsize>(text.size()));
  out.flush();
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : shownPath(path) {
  if (path.empty()) throw FileError("", "the name of the file to write is empty", ENOENT);
  target = findTarget();
}

OutputFile::OutputFile(std::ostream& to, std::string name)
    : shownPath(std::move(name)), stream(&to) {}

void OutputFile::fail(const std::error_code& reason) const {
  fail(reason.message(), reason.default_error_condition().value());
}

void OutputFile::fail(const std::string& reason, int number) const {
  throw FileError(shownPath, "cannot be written: " + reason, number);
}

/// The file to write. A link is followed, so that it stays a link.
std::string OutputFile::findTarget() const {
  std::error_code error;
  fs::path path = Paths::fromText(shownPath);
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) fail(error);
  if (fs::is_directory(status)) throw FileError(shownPath, "this is a folder, not a file", EISDIR);
  if (fs::is_regular_file(status)) {
    // A file can be replaced without the right to write to it, but that would change it all the
    // same.
    if (!std::fstream(shownPath, std::ios::in | std::ios::out)) fail(std::strerror(errno), errno);
    return Paths::toText(fs::canonical(path));
  }
  if (fs::exists(status)) return "";
  while (fs::is_symlink(fs::symlink_status(path)))
    path = path.parent_path() / fs::read_symlink(path);
  return Paths::toText(path);
}

std::string OutputFile::readOld() const {
  std::error_code ignored;
  if (!fs::is_regular_file(Paths::fromText(target), ignored)) return {};
  std::ifstream old(target, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(old), {});
}

void OutputFile::create() {
  if (target.empty()) return;
  std::string folder = Paths::toText(Paths::fromText(target).parent_path());
  if (folder.empty()) folder = ".";
  try {
    file.emplace(folder);
  } catch (const std::system_error& error) {
    fail("no file can be made in " + folder + ": " + error.code().message(),
         error.code().default_error_condition().value());
  }
}

void OutputFile::write(std::string all) {
  text = std::move(all);
  if (!file) return;
  std::ofstream out(file->getPath(), std::ios::binary);
  if (!out) fail(std::strerror(errno), errno);
  print(out, text);
  out.close();
  if (!out) fail(std::strerror(errno), errno);
}

void OutputFile::commit() {
  if (stream != nullptr) {
    print(*stream, text);
  } else if (target.empty()) {
    std::ofstream device(shownPath, std::ios::binary);
    print(device, text);
    if (!device) fail(std::strerror(errno), errno);
  } else {
    try {
      file->replace(target);
    } catch (const std::system_error& error) {
      fail(error.code());
    }
  }
}
