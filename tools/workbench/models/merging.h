#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "comparing/merging.h"
#include "found/foundation.h"
#include "foundations/fields.h"
#include "models/snapshot.h"

namespace Models {

/// What merging makes of the foundations of a snapshot.
struct Merged {
  /// New values of one of its items.
  struct Change {
    std::size_t item;
    std::vector<Fields::Difference> fields;
  };

  std::vector<Change> changes;
  std::vector<std::unique_ptr<Found::Foundation>> added;
  std::vector<Comparing::Refusal> clashes;  // which came to nothing, since no rule says what to do
  std::vector<Comparing::Refusal> leftOut;  // by the rule
  std::vector<std::string> losses;          // a line each
  std::vector<std::string> unitNotes;       // a line for each of the others that has one
};

/// Takes the foundations of `sources` over into `target`, as Comparing::Merger does for documents.
/// Neither changes. Throws LossFound where the form of `target` cannot hold what it has already,
/// and UserError where units differ.
Merged merge(Snapshot& target, const std::vector<std::unique_ptr<Snapshot>>& sources,
             Comparing::OnClash rule);

/// A refusal as a message.
std::string makeLine(const Comparing::Refusal& refusal);

}  // namespace Models
