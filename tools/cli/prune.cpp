#include <cstddef>
#include <new>
#include <ostream>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "commands.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/writing.h"
#include "files/content.h"
#include "files/memory_stream.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "foundations/keep_list.h"
#include "losses.h"
#include "models/pruning.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Commands::Notes;
using Commands::PruneOptions;
using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;
using Level = Commands::Message::Level;

void checkOptions(const PruneOptions& options) {
  if (!options.isGenerated && !options.usedBy)
    throw UserError(
        "tell what to prune: --generated, --used-by FILE or both; see kvfound prune --help");
  if (options.in == "-" && options.usedBy == "-")
    throw UserError("the document and the list cannot both come from standard input");
}

/// The list tells what stays.
void requireMatches(KeepList& user, const std::string& shownPath, const PruneOptions& options,
                    const FoundationManager& manager, Notes& notes) {
  for (const Foundation* foundation : manager.getFoundations()) user.usesFoundation(foundation);
  const std::vector<std::string> unmatched = user.listUnmatched();
  const Level level = options.ignoresMissing && user.hasMatched() ? Level::warning : Level::error;
  for (const std::string& line : unmatched)
    notes.tell({level,
                "unmatched",
                DisplayText::fromName(shownPath),
                {},
                "",
                "there is no foundation \"" + DisplayText::fromName(line) + "\""});
  if (!unmatched.empty() && !user.hasMatched())
    throw UserError(shownPath + ": names none of the foundations; nothing was written");
  if (!unmatched.empty() && !options.ignoresMissing)
    throw UserError(shownPath +
                    ": names foundations that the document lacks; nothing was written. Mend the "
                    "list, or go on with --ignore-missing");
}

void removeFoundations(const PruneOptions& options, Form form, FoundationManager& manager,
                       Notes& notes) {
  Pruning::Options pruning = {options.isGenerated, nullptr, options.keepsNumbers};
  if (!options.usedBy) return Pruning::prune(pruning, form, manager);
  const Files::Content list = Files::read(*options.usedBy);
  Files::MemoryStream in(list.bytes);
  KeepList user(in);
  if (in.bad()) throw std::bad_alloc();  // or the list would end where memory runs out
  requireMatches(user, list.shownPath, options, manager, notes);
  pruning.user = &user;
  Pruning::prune(pruning, form, manager);
}

bool isRenumbered(const Matching::Pair& pair) {
  return pair.second != nullptr && pair.second->getNumber() != pair.first->getNumber();
}

/// Elsewhere in the model the old numbers stay as they are.
void tellMentions(const Documents::Document& model, const Editing::Wish& wish, Notes& notes) {
  for (const Documents::Note& note : Pruning::listStale(model, wish.pairs))
    notes.tell({Level::warning, "mention", DisplayText::fromName(model.getShownPath()),
                note.position, "", note.sentence});
}

void tell(const std::string& shownPath, const Editing::Wish& wish,
          const std::vector<Losses::Loss>& unread, bool hasNumbers, Notes& notes) {
  const std::string file = DisplayText::fromName(shownPath);
  const auto tellOne = [&](const char* kind, const std::string& foundation,
                           const std::string& sentence, const std::string& line) {
    notes.tell({Level::note, kind, file, {}, foundation, sentence}, line + "\n");
  };
  std::size_t removed = unread.size();
  for (const Matching::Pair& pair : wish.pairs)
    if (pair.second == nullptr) {
      const std::string removedOne = Fields::describe(*pair.first);
      tellOne("removed", removedOne, "is removed", "removed: " + removedOne);
      ++removed;
    }
  for (const Losses::Loss& loss : unread)
    tellOne("removed", loss.foundation, loss.sentence,
            "removed: " + loss.foundation + ", which " + loss.sentence);
  std::size_t kept = 0;
  for (const Matching::Pair& pair : wish.pairs) {
    if (hasNumbers && isRenumbered(pair)) {
      const std::string number = std::to_string(pair.first->getNumber());
      const std::string renumbered = Fields::describe(*pair.second);
      tellOne("renumbered", renumbered, "had the number " + number,
              fmt::format("renumbered: {} -> {}", number, renumbered));
    }
    if (pair.second != nullptr) ++kept;
  }
  const std::string counts =
      std::to_string(removed) + " removed, " + std::to_string(kept) + " kept";
  tellOne("summary", "", counts, counts);
}

}  // namespace

namespace Commands {

Status prune(const PruneOptions& options, Notes& notes) {
  checkOptions(options);
  tellPhase("reading", options.in, notes);
  Documents::Document in(Documents::readFile(options.in, options.reading.form), options.reading);
  const std::size_t skipped = tellReading(in, notes);
  const Form form = in.getForm();
  notes.setPhase("writing");
  OutputFile file = openOutput(options.out);
  Writing::Output output(file, form, in, options.reading.dialect);
  const bool isOtherDocument = output.isUpdate() && !output.isSameFile();
  if (isOtherDocument && skipped > 0)
    throw UserError(in.getShownPath() +
                    ": not everything could be read, and would be lost; nothing was written");

  Editing::Draft draft(in);
  FoundationManager& manager = draft.getFoundations();
  removeFoundations(options, form, manager, notes);
  const Editing::Wish wish = draft.makeWish();
  const bool hasNumbers = form != Form::firstExchange;
  isOtherDocument ? output.update(manager) : output.edit(in, wish);
  output.requireAll(manager);
  if (isOtherDocument) tellLosses(output.getShownPath(), output.listReplaced(), false, notes);
  notes.setPhase("");
  output.commit();
  tell(in.getShownPath(), wish, output.getUnread(), hasNumbers, notes);
  tellMentions(in, wish, notes);
  return Status::done;
}

}  // namespace Commands
