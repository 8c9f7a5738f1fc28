#pragma once

#include <stdexcept>
#include <string>

#include "kv/xml_position.h"

/// An error that the user is told in one line: what, where, and what to do.
class UserError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A file that cannot be read or written.
class FileError : public UserError {
 public:
  /// `number` is one of <cerrno>.
  FileError(const std::string& path, const std::string& sentence, int number);

  /// As messages call the file.
  const std::string& getPath() const { return path; }
  const std::string& getSentence() const { return sentence; }
  int getNumber() const { return number; }

 private:
  std::string path;
  std::string sentence;
  int number;
};

/// A document that cannot be read as what it is meant to be.
class DocumentError : public UserError {
 public:
  /// `position` is 0 where the sentence is about all of it, or about a whole line.
  DocumentError(const std::string& path, KvXmlPosition position, const std::string& sentence);

  /// As messages call the document.
  const std::string& getPath() const { return path; }
  KvXmlPosition getPosition() const { return position; }
  const std::string& getSentence() const { return sentence; }

 private:
  std::string path;
  KvXmlPosition position;
  std::string sentence;
};
