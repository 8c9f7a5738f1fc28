#pragma once

#include <algorithm>
#include <string>

#include "cli/files.h"

/// `xml` with quotes for its apostrophes, which are shorter to write in a test.
inline std::string putQuotes(std::string xml) {
  std::replace(xml.begin(), xml.end(), '\'', '"');
  return xml;
}

/// The path of a file with this document, put in quotes.
inline std::string makeXmlFile(const std::string& xml) {
  return makeFile("in.xml", putQuotes(xml));
}

/// A legacy model that holds these elements, put in quotes, from its third line on.
inline std::string makeDocument(const std::string& elements) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n" + putQuotes(elements) + "\n</SMOD>\n";
}

/// The path of a file with a legacy model of these foundations.
inline std::string makeModelFile(const std::string& foundations) {
  return makeFile("model.xml", makeDocument("<FOUNDATIONS>" + foundations + "</FOUNDATIONS>"));
}
