#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

/// Rows of text in aligned columns.
class Table {
 public:
  enum class Align { left, right };

  struct Column {
    std::string group;  ///< heading over several neighbouring columns that name the same group
    std::string title;
    Align align = Align::left;
  };

  explicit Table(std::vector<Column> headings) : columns(std::move(headings)) {}

  /// As many cells as there are columns, in UTF-8.
  void addRow(std::vector<std::string> cells) { rows.push_back(std::move(cells)); }

  /// Two lines of headings and the rows, without blanks at line ends.
  void print(std::ostream& out) const;

 private:
  std::vector<std::size_t> measureColumns() const;
  std::string makeGroupLine(const std::vector<std::size_t>& widths) const;
  std::string makeLine(const std::vector<std::string>& cells,
                       const std::vector<std::size_t>& widths) const;

  std::vector<Column> columns;
  std::vector<std::vector<std::string>> rows;
};
