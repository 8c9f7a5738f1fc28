#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "code_pages.h"
#include "xml_source.h"

/// What stands before the root of a document, looked at in its text, since the parser passes most
/// of it by.
namespace XmlProlog {

/// The encoding that the declaration at the start of `text` names; empty when there is none.
std::string findEncoding(std::string_view text);

/// Refuses, with KvXmlError, an XML declaration that ends within a quoted text, and a document type
/// declaration that is not well-formed. What the declarations in that say is not looked into: they
/// only have to end, and their quoted texts, too. Returns where in the text the document type ends;
/// 0 when there is none.
std::size_t check(const XmlSource::Text& text, const XmlSource::LineTable& lines,
                  const CodePages::CodePage* page);

}  // namespace XmlProlog
