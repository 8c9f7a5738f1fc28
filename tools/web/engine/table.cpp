#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <variant>

#include "answers.h"
#include "columns.h"
#include "foundations/failures.h"
#include "foundations/selection.h"
#include "text/utf8.h"

/// What the page shows of rows.
namespace Engine::Answers {
namespace {

using Fields::Type;
using Fields::Value;
using Found::Foundation;
using Place = std::int32_t;

const char* getKind(Type type) {
  switch (type) {
    case Type::integer:
      return "integer";
    case Type::text:
      return "text";
    case Type::flag:
      return "flag";
    case Type::stiffness:
      return "stiffness";
    case Type::failure:
      return "failure";
    case Type::factor:
      break;
  }
  return "factor";
}

Json listChoices(Type type) {
  Json choices = Json::array();
  if (type == Type::flag) choices = {"no", "yes"};
  if (type == Type::failure)
    for (const char* word : {"none", "tension", "compression"}) choices.push_back(word);
  return choices;
}

bool isNumeric(Type type) {
  return type == Type::integer || type == Type::stiffness || type == Type::factor;
}

Json describeRow(const Session& session, std::size_t index) {
  const Row& row = session.getRow(index);
  Foundation* const original = session.findOriginal(row);
  Json cells = Json::array();
  Json changed = Json::array();
  for (const Fields::Field& field : Fields::list()) {
    const Value value = field.get(*row.foundation);
    cells.push_back(Fields::show(value));
    if (original != nullptr && original != row.foundation.get() && field.get(*original) != value)
      changed.push_back(field.name);
  }
  return {{"index", index},
          {"title", Fields::describe(*row.foundation)},
          {"cells", std::move(cells)},
          {"isCurrent", row.isCurrent},
          {"isNew", original == nullptr},
          {"changed", std::move(changed)}};
}

/// The places as the page reads them: numbers of 32 bits in a row.
std::string pack(const std::vector<Place>& places) {
  return std::string(reinterpret_cast<const char*>(places.data()), places.size() * sizeof(Place));
}

/// Of the rows that fit.
template <class Fits>
std::string packEach(const Session& session, const Fits& fits) {
  std::vector<Place> places;
  Place place = 0;
  for (const Row& row : session.getRows()) {
    if (fits(*row.foundation)) places.push_back(place);
    ++place;
  }
  return pack(places);
}

std::vector<Place> listAll(const Session& session) {
  std::vector<Place> places(session.getRows().size());
  std::iota(places.begin(), places.end(), 0);
  return places;
}

double toNumber(const Value& value) {
  if (const double* const number = std::get_if<double>(&value)) return *number;
  if (const int* const number = std::get_if<int>(&value)) return *number;
  return std::numeric_limits<double>::quiet_NaN();
}

/// What is no number comes last, whatever the order.
template <class Key, class IsLess>
std::string packSorted(const Session& session, const std::vector<Key>& keys, bool isDescending,
                       const IsLess& isLess) {
  std::vector<Place> places = listAll(session);
  const auto getKey = [&](Place place) -> const Key& {
    return keys[static_cast<std::size_t>(place)];
  };
  std::stable_sort(places.begin(), places.end(),
                   [&](Place a, Place b) { return isLess(getKey(a), getKey(b), isDescending); });
  return pack(places);
}

std::string sortByNumber(const Session& session, const Fields::Field& field, bool isDescending) {
  std::vector<double> keys;
  for (const Row& row : session.getRows()) keys.push_back(toNumber(field.get(*row.foundation)));
  return packSorted(session, keys, isDescending, [](double a, double b, bool descending) {
    if (a != a || b != b) return a == a && b != b;
    return descending ? b < a : a < b;
  });
}

std::string sortByText(const Session& session, const Fields::Field& field, bool isDescending) {
  std::vector<std::string> keys;
  for (const Row& row : session.getRows())
    keys.push_back(Utf8::fold(Fields::show(field.get(*row.foundation))));
  return packSorted(session, keys, isDescending,
                    [](const std::string& a, const std::string& b, bool descending) {
                      return descending ? b < a : a < b;
                    });
}

}  // namespace

Json columns(Session& session) {
  Json columns = Json::array();
  for (const Fields::Field& field : Fields::list()) {
    const auto [group, label] = getHeading(field);
    columns.push_back({{"key", field.name},
                       {"group", group},
                       {"label", label},
                       {"unit", nameUnit(field, session.getSource().labels)},
                       {"kind", getKind(field.type)},
                       {"isNumeric", isNumeric(field.type)},
                       {"isStored", session.getSource().fields.has(field)},
                       {"choices", listChoices(field.type)}});
  }
  return columns;
}

Json rows(Session& session, const Request& request) {
  Json rows = Json::array();
  for (const std::size_t index : request.getIndexes()) rows.push_back(describeRow(session, index));
  return rows;
}

Json cell(Session& session, const Request& request) {
  const Row& row = session.getRow(request.getIndex("index"));
  return spell(getField(request.getText("key")).get(*row.foundation));
}

Json texts(Session& session, const Request& request) {
  Json rows = Json::array();
  for (const std::size_t index : request.getIndexes()) {
    Json row = Json::array();
    for (const Fields::Field& field : Fields::list())
      row.push_back(spell(field.get(*session.getRow(index).foundation)));
    rows.push_back(std::move(row));
  }
  return rows;
}

std::string values(Session& session, const Request& request) {
  const Fields::Field& field = getField(request.getText("key"));
  std::vector<double> numbers;
  for (const Row& row : session.getRows()) numbers.push_back(toNumber(field.get(*row.foundation)));
  return std::string(reinterpret_cast<const char*>(numbers.data()),
                     numbers.size() * sizeof(double));
}

std::string find(Session& session, const Request& request) {
  const std::string wanted = Utf8::fold(request.getText("text"));
  return packEach(session, [&](const Foundation& foundation) {
    return std::to_string(foundation.getNumber()).find(wanted) != wanted.npos ||
           Utf8::fold(foundation.getName()).find(wanted) != wanted.npos;
  });
}

std::string select(Session& session, const Request& request) {
  Selection selection;
  const std::string numbers = request.getText("numbers");
  if (!numbers.empty()) try {
      selection.selectNumbers(numbers);
    } catch (const std::invalid_argument& error) {
      throw UserError("numbers cannot be \"" + numbers + "\", only " + error.what());
    }
  const std::string name = request.getText("name");
  if (!name.empty()) selection.selectName(name);
  if (request.getFlag("generated")) selection.selectGenerated();
  const std::string part = request.getText("part");
  if (part == "area") selection.selectPart(Selection::Part::area);
  if (part == "line") selection.selectPart(Selection::Part::line);
  return packEach(session, [&](Foundation& foundation) { return selection.includes(foundation); });
}

std::string sort(Session& session, const Request& request) {
  const std::string key = request.getText("key");
  if (key.empty()) return pack(listAll(session));
  const Fields::Field& field = getField(key);
  const bool isDescending = request.getFlag("isDescending");
  return isNumeric(field.type) ? sortByNumber(session, field, isDescending)
                               : sortByText(session, field, isDescending);
}

}  // namespace Engine::Answers
