#include "results/columns.h"

#include <algorithm>
#include <string>

#include "text/utf8.h"

namespace Results {
namespace {

std::size_t countUnits(std::string_view text) {
  constexpr char32_t lastOfOneUnit = 0xFFFF;
  std::size_t units = 0;
  while (!text.empty()) {
    const char32_t character = Utf8::take(text);
    units += character > lastOfOneUnit && character != Utf8::invalid ? 2 : 1;
  }
  return units;
}

}  // namespace

void Columns::goToLine(std::size_t wanted) {
  if (wanted < line) {
    line = 1;
    lineBegin = 0;
  }
  for (; line < wanted; ++line) {
    const std::size_t end = bytes.find('\n', lineBegin);
    lineBegin = end == bytes.npos ? bytes.size() : end + 1;
  }
  done = 0;
  units = 0;
}

std::size_t Columns::count(KvXmlPosition position) {
  const std::size_t before = position.column - 1;
  if (position.line != line || before < done) goToLine(position.line);
  const std::size_t begin = std::min(lineBegin + done, bytes.size());
  units += countUnits(charset.toUtf8(bytes.substr(begin, before - done)));
  done = before;
  return units + 1;
}

}  // namespace Results
