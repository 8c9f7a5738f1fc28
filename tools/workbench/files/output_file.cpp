#include "files/output_file.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "files/paths.h"
#include "files/user_error.h"

namespace {

namespace fs = std::filesystem;

void copyTo(std::ostream& out, const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::array<char, 1 << 16> buffer{};
  while (in.read(buffer.data(), buffer.size()) || in.gcount() > 0)
    out.write(buffer.data(), in.gcount());
  out.flush();
}

}  // namespace

OutputFile::OutputFile(const std::string& asked)
    : shownPath(asked), isStandard(asked == "-" || asked == "/dev/stdout") {
  if (asked.empty()) throw UserError("the name of the file to write is empty");
  if (isStandard)
    shownPath = "standard output";
  else
    target = findTarget();
}

void OutputFile::fail(const std::string& reason) const {
  throw UserError(shownPath + ": cannot be written: " + reason);
}

/// The file that is meant, also by a link, which stays a link.
std::string OutputFile::findTarget() const {
  std::error_code error;
  fs::path path = Paths::fromText(shownPath);
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::none) fail(error.message());
  if (fs::is_directory(status)) throw UserError(shownPath + ": this is a folder, not a file");
  if (fs::is_regular_file(status)) {
    // To take the place of a file needs no right to write to it, but is no less a change.
    if (!std::fstream(shownPath, std::ios::in | std::ios::out)) fail(std::strerror(errno));
    return Paths::toText(fs::canonical(path));
  }
  if (fs::exists(status)) return "";
  while (fs::is_symlink(fs::symlink_status(path)))
    path = path.parent_path() / fs::read_symlink(path);
  return Paths::toText(path);
}

std::string OutputFile::findFolder() const {
  if (target.empty()) return TemporaryFile::findFolder();
  const std::string folder = Paths::toText(Paths::fromText(target).parent_path());
  return folder.empty() ? "." : folder;
}

void OutputFile::create() {
  const std::string folder = findFolder();
  try {
    file.emplace(folder,
                 target.empty() ? TemporaryFile::Readers::owner : TemporaryFile::Readers::everyone);
  } catch (const std::system_error& error) {
    fail("no file can be made in " + folder + ": " + error.code().message());
  }
}

std::ofstream OutputFile::open() const {
  std::ofstream out(file->getPath(), std::ios::binary);
  if (!out) fail(std::strerror(errno));
  return out;
}

void OutputFile::close(std::ofstream& out) const {
  out.close();
  if (!out) fail(std::strerror(errno));
}

void OutputFile::commit() {
  if (isStandard) {
    copyTo(std::cout, file->getPath());
  } else if (target.empty()) {
    std::ofstream device(shownPath, std::ios::binary);
    copyTo(device, file->getPath());
    if (!device) fail(std::strerror(errno));
  } else {
    try {
      file->replace(target);
    } catch (const std::system_error& error) {
      fail(error.code().message());
    }
  }
}
