#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "documents/document.h"
#include "files/content.h"
#include "found/foundation_manager.h"
#include "foundations/units.h"
#include "models/snapshot.h"
#include "models/source.h"
#include "origins.h"

namespace Python {

using Models::Snapshot;
using Models::Source;

/// The content of the file at `path`, which messages call `shownPath`. Throws UserError.
Files::Content readFile(const std::string& path, const std::string& shownPath,
                        const Documents::ReadOptions& options);

/// Reads a document that a model stands for. Throws UserError.
std::unique_ptr<Models::Read> readModel(Files::Content content,
                                        const Documents::ReadOptions& options);

/// What a model knows beside its manager. Guarded by the interpreter lock.
struct ModelState {
  std::shared_ptr<const Source> source;
  std::shared_ptr<Origins> origins;
  std::optional<Units> units;  // that it names from now on
  int savedBy = 0;             // the process that has a thread save it at this moment
};

/// The foundations that a snapshot was taken of, for Origins::Watch.
std::vector<const Found::Foundation*> listOriginals(const Snapshot& snapshot);

/// Needs the lock, runs no code of Python.
std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state,
                                       const Found::FoundationManager& manager);

}  // namespace Python
