#include "xml_source.h"

#include <algorithm>
#include <cstring>
#include <istream>
#include <new>
#include <utility>

#include <pugixml.hpp>

#include "kv/xml_error.h"

namespace XmlSource {
namespace {

constexpr int endOfStream = std::char_traits<char>::eof();

/// Where in its file the stream stands. A stream that cannot be rewound counts from where it is.
Position locate(std::streambuf& buffer) {
  const auto tell = [&buffer] { return buffer.pubseekoff(0, std::ios::cur, std::ios::in); };
  const std::streamoff here = tell();
  Position position;
  if (here <= 0 || buffer.pubseekpos(0, std::ios::in) != std::streampos(0)) return position;

  // Asks for the place at line ends only: where line ends are translated, characters cannot be
  // counted instead.
  std::streamoff lineStart = 0;
  for (int c = buffer.sbumpc(); c != endOfStream; c = buffer.sbumpc()) {
    if (c != '\n') continue;
    const std::streamoff next = tell();
    if (next > here) break;
    ++position.line;
    lineStart = next;
    if (next == here) break;
  }
  position.column += static_cast<std::size_t>(here - lineStart);
  buffer.pubseekpos(here, std::ios::in);
  return position;
}

class GrowingText {
 public:
  explicit GrowingText(std::size_t initialCapacity) { grow(initialCapacity); }

  /// Reads more; false at the end of the stream.
  bool readFrom(std::streambuf& buffer) {
    if (text.size == capacity) grow(capacity * 2);
    const auto room = static_cast<std::streamsize>(capacity - text.size);
    const std::streamsize got = buffer.sgetn(text.data.get() + text.size, room);
    if (got <= 0) return false;
    text.size += static_cast<std::size_t>(got);
    return true;
  }

  Text finish() {
    if (text.size + Text::margin > capacity) grow(text.size + Text::margin);
    std::memset(text.data.get() + text.size, '\n', Text::margin);
    return std::move(text);
  }

 private:
  void grow(std::size_t newCapacity) {
    std::unique_ptr<char, FreeText> grown(
        static_cast<char*>(pugi::get_memory_allocation_function()(newCapacity)));
    if (grown == nullptr) throw std::bad_alloc();
    if (text.size > 0) std::memcpy(grown.get(), text.data.get(), text.size);
    text.data = std::move(grown);
    capacity = newCapacity;
  }

  Text text;
  std::size_t capacity = 0;
};

/// A little more than the stream seems to hold, so that its end is seen without growing.
std::size_t guessCapacity(std::streambuf& buffer) {
  constexpr std::streamoff least = 1 << 12;
  constexpr std::streamoff most = 1 << 30;  // a stream may tell any size
  const std::streamoff here = buffer.pubseekoff(0, std::ios::cur, std::ios::in);
  if (here < 0) return least;
  const std::streamoff end = buffer.pubseekoff(0, std::ios::end, std::ios::in);
  buffer.pubseekpos(here, std::ios::in);
  constexpr auto margin = static_cast<std::streamoff>(Text::margin) + 1;
  return static_cast<std::size_t>(std::clamp(end - here, least, most) + margin);
}

Text readAll(std::streambuf& buffer) {
  // Looked at first: where a folder was opened as a file, its buffer throws here.
  const std::size_t capacity = buffer.sgetc() == endOfStream ? 1 : guessCapacity(buffer);
  GrowingText text(capacity);
  while (text.readFrom(buffer)) {
  }
  return text.finish();
}

}  // namespace

void fail(const std::string& reason, Position position) {
  throw KvXmlError(reason, position.line, position.column);
}

void FreeText::operator()(char* text) const { pugi::get_memory_deallocation_function()(text); }

Text read(std::istream& in) {
  if (in.rdbuf() == nullptr) fail("there is nothing to read from", Position());
  Position start;
  try {
    start = locate(*in.rdbuf());
    if (!in.fail()) {
      Text text = readAll(*in.rdbuf());
      text.start = start;
      return text;
    }
  } catch (const std::ios_base::failure&) {
    // Told below, like a stream that failed before.
  }
  fail("the text cannot be read from here on", start);
}

LineTable::LineTable(const Text& text) : begin(text.start) {
  const std::string_view all = text.get();
  for (std::size_t end = all.find('\n'); end != all.npos; end = all.find('\n', end + 1))
    lineEnds.push_back(end);
}

Position LineTable::find(std::size_t offset) const {
  const auto line = std::lower_bound(lineEnds.begin(), lineEnds.end(), offset);
  const auto lines = static_cast<std::size_t>(line - lineEnds.begin());
  if (lines == 0) return {begin.line, begin.column + offset};
  return {begin.line + lines, offset - lineEnds[lines - 1]};
}

bool LineTable::hasEndAt(std::size_t offset) const {
  return std::binary_search(lineEnds.begin(), lineEnds.end(), offset);
}

}  // namespace XmlSource
