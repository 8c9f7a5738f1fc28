#include "documents/notes.h"

#include <algorithm>

#include "documents/vocabulary.h"
#include "text/display_text.h"

namespace Documents {
namespace {

using Fate = Entry::Fate;

std::string quote(const std::string& name) { return "\"" + DisplayText::fromName(name) + "\""; }

std::string describe(const Entry& entry) {
  const Element& element = entry.element;
  const std::string tag = "<" + DisplayText::fromName(element.getName()) + ">";
  const bool isWhole = element.getName() == Exchange::whole.name;
  const std::string number = std::to_string(entry.number.value_or(0));
  const std::string taken = "the number " + number + " of a " + tag;
  switch (entry.fate) {
    case Fate::read:
      break;
    case Fate::renamed:
      return "the name " + quote(element.readText(Exchange::name).value_or("")) +
             " is already taken; the bedding was read as " + quote(entry.foundation->getName());
    case Fate::unknown:
    case Fate::ofFirstVersion:
      return tag + " is no bedding of this version; it was skipped";
    case Fate::numberMissing:
      return "a " + tag + " has no number, or one that cannot be read; it was skipped";
    case Fate::numberTooSmall:
      return taken + " is below 1; it was skipped";
    case Fate::numberTaken:
    case Fate::otherPart:
      return taken + " is already taken; it was skipped";
    case Fate::nameMissing:
      return (isWhole ? "a " + tag : "the bedding with the number " + number) +
             " has no name; it was skipped";
    case Fate::nameEmpty:
      return "the name of " + (isWhole ? "a " + tag : "the bedding with the number " + number) +
             " is empty; it was skipped";
  }
  return "";
}

bool isTold(const Entry& entry) { return entry.fate != Fate::read; }

}  // namespace

std::vector<std::string> listNotes(Document& document) {
  std::vector<std::string> notes;
  if (document.getForm() == Form::legacy) return notes;
  for (const Entries& entries : document.getEntries()) {
    for (const Entry& entry : entries)
      if (isTold(entry)) notes.push_back(describe(entry));
    const auto count = std::count_if(entries.begin(), entries.end(), [](const Entry& entry) {
      return entry.foundation != nullptr;
    });
    notes.push_back(std::to_string(count) +
                    (count == 1 ? " bedding was read" : " beddings were read"));
  }
  return notes;
}

std::size_t countNotes(Document& document) {
  if (document.getForm() == Form::legacy) return 0;
  std::size_t notes = 0;
  for (const Entries& entries : document.getEntries())
    notes += static_cast<std::size_t>(std::count_if(entries.begin(), entries.end(), isTold));
  return notes;
}

}  // namespace Documents
