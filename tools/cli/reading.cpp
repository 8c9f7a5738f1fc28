#include "reading.h"

#include <string>

#include "documents/notes.h"
#include "text/display_text.h"

std::size_t Commands::tellReading(Documents::Document& document, std::ostream& notes) {
  document.requireReadable();
  const std::string prefix = "kvfound: " + DisplayText::fromName(document.getShownPath()) + ": ";
  for (const std::string& note : Documents::listNotes(document)) notes << prefix << note << '\n';
  return Documents::countNotes(document);
}
