#include "reading.h"

#include <string>

#include "documents/notes.h"
#include "text/display_text.h"

std::size_t Commands::tellReading(Documents::Document& document, std::ostream& notes) {
  document.requireReadable();
  const std::string path = "kvfound: " + DisplayText::fromName(document.getShownPath()) + ":";
  for (const Documents::Note& note : Documents::listNotes(document)) {
    notes << path;
    if (note.position.line > 0) notes << note.position.line << ':' << note.position.column << ':';
    notes << ' ' << note.sentence << '\n';
  }
  return Documents::countNotes(document);
}
