#pragma once

#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files/temporary_file.h"
#include "files/user_error.h"
#include "found/foundation_manager.h"
#include "kv/xml_n.h"

/// Documents as they are read from files. A path "-" stands for standard input. The content of a
/// document tells its form: one that is no legacy model is an exchange document, of the version
/// asked for, or without one of version "1.0" when it holds a "Bedding" element and of the current
/// one when not.
namespace Documents {

enum class Form { legacy, exchange, firstExchange, kvml };  // the last is only written

constexpr const char* legacyRoot = "SMOD";
constexpr const char* listingRoot = "Kvml";
constexpr const char* emptyContainer = "Beddings";  // how an element for beddings is made

/// The file at a path, or a copy of what a pipe delivers there: the library reads files by path,
/// and a document is looked at more than once.
class Input {
 public:
  /// Throws UserError when the path is a folder, or a pipe that cannot be read.
  Input(const std::string& asked);

  const std::string& getPath() const { return path; }
  /// As messages call the file.
  const std::string& getShownPath() const { return shownPath; }
  /// Throws UserError when the file cannot be opened.
  std::ifstream open() const;

 private:
  void copyFrom(std::FILE* pipe);

  std::string path;
  std::string shownPath;
  std::unique_ptr<TemporaryFile> copied;
};

/// The version that the exchange classes are given for this form.
std::string getVersion(Form form);

struct Reading {
  Form form;
  std::size_t notes;  // how many were told
};

/// Reads a document into `manager`. What an exchange document holds but cannot be read is told on
/// `notes`, a line each. Throws UserError, which names the file and, where it is malformed, line
/// and column.
Reading read(const Input& input, const std::optional<std::string>& version,
             Found::FoundationManager& manager, std::ostream& notes);

/// A document as it stands in its file, with the position of every element and attribute.
struct Tree {
  std::string shownPath;  // as messages call the file
  Form form;
  std::unique_ptr<KvXmlN::Document> document;
  std::vector<const KvXmlN::Data*> containers;  // of beddings, in an exchange document
};

/// True for the elements of all versions.
bool isBedding(const KvXmlN::Data& element);

/// All elements that hold beddings, in document order, or else the one that is made for them.
std::vector<const KvXmlN::Data*> listContainers(const KvXmlN::Data& root);

/// Parses a document without reading its beddings. Throws UserError as read() does.
Tree parse(const Input& input, const std::optional<std::string>& version);

}  // namespace Documents
