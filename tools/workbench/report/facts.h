#pragma once

#include <string>

#include "report/content.h"

namespace Report {

/// Adds what a page tells at its top: of the document, of what is shown of it, of the largest
/// stiffness of each kind, and how many findings stand below.
void appendFacts(const Content& content, std::size_t findings, std::string& page);

/// "12", or "3 of 12" of a selection.
std::string countShown(const Content& content);

}  // namespace Report
