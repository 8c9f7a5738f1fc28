#include "session.h"

#include <utility>

#include "files/user_error.h"
#include "foundations/copying.h"
#include "text/display_text.h"

namespace Engine {
namespace {

using Found::Foundation;

/// Takes the foundations over.
Rows takeRows(Found::FoundationManager& manager) {
  Rows rows;
  rows.reserve(manager.getFoundations().size());
  const Foundation* const current = manager.getCurrentFoundation();
  for (Foundation* foundation : manager.getFoundations())
    rows.push_back({std::shared_ptr<Foundation>(foundation), rows.size(), foundation == current});
  manager = Found::FoundationManager();
  return rows;
}

}  // namespace

Borrowed::Borrowed(const Rows& rows) {
  for (const Row& row : rows) {
    manager.add(row.foundation.get());
    if (row.isCurrent) manager.setCurrentFoundation(row.foundation.get());
  }
}

long Standing::findRow(std::size_t place) const {
  if (items.empty()) return static_cast<long>(place);
  return items[place] == Models::nowhere ? -1 : static_cast<long>(items[place]);
}

Session::Session(std::unique_ptr<Models::Read> read)
    : source(read->source), history(takeRows(read->foundations)) {
  originals.reserve(getRows().size());
  for (const Row& row : getRows()) originals.push_back(row.foundation);
}

const Row& Session::getRow(std::size_t index) const {
  if (index >= getRows().size())
    throw UserError("there is no row " + std::to_string(index) + "; nothing was changed");
  return getRows()[index];
}

Foundation* Session::findOriginal(const Row& row) const {
  return row.origin == Models::nowhere ? nullptr : originals[row.origin].get();
}

void Session::change(const std::string& label, Rows rows) {
  int number = 0;
  if (source->form == Documents::Form::firstExchange)
    for (Row& row : rows) {
      if (row.foundation->getNumber() == ++number) continue;
      row.foundation = Copying::duplicate(*row.foundation);
      row.foundation->setNumber(number);
    }
  history.change(label, std::move(rows));
}

std::string Session::getName() const { return DisplayText::fromName(source->content.shownPath); }

std::unique_ptr<Models::Snapshot> Session::takeSnapshot() const {
  auto snapshot = std::make_unique<Models::Snapshot>();
  snapshot->source = source;
  snapshot->keepsOrder = true;  // as the page shows them
  snapshot->items.reserve(getRows().size());
  for (const Row& row : getRows()) {
    snapshot->add(*row.foundation, row.origin);
    if (row.isCurrent) snapshot->copies.setCurrentFoundation(snapshot->items.back().copy);
  }
  return snapshot;
}

Standing Session::open() const {
  Standing standing;
  if (isUnchanged()) {
    standing.unchanged = std::make_unique<Documents::Document>(source->content, source->options);
    return standing;
  }
  standing.snapshot = takeSnapshot();
  standing.rendering =
      std::make_unique<Models::Rendering>(*standing.snapshot, Models::Target{source->form, {}});
  standing.rendering->requireAll();
  standing.items = standing.rendering->listItems(standing.get());
  return standing;
}

const std::string& Session::getBytes() {
  if (isUnchanged()) return source->content.bytes;
  if (madeOf != history.getVersion()) {
    Standing standing = open();
    getBytes(standing);
  }
  return made;
}

const std::string& Session::getBytes(Standing& standing) {
  if (isUnchanged()) return source->content.bytes;
  made = standing.get().getContent().bytes;
  madeOf = history.getVersion();
  return made;
}

}  // namespace Engine
