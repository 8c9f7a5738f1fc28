#pragma once

#include <set>
#include <string>
#include <vector>

#include "documents/document.h"

namespace Documents {

/// A number of a foundation that stands elsewhere in a model.
struct Mention {
  KvXmlPosition position;
  std::string attribute;
  int number;
};

/// Attributes with FOUND in their name, of elements that tell of no foundation, that hold one of
/// the numbers. An exchange document has none.
std::vector<Mention> listMentions(const Document& document, const std::set<int>& numbers);

}  // namespace Documents
