#include "table.h"

#include <algorithm>
#include <numeric>
#include <ostream>

#include "text/display_text.h"

namespace {

using Widths = std::vector<std::size_t>;

constexpr std::size_t gap = 2;

std::size_t subtract(std::size_t a, std::size_t b) { return a > b ? a - b : 0; }

std::string pad(const std::string& text, std::size_t width, Table::Align align) {
  const std::string blanks(subtract(width, DisplayText::measure(text)), ' ');
  return align == Table::Align::left ? text + blanks : blanks + text;
}

std::string trimEnd(std::string line) {
  line.erase(line.find_last_not_of(' ') + 1);
  return line;
}

/// How many places the columns of a block take side by side.
std::size_t measureLine(const std::vector<std::size_t>& block, const Widths& widths) {
  std::size_t width = subtract(block.size(), 1) * gap;
  for (const std::size_t i : block) width += widths[i];
  return width;
}

}  // namespace

Widths Table::measureColumns() const {
  Widths widths;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    widths.push_back(DisplayText::measure(columns[i].title));
    for (const Row& row : rows) widths[i] = std::max(widths[i], DisplayText::measure(row.cells[i]));
  }
  return widths;
}

void Table::shrink(Widths& widths, std::size_t excess, bool isBelowLeast) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].leastWidth == 0) continue;
    const std::size_t least = isBelowLeast ? 1 : columns[i].leastWidth;
    const std::size_t taken = std::min(excess, subtract(widths[i], least));
    widths[i] -= taken;
    excess -= taken;
  }
}

/// Makes one block where all columns fit.
std::vector<Table::Indices> Table::breakIntoBlocks(Widths& widths, std::size_t width) const {
  Indices all(columns.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  shrink(widths, subtract(measureLine(all, widths), width), false);

  Indices keys;
  std::size_t widest = 0;
  for (const std::size_t i : all)
    if (columns[i].isKey)
      keys.push_back(i);
    else
      widest = std::max(widest, widths[i]);
  shrink(widths, subtract(measureLine(keys, widths) + gap + widest, width), true);

  std::vector<Indices> blocks = {keys};
  for (const std::size_t i : all) {
    if (columns[i].isKey) continue;
    const bool hasRoom = measureLine(blocks.back(), widths) + gap + widths[i] <= width;
    if (!hasRoom && blocks.back().size() > keys.size()) blocks.push_back(keys);
    blocks.back().push_back(i);
  }
  return blocks;
}

std::string Table::makeLine(const std::vector<std::string>& cells, const Indices& block,
                            const Widths& widths) const {
  std::string line;
  for (const std::size_t i : block) {
    const bool mayShrink = columns[i].leastWidth > 0;
    const std::string cell = mayShrink ? DisplayText::shorten(cells[i], widths[i]) : cells[i];
    line += pad(cell, widths[i], columns[i].align) + std::string(gap, ' ');
  }
  return trimEnd(line);
}

void Table::print(std::ostream& out, std::size_t width, const Terminal::Painter& painter) const {
  Widths widths = measureColumns();
  std::vector<std::string> titles;
  for (const Column& column : columns) titles.push_back(column.title);
  const char* separator = "";
  for (const Indices& block : breakIntoBlocks(widths, width)) {
    out << separator << painter.paint(Terminal::Style::bold, makeLine(titles, block, widths))
        << '\n';
    for (const Row& row : rows)
      out << painter.paint(row.style, makeLine(row.cells, block, widths)) << '\n';
    separator = "\n";
  }
}
