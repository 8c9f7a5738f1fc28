#include "models/pruning.h"

#include <map>
#include <set>
#include <string>
#include <unordered_map>

#include "documents/mentions.h"
#include "text/display_text.h"

namespace Pruning {
namespace {

using Found::Foundation;
using Found::FoundationManager;

void remove(const Options& options, FoundationManager& manager) {
  if (options.user == nullptr) return manager.removeAllGenerated();
  manager.addUser(options.user);
  options.isGenerated ? manager.removeAllNotUsedGenerated() : manager.removeAllNotUsed();
  manager.removeUser(options.user);
}

}  // namespace

void prune(const Options& options, Documents::Form form, FoundationManager& manager) {
  std::unordered_map<const Foundation*, int> numbers;
  for (const Foundation* foundation : manager.getFoundations())
    numbers[foundation] = foundation->getNumber();
  remove(options, manager);
  int number = 0;
  for (Foundation* foundation : manager.getFoundations()) {
    ++number;
    if (form == Documents::Form::firstExchange)
      foundation->setNumber(number);  // whatever is left reads as 1, 2, 3, ...
    else if (options.keepsNumbers)
      foundation->setNumber(numbers.at(foundation));
  }
}

std::vector<Documents::Note> listStale(const Documents::Document& document,
                                       const std::vector<Matching::Pair>& pairs) {
  std::map<int, std::string> changed;
  std::set<int> numbers;
  for (const auto& [before, after] : pairs) {
    if (before == nullptr) continue;
    const int number = before->getNumber();
    if (after != nullptr && after->getNumber() == number) continue;
    numbers.insert(number);
    changed.emplace(number, after == nullptr
                                ? "is gone"
                                : "is number " + std::to_string(after->getNumber()) + " now");
  }
  std::vector<Documents::Note> notes;
  for (const Documents::Mention& mention : Documents::listMentions(document, numbers))
    notes.push_back({mention.position, DisplayText::fromName(mention.attribute) + "=\"" +
                                           std::to_string(mention.number) +
                                           "\" stays, but the foundation of this number " +
                                           changed.at(mention.number)});
  return notes;
}

}  // namespace Pruning
