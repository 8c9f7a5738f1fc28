#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "checks/rules.h"
#include "documents/document.h"
#include "report/page.h"

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

/// The page of a document that is opened.
inline std::string print(Documents::Document& document, const Units& units) {
  Found::FoundationManager& manager = document.getFoundations();
  manager.updateFoundationMaximum();
  const Checks::Findings findings = Checks::find(document);
  return Report::makePage({document, manager, findings, units});
}

/// The page of a document.
inline std::string report(const std::string& bytes, const Units& units = {},
                          const Documents::ReadOptions& options = {}) {
  Documents::Document document({"folder/file.xml", "", bytes}, options);
  return print(document, units);
}

inline std::string reportModel(const std::string& foundations, const Units& units = {}) {
  return report(makeModel(foundations), units);
}

/// The page of a document of the examples.
inline std::string reportExample(const std::string& name, const Units& units = {}) {
  Documents::Document document(Documents::readFile(KVFOUND_EXAMPLES_DIR "/" + name));
  return print(document, units);
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

/// The rows of the pictures of a part, "area" or "line"; the axes have a line of their own.
inline Texts listRows(const std::string& page, const std::string& part) {
  Texts rows;
  for (const std::string& line : listLines(readSection(page, part), "<g"))
    if (line.find("style=\"--i:") != line.npos) rows.push_back(line);
  return rows;
}

inline Texts listRowTexts(const std::string& page, const std::string& part) {
  return stripAll(listRows(page, part));
}

/// The rows of the table, each cell behind a stroke.
inline Texts listTableRows(const std::string& page) {
  Texts rows;
  for (const std::string& line :
       listLines(cut(readSection(page, "values"), "<tbody>", "</tbody>"), "<tr")) {
    std::string text;
    for (std::size_t at = line.find("<t", 1); at != line.npos;) {
      const std::size_t next = line.find("<t", at + 1);
      text += "|" + stripTags(line.substr(at, next - at));
      at = next;
    }
    rows.push_back(text);
  }
  return rows;
}

/// What a page tells at its top, as "Form|Legacy model" and so on.
inline Texts listFacts(const std::string& page) {
  return stripAll(listLines(cut(page, "<ul class=\"facts\">", "</ul>"), "<li>"));
}

}  // namespace ReportTest
