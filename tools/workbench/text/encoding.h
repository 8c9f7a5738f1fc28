#pragma once

#include <string>

/// How documents hold characters: in UTF-8, or in an 8-bit code page, taken as windows-1252.
namespace Encoding {

enum class Kind { ascii, utf8, codePage };  // the first is both of the others

Kind recognise(const std::string& text);

/// `name`, of any kind, in UTF-8.
std::string toUtf8(const std::string& name);

/// `name`, of any kind, as it must stand in a document of this kind; '?' for a character that the
/// code page lacks. A document of plain ASCII takes it as it is.
std::string convert(const std::string& name, Kind kind);

}  // namespace Encoding
