#pragma once

#include <string>
#include <vector>

/// What a run of the program printed and how it ended.
struct Result {
  int status;
  std::string out;
  std::string err;
};

/// The words of a command line. Blanks part them, but for those between single quotes.
inline std::vector<std::string> splitLine(const std::string& line) {
  std::vector<std::string> words;
  bool isInWord = false;
  bool isQuoted = false;
  for (const char c : line) {
    const bool isPart = c != ' ' || isQuoted;
    if (isPart && !isInWord) words.emplace_back();
    isInWord = isPart;
    if (c == '\'')
      isQuoted = !isQuoted;
    else if (isPart)
      words.back() += c;
  }
  return words;
}
