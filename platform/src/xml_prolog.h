#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "code_pages.h"
#include "xml_source.h"

/// Reads and checks what stands before the root of a document. It works on the text because the
/// parser skips most of this part.
namespace XmlProlog {

/// The encoding that the declaration at the start of `text` names; empty when there is none.
std::string findEncoding(std::string_view text);

/// Refuses, with KvXmlError, an XML declaration that ends within a quoted text, and a document type
/// declaration that is not well-formed. Does not interpret the declarations inside the document
/// type: they and their quoted texts only have to end. Returns the offset behind the document type;
/// 0 when there is none.
std::size_t check(const XmlSource::Text& text, const XmlSource::LineTable& lines,
                  const CodePages::CodePage* page);

}  // namespace XmlProlog
