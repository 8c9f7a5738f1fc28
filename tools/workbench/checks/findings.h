#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "checks/rule.h"
#include "documents/element.h"
#include "found/foundation.h"

namespace Checks {

struct Finding {
  const Rule* rule = nullptr;
  KvXmlPosition position;
  std::string sentence;
  KvXmlPosition owner;                            // of the element or attribute that it concerns
  const Found::Foundation* foundation = nullptr;  // that it is about, if known
};

/// Foundations by line and column of the elements and attributes that tell of them.
using Owners = std::map<std::pair<std::size_t, std::size_t>, const Found::Foundation*>;

/// What was found in one document.
class Findings {
 public:
  /// `sentence` is in UTF-8. Names and texts from the document must come from quote() or its like.
  void add(const Rule& rule, KvXmlPosition position, std::string sentence);
  /// Of a place that concerns what stands at another one, `owner`.
  void add(const Rule& rule, KvXmlPosition position, std::string sentence, KvXmlPosition owner);

  bool isEmpty() const { return findings.empty(); }

  /// Sorts them into the order of the document, and sets the foundation that each is about.
  void arrange(const Owners& owners);

  const std::vector<Finding>& list() const { return findings; }
  /// How many are about `foundation`.
  std::size_t count(const Found::Foundation& foundation) const;

 private:
  std::vector<Finding> findings;
  std::unordered_map<const Found::Foundation*, std::size_t> counts;
};

/// Text from a document as warnings show it: in UTF-8, and cut off where it is long.
std::string showText(const std::string& text);

/// showText() between quotation marks.
std::string quote(const std::string& text);

/// An attribute that is not absent, as warnings start with it: FZAREA="12,5"
std::string showAttribute(const Documents::Element& element, const std::string& name);

/// The same for an element: <FOUND>
std::string showElement(const Documents::Element& element);

/// Where something before `here` stands: "in line 3".
std::string showPlace(KvXmlPosition earlier, KvXmlPosition here);

}  // namespace Checks
