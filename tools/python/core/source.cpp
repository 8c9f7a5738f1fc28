#include "source.h"

#include <cerrno>
#include <utility>

#include <fmt/format.h>

#include "files/user_error.h"
#include "model.h"
#include "text.h"

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

std::unique_ptr<Models::Read> readModel(Files::Content content,
                                        const Documents::ReadOptions& options) {
  if (isWide(content.bytes)) throw DocumentError(content.shownPath, {}, wideIsRefused);
  auto result = Models::read(std::move(content), options);
  const Source& source = *result->source;
  if (options.form && source.form != *options.form)
    throw DocumentError(
        source.content.shownPath, {},
        fmt::format("this is {}, not {}", getName(source.form), getName(*options.form)));
  return result;
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
