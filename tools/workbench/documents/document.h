#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "documents/element.h"
#include "documents/entries.h"
#include "documents/form.h"
#include "documents/markup.h"
#include "files/content.h"
#include "found/foundation_manager.h"
#include "foundations/selection.h"
#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "spreadsheets/sheet.h"
#include "text/charset.h"

namespace Documents {

using ByteRange = Markup::Range;

/// How a document is read, where its content leaves that open.
struct ReadOptions {
  std::optional<std::string> version;  // of an exchange document
  std::optional<Form> form;            // csv or json
  Spreadsheets::Dialect dialect;       // of a table
};

/// A document, whole and in memory: its bytes, its form, its elements and the foundations that the
/// library reads from them. It is parsed once.
///
/// The content of a document tells its form: one that is no legacy model is an exchange document,
/// of the version asked for, or without one of version "1.0" when it holds a "Bedding" element and
/// of the current one when not. What starts with { is JSON; what starts with no < and has a name
/// that ends with .csv is a table.
class Document {
 public:
  /// Throws UserError, which names the file and, where it is malformed, line and column.
  explicit Document(Files::Content read, const ReadOptions& options = {});

  /// A document that is known to be of this form. Throws UserError where it cannot be read.
  Document(Files::Content written, Form known);

  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;

  /// As messages call the file.
  const std::string& getShownPath() const { return content.shownPath; }
  const Files::Content& getContent() const { return content; }
  /// The same for whoever needs nothing else but foundations from here on.
  Files::Content takeContent() { return std::move(content); }
  Form getForm() const { return form; }
  Element getRoot() const;

  /// How its bytes stand for characters. Its names are UTF-8 in foundations and elements.
  const Charset& getCharset() const { return charset; }

  /// The foundations that are read from it, in document order: those of the library, but that the
  /// two parts that the exchange form may have of a foundation are joined.
  Found::FoundationManager& getFoundations() { return readAll().foundations; }

  /// Leaves of them only those that are selected. Throws UserError when there are none, or when a
  /// number was asked for that none of them has.
  void keep(const Selection& selection);

  /// What stands where foundations do: the children of the list of a model, or of each container of
  /// beddings. At the end what stands outside of these, though it is named as if it told of one.
  const std::vector<Entries>& getEntries() { return readAll().entries; }

  /// Throws UserError when a host that is given the file does not read its foundations: those of a
  /// listing, or of a model that does not start as one.
  void requireReadable() const;

  /// Where an element of the document stands in its bytes, from its start tag to its end tag.
  ByteRange locate(const Element& element) const;
  /// Its start tag.
  Markup::StartTag readTag(const Element& element) const;

  /// The elements whose children are read: the list of a model, where it has one, or each container
  /// of beddings. The entries of each come first in getEntries(), in this order.
  std::vector<Element> listLists() const;

  /// What a table or data tells beside its foundations; null for other forms, and what tells of
  /// elements holds only for those.
  const Spreadsheets::Sheet* getSheet() const { return sheet.get(); }

  /// How a table or data names its units; other forms name none.
  Units getUnits() const { return sheet != nullptr ? sheet->units : Units(); }

  /// How values are labelled, in UTF-8: by the units of a table or data, or as a model calls its
  /// units. Hosts write there what they were told, so that this decides nothing. Both empty where
  /// one of them is blank.
  Units getLabels() const;

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
    std::vector<std::unique_ptr<Found::Foundation>> unselected;  // which entries still know
  };

  void open(const ReadOptions& options);
  void readSheet(const Spreadsheets::Dialect& dialect);
  void openExchange(const std::optional<std::string>& version);
  void readInto(Reading& target) const;
  void decodeName(const Entry& entry) const;
  std::size_t findBegin(const Element& element) const;
  KvXmlData* findList() const;
  Reading& readAll();

  Files::Content content;
  Charset charset;
  Form form = Form::exchange;
  std::unique_ptr<KvXmlTree> model;
  std::unique_ptr<KvXmlN::Document> exchange;
  std::vector<KvXmlN::Data*> containers;
  std::unique_ptr<Reading> reading;
  std::unique_ptr<Spreadsheets::Sheet> sheet;
  mutable std::vector<std::size_t> lineStarts;
};

/// Reads the file at `path`, or standard input when that is "-", for a document. Throws UserError.
Files::Content readFile(const std::string& path, const std::optional<Form>& form = std::nullopt);

}  // namespace Documents
