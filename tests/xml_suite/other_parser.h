#pragma once

#include <optional>
#include <string>

/// libxml2 as a second opinion on documents. It loads nothing: no external entity, no external
/// document type, nothing from a network.
namespace XmlSuite {

/// What a document says, one item a line, in document order: elements with their attributes, texts
/// (CDATA sections are part of them), comments, processing instructions, the document type. White
/// space between elements that hold no text of their own does not count.
using Infoset = std::string;

/// None when libxml2 does not take the text for well-formed.
std::optional<Infoset> readInfoset(const std::string& text);

/// Of the infoset only elements and attributes, without namespace declarations, whose place among
/// the attributes libxml2 does not keep. None when libxml2 does not take the text for well-formed,
/// or when its encoding is not UTF-8, so that its bytes are not those that libxml2 gives.
std::optional<std::string> readElements(const std::string& text);

}  // namespace XmlSuite
