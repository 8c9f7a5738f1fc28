#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "documents/writing.h"
#include "files/content.h"
#include "files/memory_stream.h"
#include "files/user_error.h"
#include "foundations/fields.h"
#include "foundations/keep_list.h"
#include "output.h"
#include "reading.h"
#include "text/display_text.h"

namespace {

using Commands::PruneOptions;
using Documents::Form;
using Found::Foundation;
using Found::FoundationManager;

void checkOptions(const PruneOptions& options) {
  if (!options.isGenerated && !options.usedBy)
    throw UserError(
        "tell what to prune: --generated, --used-by FILE or both; see kvfound prune --help");
  if (options.in == "-" && options.usedBy == "-")
    throw UserError("the document and the list cannot both come from standard input");
}

void removeUnused(const std::string& usedBy, bool onlyGenerated, FoundationManager& manager,
                  std::ostream& notes) {
  const Files::Content list = Files::read(usedBy);
  Files::MemoryStream in(list.bytes);
  in.exceptions(std::ios::badbit);  // or the list would end where memory runs out
  KeepList user(in);
  for (const Foundation* foundation : manager.getFoundations()) user.usesFoundation(foundation);
  const std::vector<std::string> unmatched = user.listUnmatched();
  for (const std::string& line : unmatched)
    notes << "kvfound: " << DisplayText::fromName(list.shownPath) << ": there is no foundation \""
          << DisplayText::fromName(line) << "\"\n";
  if (!unmatched.empty() && !user.hasMatched())
    throw UserError(list.shownPath + ": names none of the foundations; nothing was written");
  manager.addUser(&user);
  onlyGenerated ? manager.removeAllNotUsedGenerated() : manager.removeAllNotUsed();
  manager.removeUser(&user);
}

void remove(const PruneOptions& options, Form form, FoundationManager& manager,
            std::ostream& notes) {
  if (options.usedBy)
    removeUnused(*options.usedBy, options.isGenerated, manager, notes);
  else
    manager.removeAllGenerated();
  // The first exchange version has no numbers: whatever is left reads as 1, 2, 3, ...
  if (form != Form::firstExchange) return;
  int number = 0;
  for (Foundation* foundation : manager.getFoundations()) foundation->setNumber(++number);
}

/// The foundations of a manager and what becomes of them, in their order.
class Removal {
 public:
  explicit Removal(const FoundationManager& manager) : all(manager.getFoundations()) {
    changes.reserve(all.size());
    for (const Foundation* foundation : all) changes.push_back({foundation->getNumber(), {}});
  }

  /// To be called once they are removed. From here on they belong to this object.
  void finish(const FoundationManager& manager) {
    const std::set<Foundation*> kept(manager.getFoundations().begin(),
                                     manager.getFoundations().end());
    for (std::size_t i = 0; i < all.size(); ++i)
      if (kept.count(all[i]) > 0)
        changes[i].after = all[i]->getNumber();
      else
        removed.emplace_back(all[i]);
  }

  const std::vector<Updating::Change>& listChanges() const { return changes; }

  void tell(bool hasNumbers, std::ostream& notes) const {
    for (const auto& foundation : removed)
      notes << "removed: " << Fields::describe(*foundation) << "\n";
    for (std::size_t i = 0; hasNumbers && i < all.size(); ++i)
      if (changes[i].after && changes[i].after != changes[i].before)
        notes << "renumbered: " << changes[i].before << " -> " << Fields::describe(*all[i]) << "\n";
    notes << removed.size() << " removed, " << all.size() - removed.size() << " kept\n";
  }

 private:
  std::vector<Foundation*> all;
  std::vector<Updating::Change> changes;
  std::vector<std::unique_ptr<Foundation>> removed;
};

void refuseLosses(const Writing::Output& output, const FoundationManager& manager) {
  const std::vector<std::string> losses = output.listLosses(manager);
  if (!losses.empty())
    throw UserError(output.getShownPath() +
                    ": was not written, since something would be lost: " + losses.front());
}

}  // namespace

namespace Commands {

Status prune(const PruneOptions& options, std::ostream& notes) {
  checkOptions(options);
  Documents::Document in(Documents::readFile(options.in), options.version);
  const std::size_t skipped = tellReading(in, notes);
  const Form form = in.getForm();
  FoundationManager& manager = in.getFoundations();
  OutputFile file = openOutput(options.out);
  Writing::Output output(file, form, in);
  const bool isOtherDocument = output.isUpdate() && !output.isSameFile();
  // What cannot be read stays in its document, where only beddings with numbers can be found again.
  const bool needsAll = isOtherDocument || form == Form::firstExchange;
  if (needsAll && skipped > 0)
    throw UserError(in.getShownPath() +
                    ": not everything could be read, and would be lost; nothing was written");

  Removal removal(manager);
  remove(options, form, manager, notes);
  removal.finish(manager);
  isOtherDocument ? output.update(manager) : output.prune(removal.listChanges(), manager);
  // A bedding that stays in its document stays as it is.
  if (isOtherDocument || form == Form::legacy) refuseLosses(output, manager);
  output.commit();
  removal.tell(form != Form::firstExchange, notes);
  return Status::done;
}

}  // namespace Commands
