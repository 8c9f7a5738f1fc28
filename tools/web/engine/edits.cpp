#include <algorithm>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "answers.h"
#include "columns.h"
#include "foundations/copying.h"
#include "foundations/numbers.h"
#include "models/assigning.h"

/// Changes of rows.
namespace Engine::Answers {
namespace {

using Assigning::Change;
using Found::Foundation;

constexpr std::size_t mostIndexes = 200;

Json tell(const std::string& label, const std::vector<std::size_t>& indexes) {
  return {{"label", label}, {"indexes", indexes}};
}

Json tell(const std::string& label, History::Span span) {
  std::vector<std::size_t> indexes(std::min(span.count, mostIndexes));
  for (std::size_t i = 0; i < indexes.size(); ++i) indexes[i] = span.first + i;
  return tell(label, indexes);
}

/// One foundation as messages call it, or how many.
std::string describe(const Session& session, const std::vector<std::size_t>& indexes) {
  if (indexes.size() == 1) return Fields::describe(*session.getRow(indexes[0]).foundation);
  return std::to_string(indexes.size()) + " foundations";
}

/// What the document could not hold would be lost when it is saved.
void requireStored(const Session& session, const Fields::Field& field) {
  if (session.getSource().fields.has(field)) return;
  throw UserError(fmt::format("this document cannot hold {}; nothing was changed", field.name));
}

/// What users write into a cell; errors tell of which foundation.
Change readCell(const Foundation& foundation, const std::string& key, const std::string& text) {
  try {
    return Assigning::read(key, text);
  } catch (const UserError& error) {
    throw UserError(Fields::describe(foundation) + ": " + error.what());
  }
}

/// The foundation with these texts in these fields; null where that changes nothing. Adds to
/// `changes` what it changes.
std::shared_ptr<Foundation> fillRow(const Session& session, Foundation& before,
                                    const std::vector<std::string>& keys,
                                    const std::vector<std::string>& texts,
                                    std::vector<Change>& changes) {
  std::shared_ptr<Foundation> after;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const Change change = readCell(before, keys[i], texts.at(i));
    if (change.field.get(after ? *after : before) == change.value) continue;
    requireStored(session, change.field);
    if (!after) after = Copying::duplicate(before);
    Assigning::apply({change}, *after);
    changes.push_back(change);
  }
  return after;
}

void requireValid(const Session& session, const Rows& rows, const std::vector<Change>& changes,
                  const std::set<const Foundation*>& changed) {
  Assigning::requireNumbers(session.getSource().form, session.getName(), changes);
  Borrowed borrowed(rows);
  Assigning::requireUnique(borrowed.get(), changed, changes);
}

}  // namespace

Json set(Session& session, const Request& request) {
  const Change change = Assigning::read(request.getText("key"), request.getText("text"));
  const std::vector<std::size_t> indexes = request.getIndexes();
  Rows rows = session.getRows();
  std::set<const Foundation*> changed;
  for (const std::size_t index : indexes) {
    Foundation& before = *session.getRow(index).foundation;
    if (change.field.get(before) == change.value) continue;
    std::shared_ptr<Foundation> after = Copying::duplicate(before);
    Assigning::apply({change}, *after);
    changed.insert(after.get());
    rows[index].foundation = std::move(after);
  }
  if (changed.empty()) return tell("", indexes);
  requireValid(session, rows, {change}, changed);
  requireStored(session, change.field);
  const std::string label = nameField(change.field) + " of " + describe(session, indexes);
  session.change(label, std::move(rows));
  return tell(label, indexes);
}

Json fill(Session& session, const Request& request) {
  const std::vector<std::size_t> indexes = request.getIndexes();
  const auto keys = request.values.at("keys").get<std::vector<std::string>>();
  const auto texts = request.values.at("texts").get<std::vector<std::vector<std::string>>>();
  Rows rows = session.getRows();
  std::vector<Change> changes;
  std::vector<std::size_t> places;
  std::set<const Foundation*> changed;
  for (std::size_t i = 0; i < indexes.size(); ++i) {
    Foundation& before = *session.getRow(indexes[i]).foundation;
    std::shared_ptr<Foundation> after = fillRow(session, before, keys, texts.at(i), changes);
    if (!after) continue;
    changed.insert(after.get());
    places.push_back(indexes[i]);
    rows[indexes[i]].foundation = std::move(after);
  }
  if (changes.empty()) return tell("", indexes);
  requireValid(session, rows, changes, changed);
  const std::string label = fmt::format("{} value{} of {}", changes.size(),
                                        changes.size() == 1 ? "" : "s", describe(session, places));
  session.change(label, std::move(rows));
  places.resize(std::min(places.size(), mostIndexes));
  return tell(label, places);
}

Json add(Session& session, const Request& request) {
  std::vector<Change> changes;
  for (const auto& [key, text] : request.values.at("values").items())
    changes.push_back(Assigning::read(key, text.get<std::string>()));
  for (const Change& change : changes) requireStored(session, change.field);
  if (!request.values.at("values").contains("name")) throw UserError("a foundation has a name");
  // The library knows what a new one is like.
  Found::FoundationManager maker;
  std::shared_ptr<Foundation> added =
      Copying::duplicate(*maker.giveFoundation(Foundation(), false));
  Rows rows = session.getRows();
  {
    Borrowed before(rows);
    added->setNumber(Numbers::findFree(before.get()));
  }
  Assigning::apply(changes, *added);
  rows.push_back({added, Models::nowhere});
  requireValid(session, rows, changes, {added.get()});
  const std::string label = "adding " + Fields::describe(*added);
  const std::size_t place = rows.size() - 1;
  session.change(label, std::move(rows));
  return tell(label, History::Span{place, 1});
}

Json remove(Session& session, const Request& request) {
  const std::vector<std::size_t> indexes = request.getIndexes();
  std::vector<bool> goes(session.getRows().size());
  for (const std::size_t index : indexes) {
    session.getRow(index);
    goes[index] = true;
  }
  Rows rows;
  for (std::size_t i = 0; i < goes.size(); ++i)
    if (!goes[i]) rows.push_back(session.getRows()[i]);
  if (indexes.empty()) return tell("", indexes);
  const std::string label = "removing " + describe(session, indexes);
  session.change(label, std::move(rows));
  return tell(label, std::vector<std::size_t>());
}

Json undo(Session& session) {
  const std::string label = session.getHistory().getUndoLabel();
  if (label.empty()) throw UserError("there is nothing to undo");
  return tell(label, session.getHistory().undo());
}

Json redo(Session& session) {
  const std::string label = session.getHistory().getRedoLabel();
  if (label.empty()) throw UserError("there is nothing to redo");
  return tell(label, session.getHistory().redo());
}

}  // namespace Engine::Answers
