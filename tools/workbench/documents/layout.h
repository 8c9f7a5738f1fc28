#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/edit.h"
#include "documents/markup.h"

namespace Documents {

/// The layout of a start tag, for new tags that look the same.
struct TagStyle {
  std::string separator = " ";  // before each attribute
  char quote = '"';
  std::string closing = " />";  // of an element without content
};

/// The layout of the lines of a document, so that new elements look like those around them.
class Layout {
 public:
  explicit Layout(std::string_view bytes);

  TagStyle findStyle(const Markup::StartTag& tag) const;

  /// The place in the tag where a new attribute belongs.
  std::size_t findAttributeEnd(const Markup::StartTag& tag) const;

  /// The line break and the indentation before `place`; empty when `place` is not the first thing
  /// on its line.
  std::string findIndentation(std::size_t place) const;

  /// The end of the line from `place` on, behind comments; nowhere when anything else follows on
  /// the line.
  std::size_t findLineEnd(std::size_t place) const;

  /// Widens `element` to whole lines when nothing else is on them; otherwise returns it as it is.
  Markup::Range widenToLines(Markup::Range element) const;

  /// Adds children at the end of an element that holds no other elements.
  void addChildren(Markup::Range element, const std::vector<std::string>& children,
                   Edit& edit) const;

  /// Adds a child at the end of an element. `children` are its own children, a line each.
  void addChild(Markup::Range element, const std::string& start,
                const std::vector<std::string>& children, const std::string& end, Edit& edit) const;

 private:
  /// `lines` are children and ends of tags, with their depth below that of the element.
  struct Line {
    int depth;
    std::string bytes;
  };
  void append(Markup::Range element, const std::vector<Line>& lines, Edit& edit) const;

  std::string_view text;
  std::string lineEnd;
  std::string unit;  // indentation of one level of elements
};

}  // namespace Documents
