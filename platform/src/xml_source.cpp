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

/// The position of a stream in its file, and the start of what precedes it there.
struct Start {
  Position position;
  std::string before;
};

/// The position of a stream that cannot be rewound is line 1, column 1.
///
/// Rewinds the stream and reads it forward to its place again instead of seeking there. Where line
/// ends are translated, offsets that the stream reports may be none that it can seek to, and its
/// characters differ from those of the file; but reading forward reports the same offsets again.
Start locate(std::streambuf& buffer) {
  constexpr std::size_t mostBefore = 1023;  // as long as a declaration may be
  const auto tell = [&buffer] { return buffer.pubseekoff(0, std::ios::cur, std::ios::in); };
  const auto rewind = [&buffer] { return buffer.pubseekpos(0, std::ios::in) == std::streampos(0); };
  const std::streamoff here = tell();
  Start start;
  Position& position = start.position;
  if (here <= 0 || !rewind()) return start;

  for (int c = buffer.sbumpc(); c != endOfStream; c = buffer.sbumpc()) {
    if (start.before.size() < mostBefore) start.before += static_cast<char>(c);
    if (c != '\n') continue;
    const std::streamoff next = tell();
    if (next > here) break;
    ++position.line;
    if (next == here) return start;
  }

  // The place is within a line: find the column character by character.
  rewind();
  std::size_t line = 1;
  for (int c = 0; line < position.line && c != endOfStream;) {
    c = buffer.sbumpc();
    if (c == '\n') ++line;
  }
  for (; tell() < here && buffer.sbumpc() != endOfStream; ++position.column) {
  }
  if (tell() > here) throw std::ios_base::failure("the place is not found again");
  return start;
}

class GrowingText {
 public:
  /// Reads more; false at the end of the stream.
  bool readFrom(std::streambuf& buffer) {
    // One more than is known, so that the end of the stream is found without growing.
    const std::size_t needed = text.size + countKnown(buffer) + 1 + Text::margin;
    if (capacity < needed) grow(std::max(2 * capacity, needed));
    const std::size_t wanted = capacity - Text::margin - text.size;
    const std::streamsize got =
        buffer.sgetn(text.data.get() + text.size, static_cast<std::streamsize>(wanted));
    if (got <= 0) return false;
    text.size += static_cast<std::size_t>(got);
    return true;
  }

  /// To be called when all is read.
  Text finish() {
    std::memset(text.data.get() + text.size, '\0', Text::margin);
    return std::move(text);
  }

 private:
  /// How much can be read for certain: what the stream has in its buffer, or its own estimate when
  /// that is empty. Seeking to the end would tell more, but see locate().
  static std::size_t countKnown(std::streambuf& buffer) {
    constexpr std::streamsize most = 1 << 26;  // a stream may report any size
    return static_cast<std::size_t>(std::clamp<std::streamsize>(buffer.in_avail(), 0, most));
  }

  void grow(std::size_t newCapacity) {
    std::unique_ptr<char, FreeText> grown(
        static_cast<char*>(pugi::get_memory_allocation_function()(newCapacity)));
    if (grown == nullptr) throw std::bad_alloc();
    std::copy_n(text.data.get(), text.size, grown.get());
    text.data = std::move(grown);
    capacity = newCapacity;
  }

  Text text;
  std::size_t capacity = 0;
};

Text readAll(std::streambuf& buffer) {
  GrowingText text;
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
  Start start;
  try {
    start = locate(*in.rdbuf());
    if (!in.fail()) {
      const std::streamoff offset = in.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in);
      Text text = readAll(*in.rdbuf());
      text.offset = offset;
      text.start = start.position;
      text.before = std::move(start.before);
      return text;
    }
  } catch (const std::ios_base::failure&) {
    // Reported below, like a stream that failed before.
  }
  fail("the text cannot be read from here on", start.position);
}

std::optional<Text> readAgain(std::istream& in, std::streamoff offset) {
  try {
    if (offset < 0 || in.rdbuf()->pubseekpos(offset, std::ios::in) != std::streampos(offset))
      return std::nullopt;
    return readAll(*in.rdbuf());
  } catch (const std::ios_base::failure&) {
    return std::nullopt;
  }
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

}  // namespace XmlSource
