#pragma once

#include <iosfwd>

#include "found/foundation_manager.h"
#include "foundations/units.h"
#include "terminal.h"

/// How the foundations of a model are shown.
namespace ShowFormats {

/// For people: lines of at most `width` places.
void printTable(const Found::FoundationManager& manager, const Units& units, std::ostream& out,
                std::size_t width, const Terminal::Painter& painter);

}  // namespace ShowFormats
