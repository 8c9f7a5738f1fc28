#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "kv/export.h"
#include "kv/xml_error.h"
#include "kv/xml_position.h"
#include "kv/xml_view.h"

/// @file
/// The legacy XML library: a document with a cursor, its elements and their attributes.
///
/// Text is 8-bit and passes through unchanged, whatever its code page. A parsed document keeps its
/// values and texts as they are written and prints them so; what an attribute means is worked out
/// when it is asked for: references are resolved, line ends and tabs become blanks. A character
/// reference beyond ASCII becomes the byte that stands for the character in the code page that the
/// document declares (ISO-8859-1 to -16, windows-1250 to -1258, KOI8-R and -U), and UTF-8 where
/// there is no such byte or no such declaration. References to entities of a document's own are
/// refused, since they are not expanded. Numbers are converted alike under every process locale.
/// Where memory runs out std::bad_alloc is thrown. The `bool` arguments named `flag` have no effect
/// unless said otherwise.
///
/// Parsing lets pass, on purpose, what is not well-formed but prints well-formed: "]]>" in a text,
/// references to white space outside the root, white space before the XML declaration, and in that
/// capital letters and other attributes than it should have; names in UTF-8 where another encoding
/// is declared. What the declarations in a document type say is kept and not looked into.

class KvXmlData;
namespace CodePages {
struct CodePage;
}
namespace KvXmlView {
struct AttributeBlock;
template <class Element>
class AttributePool;
}  // namespace KvXmlView

/// An attribute of an element, which owns it.
class KV_API KvXmlAttributeData {
 public:
  /// Inline, since millions end with a document and few have a text of their own.
  ~KvXmlAttributeData() {
    if ((word & ownText) != 0) deleteText();
  }
  KvXmlAttributeData(const KvXmlAttributeData&) = delete;
  KvXmlAttributeData& operator=(const KvXmlAttributeData&) = delete;

  /// The text as a whole number: white space around it and one leading '+' are accepted. 0 when
  /// the text is anything else or does not fit an int.
  int getInteger() const;
  /// The text as a number, likewise, "inf" and "nan" included; 0.0 when it is anything else. Beyond
  /// the range of double it is an infinity or a zero of its sign.
  double getDouble() const;
  /// What the attribute means. The reference stays valid as long as the element; after a change of
  /// the attribute, ask again.
  const std::string& getData() const;
  /// True when the text is a whole number, as for getInteger(), that equals `value`.
  bool checkValue(int value) const;

 private:
  friend class KvXmlData;
  friend struct KvXmlView::AttributeBlock;
  friend class KvXmlView::AttributePool<KvXmlData>;
  friend class KvXmlView::Pool<KvXmlAttributeData>;

  struct Text;

  KvXmlAttributeData() = default;
  bool hasText() const { return (word & anyText) != 0; }
  Text* getText() const;
  void keepText(const CodePages::CodePage* page) const;
  void deleteText();
  KvXmlView::AttributeHandle* getAttribute() const;
  const char* getValue() const;
  void refer(KvXmlView::AttributeHandle* attribute);

  static constexpr std::uintptr_t anyText = 1;
  static constexpr std::uintptr_t ownText = 2;

  // Attributes take most of a document's memory, so an attribute holds nothing else: the parser's
  // attribute, or, with `anyText`, what holds both that and the string that it means. The tree
  // makes and keeps the strings of names and words, many at a time; those of numbers, which few
  // hosts ask for as strings, belong to the attribute, which `ownText` marks.
  mutable std::uintptr_t word = 0;
};

/// An element. Pointers to it and to its attributes stay valid as long as its tree, or until an
/// element above it that was not added is destroyed. Elements may be nested deeper than the 1,000
/// levels that can be read.
class KV_API KvXmlData {
 public:
  /// A new element, meant to be added to `parent` with addChild(); until then it is the caller's
  /// and must not outlive the tree of `parent`. Without a parent it belongs to no tree and may be
  /// added anywhere. Throws std::invalid_argument when `name` is no XML name.
  KvXmlData(const std::string& name, KvXmlData* parent);
  /// To be called for elements that were not added; those that were belong to their parents.
  ~KvXmlData();
  KvXmlData(const KvXmlData&) = delete;
  KvXmlData& operator=(const KvXmlData&) = delete;

  /// The first element of this name in document order, or null: among all elements below this one
  /// with `flag`, among its direct children without. The element itself does not count.
  KvXmlData* findTree(const std::string& name, bool flag);

  /// The child elements in document order. To be read only; addChild() changes it.
  std::vector<KvXmlData*>& getChildren();

  const std::string& getName() const;  ///< of the element

  /// The attribute of this name, or null.
  KvXmlAttributeData* findAttribute(const std::string& name) const;

  /// Appends `child` and owns it from here on, with all below it. Throws std::invalid_argument, and
  /// the caller keeps it, when `child` is null, already added, above this element, or made for a
  /// parent of another tree, and when this element was made for `child` or for one below it.
  void addChild(KvXmlData* child);

  /// Sets an attribute; one that exists keeps its place. Throws std::invalid_argument when `name`
  /// is no XML name.
  void setAttribute(const std::string& name, int value, bool flag);
  /// The same. A character that XML cannot hold (a control character other than tab and line break)
  /// is stored as '?'.
  void setAttribute(const std::string& name, const std::string& value, bool flag);

  /// Deletes the children for which `isUnwanted` returns true, with everything below them; do not
  /// use them any more. When `isUnwanted` throws, nothing has changed.
  void removeChildren(const std::function<bool(const KvXmlData&)>& isUnwanted);

  /// The names of the attributes, in their order.
  std::vector<std::string> getAttributeNames() const;

  /// Where in its file the start tag stood.
  KvXmlPosition getPosition() const;
  /// Where in its file the attribute of this name stood; 0 and 0 when there is none.
  KvXmlPosition getAttributePosition(const std::string& name) const;

 private:
  friend class KvXmlTree;
  friend struct KvXmlView::Store<KvXmlData>;
  friend class KvXmlView::Pool<KvXmlData>;
  KvXmlData();

  KvXmlView::ElementView<KvXmlData, KvXmlView::AttributeBlock> view;
};

/// A document, and a cursor that stands on one of its elements or on none.
class KV_API KvXmlTree {
 public:
  /// An empty document.
  KvXmlTree();

  /// Parses from the stream's position to its end. A text of nothing but white space, comments and
  /// processing instructions gives an empty document. Throws KvXmlError when the text is not
  /// well-formed (this file's description tells what passes), has several roots or text outside the
  /// root, gives an attribute twice, nests deeper than 1,000 levels or holds a NUL character, or
  /// when the stream cannot be read.
  explicit KvXmlTree(std::istream& in);

  /// Frees all elements.
  virtual ~KvXmlTree();
  KvXmlTree(const KvXmlTree&) = delete;
  KvXmlTree& operator=(const KvXmlTree&) = delete;

  /// The root element when it has this name, else null.
  KvXmlData* findRoot(const std::string& name, bool flag) const;

  /// Makes the first child of this name below the cursor current, appending it when there is none,
  /// and returns it. With no current element it opens the root, creating it when the document has
  /// none; when the root has another name the result is null and the cursor stays empty. Throws
  /// std::invalid_argument when an element must be created and `name` is no XML name.
  KvXmlData* open(const std::string& name, bool flag);

  /// Moves the cursor to the parent element, or to none.
  void close();

  /// No effect.
  void flush();

  /// Sets an attribute of the current element, in the shortest form that reads back as the same
  /// double; see KvXmlData::setAttribute(). No effect when there is no current element.
  void setAttribute(const std::string& name, double value);

  /// The current element, or null.
  KvXmlData* getCurrent() const;
  /// Moves the cursor; `element` must belong to this tree, or be null.
  void setCurrent(KvXmlData* element);

  /// Prints the document after a declaration on a line of its own. Everything that was parsed is
  /// kept; only white space within tags and between elements may change, and not where an element
  /// holds text or says xml:space="preserve". The declared encoding stays where it is one of a byte
  /// a character, or of East Asia; otherwise it is UTF-8 when the whole text is, else windows-1252,
  /// or ISO-8859-1 when there are bytes that windows-1252 does not define.
  void putToStream(std::ostream& out) const;

 private:
  std::unique_ptr<KvXmlView::Store<KvXmlData>> store;
  KvXmlData* current = nullptr;
};
