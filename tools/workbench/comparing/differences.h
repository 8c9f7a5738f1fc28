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

struct Options {
  /// What pairs those that do not have number and name alike, one after the other. By name first,
  /// an insertion with renumbering is one insertion and renumberings.
  std::vector<Matching::Key> keys = {Matching::Key::name, Matching::Key::number};
  /// Stiffness and factors that differ by no more than this share of the larger one are alike.
  double relative = 0.0;
};

/// Of foundations that belong together, or of which one is null.
std::vector<Difference> listDifferences(const std::vector<Matching::Pair>& pairs,
                                        double relative = 0.0);

/// Whatever the forms of the documents, which must outlive the result.
Differences compare(Documents::Document& first, Documents::Document& second,
                    const Options& options = {});

}  // namespace Comparing
