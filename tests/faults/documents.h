#pragma once

#include <memory>
#include <string>
#include <vector>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"

/// Documents made and looked at by nothing but what every companion library offers, as lines: one
/// space a level, the name, then key=value for each attribute; neither can hold a space.
namespace FaultTest {

using Lines = std::vector<std::string>;

/// A name that such a line can hold, longer than the room that a std::string has inside.
inline const std::string spaceless = "A_name_for_which_a_string_needs_memory";

/// A document that was parsed, with the cursor on its root or, for `cursor` false, on none.
std::unique_ptr<KvXmlTree> makeTree(const Lines& lines, bool cursor = true);

/// The text of such a document behind a first line that names XML.
std::string makeFileText(const Lines& lines);

/// The lines of a document, the one behind the other, with the attributes in a fixed order.
std::string describe(const KvXmlTree& tree);
std::string describe(const KvXmlN::Data& element);

/// An element of the newer library with what stands below it.
class Container {
 public:
  explicit Container(const Lines& lines);
  ~Container();
  Container(const Container&) = delete;
  Container& operator=(const Container&) = delete;

  KvXmlN::Data& get() const;

 private:
  struct Document;
  std::unique_ptr<Document> document;
};

/// Appends elements below `top`, whose own line is the first.
void append(KvXmlN::Data& top, const Lines& lines);

}  // namespace FaultTest
