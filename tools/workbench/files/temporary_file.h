#pragma once

#include <string>

/// A file that this object deletes at its end, unless it has replaced another file by then.
class TemporaryFile {
 public:
  /// Lets interruptions of the process delete the files that there are, by handlers of signals,
  /// and lets files that become too large fail to be written. For the main function of a program:
  /// what is loaded by other programs leaves signals to them.
  static void watchInterruptions();

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
  std::size_t place;  // among the files that an interruption must erase
};
