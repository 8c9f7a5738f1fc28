#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "kv/xml_n.h"
#include "terminal.h"

namespace Checks {

struct Finding {
  KvXmlPosition position;
  std::string sentence;
};

/// What was found in one document.
class Findings {
 public:
  /// `sentence` is in UTF-8, and holds names and texts from the document only by quote() and such.
  void add(KvXmlPosition position, std::string sentence);

  bool isEmpty() const { return findings.empty(); }

  /// In the order of the document.
  const std::vector<Finding>& list();

  /// A line each, in the same order.
  void print(std::ostream& out, const std::string& shownPath, const Terminal::Painter& painter);

 private:
  std::vector<Finding> findings;
};

/// Text from a document as warnings show it: in UTF-8, and cut off where it is long.
std::string showText(const std::string& text);

/// showText() between quotation marks.
std::string quote(const std::string& text);

/// An attribute that there is, as warnings start with it: FZAREA="12,5"
std::string showAttribute(const KvXmlN::Data& element, const std::string& name);

/// The same for an element: <FOUND>
std::string showElement(const KvXmlN::Data& element);

/// Where the attribute stands, or the element when it has none of this name.
KvXmlPosition locate(const KvXmlN::Data& element, const std::string& name);

/// Where something before `here` stands: "in line 3".
std::string showPlace(KvXmlPosition earlier, KvXmlPosition here);

}  // namespace Checks
