#pragma once

#include <fstream>
#include <optional>
#include <string>

#include "files/temporary_file.h"

/// A file that is written as a whole or not at all: what is written stands in a temporary file
/// until it takes its place. A path "-" stands for standard output. All that fails throws
/// UserError.
class OutputFile {
 public:
  /// Fails where nothing can be written, such as at a folder.
  explicit OutputFile(const std::string& asked);

  /// The file that is there or will be; empty for what is no file: standard output or a device.
  const std::string& getTarget() const { return target; }
  /// As messages call the file.
  const std::string& getShownPath() const { return shownPath; }

  /// Makes the temporary file, which the others need.
  void create();
  const std::string& getWrittenPath() const { return file->getPath(); }
  std::ofstream open() const;
  void close(std::ofstream& out) const;

  /// Lets what was written take its place.
  void commit();

 private:
  [[noreturn]] void fail(const std::string& reason) const;
  std::string findTarget() const;
  std::string findFolder() const;

  std::string shownPath;
  bool isStandard;
  std::string target;
  std::optional<TemporaryFile> file;
};
