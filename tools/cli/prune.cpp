#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <ostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "documents/writing.h"
#include "files/content.h"
#include "files/memory_stream.h"
#include "files/user_error.h"
#include "found/foundation_user.h"
#include "foundations/fields.h"
#include "reading.h"
#include "text/display_text.h"
#include "text/encoding.h"

namespace {

using Commands::PruneOptions;
using Found::Foundation;
using Found::FoundationManager;

/// Uses the foundations whose number or name, as it is in the document or as it is shown, stands in
/// a list.
class ListUser : public Found::FoundationUser {
 public:
  /// One number or name a line, in UTF-8 or an 8-bit code page.
  explicit ListUser(std::istream& in) {
    bool isFirst = true;
    const std::string byteOrderMark = "\xEF\xBB\xBF";
    for (std::string line; std::getline(in, line);) {
      if (isFirst && line.compare(0, byteOrderMark.size(), byteOrderMark) == 0)
        line.erase(0, byteOrderMark.size());
      isFirst = false;
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (!line.empty()) add(Encoding::toUtf8(line));
    }
  }

  bool usesFoundation(const Foundation* foundation) override {
    const std::string& name = foundation->getName();
    const auto [firstNumber, lastNumber] = numbers.equal_range(foundation->getNumber());
    bool isListed = firstNumber != lastNumber;
    for (auto number = firstNumber; number != lastNumber; ++number) matched.insert(number->second);
    for (const std::string& text : {Encoding::toUtf8(name), DisplayText::fromName(name)}) {
      if (lines.count(text) == 0) continue;
      matched.insert(text);
      isListed = true;
    }
    return isListed;
  }

  bool hasMatched() const { return !matched.empty(); }

  /// The lines that no foundation asked about has fitted.
  std::vector<std::string> listUnmatched() const {
    std::vector<std::string> unmatched;
    std::set_difference(lines.begin(), lines.end(), matched.begin(), matched.end(),
                        std::back_inserter(unmatched));
    return unmatched;
  }

 private:
  void add(const std::string& line) {
    lines.insert(line);
    // A number may have blanks around it and zeros before it.
    std::istringstream text(line);
    int number = 0;
    if (text >> number && (text >> std::ws).eof()) numbers.emplace(number, line);
  }

  std::set<std::string> lines;
  std::multimap<int, std::string> numbers;  // the lines that are such
  std::set<std::string> matched;
};

void removeUnused(const std::string& usedBy, bool onlyGenerated, FoundationManager& manager,
                  std::ostream& notes) {
  const Files::Content list = Files::read(usedBy);
  Files::MemoryStream in(list.bytes);
  ListUser user(in);
  for (const Foundation* foundation : manager.getFoundations()) user.usesFoundation(foundation);
  for (const std::string& line : user.listUnmatched())
    notes << "kvfound: " << DisplayText::fromName(list.shownPath) << ": there is no foundation \""
          << DisplayText::fromName(line) << "\"\n";
  if (!user.listUnmatched().empty() && !user.hasMatched())
    throw UserError(list.shownPath + ": names none of the foundations; nothing was written");
  manager.addUser(&user);
  onlyGenerated ? manager.removeAllNotUsedGenerated() : manager.removeAllNotUsed();
  manager.removeUser(&user);
}

void checkOptions(const PruneOptions& options) {
  if (!options.isGenerated && !options.usedBy)
    throw UserError(
        "tell what to prune: --generated, --used-by FILE or both; see kvfound prune --help");
  if (options.in == "-" && options.usedBy == "-")
    throw UserError("the document and the list cannot both come from standard input");
}

void remove(const PruneOptions& options, Documents::Form form, FoundationManager& manager,
            std::ostream& notes) {
  if (options.usedBy)
    removeUnused(*options.usedBy, options.isGenerated, manager, notes);
  else
    manager.removeAllGenerated();
  // The first exchange version has no numbers: whatever is left reads as 1, 2, 3, ...
  if (form != Documents::Form::firstExchange) return;
  int number = 0;
  for (Foundation* foundation : manager.getFoundations()) foundation->setNumber(++number);
}

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
  const Documents::Form form = in.getForm();
  FoundationManager& manager = in.getFoundations();
  Writing::Output output(options.out, form, in);
  const bool isOtherDocument = output.isUpdate() && !output.isSameFile();
  // What was not read stays in its document, but only beddings with numbers are found there again.
  const bool needsAll = isOtherDocument || form == Documents::Form::firstExchange;
  if (needsAll && skipped > 0)
    throw UserError(in.getShownPath() +
                    ": not everything could be read, and would be lost; nothing was written");

  const std::vector<Foundation*> before = manager.getFoundations();
  std::vector<Updating::Change> changes;
  changes.reserve(before.size());
  for (const Foundation* foundation : before) changes.push_back({foundation->getNumber(), {}});
  remove(options, form, manager, notes);
  const std::set<Foundation*> kept(manager.getFoundations().begin(),
                                   manager.getFoundations().end());
  std::vector<std::unique_ptr<Foundation>> removed;
  for (std::size_t i = 0; i < before.size(); ++i)
    if (kept.count(before[i]) > 0)
      changes[i].after = before[i]->getNumber();
    else
      removed.emplace_back(before[i]);

  isOtherDocument ? output.update(manager) : output.prune(changes, manager);
  // A bedding that stays in its document stays as it is.
  if (isOtherDocument || form == Documents::Form::legacy) refuseLosses(output, manager);
  output.commit();
  for (const auto& foundation : removed)
    notes << "removed: " << Fields::describe(*foundation) << "\n";
  for (std::size_t i = 0; i < before.size(); ++i)
    if (kept.count(before[i]) > 0 && changes[i].after != changes[i].before &&
        form != Documents::Form::firstExchange)
      notes << "renumbered: " << changes[i].before << " -> " << Fields::describe(*before[i])
            << "\n";
  notes << removed.size() << " removed, " << kept.size() << " kept\n";
  return Status::done;
}

}  // namespace Commands
