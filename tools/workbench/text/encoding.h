#pragma once

#include <string>

/// How documents hold characters: in UTF-8, or in an 8-bit code page, taken as windows-1252.
namespace Encoding {

enum class Kind { ascii, utf8, codePage };  // the first is both of the others

Kind recognise(const std::string& text);

/// `name`, of any kind, in UTF-8.
std::string toUtf8(const std::string& name);

/// `name`, of any kind, in the encoding of a document of this kind; '?' for a character that the
/// code page lacks. For a document of plain ASCII it stays as it is.
std::string convert(const std::string& name, Kind kind);

}  // namespace Encoding
