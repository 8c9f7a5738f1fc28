#include "reading.h"

#include <algorithm>
#include <new>
#include <set>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "comparing/units.h"
#include "documents/notes.h"
#include "files/user_error.h"
#include "text/display_text.h"

namespace {

using Commands::Message;
using Documents::Document;
using Documents::Entries;
using Documents::Entry;
using Places = std::set<std::pair<std::size_t, std::size_t>>;

/// Where beddings stand that are read under another name.
Places listRenamed(Document& document) {
  Places places;
  for (const Entries& entries : document.getEntries())
    for (const Entry& entry : entries) {
      const KvXmlPosition place = entry.element.getPosition();
      if (entry.fate == Entry::Fate::renamed) places.emplace(place.line, place.column);
    }
  return places;
}

std::ptrdiff_t countRead(Document& document) {
  std::ptrdiff_t count = 0;
  for (const Entries& entries : document.getEntries())
    count += std::count_if(entries.begin(), entries.end(), [](const Entry& entry) {
      return entry.foundation != nullptr && entry.fate != Entry::Fate::otherPart;
    });
  return count;
}

Message makeSummary(Document& document, const std::string& file) {
  const std::ptrdiff_t count = countRead(document);
  const char* const words = count == 1 ? "{} bedding was read" : "{} beddings were read";
  return {Message::Level::note, "read", file, {}, "", fmt::format(fmt::runtime(words), count)};
}

}  // namespace

std::size_t Commands::tellReading(Document& document, Notes& notes) {
  document.requireReadable();
  const std::string file = DisplayText::fromName(document.getShownPath());
  const Places renamed = listRenamed(document);
  for (const Documents::Note& note : Documents::listNotes(document)) {
    const KvXmlPosition place = note.position;
    if (place.line == 0) continue;  // about one container; people think of the document
    const bool isRenamed = renamed.count({place.line, place.column}) > 0;
    notes.tell({Message::Level::warning, isRenamed ? "renamed" : "skipped", file, place, "",
                note.sentence});
  }
  // A model, a table and data are read whole.
  const bool isExchange = document.getExchange() != nullptr;
  if (isExchange) notes.tell(makeSummary(document, file));
  return Documents::countNotes(document);
}

void Commands::compareUnits(const Document& document, const Document& other, Notes& notes) {
  const auto note = Comparing::compareUnits(document, other);
  if (!note) return;
  notes.tell({note->isWarning ? Message::Level::warning : Message::Level::note,
              "units",
              DisplayText::fromName(note->about.getShownPath()),
              {},
              "",
              DisplayText::fromName(note->sentence)});
}

void Commands::tellPhase(const char* work, const std::string& path, Notes& notes) {
  notes.setPhase(std::string(work) + " " +
                 (path == "-" ? "standard input" : DisplayText::fromName(path)));
}

Commands::Status Commands::readEach(const std::vector<std::string>& paths, Notes& notes,
                                    const std::function<void(const std::string&)>& work) {
  Status status = Status::done;
  const auto fail = [&](const std::string& error) {
    notes.tellError(error);
    status = Status::error;
  };
  std::size_t number = 0;
  for (const std::string& path : paths) try {
      notes.setFile(++number, paths.size());
      tellPhase("reading", path, notes);
      work(path);
    } catch (const UserError& error) {
      fail(error.what());
    } catch (const std::bad_alloc&) {
      fail(path + ": is too large for the memory of this machine");
    }
  notes.setPhase("");
  return status;
}
