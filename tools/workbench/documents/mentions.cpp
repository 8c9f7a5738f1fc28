#include "documents/mentions.h"

#include <optional>

#include "documents/vocabulary.h"

namespace Documents {
namespace {

void addMentions(const Element& top, const std::set<int>& numbers, std::vector<Mention>& mentions) {
  if (top.getName() == Legacy::foundation.name) return;
  for (const std::string& name : top.listAttributeNames()) {
    if (name.find(Legacy::foundation.name) == name.npos) continue;
    const std::optional<int> number = top.readInteger(name);
    if (number && numbers.count(*number) > 0) mentions.push_back({top.locate(name), name, *number});
  }
  for (const Element& child : top.listChildren()) addMentions(child, numbers, mentions);
}

}  // namespace

std::vector<Mention> listMentions(const Document& document, const std::set<int>& numbers) {
  std::vector<Mention> mentions;
  if (document.getForm() == Form::legacy) addMentions(document.getRoot(), numbers, mentions);
  return mentions;
}

}  // namespace Documents
