#pragma once

#include <vector>

#include "documents/document.h"
#include "documents/notes.h"
#include "found/foundation_manager.h"
#include "foundations/matching.h"

/// Removes foundations that nothing needs.
namespace Pruning {

struct Options {
  bool isGenerated = false;               // only generated ones go
  Found::FoundationUser* user = nullptr;  // says which stay; without one all that are generated go
  bool keepsNumbers = false;
};

/// Removes them from `manager`, whose foundations a document of this form shall hold. Unless they
/// keep their numbers, those that stay are numbered anew where any goes, and always in the first
/// exchange version, which has none.
void prune(const Options& options, Documents::Form form, Found::FoundationManager& manager);

/// Places elsewhere in the document that mean foundations by numbers which are gone now, or which
/// others have. `pairs` tell what became of its foundations.
std::vector<Documents::Note> listStale(const Documents::Document& document,
                                       const std::vector<Matching::Pair>& pairs);

}  // namespace Pruning
