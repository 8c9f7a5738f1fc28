#include <utility>

#include "answers.h"
#include "excerpt.h"
#include "forms.h"
#include "report/page.h"
#include "report/subject.h"
#include "report/text.h"
#include "sample.h"
#include "text/display_text.h"

/// Documents as wholes.
namespace Engine::Answers {
namespace {

Json toJson(const Units& units) {
  if (units.force.empty()) return nullptr;
  const Units shown = Report::showUnits(units);
  return {{"force", shown.force}, {"length", shown.length}};
}

Json listNotes(const Models::Source& source) {
  const Lines lines(source.content.bytes);
  Json notes = Json::array();
  for (const Documents::Note& note : source.notes)
    notes.push_back({{"line", note.position.line},
                     {"column", lines.countColumn(note.position)},
                     {"sentence", note.sentence}});
  return notes;
}

std::string showLargest(const Session& session) {
  Borrowed borrowed(session.getRows());
  borrowed.get().updateFoundationMaximum();
  return DisplayText::fromNumber(borrowed.get().getMaxFoundationValue());
}

}  // namespace

Json about() { return {{"version", KVFOUND_VERSION}, {"forms", Forms::listAll()}}; }

std::string example() { return std::string(sample); }

Json open(const Request& request, std::unique_ptr<Session>& session) {
  Documents::ReadOptions options = Forms::readOptions(request.values);
  if (request.getFlag("isPasted")) options.form = Documents::Form::csv;  // unless it is another
  Files::Content content = {request.getText("name"), "", request.bytes};
  session = std::make_unique<Session>(Models::read(std::move(content), options));
  return nullptr;
}

Json info(Session& session) {
  const Models::Source& source = session.getSource();
  return {{"name", session.getName()},
          {"form", Forms::getName(source.form)},
          {"formLabel", Forms::getLabel(source.form)},
          {"encoding", DisplayText::fromName(source.encoding)},
          {"units", toJson(source.labels)},
          {"size", source.content.bytes.size()},
          {"isReadWhole", source.isReadWhole},
          {"notes", listNotes(source)},
          {"largest", showLargest(session)}};
}

Json state(Session& session) {
  const History& history = session.getHistory();
  return {{"count", session.getRows().size()},
          {"isChanged", !history.isSaved()},
          {"undoLabel", history.getUndoLabel()},
          {"redoLabel", history.getRedoLabel()},
          {"version", history.getVersion()}};
}

Json lines(Session& session, const Request& request) {
  constexpr std::size_t most = 1000;
  const Lines lines(session.getBytes());
  const std::size_t first = std::max<std::size_t>(request.getIndex("first"), 1);
  const std::size_t count = std::min(request.getIndex("count"), most);
  Json shown = Json::array();
  for (std::size_t line = first; line < first + count && line <= lines.count(); ++line)
    shown.push_back(lines.show(line));
  return {{"total", lines.count()}, {"lines", std::move(shown)}};
}

std::string report(Session& session) {
  Standing standing = session.open();
  const Report::Labels labels = Report::chooseLabels(standing.get(), {});
  const Report::Subject subject(standing.get());
  return Report::makePage(subject.tell(labels, Report::findDate(standing.get())));
}

}  // namespace Engine::Answers
