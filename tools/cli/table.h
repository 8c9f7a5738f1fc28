#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

#include "terminal.h"

/// Rows of text in aligned columns.
class Table {
 public:
  enum class Align { left, right };

  struct Column {
    std::string title;
    Align align = Align::left;
    bool isKey = false;          ///< stands at the start of every block
    std::size_t leastWidth = 0;  ///< other than 0: shortened down to this to make the table fit
  };

  explicit Table(std::vector<Column> headings) : columns(std::move(headings)) {}

  /// As many cells as there are columns, in UTF-8.
  void addRow(std::vector<std::string> cells, Terminal::Style style = Terminal::Style::plain) {
    rows.push_back({std::move(cells), style});
  }

  /// A line of headings and the rows, without blanks at line ends. A table wider than `width`
  /// places is broken into blocks of columns, one below the other. When a column has no room beside
  /// the keys, the keys are shortened below their least width; no other text is.
  void print(std::ostream& out, std::size_t width, const Terminal::Painter& painter) const;

 private:
  using Indices = std::vector<std::size_t>;

  struct Row {
    std::vector<std::string> cells;
    Terminal::Style style;
  };

  std::vector<std::size_t> measureColumns() const;
  void shrink(std::vector<std::size_t>& widths, std::size_t excess, bool isBelowLeast) const;
  std::vector<Indices> breakIntoBlocks(std::vector<std::size_t>& widths, std::size_t width) const;
  std::string makeLine(const std::vector<std::string>& cells, const Indices& block,
                       const std::vector<std::size_t>& widths) const;

  std::vector<Column> columns;
  std::vector<Row> rows;
};
