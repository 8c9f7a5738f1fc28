#pragma once

#include <memory>
#include <sstream>
#include <string>

#include "kv/xml_n.h"

/// Documents of the newer XML library from texts and as texts.
namespace TestSupport {

inline std::unique_ptr<KvXmlN::Document> parse(const std::string& text) {
  std::istringstream in(text);
  return std::make_unique<KvXmlN::Document>(in);
}

inline std::string print(const KvXmlN::Document& document) {
  std::ostringstream out;
  document.putToStream(out);
  return out.str();
}

}  // namespace TestSupport
