#include "documents/note_messenger.h"

#include <ostream>

#include "text/display_text.h"

NoteMessenger::NoteMessenger(std::ostream& notes, const std::string& prefix)
    : out(notes), linePrefix(DisplayText::fromName(prefix)) {}

void NoteMessenger::note(const std::string& sentence) {
  out << linePrefix << sentence << '\n';
  ++numberOfNotes;
}

void NoteMessenger::onReadFinished(std::size_t count) {
  out << linePrefix << count << (count == 1 ? " bedding was read\n" : " beddings were read\n");
}

void NoteMessenger::onUnknownElement(const std::string& elementName) {
  note("<" + DisplayText::fromName(elementName) +
       "> is no bedding of this version; it was skipped");
}

void NoteMessenger::onMissingName(int number) {
  note("the bedding with the number " + std::to_string(number) + " has no name; it was skipped");
}

void NoteMessenger::onMissingBeddingName() { note("a <Bedding> has no name; it was skipped"); }

void NoteMessenger::onEmptyName(int number, const std::string& /*name*/) {
  note("the name of the bedding with the number " + std::to_string(number) +
       " is empty; it was skipped");
}

void NoteMessenger::onEmptyBeddingName(const std::string& /*name*/) {
  note("the name of a <Bedding> is empty; it was skipped");
}

void NoteMessenger::onMissingNumber(const std::string& elementName) {
  note("a <" + elementName + "> has no number, or one that cannot be read; it was skipped");
}

void NoteMessenger::onInvalidNumber(const std::string& elementName, int number) {
  const std::string subject =
      "the number " + std::to_string(number) + " of a <" + elementName + "> ";
  note(subject + (number < 1 ? "is below 1; it was skipped" : "is already taken; it was skipped"));
}

void NoteMessenger::onNameChanged(const std::string& oldName, const std::string& newName) {
  note("the name \"" + DisplayText::fromName(oldName) +
       "\" is already taken; the bedding was read as \"" + DisplayText::fromName(newName) + "\"");
}
