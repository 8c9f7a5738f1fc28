#include "table.h"

#include <algorithm>
#include <ostream>

#include "display_text.h"

namespace {

constexpr std::size_t gap = 2;

std::string pad(const std::string& text, std::size_t width, Table::Align align) {
  const std::string blanks(width - std::min(width, DisplayText::measure(text)), ' ');
  return align == Table::Align::left ? text + blanks : blanks + text;
}

std::string trimEnd(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

}  // namespace

std::vector<std::size_t> Table::measureColumns() const {
  std::vector<std::size_t> widths;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    widths.push_back(DisplayText::measure(columns[i].title));
    for (const auto& row : rows) widths[i] = std::max(widths[i], DisplayText::measure(row[i]));
  }
  return widths;
}

std::string Table::makeGroupLine(const std::vector<std::size_t>& widths) const {
  std::string line;
  for (std::size_t i = 0; i < columns.size();) {
    std::size_t width = 0;
    const std::string& group = columns[i].group;
    for (const std::size_t first = i;
         i < columns.size() && (i == first || columns[i].group == group); ++i)
      width += widths[i] + gap;
    const std::size_t dashes = group.empty() ? 0 : width - gap - DisplayText::measure(group) - 1;
    line += pad(group.empty() ? "" : group + " " + std::string(dashes, '-'), width, Align::left);
  }
  return trimEnd(line);
}

std::string Table::makeLine(const std::vector<std::string>& cells,
                            const std::vector<std::size_t>& widths) const {
  std::string line;
  for (std::size_t i = 0; i < columns.size(); ++i)
    line += pad(cells[i], widths[i], columns[i].align) + std::string(gap, ' ');
  return trimEnd(line);
}

void Table::print(std::ostream& out) const {
  const std::vector<std::size_t> widths = measureColumns();
  std::vector<std::string> titles;
  for (const Column& column : columns) titles.push_back(column.title);
  out << makeGroupLine(widths) << '\n' << makeLine(titles, widths) << '\n';
  for (const auto& row : rows) out << makeLine(row, widths) << '\n';
}
