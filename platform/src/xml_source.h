#pragma once

#include <cstddef>
#include <ios>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The text of a document as it comes from a stream, and where in its file everything stands.
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

/// A text in memory that the parser can take over. Behind it stand NULs; for the parser, which
/// needs the last byte for itself and is careless about what it was, they must become line ends.
struct Text {
  static constexpr std::size_t margin = 2;

  std::string_view get() const { return std::string_view(data.get(), size); }

  std::unique_ptr<char, FreeText> data;
  std::size_t size = 0;        // without the margin
  Position start;              // where in its file it begins
  std::string before;          // the beginning of what stands before it in its file
  std::streamoff offset = -1;  // where in its stream it begins; negative when that cannot be told
};

/// Reads `in` from its position to its end. Throws KvXmlError when that is impossible.
Text read(std::istream& in);

/// Reads the text at `offset` of `in` once more, since the parser leaves nothing of it; empty when
/// the stream does not go back there.
std::optional<Text> readAgain(std::istream& in, std::streamoff offset);

/// Finds the place of an offset in a text. Made before the text is parsed, since the parser works
/// in place and overwrites line ends.
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
