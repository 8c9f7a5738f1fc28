#pragma once

#include <cstddef>
#include <deque>
#include <optional>

#include "xml_shapes.h"

/// Documents of nothing but elements and attributes, as programs write them: an XML declaration or
/// none, a root, white space between the tags. Names are ASCII letters, digits and '_', values
/// stand between double quotes.
///
/// Plain documents need no inspection after they are parsed: nothing that must be refused then can
/// occur in them. Checking the text is much faster than visiting all nodes once more.
namespace XmlPlain {

/// A start tag.
struct Tag {
  std::size_t offset;   // of its '<' in the text
  unsigned char shape;  // its number, or 0 where it has none
};

/// All start tags of `text`, in their order, or none when it is not plain or not well-formed.
/// Learns the shapes of elements.
std::optional<std::deque<Tag>> findTags(const char* text, KvXmlView::Shapes& shapes);

}  // namespace XmlPlain
