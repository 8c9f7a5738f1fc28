#pragma once

#include <string>

/// A file that this object deletes at its end, and also when the program is interrupted, unless it
/// has replaced another file by then.
class TemporaryFile {
 public:
  /// Makes a new, empty file in `folder`. Throws std::system_error.
  explicit TemporaryFile(const std::string& folder);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& getPath() const { return path; }

  /// Replaces `target` by the file, which is written. It takes over the permissions of `target`
  /// and, where the system allows it, the owner. Throws std::system_error and leaves `target`
  /// alone.
  void replace(const std::string& target);

 private:
  std::string path;
  std::size_t place = 0;  // among the files that an interruption must erase
};
