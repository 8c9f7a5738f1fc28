#include "recorded_legacy.h"

#include <sstream>

namespace LegacyTest {

std::unique_ptr<KvXmlTree> makeTree(const Lines& lines) {
  std::istringstream text(makeText(lines));
  std::string recognition;
  std::getline(text, recognition);
  auto tree = std::make_unique<KvXmlTree>(text);
  if (!lines.empty()) tree->open(lines[0].substr(0, lines[0].find(' ')), false);
  Recording::clearLog();
  return tree;
}

std::string makeText(const Lines& lines) {
  std::string text = "xml\n";
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

}  // namespace LegacyTest
