#include "source.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fmt/format.h>

#include "documents/markup.h"
#include "documents/notes.h"
#include "files/user_error.h"
#include "foundation_object.h"
#include "model.h"
#include "text.h"

namespace Python {
namespace {

using Documents::Document;
using Documents::Entries;
using Documents::Entry;
using Found::Foundation;

std::vector<std::string> listLines(Document& document) {
  std::vector<std::string> lines;
  for (const Documents::Note& note : Documents::listNotes(document))
    if (note.position.line > 0)  // others count what was read
      lines.push_back(fmt::format("{}:{}:{}: {}", document.getShownPath(), note.position.line,
                                  note.position.column, note.sentence));
  return lines;
}

/// Names are UTF-8 whatever this is.
std::string nameEncoding(const Document& document) {
  if (document.getCharset().isUtf8()) return "utf-8";
  const std::string_view declared = Markup::readEncoding(document.getContent().bytes);
  const bool isTrue = !declared.empty() && declared != "UTF-8" && declared != "utf-8";
  return isTrue ? std::string(declared) : "windows-1252";
}

bool isReadWhole(Document& document) {
  const auto isRead = [](const Entry& entry) { return entry.foundation != nullptr; };
  return std::all_of(
      document.getEntries().begin(), document.getEntries().end(),
      [&](const Entries& entries) { return std::all_of(entries.begin(), entries.end(), isRead); });
}

}  // namespace

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

std::shared_ptr<Source> describe(Document& document, const Documents::ReadOptions& options) {
  auto source = std::make_shared<Source>();
  source->options = options;
  source->form = document.getForm();
  source->encoding = nameEncoding(document);
  source->units = document.getUnits();
  source->labels = document.getLabels();
  if (document.getSheet() != nullptr) source->dialect = document.getSheet()->dialect;
  source->notes = listLines(document);
  source->isReadWhole = isReadWhole(document);
  source->content = document.takeContent();
  return source;
}

std::unique_ptr<Read> read(Files::Content content, const Documents::ReadOptions& options) {
  if (isWide(content.bytes)) throw DocumentError(content.shownPath, {}, wideIsRefused);
  Document document(std::move(content), options);
  if (options.form && document.getForm() != *options.form)
    throw DocumentError(
        document.getShownPath(), {},
        fmt::format("this is {}, not {}", getName(document.getForm()), getName(*options.form)));
  document.requireReadable();
  auto result = std::make_unique<Read>();
  result->source = describe(document, options);
  // The document must not delete what is taken over.
  result->foundations = document.getFoundations();
  document.getFoundations() = Found::FoundationManager();
  return result;
}

std::vector<const Foundation*> Snapshot::listOriginals() const {
  std::vector<const Foundation*> originals;
  originals.reserve(items.size());
  for (const Item& item : items) originals.push_back(item.original);
  return originals;
}

std::unique_ptr<Snapshot> takeSnapshot(const ModelState& state,
                                       const Found::FoundationManager& manager) {
  auto snapshot = std::make_unique<Snapshot>();
  snapshot->source = state.source;
  snapshot->units = state.units;
  snapshot->items.reserve(manager.getFoundations().size());
  for (const Foundation* original : manager.getFoundations()) {
    std::unique_ptr<Foundation> copied = duplicate(*original);
    Foundation* const copy = copied.get();
    snapshot->copies.add(std::move(copied));
    snapshot->items.push_back({original, state.origins->find(*original), copy});
    if (original == manager.getCurrentFoundation()) snapshot->copies.setCurrentFoundation(copy);
  }
  return snapshot;
}

}  // namespace Python
