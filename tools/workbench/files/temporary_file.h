#pragma once

#include <string>

/// A file that goes when this object does, unless it took another file's place; also when the
/// program is interrupted.
class TemporaryFile {
 public:
  /// Makes a new, empty file in `folder`. Throws std::system_error.
  explicit TemporaryFile(const std::string& folder);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& getPath() const { return path; }

  /// Lets the file, which is written, take the place of `target`, with whose permissions and, where
  /// the system allows it, owner it then stands. Throws std::system_error; `target` is then what it
  /// was.
  void replace(const std::string& target);

 private:
  std::string path;
  std::size_t place = 0;  // among the files that an interruption must erase
};
