#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <system_error>

#include "files/temporary_file.h"

/// A file that is written as a whole or not at all: a temporary file beside it holds what is
/// written and replaces it at the end. Or a stream, which gets everything at the end. Whatever
/// fails throws UserError.
class OutputFile {
 public:
  /// Fails where nothing can be written, such as at a folder.
  explicit OutputFile(const std::string& path);
  /// `name` is what messages call the stream.
  OutputFile(std::ostream& to, std::string name);

  /// The file that is there or will be; empty for what is no file: a stream or a device.
  const std::string& getTarget() const { return target; }
  /// As messages call the file.
  const std::string& getShownPath() const { return shownPath; }

  /// What the file holds that is there; empty where there is none, and for what is no file, such as
  /// a pipe, which may never tell.
  std::string readOld() const;

  /// Makes the temporary file, unless this is a stream or a device. To be called before write(), so
  /// that a folder in which no file can be made is reported before there is anything to write.
  void create();
  /// Writes all that the file shall hold.
  void write(std::string all);
  const std::string& getText() const { return text; }

  /// Replaces the file by what was written, or writes that to the stream or device.
  void commit();

 private:
  [[noreturn]] void fail(const std::error_code& reason) const;
  [[noreturn]] void fail(const std::string& reason, int number) const;
  std::string findTarget() const;

  std::string shownPath;
  std::ostream* stream = nullptr;
  std::string target;
  std::string text;
  std::optional<TemporaryFile> file;
};
