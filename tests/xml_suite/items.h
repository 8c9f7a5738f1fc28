#pragma once

#include <string>
#include <string_view>

namespace XmlSuite {

/// Appends one item of what a document says, its line ends spelt so that it stays on its line.
inline void addItem(std::string& all, char kind, std::string_view content) {
  all += kind;
  for (const char c : content) {
    if (c == '\n')
      all += "\\n";
    else if (c == '\r')
      all += "\\r";
    else if (c == '\\')
      all += "\\\\";
    else
      all += c;
  }
  all += '\n';
}

}  // namespace XmlSuite
