#pragma once

#include <cstddef>
#include <ios>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text of a document as it comes from a stream, and the positions of its bytes in their file.
namespace XmlSource {

/// Counted from 1; columns in bytes.
struct Position {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Throws KvXmlError.
[[noreturn]] void fail(const std::string& reason, Position position);

struct FreeText {
  void operator()(char* text) const;
};

/// A text in memory that the parser can take over. NULs follow it. They must be replaced by line
/// ends before parsing: the parser uses the last byte for itself, whatever it holds.
struct Text {
  static constexpr std::size_t margin = 2;

  std::string_view get() const { return std::string_view(data.get(), size); }

  std::unique_ptr<char, FreeText> data;
  std::size_t size = 0;     // without the margin
  Position start;           // its position in its file
  std::string before;       // the start of its file, up to where the text begins
  std::streamoff offset{};  // its offset in its stream; negative when unknown
};

/// Reads `in` from its position to its end. Throws KvXmlError when that is impossible.
Text read(std::istream& in);

/// Reads the text at `offset` of `in` once more, since the parser overwrites it; empty when the
/// stream cannot seek to it.
std::optional<Text> readAgain(std::istream& in, std::streamoff offset);

/// Converts offsets in a text to positions. To be made before the text is parsed, since the parser
/// works in place and overwrites line ends.
class LineTable {
 public:
  LineTable() = default;
  explicit LineTable(const Text& text);
  Position find(std::size_t offset) const;

 private:
  Position begin;
  std::vector<std::size_t> lineEnds;
};

}  // namespace XmlSource
