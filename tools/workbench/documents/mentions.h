#pragma once

#include <set>
#include <string>
#include <vector>

#include "documents/document.h"

namespace Documents {

/// A place in a model, outside of its foundations, that refers to a foundation by its number.
struct Mention {
  KvXmlPosition position;
  std::string attribute;
  int number;
};

/// Finds attributes whose name contains FOUND and whose value is one of `numbers`. Skips the
/// elements of the foundations themselves. Exchange documents have no such attributes.
std::vector<Mention> listMentions(const Document& document, const std::set<int>& numbers);

}  // namespace Documents
