#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "commands.h"
#include "comparing/differences.h"
#include "differences.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "foundations/numbers.h"
#include "models/assigning.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Commands::Assignments;
using Commands::Notes;
using Commands::Status;
using Level = Commands::Message::Level;
using Documents::Document;
using Found::Foundation;
using Found::FoundationManager;

using Assigning::Change;

Change read(const std::string& assignment) {
  const std::size_t sign = assignment.find('=');
  if (sign == assignment.npos)
    throw UserError("\"" + DisplayText::fromName(assignment) +
                    "\" is no assignment such as areaZ=16000");
  return Assigning::read(assignment.substr(0, sign), assignment.substr(sign + 1));
}

std::vector<Change> read(const Assignments& assignments) {
  std::vector<Change> changes;
  for (const std::string& assignment : assignments) changes.push_back(read(assignment));
  return changes;
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
  for (Foundation* foundation : selected) Assigning::apply(changes, *foundation);
  Assigning::requireNumbers(document.getForm(), document.getShownPath(), changes);
  Assigning::requireUnique(manager, {selected.begin(), selected.end()}, changes);
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
  Assigning::requireNumbers(document.getForm(), document.getShownPath(), changes);
  const int number = Numbers::findFree(manager);
  Foundation& added = *manager.giveFoundation(Foundation(), false);
  added.setNumber(number);
  Assigning::apply(changes, added);
  Assigning::requireUnique(manager, {&added}, changes);
  return finish(document, draft, options.path, out, notes);
}

}  // namespace Commands
