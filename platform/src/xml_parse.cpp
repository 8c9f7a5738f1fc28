#include "xml_parse.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "xml_inspection.h"
#include "xml_plain.h"
#include "xml_prolog.h"
#include "xml_raw_check.h"
#include "xml_source.h"
#include "xml_unclosed.h"
#include "xml_white_space.h"

namespace XmlParse {
namespace {

using XmlSource::fail;
using XmlSource::LineTable;
using XmlSource::Position;

/// The error that the parser reports for a text, and its place.
struct Fault {
  pugi::xml_parse_status status;
  std::size_t offset;
};

// The status of an element that is still open at the end; the parser calls it a wrong end tag.
constexpr pugi::xml_parse_status notClosed = pugi::status_no_document_element;

/// When the parser fails at the end of `text`, something is not closed, and the fault is where that
/// begins. `text` is missing when the stream cannot be read again.
Fault findFault(const std::optional<XmlSource::Text>& text, std::size_t contentStart,
                pugi::xml_parse_status status, std::size_t end) {
  const std::size_t unclosed =
      text && text->size == end ? XmlUnclosed::find(text->get(), contentStart) : XmlUnclosed::none;
  const std::size_t place = unclosed != XmlUnclosed::none ? unclosed : end;
  if (status != pugi::status_end_element_mismatch) return {status, place};
  const bool isEndTag = place < end && text->get().compare(place, 2, "</") == 0;
  return {isEndTag ? pugi::status_bad_end_element : notClosed, place};
}

const char* describe(pugi::xml_parse_status status) {
  switch (status) {
    case notClosed:
      return "the text ends before its last element is closed";
    case pugi::status_end_element_mismatch:
      return "this end tag does not close the element that is open";
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
      return "this is not well-formed";
  }
}

void keepShapes(const char* text, const std::deque<XmlPlain::Tag>& tags) {
  for (const XmlPlain::Tag& tag : tags) setShapeNumber(text + tag.offset + 1, tag.shape);
}

}  // namespace

KvXmlPosition Origin::find(const char* name, std::size_t before) const {
  if (!contains(name)) return {};  // a name that was set later stands elsewhere in memory
  const Position position = lines.find(static_cast<std::size_t>(name - begin) - before);
  return {position.line, position.column};
}

Parsed parse(std::istream& in, pugi::xml_document& document, Root root) {
  XmlSource::Text text = XmlSource::read(in);
  LineTable lines(text);

  Parsed parsed;
  parsed.isAscii = XmlRawCheck::check(text, lines);
  parsed.encoding = XmlProlog::findEncoding(text.get());
  if (parsed.encoding.empty()) parsed.encoding = XmlProlog::findEncoding(text.before);
  parsed.page = CodePages::find(parsed.encoding);
  const std::size_t contentStart = XmlProlog::check(text, lines, parsed.page);
  const auto plainTags = XmlPlain::findTags(text.data.get(), parsed.shapes);
  parsed.mayHoldText = !plainTags && XmlRawCheck::mayHoldText(text.get());

  // The parser resolves and converts nothing. It keeps text at the top level, as in a fragment, so
  // that this can be refused, and white space that is all of an element's content.
  const unsigned options =
      pugi::parse_fragment | pugi::parse_declaration | pugi::parse_doctype | pugi::parse_pi |
      pugi::parse_comments | pugi::parse_cdata |
      (parsed.mayHoldText ? pugi::parse_ws_pcdata : pugi::parse_ws_pcdata_single);
  char* const begin = text.data.get();
  const std::size_t size = text.size;
  const std::streamoff streamOffset = text.offset;
  std::memset(begin + size, '\n', XmlSource::Text::margin);
  const pugi::xml_parse_result result = document.load_buffer_inplace_own(
      text.data.release(), size + XmlSource::Text::margin, options, pugi::encoding_utf8);
  if (result.status == pugi::status_out_of_memory) throw std::bad_alloc();
  if (!result) {
    const auto found = static_cast<std::size_t>(result.offset);
    const Fault fault = found < size ? Fault{result.status, found}
                                     : findFault(XmlSource::readAgain(in, streamOffset),
                                                 contentStart, result.status, size);
    fail(describe(fault.status), lines.find(fault.offset));
  }
  if (plainTags) keepShapes(begin, *plainTags);
  XmlInspection::inspect(document, begin, lines, parsed, plainTags.has_value());
  if (parsed.mayHoldText) XmlWhiteSpace::drop(document);
  const bool needsRoot = root == Root::required || contentStart > 0;  // behind a document type
  if (needsRoot && !document.document_element())
    fail("the document has no root element", lines.find(size));
  parsed.origin = Origin(begin, size, std::move(lines));
  return parsed;
}

}  // namespace XmlParse
