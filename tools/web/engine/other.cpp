#include "other.h"

#include "answers.h"
#include "columns.h"
#include "forms.h"
#include "models/rendering.h"

namespace Engine {

Other::Other(const Request& request)
    : content{request.values.at("other").value("name", std::string()), "", request.bytes},
      options(Forms::readOptions(request.values.at("other"))),
      isWhole(request.values.at("other").value("isReadWhole", true)),
      items(request.values.at("other").value("items", std::vector<std::size_t>())) {}

std::size_t Other::findRow(std::size_t place) const { return items.empty() ? place : items[place]; }

Json listFields(const std::vector<Fields::Difference>& fields, const Units& units) {
  Json listed = Json::array();
  for (const Fields::Difference& difference : fields)
    listed.push_back({{"key", difference.field.name},
                      {"label", nameField(difference.field)},
                      {"before", Fields::show(difference.first)},
                      {"after", Fields::show(difference.second)},
                      {"unit", nameUnit(difference.field, units)}});
  return listed;
}

namespace Answers {
namespace {

/// All of the document: in its own form where that holds it, else as data.
Standing openWhole(const Session& session) {
  if (session.isUnchanged()) return session.open();
  Standing standing;
  standing.snapshot = session.takeSnapshot();
  standing.rendering = Models::renderWhole(*standing.snapshot);
  standing.items = standing.rendering->listItems(standing.get());
  return standing;
}

}  // namespace

Json describe(Session& session) {
  Json told;
  if (session.isUnchanged()) {
    told = Forms::tellOptions(session.getSource().options);
  } else {
    Standing standing = openWhole(session);
    told = Forms::tellOptions(standing.rendering->getOptions());
    told["items"] = standing.items;
  }
  told["name"] = session.getSource().content.shownPath;
  told["isReadWhole"] = session.getSource().notes.empty();
  return told;
}

std::string exportAll(Session& session) {
  if (session.isUnchanged()) return session.getSource().content.bytes;
  Standing standing = openWhole(session);
  return standing.get().getContent().bytes;
}

}  // namespace Answers
}  // namespace Engine
