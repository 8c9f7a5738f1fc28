#include "source.h"

#include <cerrno>
#include <utility>

#include "files/user_error.h"

namespace Python {

using Found::Foundation;

Files::Content readFile(const std::string& path, const std::string& shownPath,
                        const Documents::ReadOptions& options) {
  if (shownPath.empty()) throw FileError("", "the name of the file to read is empty", ENOENT);
  try {
    // A relative path would change its meaning, and "-" means standard input.
    Files::Content content = Documents::readFile(path, options.form);
    content.shownPath = shownPath;
    if (!content.path.empty()) content.path = path;
    return content;
  } catch (const FileError& error) {
    throw FileError(shownPath, error.getSentence(), error.getNumber());
  }
}

std::vector<const Foundation*> listOriginals(const Snapshot& snapshot) {
  std::vector<const Foundation*> originals;
  originals.reserve(snapshot.items.size());
  for (const Snapshot::Item& item : snapshot.items) originals.push_back(item.original);
  return originals;
}

std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state,
                                       const Found::FoundationManager& manager) {
  auto snapshot = std::make_unique<Snapshot>();
  snapshot->source = state.source;
  snapshot->units = state.units;
  snapshot->items.reserve(manager.getFoundations().size());
  for (const Foundation* original : manager.getFoundations()) {
    snapshot->add(*original, state.origins->find(*original));
    if (original == manager.getCurrentFoundation())
      snapshot->copies.setCurrentFoundation(snapshot->items.back().copy);
  }
  return snapshot;
}

}  // namespace Python
