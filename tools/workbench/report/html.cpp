#include "report/html.h"

#include "report/text.h"

namespace Report {
namespace {

void appendEscaped(std::string& text, char c) {
  switch (c) {
    case '&':
      text += "&amp;";
      break;
    case '<':
      text += "&lt;";
      break;
    case '>':
      text += "&gt;";
      break;
    case '"':
      text += "&quot;";
      break;
    case '\'':
      text += "&#39;";
      break;
    default:
      text += c;
  }
}

}  // namespace

std::string escape(const std::string& text) {
  std::string escaped;
  for (const char c : text) appendEscaped(escaped, c);
  return escaped;
}

std::string writePower(int exponent) { return fmt::format("10<sup>{}</sup>", exponent); }

std::string writeRounded(double value) {
  std::string text = showRounded(value);
  const std::size_t e = text.find('e');
  if (e == text.npos) return text;
  const std::string factor = text.substr(0, e);
  const std::string power = writePower(std::stoi(text.substr(e + 1)));
  return factor == "1" ? power : factor + "\xC2\xB7" + power;
}

std::string escapeName(const std::string& name) { return escape(showName(name)); }

}  // namespace Report
