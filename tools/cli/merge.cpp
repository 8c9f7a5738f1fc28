#include <deque>
#include <ostream>
#include <string>

#include "commands.h"
#include "comparing/merging.h"
#include "differences.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "losses.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Commands::Message;
using Commands::Notes;
using Documents::Document;
using Level = Message::Level;

void requireReadOnce(const Commands::MergeOptions& options) {
  std::size_t standard = options.into == "-" ? 1 : 0;
  for (const std::string& path : options.in) standard += path == "-" ? 1 : 0;
  if (standard > 1) throw UserError("only one of the documents can come from standard input");
}

void tell(const Comparing::Refusal& refusal, Level level, const char* kind, Notes& notes) {
  const auto& [file, position, foundation, sentence] = refusal;
  const Message forPeople = {level, kind, file, position, "", foundation + " " + sentence};
  notes.tell({level, kind, file, position, foundation, sentence}, Commands::makeLine(forPeople));
}

void refuseClashes(const Comparing::Merger& merger, const std::string& shownPath, Notes& notes) {
  for (const Comparing::Refusal& clash : merger.getClashes())
    tell(clash, Level::error, "clash", notes);
  if (!merger.getClashes().empty())
    throw UserError(shownPath +
                    ": was not written, since numbers or names clash; --on-clash rename, "
                    "renumber, skip or replace says what to do");
}

}  // namespace

namespace Commands {

Status merge(const MergeOptions& options, std::ostream& out, Notes& notes) {
  requireReadOnce(options);
  tellPhase("reading", options.into, notes);
  Document into(Documents::readFile(options.into, options.reading.form), options.reading);
  tellReading(into, notes);
  Editing::Draft draft(into);
  Comparing::Merger merger(into, draft, options.onClash);
  std::size_t skipped = 0;
  std::deque<Document> sources;  // which the merger knows by their foundations
  for (const std::string& path : options.in) {
    notes.setFile(sources.size() + 1, options.in.size());
    tellPhase("reading", path, notes);
    Document& in =
        sources.emplace_back(Documents::readFile(path, options.reading.form), options.reading);
    skipped += tellReading(in, notes);
    compareUnits(in, into, notes);
    merger.merge(in);
  }
  refuseClashes(merger, into.getShownPath(), notes);
  for (const Comparing::Refusal& leftOut : merger.getLeftOut())
    tell(leftOut, Level::warning, "left-out", notes);
  tellLosses(into.getShownPath(), merger.getLosses(), options.showsAll, notes);

  const Editing::Wish wish = draft.makeWish();
  notes.setFile(0, 0);
  if (!options.isDryRun) {
    notes.setPhase("writing");
    OutputFile file = openOutput(options.out.value_or(options.into));
    Writing::Output output(file, into.getForm(), into, options.reading.dialect);
    if (output.isUpdate() && !output.isSameFile())
      throw UserError(output.getShownPath() +
                      ": is there already; name another file, or merge into it");
    output.edit(into, wish);
    output.requireAll(draft.getFoundations());
    notes.setPhase("");
    output.commit();
  }
  const bool writesToOutput = options.out.value_or(options.into) == "-" && !options.isDryRun;
  tellChanges(into, wish, writesToOutput ? nullptr : &out, notes);
  return skipped > 0 || !merger.getLosses().empty() ? Status::findings : Status::done;
}

}  // namespace Commands
