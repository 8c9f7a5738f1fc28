#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/edit.h"
#include "documents/markup.h"

namespace Documents {

/// How a start tag is laid out, so that another one may look like it.
struct TagStyle {
  std::string separator = " ";  // before each attribute
  char quote = '"';
  std::string closing = " />";  // of an element without content
};

/// How the lines of a document are laid out, so that what is added looks like what is there.
class Layout {
 public:
  explicit Layout(std::string_view bytes);

  TagStyle findStyle(const Markup::StartTag& tag) const;

  /// Where another attribute of the tag belongs.
  std::size_t findAttributeEnd(const Markup::StartTag& tag) const;

  /// The line break and the indentation before what starts at `place`; empty when something else
  /// stands before it on its line.
  std::string findIndentation(std::size_t place) const;

  /// Where the line of what ends at `place` ends, behind comments; nowhere when something else
  /// stands there.
  std::size_t findLineEnd(std::size_t place) const;

  /// `element` with its lines, where it stands alone on them; else as it is.
  Markup::Range widenToLines(Markup::Range element) const;

  /// Adds children at the end of an element that holds no other elements.
  void addChildren(Markup::Range element, const std::vector<std::string>& children,
                   Edit& edit) const;

  /// Adds a child at the end of an element, with children of its own, a line each.
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
  std::string unit;  // that one level of elements is indented by
};

}  // namespace Documents
