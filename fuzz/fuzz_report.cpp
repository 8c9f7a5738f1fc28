#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "any_document.h"
#include "memory_use.h"
#include "report/bars.h"
#include "report/page.h"
#include "report/subject.h"
#include "report/table.h"
#include "text/utf8.h"

// The report of any document.

namespace {

using Documents::Document;
using Fuzz::require;
using Report::Part;

std::size_t count(const std::string& page, const std::string& part) {
  std::size_t number = 0;
  for (std::size_t at = page.find(part); at != page.npos; at = page.find(part, at + 1)) ++number;
  return number;
}

/// The rows of all tables: one of a foundation for each of its parts, or for having none.
std::size_t countRows(const std::vector<Found::Foundation*>& foundations) {
  if (foundations.size() > Report::mostRows) return 0;
  std::size_t rows = 0;
  for (Found::Foundation* const foundation : foundations)
    for (const Part part : {Part::area, Part::line, Part::none})
      if (Report::hasPart(part, *foundation)) ++rows;
  return rows;
}

/// How many lines hold all values as text; none where rows do.
std::size_t countLines(const std::string& page) {
  const std::string start = "aria-labelledby=\"values\">\n";
  const std::size_t from = page.find(start);
  if (from == page.npos) return 0;
  return count(page.substr(from + start.size(), page.find("</pre>", from) - from - start.size()),
               "\n");
}

/// Whatever a document holds, it adds no element, no script and no line to the page.
void checkPage(const std::string& page, const std::vector<Found::Foundation*>& foundations,
               std::size_t findings) {
  require(Utf8::isValid(page), "a page is in UTF-8", page);
  const std::string end = "</html>\n";
  require(page.size() > end.size() && page.compare(page.size() - end.size(), end.size(), end) == 0,
          "a page is whole", page);
  require(count(page, "<script") == (foundations.empty() ? 0U : 1U),
          "a page has its own script only", page);
  const std::string heading = "<th scope=\"row\">";  // of a row; those of counts start with it
  require(count(page, heading) - count(page, "<tr>" + heading) == countRows(foundations),
          "tables have a row for each foundation and part", page);
  require(countLines(page) == (foundations.size() > Report::mostRows ? foundations.size() + 1 : 0),
          "the text has a line for each foundation and one of names", page);
  const std::size_t told = count(page, "<li><span class=\"place\">");
  constexpr std::size_t most = 1000;  // of very many, the others are counted
  require(told == findings || (findings > most && told > most),
          "a page has a line for each finding", page);
  const auto isControl = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7F;
  };
  require(std::none_of(page.begin(), page.end(), isControl), "a page has no control characters",
          page);
}

void report(Document& document) {
  const Report::Subject subject(document);
  for (const Units& units : {Units{}, Units{"kN", "m"}}) {
    const Report::Content content = subject.tell({units, Report::UnitsFrom::user, {}}, {""});
    checkPage(Report::makePage(content), content.manager.getFoundations(),
              content.findings.list().size());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes = Fuzz::takeAll(data, size);
  const Fuzz::MemoryUse use;
  const auto document = Fuzz::open(bytes);
  if (document != nullptr) report(*document);
  Fuzz::requireLittle(use, size);
  return 0;
}
