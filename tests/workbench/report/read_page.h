#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "documents/document.h"
#include "report/page.h"
#include "report/subject.h"

/// Makes the pages of documents and reads them.
namespace ReportTest {

using Texts = std::vector<std::string>;

/// Labels of the usual units.
inline const Units kiloNewton = {"kN", "m"};

/// A model of these foundations.
inline std::string makeModel(const std::string& foundations, const std::string& attributes = "") {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS" + attributes + ">\n" + foundations +
         "\n</FOUNDATIONS>\n</SMOD>\n";
}

/// A document with what is found in it, and its page.
class Opened {
 public:
  explicit Opened(Files::Content bytes, const Documents::ReadOptions& options = {})
      : document(std::move(bytes), options), subject(document) {}

  const std::vector<Found::Foundation*>& getFoundations() const {
    return subject.tell({}, {}).manager.getFoundations();
  }

  Report::Content tell(const Units& units, Report::UnitsFrom unitsFrom = Report::UnitsFrom::user,
                       const std::string& date = "") const {
    return subject.tell({units, unitsFrom, {}}, {date});
  }

  std::string print(const Units& units = {}, Report::UnitsFrom unitsFrom = Report::UnitsFrom::user,
                    const std::string& date = "") const {
    return Report::makePage(tell(units, unitsFrom, date));
  }

 private:
  Documents::Document document;
  Report::Subject subject;
};

/// The page of a document.
inline std::string report(const std::string& bytes, const Units& units = {},
                          const Documents::ReadOptions& options = {}) {
  return Opened({"folder/file.xml", "", bytes}, options).print(units);
}

inline std::string reportModel(const std::string& foundations, const Units& units = {}) {
  return report(makeModel(foundations), units);
}

/// The page of a document of the examples.
inline std::string reportExample(const std::string& name, const Units& units = {}) {
  return Opened(Documents::readFile(KVFOUND_EXAMPLES_DIR "/" + name)).print(units);
}

/// The foundations 1 to `number`, alike but for their numbers.
inline std::string repeat(std::size_t number, const std::string& attributes) {
  std::string foundations;
  for (std::size_t i = 1; i <= number; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' " + attributes + "/>\n";
  return foundations;
}

inline std::size_t count(const std::string& text, const std::string& part) {
  std::size_t number = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++number;
  return number;
}

inline bool holds(const std::string& text, const std::string& part) {
  return count(text, part) > 0;
}

/// The texts between tags, with a stroke between those that tags part.
inline std::string stripTags(const std::string& html) {
  std::string text;
  bool isInTag = false;
  for (const char c : html) {
    if (c == '<') isInTag = true;
    if (!isInTag) text += c;
    if (c == '>') {
      isInTag = false;
      if (!text.empty() && text.back() != '|') text += '|';
    }
  }
  return text.substr(0, text.find_last_not_of('|') + 1);
}

/// What stands between two texts.
inline std::string cut(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start);
  const std::size_t to = text.find(end, from + start.size());
  if (from == text.npos || to == text.npos) {
    ADD_FAILURE() << "there is no " << start << " ... " << end;
    return "";
  }
  return text.substr(from + start.size(), to - from - start.size());
}

/// The section of a page, named by its heading.
inline std::string readSection(const std::string& page, const std::string& name) {
  return cut(page, "<h2 id=\"" + name + "\">", "</section>");
}

/// The lines of a section that start like this.
inline Texts listLines(const std::string& section, const std::string& start) {
  Texts lines;
  std::istringstream in(section);
  for (std::string line; std::getline(in, line);)
    if (line.compare(0, start.size(), start) == 0) lines.push_back(line);
  return lines;
}

inline Texts stripAll(const Texts& lines) {
  Texts texts;
  for (const std::string& line : lines) texts.push_back(stripTags(line));
  return texts;
}

/// The table of a part: "area", "line" or "none".
inline std::string readTable(const std::string& page, const std::string& part) {
  return cut(page, "<table class=\"values " + part, "</table>");
}

/// The cells of a row of a table, with their tags.
inline Texts listCells(const std::string& row) {
  Texts cells;
  const auto findNext = [&row](std::size_t at) {
    return std::min(row.find("<td", at), row.find("<th", at));
  };
  for (std::size_t at = findNext(0); at != row.npos;) {
    const std::size_t next = findNext(at + 1);
    cells.push_back(row.substr(at, next - at));
    at = next;
  }
  return cells;
}

/// What the columns of a table are called.
inline Texts listColumns(const std::string& page, const std::string& part) {
  return stripAll(listCells(cut(readTable(page, part), "<thead>\n<tr>", "</tr>\n</thead>")));
}

inline Texts listRows(const std::string& page, const std::string& part) {
  return listLines(cut(readTable(page, part), "<tbody>", "</tbody>"), "<tr");
}

inline bool isStrip(const std::string& cell) { return cell.rfind("<td class=\"plot", 0) == 0; }

/// The rows of a table, each cell behind a stroke, without strips.
inline Texts listRowTexts(const std::string& page, const std::string& part) {
  Texts rows;
  for (const std::string& row : listRows(page, part)) {
    std::string text;
    for (const std::string& cell : listCells(row))
      if (!isStrip(cell)) text += "|" + stripTags(cell);
    rows.push_back(text);
  }
  return rows;
}

/// What is drawn in the strips of a table, row by row.
inline Texts listStrips(const std::string& page, const std::string& part) {
  Texts strips;
  for (const std::string& row : listRows(page, part))
    for (const std::string& cell : listCells(row))
      if (isStrip(cell)) strips.push_back(cut(cell, "<svg aria-hidden=\"true\">", "</svg>"));
  return strips;
}

/// What a page tells at its top, as "Form|Legacy model" and so on.
inline Texts listFacts(const std::string& page) {
  return stripAll(listLines(cut(page, "<ul class=\"facts\">", "</ul>"), "<li>"));
}

}  // namespace ReportTest
