#include "spreadsheets/cells.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <stdexcept>
#include <system_error>

#include <fast_float/fast_float.h>

#include "foundations/failures.h"
#include "text/display_text.h"
#include "text/utf8.h"

namespace Spreadsheets {
namespace {

using Fields::Value;

/// What a spreadsheet runs when a cell starts with it.
constexpr std::string_view formulaStarts = "=+-@\t\r";
constexpr char asText = '\'';

bool isBlank(char c) { return c == ' ' || c == '\t'; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

char toLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [text](std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                      [](char a, char b) { return toLower(a) == b; });
  });
}

/// A sign is left to the parser but for a plus, which it does not take.
std::string_view skipPlus(std::string_view text) {
  return text.size() > 1 && text[0] == '+' && text[1] != '-' ? text.substr(1) : text;
}

std::optional<double> parse(std::string_view text) {
  text = skipPlus(text);
  double number = 0.0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = fast_float::from_chars(text.data(), end, number);
  const bool isFinite = std::isfinite(number) || isOneOf(text, {"inf", "-inf", "nan"});
  if (error != std::errc() || read != end || !isFinite) return std::nullopt;
  return number;
}

/// The number with a point, whatever stands before its decimals.
std::optional<double> readNumber(std::string_view text, char decimal) {
  if (decimal == '.') return parse(text);
  if (text.find('.') != text.npos) return std::nullopt;
  std::string pointed(text);
  std::replace(pointed.begin(), pointed.end(), decimal, '.');
  return parse(pointed);
}

double requireNumber(std::string_view text, char decimal, const char* advice) {
  if (const std::optional<double> number = readNumber(text, decimal)) return *number;
  const char other = decimal == '.' ? ',' : '.';
  for (const char mark : {other, ' ', '\''})
    if (isGrouped(text.substr(0, text.find(decimal)), mark))
      throw std::invalid_argument(std::string(advice) + ", without marks between thousands");
  throw std::invalid_argument(advice);
}

const char* adviseStiffness(char decimal) {
  return decimal == '.' ? "a number such as 1500 or 2.5e4, or nothing"
                        : "a number such as 1500 or 2,5e4, or nothing";
}

const char* adviseFactor(char decimal) {
  return decimal == '.' ? "a number such as 0.1" : "a number such as 0,1";
}

int readInteger(std::string_view text) {
  text = skipPlus(text);
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [read, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || read != end) throw std::invalid_argument("a whole number");
  return number;
}

/// True for what is written behind an apostrophe: what starts like a formula, behind any number of
/// apostrophes, so that reading takes away just the one that writing adds.
bool looksLikeFormula(std::string_view text) {
  const std::size_t start = text.find_first_not_of(asText);
  return start != text.npos && formulaStarts.find(text[start]) != text.npos;
}

/// Where commas separate cells, nobody takes a point for a mark between thousands.
bool canHaveThousands(std::string_view digits, const Dialect& dialect) {
  const bool isEnglish = dialect.separator == ',' && dialect.decimal == '.';
  return !isEnglish && isGrouped(digits, '.');
}

struct Writer {
  void operator()(std::monostate) const {}
  void operator()(bool flag) const { text += flag ? "true" : "false"; }
  void operator()(int number) const { text += std::to_string(number); }
  void operator()(double number) const {
    std::string digits = DisplayText::fromNumber(number);
    if (canHaveThousands(digits, dialect)) digits += '0';
    std::replace(digits.begin(), digits.end(), '.', *dialect.decimal);
    text += digits;
  }
  void operator()(const std::string& name) const {
    if (type == Fields::Type::text)
      writeText(text, name);
    else
      text += name;
  }

  std::string& text;
  Fields::Type type;
  const Dialect& dialect;
};

}  // namespace

std::string_view trim(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

bool isGrouped(std::string_view number, char mark) {
  if (!number.empty() && (number[0] == '-' || number[0] == '+')) number.remove_prefix(1);
  const std::size_t lead = std::min(number.find(mark), number.size());
  if (lead < 1 || lead > 3 || lead == number.size() || number[0] == '0') return false;
  if (!std::all_of(number.begin(), number.begin() + static_cast<std::ptrdiff_t>(lead), isDigit))
    return false;
  for (number.remove_prefix(lead); !number.empty(); number.remove_prefix(4))
    if (number.size() < 4 || number[0] != mark ||
        !std::all_of(number.begin() + 1, number.begin() + 4, isDigit))
      return false;
  return true;
}

bool readFlag(std::string_view text) {
  text = trim(text);
  if (isOneOf(text, {"true", "yes", "1", "wahr"})) return true;
  if (isOneOf(text, {"false", "no", "0", "falsch", ""})) return false;
  throw std::invalid_argument("true or false");
}

std::string readFailure(std::string_view text) {
  if (text.empty()) return "none";
  if (Failures::read(text)) return std::string(text);
  throw std::invalid_argument("tension, compression or none");
}

std::string readName(std::string_view text) {
  const auto isPlain = [](char c) { return c >= ' ' && c <= '~'; };
  for (std::string_view rest = text; !rest.empty();) {
    if (isPlain(rest.front())) {
      rest.remove_prefix(1);
      continue;
    }
    const char32_t c = Utf8::take(rest);
    const bool isSpace = c == '\t' || c == '\n' || c == '\r';
    if (c == Utf8::invalid || (c < 0x20 && !isSpace) || c == 0xFFFE || c == 0xFFFF)
      throw std::invalid_argument("a text in UTF-8, without control characters");
  }
  return std::string(text);
}

std::string readUnit(std::string_view text) {
  return trim(text).empty() ? std::string() : readName(text);
}

std::string readText(std::string_view cell) {
  const bool isMarked = !cell.empty() && cell[0] == asText && looksLikeFormula(cell);
  return readName(cell.substr(isMarked ? 1 : 0));
}

Value readCell(const Fields::Field& field, std::string_view text, char decimal) {
  using Fields::Type;
  if (field.type == Type::text) return readText(text);
  text = trim(text);
  switch (field.type) {
    case Type::integer:
      return readInteger(text);
    case Type::flag:
      return readFlag(text);
    case Type::failure:
      return readFailure(text);
    case Type::factor:
      return text.empty() ? 0.0 : requireNumber(text, decimal, adviseFactor(decimal));
    default:
      if (text.empty()) return {};
      return requireNumber(text, decimal, adviseStiffness(decimal));
  }
}

void writeCell(std::string& text, const Fields::Field& field, const Value& value,
               const Dialect& dialect) {
  std::visit(Writer{text, field.type, dialect}, value);
}

void writeText(std::string& cell, std::string_view text) {
  if (looksLikeFormula(text)) cell += asText;
  cell += text;
}

}  // namespace Spreadsheets
