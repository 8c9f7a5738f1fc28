#pragma once

#include <memory>
#include <string>

#include "models/snapshot.h"
#include "models/source.h"

/// A model as it is read, to be changed: foundations that document and place are known of.
inline std::unique_ptr<Models::Snapshot> openModel(const std::string& name,
                                                   const std::string& bytes,
                                                   const Documents::ReadOptions& options = {}) {
  const std::unique_ptr<Models::Read> read = Models::read({name, "", bytes}, options);
  auto snapshot = std::make_unique<Models::Snapshot>();
  snapshot->source = read->source;
  for (const Found::Foundation* foundation : read->foundations.getFoundations()) {
    snapshot->add(*foundation, snapshot->items.size());
    if (foundation == read->foundations.getCurrentFoundation())
      snapshot->copies.setCurrentFoundation(snapshot->items.back().copy);
  }
  return snapshot;
}

/// Takes the foundation at this place out of a model.
inline void removeFrom(Models::Snapshot& snapshot, std::size_t place) {
  snapshot.copies.remove(snapshot.items[place].copy, true, false);
  snapshot.items.erase(snapshot.items.begin() + static_cast<std::ptrdiff_t>(place));
}

/// Adds one that the document does not hold.
inline Found::Foundation& addTo(Models::Snapshot& snapshot, int number, const std::string& name) {
  Found::Foundation added;
  added.setNumber(number);
  added.setName(name);
  snapshot.add(added, Models::nowhere);
  return *snapshot.items.back().copy;
}
