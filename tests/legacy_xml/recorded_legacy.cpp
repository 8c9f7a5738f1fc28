#include "recorded_legacy.h"

#include <algorithm>
#include <sstream>

namespace LegacyTest {

RecordedTest::RecordedTest() {
  Recording::clearLog();
  Recording::failAt(0);
}

RecordedTest::~RecordedTest() { EXPECT_EQ(Recording::countLive(), 0); }

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

Lines listCalls(const Lines& without) {
  Lines calls = Recording::getLog();
  const auto isLeftOut = [&](const std::string& line) {
    return std::any_of(without.begin(), without.end(), [&](const std::string& word) {
      return line.substr(0, line.find(' ')) == word;
    });
  };
  calls.erase(std::remove_if(calls.begin(), calls.end(), isLeftOut), calls.end());
  return calls;
}

}  // namespace LegacyTest
