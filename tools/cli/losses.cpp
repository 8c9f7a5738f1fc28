#include "losses.h"

#include <map>

#include "text/display_text.h"

namespace {

constexpr std::size_t mostOfAKind = 10;

}  // namespace

void Commands::tellLosses(const std::string& shownPath, const std::vector<Losses::Loss>& losses,
                          bool all, std::ostream& notes) {
  const std::string path = "kvfound: " + DisplayText::fromName(shownPath) + ": ";
  std::map<std::string, std::size_t> counts;
  for (const Losses::Loss& loss : losses)
    if (++counts[loss.kind] <= mostOfAKind || all)
      notes << path << loss.foundation << ": " << loss.sentence << '\n';
  if (all) return;
  for (const auto& [kind, count] : counts)
    if (count > mostOfAKind)
      notes << path << count - mostOfAKind << " more: " << kind << "; --all shows every one\n";
}
