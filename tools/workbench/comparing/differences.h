#pragma once

#include <vector>

#include "documents/document.h"
#include "foundations/fields.h"
#include "foundations/matching.h"

/// How the foundations of two documents differ.
namespace Comparing {

/// A foundation that one of the documents lacks, or that has other fields there.
struct Difference {
  Matching::Pair pair;
  std::vector<Fields::Difference> fields;  // of one that both have
};

struct Differences {
  std::vector<Difference> foundations;
  bool isCurrentSame;  // the current foundation

  bool isEmpty() const { return foundations.empty() && isCurrentSame; }
};

/// Whatever the forms of the documents, which must outlive the result.
Differences compare(Documents::Document& first, Documents::Document& second);

}  // namespace Comparing
