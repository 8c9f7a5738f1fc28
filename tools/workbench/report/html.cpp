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

std::string escapeName(const std::string& name) { return escape(showName(name)); }

}  // namespace Report
