#include "xml_parse.h"

#include <algorithm>
#include <functional>
#include <new>
#include <string>
#include <utility>

#include "xml_inspection.h"
#include "xml_raw_check.h"
#include "xml_source.h"

namespace XmlParse {
namespace {

using XmlSource::fail;
using XmlSource::LineTable;
using XmlSource::Position;

std::string describe(const pugi::xml_parse_result& result, bool atEnd) {
  switch (result.status) {
    case pugi::status_end_element_mismatch:
      return atEnd ? "the text ends before its last element is closed"
                   : "this end tag does not close the element that is open";
    case pugi::status_bad_attribute:
      return "this attribute is malformed or not closed";
    case pugi::status_bad_start_element:
      return "this start tag is malformed or not closed";
    case pugi::status_bad_end_element:
      return "this end tag is malformed or not closed";
    case pugi::status_bad_comment:
      return "this comment is malformed or not closed";
    case pugi::status_bad_cdata:
      return "this CDATA section is malformed or not closed";
    case pugi::status_bad_doctype:
      return "this document type declaration is malformed or not closed";
    case pugi::status_bad_pi:
      return "this processing instruction is malformed or not closed";
    case pugi::status_unrecognized_tag:
      return "a tag cannot start like this";
    default:
      return result.description();
  }
}

}  // namespace

KvXmlPosition Origin::find(const char* name, std::size_t before) const {
  // A name that was set later stands elsewhere in memory.
  const std::less<> isBefore;
  if (begin == nullptr || isBefore(name, begin) || !isBefore(name, begin + size)) return {};
  const Position position = lines.find(static_cast<std::size_t>(name - begin) - before);
  return {position.line, position.column};
}

Parsed parse(std::istream& in, pugi::xml_document& document, Root root) {
  XmlSource::Text text = XmlSource::read(in);
  LineTable lines(text);
  const XmlRawCheck::MarkupCounts counts = XmlRawCheck::check(text, lines);

  // The encoding is named so that no byte is converted. Text at the top level is kept as in a
  // fragment so that it can be refused. White space is kept where it is all that an element holds,
  // and beside CDATA, where it is part of a text, all of it is.
  const unsigned options = pugi::parse_full | pugi::parse_fragment |
                           (counts.hasCdata ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
  const char* const begin = text.data.get();
  const std::size_t size = text.size;
  const pugi::xml_parse_result result = document.load_buffer_inplace_own(
      text.data.release(), size + XmlSource::Text::margin, options, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  if (!result) {
    const std::size_t offset = std::min(static_cast<std::size_t>(result.offset), size);
    fail(describe(result, offset == size), lines.find(offset));
  }
  XmlInspection::inspect(document, begin, lines, counts);
  if (root == Root::required && !document.document_element())
    fail("the document has no root element", lines.find(size));
  return {counts.hasCdata ? Layout::kept : Layout::free, Origin(begin, size, std::move(lines))};
}

}  // namespace XmlParse
