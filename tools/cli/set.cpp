#include <algorithm>
#include <optional>
#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands.h"
#include "comparing/differences.h"
#include "differences.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "foundations/numbers.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"
#include "text/near_name.h"

namespace {

using Commands::Assignments;
using Commands::Notes;
using Commands::Status;
using Level = Commands::Message::Level;
using Documents::Document;
using Found::Foundation;
using Found::FoundationManager;

/// A field and its new value.
struct Change {
  const Fields::Field& field;
  Fields::Value value;
};

[[noreturn]] void failAtField(const std::string& name) {
  std::vector<std::string> names;
  for (const Fields::Field& field : Fields::list()) names.emplace_back(field.name);
  const std::optional<std::string> near = findNearName(name, names);
  throw UserError(
      "there is no field \"" + DisplayText::fromName(name) + "\"" +
      (near ? "; did you mean " + *near + "?" : "; kvfound show --format csv names them"));
}

Change read(const std::string& assignment) {
  const std::size_t sign = assignment.find('=');
  if (sign == assignment.npos)
    throw UserError("\"" + DisplayText::fromName(assignment) +
                    "\" is no assignment such as areaZ=16000");
  const std::string name = assignment.substr(0, sign);
  const std::string text = assignment.substr(sign + 1);
  const Fields::Field* const field = Fields::find(name);
  if (name == "current") throw UserError("which foundation is current cannot be set");
  if (field == nullptr) failAtField(name);
  try {
    return {*field, Fields::parse(*field, text)};
  } catch (const std::invalid_argument& error) {
    throw UserError(name + " cannot be \"" + DisplayText::fromName(text) + "\", only " +
                    error.what());
  }
}

std::vector<Change> read(const Assignments& assignments) {
  std::vector<Change> changes;
  for (const std::string& assignment : assignments) changes.push_back(read(assignment));
  return changes;
}

void assign(const std::vector<Change>& changes, Foundation& foundation) {
  for (const Change& change : changes) change.field.set(foundation, change.value);
}

bool sets(const std::vector<Change>& changes, Fields::Type type) {
  return std::any_of(changes.begin(), changes.end(),
                     [type](const Change& change) { return change.field.type == type; });
}

/// Whatever else a document may hold twice, what is changed must be unique in what is set.
void requireUnique(const FoundationManager& manager, const std::set<const Foundation*>& changed,
                   const std::vector<Change>& changes) {
  const bool setsNumber = sets(changes, Fields::Type::integer);
  const bool setsName = sets(changes, Fields::Type::text);
  for (const Foundation* foundation : manager.getFoundations())
    for (const Foundation* other : changed) {
      if (foundation == other) continue;
      if (setsNumber && foundation->getNumber() == other->getNumber())
        throw UserError("number " + std::to_string(other->getNumber()) + " is taken by \"" +
                        DisplayText::fromName(foundation->getName()) + "\"; nothing was written");
      if (setsName && foundation->getName() == other->getName())
        throw UserError("the name \"" + DisplayText::fromName(other->getName()) +
                        "\" is taken by number " + std::to_string(foundation->getNumber()) +
                        "; nothing was written");
    }
}

void requireNumbers(const Document& document, const std::vector<Change>& changes) {
  if (document.getForm() == Documents::Form::firstExchange && sets(changes, Fields::Type::integer))
    throw UserError(document.getShownPath() +
                    ": documents of version 1.0 have no numbers that could be set");
}

std::vector<Foundation*> select(const Selection& selection, FoundationManager& manager,
                                const std::string& shownPath) {
  if (const std::optional<int> missing = selection.findMissing(manager.getFoundations()))
    throw UserError(shownPath + ": there is no foundation number " + std::to_string(*missing) +
                    "; nothing was written");
  std::vector<Foundation*> selected;
  for (Foundation* foundation : manager.getFoundations())
    if (selection.includes(*foundation)) selected.push_back(foundation);
  if (selected.empty())
    throw UserError(shownPath + ": no foundation is selected; nothing was written");
  return selected;
}

void requireSelection(const Selection& selection) {
  if (selection.isOfAll())
    throw UserError(
        "tell which foundations: numbers such as 3,5-9, --name PATTERN, --generated or "
        "--part; --name '*' is all of them");
}

/// Writes what `draft` has become in place of `document`, and prints what changed.
Status finish(Document& document, Editing::Draft& draft, const std::string& path, std::ostream& out,
              Notes& notes) {
  notes.setPhase("writing");
  OutputFile file = Commands::openOutput(path);
  Writing::Output output(file, document.getForm(), document);
  const Editing::Wish wish = draft.makeWish();
  output.edit(document, wish);
  output.requireAll(draft.getFoundations());
  notes.setPhase("");
  output.commit();
  // Beside a document on standard output nothing else may stand.
  std::ostream* const told = path == "-" ? nullptr : &out;
  Commands::tellChanges(document, wish, told, notes);
  for (const Losses::Loss& loss : output.getUnread()) {
    const std::string line = "- " + loss.foundation + ", which " + loss.sentence + "\n";
    if (told != nullptr)
      *told << line;
    else
      notes.tell({Level::note,
                  "removed",
                  DisplayText::fromName(document.getShownPath()),
                  {},
                  loss.foundation,
                  loss.sentence},
                 line);
  }
  return Status::done;
}

}  // namespace

namespace Commands {

Status set(const SetOptions& options, std::ostream& out, Notes& notes) {
  requireSelection(options.selection);
  const std::vector<Change> changes = read(options.assignments);
  if (changes.empty()) throw UserError("tell what to set, such as areaZ=16000");
  tellPhase("reading", options.path, notes);
  Document document(Documents::readFile(options.path, options.reading.form), options.reading);
  tellReading(document, notes);
  Editing::Draft draft(document);
  FoundationManager& manager = draft.getFoundations();
  const std::vector<Foundation*> selected =
      select(options.selection, manager, document.getShownPath());
  for (Foundation* foundation : selected) assign(changes, *foundation);
  requireNumbers(document, changes);
  requireUnique(manager, {selected.begin(), selected.end()}, changes);
  return finish(document, draft, options.path, out, notes);
}

Status remove(const SetOptions& options, std::ostream& out, Notes& notes) {
  requireSelection(options.selection);
  tellPhase("reading", options.path, notes);
  Document document(Documents::readFile(options.path, options.reading.form), options.reading);
  tellReading(document, notes);
  Editing::Draft draft(document);
  FoundationManager& manager = draft.getFoundations();
  for (Foundation* foundation : select(options.selection, manager, document.getShownPath()))
    draft.remove(*foundation);
  return finish(document, draft, options.path, out, notes);
}

Status add(const AddOptions& options, std::ostream& out, Notes& notes) {
  std::vector<Change> changes = read(options.assignments);
  changes.push_back(read("name=" + options.name));
  tellPhase("reading", options.path, notes);
  Document document(Documents::readFile(options.path, options.reading.form), options.reading);
  tellReading(document, notes);
  Editing::Draft draft(document);
  FoundationManager& manager = draft.getFoundations();
  requireNumbers(document, changes);
  const int number = Numbers::findFree(manager);
  Foundation& added = *manager.giveFoundation(Foundation(), false);
  added.setNumber(number);
  assign(changes, added);
  requireUnique(manager, {&added}, changes);
  return finish(document, draft, options.path, out, notes);
}

}  // namespace Commands
