#pragma once

#include <set>
#include <string>

/// What both XML libraries let pass on purpose although it is not well-formed.
namespace XmlSuite {

enum class EmptyDocument { refused, allowed };

/// A text in which what passes on purpose is made well-formed. Nothing else is changed: whatever
/// else is wrong with the text stays wrong.
struct Mended {
  std::string text;
  std::set<std::string> leniencies;  ///< what needed it, see the source
};

Mended makeWellFormed(const std::string& text, EmptyDocument empty);

}  // namespace XmlSuite
