#include "spreadsheets/rows.h"

#include <algorithm>
#include <new>

#include <csv.h>
#include "files/user_error.h"

namespace Spreadsheets {
namespace {

/// What the parser calls back; no exception may pass through it.
struct Callbacks {
  Row row;
  bool isComplete = false;
  bool isOutOfMemory = false;

  static void addCell(void* cell, std::size_t length, void* self) {
    auto& [row, isComplete, isOutOfMemory] = *static_cast<Callbacks*>(self);
    try {
      if (row.count == row.cells.size()) row.cells.emplace_back();
      row.cells[row.count].assign(static_cast<const char*>(cell), length);
      ++row.count;
    } catch (const std::bad_alloc&) {
      isOutOfMemory = true;
    }
  }
  static void endRow(int /*terminator*/, void* self) {
    static_cast<Callbacks*>(self)->isComplete = true;
  }
};

int isNoSpace(unsigned char /*character*/) { return 0; }

class Parser {
 public:
  explicit Parser(char separator) {
    csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI);
    csv_set_delim(&parser, static_cast<unsigned char>(separator));
    csv_set_space_func(&parser, isNoSpace);  // blanks belong to cells
  }
  ~Parser() { csv_free(&parser); }
  Parser(const Parser&) = delete;
  Parser& operator=(const Parser&) = delete;

  /// False at a quotation mark that encloses no cell.
  bool parse(std::string_view text, Callbacks& target) {
    const bool isDone = csv_parse(&parser, text.data(), text.size(), Callbacks::addCell,
                                  Callbacks::endRow, &target) == text.size();
    requireMemory(target);
    return isDone;
  }

  /// False where a quotation mark is not closed.
  bool finish(Callbacks& target) {
    const bool isDone =
        csv_fini(&parser, Callbacks::addCell, Callbacks::endRow, &target) == CSV_SUCCESS;
    requireMemory(target);
    return isDone;
  }

 private:
  void requireMemory(const Callbacks& target) {
    if (target.isOutOfMemory || csv_error(&parser) == CSV_ENOMEM) throw std::bad_alloc();
  }

  csv_parser parser{};
};

/// Behind the end of the line that starts at `begin`.
std::size_t findLineEnd(std::string_view text, std::size_t begin) {
  const std::size_t feed = std::min(text.find('\n', begin), text.size());
  const std::size_t line = text.substr(begin, feed - begin).find('\r');
  const bool isEnd = line != text.npos && begin + line + 1 < feed;  // with more behind it
  return isEnd ? begin + line + 1 : std::min(feed + 1, text.size());
}

/// Of the bytes before the cell.
std::size_t measureCells(std::string_view row, char separator, std::size_t count) {
  bool isQuoted = false;
  std::size_t length = 0;
  for (; count > 0; ++length) {
    if (row[length] == '"') isQuoted = !isQuoted;  // twice where one stands for itself
    if (row[length] == separator && !isQuoted) --count;
  }
  return length;
}

bool isBlank(std::string_view line) { return line.find_first_not_of("\r\n") == line.npos; }

[[noreturn]] void fail(const std::string& shownPath, std::size_t line, const char* fault) {
  throw DocumentError(shownPath, {line, 0}, fault);
}

}  // namespace

void readRows(std::string_view text, char separator, const std::string& shownPath,
              const std::function<bool(const Row&)>& take) {
  Parser parser(separator);
  Callbacks read;
  Row& row = read.row;
  bool isInside = false;  // of a row
  std::size_t line = 0;
  for (std::size_t begin = 0; begin < text.size(); begin = row.end) {
    ++line;
    row.end = findLineEnd(text, begin);
    const std::string_view piece = text.substr(begin, row.end - begin);
    if (!isInside) {
      row.count = 0;
      row.begin = begin;
      row.line = line;
    }
    if (!parser.parse(piece, read))
      fail(shownPath, row.line, "a quotation mark stands in a cell that is not in quotation marks");
    if (row.end == text.size() && !parser.finish(read))
      fail(shownPath, row.line, "a quotation mark is not closed");
    isInside = !read.isComplete && (isInside || !isBlank(piece));
    if (read.isComplete && !take(row)) return;
    read.isComplete = false;
  }
}

KvXmlPosition locateCell(std::string_view row, std::size_t line, char separator, std::size_t cell) {
  const std::size_t place = measureCells(row, separator, cell);
  std::size_t lineBegin = 0;
  for (std::size_t end = findLineEnd(row, 0); end < place; end = findLineEnd(row, end)) {
    ++line;
    lineBegin = end;
  }
  return {line, place - lineBegin + 1};
}

}  // namespace Spreadsheets
