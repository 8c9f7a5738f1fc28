#include "documents/notes.h"

#include <algorithm>
#include <string>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "text/display_text.h"

namespace Documents {
namespace {

using Fate = Entry::Fate;

/// What messages call a bedding without a name.
std::string describeNameless(const Entry& entry, const std::string& tag) {
  return entry.element.getName() == Exchange::whole.name
             ? "a " + tag
             : fmt::format("the bedding with the number {}", *entry.number);
}

std::string describeRenaming(const Entry& entry) {
  return fmt::format(R"(the name "{}" is already taken; the bedding was read as "{}")",
                     DisplayText::fromName(entry.element.readText(Exchange::name).value_or("")),
                     DisplayText::fromName(entry.foundation->getName()));
}

/// The sentence about an entry that isNoted().
std::string describe(const Entry& entry) {
  const std::string tag = "<" + DisplayText::fromName(entry.element.getName()) + ">";
  switch (entry.fate) {
    case Fate::renamed:
      return describeRenaming(entry);
    case Fate::unknown:
    case Fate::ofFirstVersion:
      return tag + " is no bedding of this version; it was skipped";
    case Fate::numberMissing:
      return fmt::format("a {} has no number, or one that cannot be read; it was skipped", tag);
    case Fate::numberTooSmall:
      return fmt::format("the number {} of a {} is below 1; it was skipped", *entry.number, tag);
    case Fate::numberTaken:
      return fmt::format("the number {} of a {} is already taken; it was skipped", *entry.number,
                         tag);
    case Fate::nameMissing:
      return describeNameless(entry, tag) + " has no name; it was skipped";
    case Fate::nameEmpty:
      return fmt::format("the name of {} is empty; it was skipped", describeNameless(entry, tag));
    case Fate::outside:
    case Fate::read:
    case Fate::otherPart:
      break;
  }
  return fmt::format("a {} stands where no foundations are read; it was skipped", tag);
}

/// Whether listNotes() mentions the entry. In a model, unknown elements are usual, also in the list
/// of foundations.
bool isNoted(const Entry& entry, Form form) {
  if (form == Form::legacy) return entry.fate == Fate::outside;
  return entry.fate != Fate::read && entry.fate != Fate::otherPart;
}

Note countRead(const Entries& entries) {
  const auto count = std::count_if(entries.begin(), entries.end(), [](const Entry& entry) {
    return entry.foundation != nullptr && entry.fate != Fate::otherPart;
  });
  return {{}, fmt::format(count == 1 ? "{} bedding was read" : "{} beddings were read", count)};
}

}  // namespace

std::vector<Note> listNotes(Document& document) {
  std::vector<Note> notes;  // none of tables and data, which are read whole or not at all
  const std::size_t lists = document.listLists().size();
  std::size_t list = 0;
  for (const Entries& entries : document.getEntries()) {
    for (const Entry& entry : entries)
      if (isNoted(entry, document.getForm()))
        notes.push_back({entry.element.getPosition(), describe(entry)});
    if (list++ < lists && document.getForm() != Form::legacy) notes.push_back(countRead(entries));
  }
  return notes;
}

std::size_t countNotes(Document& document) {
  std::size_t notes = 0;
  for (const Entries& entries : document.getEntries())
    notes += static_cast<std::size_t>(
        std::count_if(entries.begin(), entries.end(),
                      [&](const Entry& entry) { return isNoted(entry, document.getForm()); }));
  return notes;
}

}  // namespace Documents
