#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/element.h"
#include "documents/entries.h"
#include "documents/form.h"
#include "files/content.h"
#include "found/foundation_manager.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"

namespace Documents {

/// Bytes of a document, from `begin` up to `end`.
struct ByteRange {
  std::size_t begin;
  std::size_t end;
};

/// A document, whole and in memory: its bytes, its form, its elements and the foundations that the
/// library reads from them. It is parsed once.
///
/// The content of a document tells its form: one that is no legacy model is an exchange document,
/// of the version asked for, or without one of version "1.0" when it holds a "Bedding" element and
/// of the current one when not.
class Document {
 public:
  /// Throws UserError, which names the file and, where it is malformed, line and column.
  explicit Document(Files::Content read, const std::optional<std::string>& version = std::nullopt);

  /// A document that is known to be of this form.
  Document(Files::Content written, Form known);

  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  /// As messages call the file.
  const std::string& getShownPath() const { return content.shownPath; }
  const Files::Content& getContent() const { return content; }
  Form getForm() const { return form; }
  Element getRoot() const;

  /// The foundations that the library reads, in document order.
  Found::FoundationManager& getFoundations() { return readAll().foundations; }

  /// What stands where foundations do: the children of the list of a model, or of each container of
  /// beddings.
  const std::vector<Entries>& getEntries() { return readAll().entries; }

  /// Throws UserError when a host that is given the file does not read its foundations: those of a
  /// listing, or of a model that does not start as one.
  void requireReadable() const;

  /// Where an element of the document stands in its bytes, from its start tag to its end tag.
  ByteRange locate(const Element& element) const;

  /// The document of the library that has read it; null when the other one has.
  KvXmlTree* getModel() const { return model.get(); }
  KvXmlN::Document* getExchange() const { return exchange.get(); }
  /// Frees the elements and what is told of them; bytes, form and foundations stay.
  void forgetElements();

  /// Of beddings, in an exchange document.
  const std::vector<KvXmlN::Data*>& getContainers() const { return containers; }

 private:
  struct Reading {
    Found::FoundationManager foundations;
    std::vector<Entries> entries;
  };

  void open(const std::optional<std::string>& version);
  void openExchange(const std::optional<std::string>& version);
  void readInto(Reading& target) const;
  Reading& readAll();

  Files::Content content;
  Form form = Form::exchange;
  std::unique_ptr<KvXmlTree> model;
  std::unique_ptr<KvXmlN::Document> exchange;
  std::vector<KvXmlN::Data*> containers;
  std::unique_ptr<Reading> reading;
  mutable std::vector<std::size_t> lineStarts;
};

/// Reads the file at `path`, or standard input when that is "-", for a document. Throws UserError.
Files::Content readFile(const std::string& path);

/// True for text that may be a document with beddings, whole or broken.
bool mentionsBeddings(const std::string& text);

}  // namespace Documents
