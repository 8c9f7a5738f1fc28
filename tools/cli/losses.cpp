#include "losses.h"

#include <map>

#include "text/display_text.h"

namespace {

using Level = Commands::Message::Level;

constexpr std::size_t mostOfAKind = 10;

}  // namespace

void Commands::tellLosses(const std::string& shownPath, const std::vector<Losses::Loss>& losses,
                          bool all, Notes& notes) {
  const std::string file = DisplayText::fromName(shownPath);
  std::map<std::string, std::size_t> counts;
  for (const Losses::Loss& loss : losses)
    if (++counts[loss.kind] <= mostOfAKind || all)
      notes.tell({Level::warning, "loss", file, {}, loss.foundation, loss.sentence});
  if (all) return;
  for (const auto& [kind, count] : counts)
    if (count > mostOfAKind)
      notes.tell(
          {Level::warning,
           "more-losses",
           file,
           {},
           "",
           std::to_string(count - mostOfAKind) + " more: " + kind + "; --all shows every one"});
}
