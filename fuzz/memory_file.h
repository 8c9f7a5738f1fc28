#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "property.h"

namespace Fuzz {

/// A file that exists in memory only, for what is read and written by path.
class MemoryFile {
 public:
  MemoryFile() : descriptor(memfd_create("fuzz", 0)) {
    require(descriptor >= 0, "a file can be made in memory");
  }
  ~MemoryFile() { close(descriptor); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  std::string getPath() const { return "/proc/self/fd/" + std::to_string(descriptor); }

  void store(const std::string& bytes) const {
    const auto size = static_cast<ssize_t>(bytes.size());
    require(
        ftruncate(descriptor, 0) == 0 && pwrite(descriptor, bytes.data(), bytes.size(), 0) == size,
        "the file in memory can be written");
  }

  std::string load() const {
    std::string bytes(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    const ssize_t size = pread(descriptor, bytes.data(), bytes.size(), 0);
    require(size == static_cast<ssize_t>(bytes.size()), "the file in memory can be read");
    return bytes;
  }

 private:
  int descriptor;
};

}  // namespace Fuzz
