#pragma once

#include "documents/document.h"
#include "foundations/units.h"

namespace Documents {

/// The units that the document names, or else those that are given. Throws UserError where it names
/// others: labels convert nothing.
Units chooseUnits(const Document& document, const Units& given);

}  // namespace Documents
