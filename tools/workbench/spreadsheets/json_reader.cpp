#include "spreadsheets/json_reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fast_float/fast_float.h>
#include <fmt/format.h>

// The checks that simdjson has for its own development write through null where memory runs out.
#define SIMDJSON_DEVELOPMENT_CHECKS 0
#include <simdjson.h>

#include "files/user_error.h"
#include "spreadsheets/cells.h"
#include "spreadsheets/json_words.h"
#include "spreadsheets/names.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Spreadsheets {
namespace {

namespace Json = simdjson::ondemand;
using Fields::Field;
using Fields::Value;
using Found::Foundation;
using Found::FoundationManager;

std::string quote(std::string_view text) {
  return '"' + DisplayText::shorten(DisplayText::fromName(std::string(text)), 60) + '"';
}

/// Ends of lines. Bytes that hold sums of a few let compilers look at many at once.
std::size_t countLines(std::string_view text) {
  std::size_t lines = 0;
  for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(text.size(), 255))) {
    std::uint8_t some = 0;
    for (const char c : text.substr(0, 255)) some = static_cast<std::uint8_t>(some + (c == '\n'));
    lines += some;
  }
  return lines;
}

/// Lines and columns of places that come one behind the other.
class Places {
 public:
  explicit Places(std::string_view whole) : text(whole) {}

  std::size_t findLine(std::size_t place) {
    if (place < counted) counted = lineBegin = line = 0;
    const std::string_view passed = text.substr(counted, place - counted);
    const std::size_t last = passed.rfind('\n');
    if (last != passed.npos) lineBegin = counted + last + 1;
    line += countLines(passed);
    counted = place;
    return line + 1;
  }

  /// In bytes, from 1.
  std::size_t findColumn(std::size_t place) {
    findLine(place);
    return place - lineBegin + 1;
  }

 private:
  std::string_view text;
  std::size_t counted = 0;
  std::size_t line = 0;
  std::size_t lineBegin = 0;
};

/// Where escapes of texts are resolved. The parser has room for that as well, but does not notice
/// when it could not get it.
class Texts {
 public:
  explicit Texts(std::size_t length)
      : room(new std::uint8_t[length + simdjson::SIMDJSON_PADDING]), next(room.get()) {}

  std::string_view resolve(const Json::parser& parser, Json::raw_json_string text) {
    return parser.unescape(text, next);
  }

 private:
  std::unique_ptr<std::uint8_t[]> room;
  std::uint8_t* next;
};

class Reader {
 public:
  Reader(std::string_view bytes, const Json::parser& jsonParser, std::string path,
         FoundationManager& foundations)
      : text(bytes),
        parser(jsonParser),
        texts(bytes.size()),
        shownPath(std::move(path)),
        places(bytes),
        manager(foundations) {}

  /// Comes before parsing: which fault of a text is found first depends on the processor, and
  /// nothing that is wrong with a text behind its start says more.
  void requireObject(std::size_t start) {
    const std::size_t first = text.find_first_not_of(" \t\r\n", start);
    if (first != std::string_view::npos && text[first] != '{')
      fail(fmt::format("this is no JSON object with the member \"{}\"", foundationsMember));
  }

  Sheet read(Json::document& document) {
    Names given;
    for (Json::field member : document.get_object()) readMember(member, given);
    auto rest = document.current_location();
    if (rest.error() != simdjson::OUT_OF_BOUNDS) {
      setPlace(rest.value());
      fail("there is more behind the end of the document");
    }
    here = 0;
    if (given.count(foundationsMember) == 0)
      fail(fmt::format("there is no member \"{}\"", foundationsMember));
    return std::move(sheet);
  }

  [[noreturn]] void fail(const std::string& fault) {
    throw DocumentError(shownPath, {places.findLine(here), places.findColumn(here)}, fault);
  }

  [[noreturn]] void failAtJson(simdjson::error_code error) {
    if (error == simdjson::MEMALLOC) throw std::bad_alloc();
    if (error == simdjson::INCOMPLETE_ARRAY_OR_OBJECT)
      fail("this is no JSON that can be read: it ends early, or goes on behind its end");
    fail(fmt::format("this is no JSON that can be read: {}", simdjson::error_message(error)));
  }

  /// Where a fault is, from here on.
  void setPlace(const char* place) { here = static_cast<std::size_t>(place - text.data()); }

 private:
  using Names = std::set<std::string_view>;

  /// `likely` is looked for first, and is what is returned where it is the key.
  std::string_view readKey(Json::field& member, std::string_view likely = {}) {
    const char* const key = member.key().raw();
    setPlace(key - 1);
    const std::string_view rest = text.substr(here + 1);
    if (rest.substr(0, likely.size()) == likely && rest[likely.size()] == '"') return likely;
    const std::string_view name = rest.substr(0, rest.find('"'));
    return name.find('\\') == name.npos ? name : texts.resolve(parser, member.key());
  }

  std::string_view resolve(Json::value& value) {
    return texts.resolve(parser, value.get_raw_json_string());
  }

  void readMember(Json::field& member, Names& given) {
    const std::string_view name = readKey(member);
    if (!given.insert(name).second) failAtTwice(name);
    Json::value value = member.value();
    if (name == formatMember)
      requireText(value, name, formatName);
    else if (name == versionMember)
      requireVersion(value);
    else if (name == unitsMember)
      readUnits(value);
    else if (name == foundationsMember)
      readFoundations(value);
    else if (name == maximumMember)
      readDouble(value, "a number");  // follows from the foundations
    else
      fail(fmt::format("there is no member {}", quote(name)));
  }

  void requireText(Json::value& value, std::string_view name, std::string_view wanted) {
    if (value.type() == Json::json_type::string && resolve(value) == wanted) return;
    fail(fmt::format("{} is not \"{}\": these are no foundations", name, wanted));
  }

  void requireVersion(Json::value& value) {
    if (value.type() == Json::json_type::number) {
      const Json::number number = value.get_number();
      if (number.is_int64() && number.get_int64() == formatVersion) return;
    }
    fail("this version is not known; only version 1 can be read");
  }

  void readUnits(Json::value& value) {
    if (value.type() != Json::json_type::object) failAtType("an object");
    Names given;
    for (Json::field member : value.get_object()) {
      const std::string_view name = readKey(member);
      if (name != forceMember && name != lengthMember)
        fail(fmt::format("there is no member {}", quote(name)));
      if (!given.insert(name).second) failAtTwice(name);
      Json::value unit = member.value();
      (name == forceMember ? sheet.units.force : sheet.units.length) =
          readText(unit, name, readUnit);
    }
    if (sheet.units.force.empty() != sheet.units.length.empty())
      fail(fmt::format("{} are those of {} and {}, or none", unitsMember, forceMember,
                       lengthMember));
  }

  void readFoundations(Json::value& value) {
    if (value.type() != Json::json_type::array) failAtType("a list of foundations");
    for (Json::value element : value.get_array()) readFoundation(element);
  }

  void readFoundation(Json::value& element) {
    setPlace(element.raw_json_token().data());
    if (element.type() != Json::json_type::object) fail("a foundation can only be an object");
    Origin origin;
    origin.line = places.findLine(here);
    origin.column = places.findColumn(here);
    origin.begin = here;
    auto foundation = std::make_unique<Foundation>();
    foundation->setNumber(static_cast<int>(sheet.origins.size()) + 1);
    std::size_t expected = 0;  // place of the name that comes next in what is written here
    bool tellsCurrent = false;
    for (Json::field member : element.get_object()) {
      const std::string_view name = readKey(member, names[expected]);
      const std::size_t place = name.data() == names[expected].data() ? expected : findPlace(name);
      Json::value value = member.value();
      if (place == fields.size()) {
        if (std::exchange(tellsCurrent, true)) failAtTwice(name);
        readCurrent(value, *foundation);
        continue;
      }
      expected = place + 1;
      const Field& field = fields[place];
      if (origin.told.has(field)) failAtTwice(name);
      origin.told.add(field);
      readField(field, value, origin, *foundation);
    }
    if (!origin.told.has(nameField)) foundation->setName(makeDefaultName(foundation->getNumber()));
    sheet.origins.push_back(origin);
    manager.add(std::move(foundation));
  }

  [[noreturn]] void failAtTwice(std::string_view name) {
    fail(fmt::format("{} is given twice", name));
  }

  /// Among names.
  std::size_t findPlace(std::string_view name) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) fail(describeUnknown("field", name));
    return static_cast<std::size_t>(found - names.begin());
  }

  void readCurrent(Json::value& value, Foundation& foundation) {
    if (!readBool(value)) return;
    if (manager.getCurrentFoundation() != nullptr)
      fail("only one foundation can be the current one");
    manager.setCurrentFoundation(&foundation);
  }

  void readField(const Field& field, Json::value& value, Origin& origin, Foundation& foundation) {
    const Value read = readValue(field, value);
    if (std::holds_alternative<std::monostate>(read))
      origin.blank.add(field);
    else
      field.set(foundation, read);
  }

  Value readValue(const Field& field, Json::value& value) {
    using Fields::Type;
    switch (field.type) {
      case Type::integer:
        return readInteger(value);
      case Type::flag:
        return readBool(value);
      case Type::text:
        return readText(value, field.name, readName);
      case Type::failure:
        return readText(value, field.name, readFailure);
      case Type::factor:
        return readDouble(value, "a number");
      case Type::stiffness:
        break;
    }
    if (value.is_null()) return {};
    return readDouble(value, "a number or null");
  }

  bool readBool(Json::value& value) {
    if (value.type() != Json::json_type::boolean) failAtType("true or false");
    return value.get_bool();
  }

  int readInteger(Json::value& value) {
    if (value.type() == Json::json_type::number) {
      const Json::number number = value.get_number();
      using Limits = std::numeric_limits<int>;
      if (number.is_int64() && number.get_int64() >= Limits::min() &&
          number.get_int64() <= Limits::max())
        return static_cast<int>(number.get_int64());
    }
    failAtType("a whole number");
  }

  /// The parser knows what a number of JSON is, but its version 3.1 takes a wrong value for one
  /// that starts with 0. and has many digits.
  double readNumber(Json::value& value) {
    const std::string_view token = value.raw_json_token();
    double number = 0.0;
    if (value.get(number) != simdjson::SUCCESS)
      fail(fmt::format("{} is no number that JSON can hold",
                       quote(token.substr(0, token.find_last_not_of(" \t\r\n") + 1))));
    if (token.size() >= 19)
      fast_float::from_chars(token.data(), token.data() + token.size(), number);
    return number;
  }

  /// JSON has no way to write an infinity or what is not a number.
  double readDouble(Json::value& value, const char* advice) {
    if (value.type() == Json::json_type::number) return readNumber(value);
    if (value.type() != Json::json_type::string) failAtType(advice);
    const std::string_view given = resolve(value);
    for (const auto& [word, number] : numberWords)
      if (given == word) return number;
    failAtType(advice);
  }

  template <class Read>
  std::string readText(Json::value& value, std::string_view name, const Read& read) {
    if (value.type() != Json::json_type::string) failAtType("a text");
    const std::string_view given = resolve(value);
    try {
      return read(given);
    } catch (const std::invalid_argument& error) {
      fail(fmt::format("{} cannot be {}, only {}", name, quote(given), error.what()));
    }
  }

  [[noreturn]] void failAtType(const char* advice) {
    const std::size_t begin = here + 1;
    fail(fmt::format("{} can only be {}", text.substr(begin, text.find('"', begin) - begin),
                     advice));
  }

  std::string_view text;
  const Json::parser& parser;
  Texts texts;
  std::string shownPath;
  Places places;
  FoundationManager& manager;
  Sheet sheet;
  const std::vector<Field>& fields = Fields::list();
  const std::vector<std::string_view>& names = listNames();
  const Field& nameField = *Fields::find("name");
  std::size_t here = 0;
};

/// Of the bytes before the first that is no character.
std::size_t measureUtf8(std::string_view bytes) {
  std::string_view rest = bytes;
  std::string_view behind = rest;
  while (!rest.empty() && Utf8::take(behind) != Utf8::invalid) rest = behind;
  return bytes.size() - rest.size();
}

}  // namespace

Sheet readJson(std::string& bytes, const std::string& shownPath, FoundationManager& manager) {
  bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING);
  const std::size_t mark = Utf8::measureMark(bytes);
  Json::parser parser;
  Reader reader(bytes, parser, shownPath, manager);
  reader.requireObject(mark);
  Json::document document;
  const simdjson::error_code fault =
      parser
          .iterate(simdjson::padded_string_view(bytes.data() + mark, bytes.size() - mark,
                                                bytes.capacity() - mark))
          .get(document);
  if (fault == simdjson::UTF8_ERROR) reader.setPlace(bytes.data() + measureUtf8(bytes));
  if (fault != simdjson::SUCCESS) reader.failAtJson(fault);
  try {
    return reader.read(document);
  } catch (const simdjson::simdjson_error& error) {
    const auto place = document.current_location();
    if (place.error() == simdjson::SUCCESS) reader.setPlace(place.value_unsafe());
    reader.failAtJson(error.error());
  }
}

}  // namespace Spreadsheets
