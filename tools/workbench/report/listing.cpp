#include "report/listing.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include <fmt/format.h>

#include "report/html.h"
#include "report/paper.h"
#include "report/ratio.h"
#include "report/text.h"

namespace Report {
namespace {

// Widths on paper.
constexpr double ofNumbers = 10;
constexpr double ofNames = 36;
constexpr double ofWords = 22;
constexpr double ofBars = 34;
constexpr double ofGap = 2.5;

constexpr std::size_t mostInTable = 1000;  // rows; later ones are text

template <class Use>
void forEachCell(const Listing& listing, std::size_t column, const Use& use) {
  for (const Entry& entry : listing.entries)
    for (const std::vector<Cell>& row : entry.rows) use(row[column]);
}

bool isNeeded(const Listing& listing, std::size_t column) {
  if (!listing.columns[column].isOptional) return true;
  const std::string& usual = listing.columns[column].usual;
  bool isShown = false;
  forEachCell(listing, column, [&](const Cell& cell) {
    isShown = isShown || (!cell.text.empty() && cell.text != absent && cell.text != usual);
  });
  return isShown;
}

template <class Item>
void eraseAt(std::vector<Item>& items, std::size_t place) {
  items.erase(items.begin() + static_cast<std::ptrdiff_t>(place));
}

void dropUnneeded(Listing& listing) {
  for (std::size_t column = listing.columns.size(); column-- > 0;) {
    if (isNeeded(listing, column)) continue;
    eraseAt(listing.columns, column);
    for (Entry& entry : listing.entries)
      for (std::vector<Cell>& row : entry.rows) eraseAt(row, column);
  }
}

double measureColumn(const Listing& listing, std::size_t place) {
  const Column& column = listing.columns[place];
  if (!isNeeded(listing, place)) return 0.0;
  double width = std::max(Paper::measure(column.name), Paper::measure(column.unit));
  forEachCell(listing, place, [&](const Cell& cell) {
    const double most = cell.kind == Kind::number ? Paper::broad : ofWords;  // words wrap
    width = std::max(width, std::min(Paper::measure(cell.text), most));
  });
  return width + ofGap + (column.isRatio ? ofBars : 0.0);
}

double measure(const Listing& listing) {
  double width = ofNumbers + ofNames;
  for (std::size_t i = 0; i < listing.columns.size(); ++i) width += measureColumn(listing, i);
  return width;
}

class ListingMaker {
 public:
  ListingMaker(const Listing& shown, std::string& target) : listing(shown), page(target) {
    std::size_t rows = 0;
    for (const Entry& entry : listing.entries) {
      rows += entry.rows.size();
      if (rows <= mostInTable) ++inTable;
      isGrouped = isGrouped || entry.rows.size() > 1;
    }
  }

  void print() {
    append(page,
           "<div class=\"scroll\" role=\"region\" aria-label=\"{}\" tabindex=\"0\">\n"
           "<table class=\"listing{}\">\n<thead>\n<tr>",
           escape(listing.label), measure(listing) > Paper::narrow ? " broad" : "");
    printHeadings();
    page += "</tr>\n</thead>\n<tbody>\n";
    for (std::size_t i = 0; i < inTable; ++i) {
      if (isGrouped && i > 0) page += "</tbody>\n<tbody>\n";
      printEntry(listing.entries[i]);
    }
    page += "</tbody>\n</table>\n</div>\n";
    if (inTable < listing.entries.size()) printRest();
  }

 private:
  static const char* getClass(Kind kind) {
    if (kind == Kind::number) return "";
    return kind == Kind::name ? " class=\"name\"" : " class=\"words\"";
  }

  void printHeadings() {
    page += R"(<th scope="col" class="num">No</th><th scope="col">Name</th>)";
    for (const Column& column : listing.columns) {
      const std::string unit =
          column.unit.empty() ? "" : " <small>" + escape(column.unit) + "</small>";
      append(page, "<th scope=\"col\"{}>{}{}</th>",
             column.kind == Kind::number ? " class=\"num\"" : " class=\"words\"",
             escape(column.name), unit);
      if (column.isRatio) appendRatioAxis(page);
    }
  }

  void printEntry(const Entry& entry) {
    const bool isGroup = entry.rows.size() > 1;
    const std::string span = isGroup ? fmt::format(" rowspan=\"{}\"", entry.rows.size()) : "";
    append(page, "<tr><td{}>{}<th scope=\"{}\"{}>{}", span, escape(entry.number),
           isGroup ? "rowgroup" : "row", span, escape(entry.name));
    bool isFirst = true;
    for (const std::vector<Cell>& row : entry.rows) {
      if (!isFirst) page += "<tr>";
      isFirst = false;
      printCells(row);
      page += "</tr>\n";
    }
  }

  void printCells(const std::vector<Cell>& row) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      append(page, "<td{}>{}", getClass(row[i].kind), escape(row[i].text));
      if (!listing.columns[i].isRatio) continue;
      if (row[i].ratio)
        appendRatioBar(*row[i].ratio, page);
      else
        page += "<td>";
    }
  }

  void printRest() {
    const std::size_t rest = listing.entries.size() - inTable;
    append(page,
           "<p class=\"closed\">What is folded is not printed.</p>\n"
           "<details class=\"rows\"><summary>{} as text, with tabs between values</summary>\n"
           "<pre tabindex=\"0\" role=\"region\" aria-label=\"{}: the others as text\">\n"
           "No\tName",
           count(rest, "more foundation"), escape(listing.label));
    for (const Column& column : listing.columns) page += '\t' + escape(column.name);
    page += '\n';
    for (std::size_t i = inTable; i < listing.entries.size(); ++i)
      for (const std::vector<Cell>& row : listing.entries[i].rows)
        printLine(listing.entries[i], row);
    page += "</pre>\n</details>\n";
  }

  void printLine(const Entry& entry, const std::vector<Cell>& row) {
    page += escape(entry.number) + '\t' + escape(entry.name);
    for (const Cell& cell : row) page += '\t' + escape(cell.text);
    page += '\n';
  }

  const Listing& listing;
  std::size_t inTable = 0;  // entries
  bool isGrouped = false;
  std::string& page;
};

}  // namespace

bool Listing::hasRatio() const {
  for (const Entry& entry : entries)
    for (const std::vector<Cell>& row : entry.rows)
      for (const Cell& cell : row)
        if (cell.ratio) return true;
  return false;
}

bool Listing::isPrintable() const { return measure(*this) <= Paper::broad; }

void appendListing(Listing listing, std::string& page) {
  dropUnneeded(listing);
  ListingMaker(listing, page).print();
}

}  // namespace Report
