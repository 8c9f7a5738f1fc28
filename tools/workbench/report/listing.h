#pragma once

#include <optional>
#include <string>
#include <vector>

/// Tables of foundations in a few columns of text.
namespace Report {

enum class Kind { number, words, name };

/// What a cell shows, in UTF-8 and not yet escaped. A cell for a ratio has a bar beside it.
struct Cell {
  std::string text;
  Kind kind = Kind::number;
  std::optional<double> ratio = {};
};

struct Column {
  std::string name;
  std::string unit = {};  // empty where none is claimed
  Kind kind = Kind::number;
  bool isOptional = false;  // left out where no cell shows anything, or all what is usual
  bool isRatio = false;
  std::string usual = {};
};

/// A foundation with its rows, each of which has a cell for each column.
struct Entry {
  std::string number;
  std::string name;
  std::vector<std::vector<Cell>> rows;
};

struct Listing {
  std::string label;  // what the table shows, in words
  std::vector<Column> columns;
  std::vector<Entry> entries;

  /// Whether any cell has a bar beside it.
  bool hasRatio() const;
  /// Whether a sheet of paper is broad enough for it.
  bool isPrintable() const;
};

/// Adds the table to a page. Where there are many rows, the later ones are text with tabs between
/// values, since a browser takes long for many elements.
void appendListing(Listing listing, std::string& page);

}  // namespace Report
