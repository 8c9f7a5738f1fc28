#pragma once

#include <string>

/// Text in an HTML page.
namespace Report {

/// `text`, in UTF-8, as it stands between tags or in an attribute: it opens and closes neither.
std::string escape(const std::string& text);

/// A name from a document, which is seen whatever it consists of, escaped.
std::string escapeName(const std::string& name);

}  // namespace Report
