#pragma once

#include <optional>
#include <string>

#include "documents/layout.h"
#include "documents/vocabulary.h"
#include "found/foundation.h"
#include "text/charset.h"

/// How documents write the values of foundations.
namespace Spelling {

/// The value of the attribute `word` of a foundation, in UTF-8; none for an absent stiffness.
std::optional<std::string> spell(const Documents::AttributeWord& word,
                                 Found::Foundation& foundation);

/// A new element as the library would write it, in the encoding of the document.
std::string makeElement(const Documents::ElementWord& word, Found::Foundation& foundation,
                        const Documents::TagStyle& style, const Charset& charset);

}  // namespace Spelling
