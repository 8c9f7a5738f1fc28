#pragma once

#include <iosfwd>

#include "found/foundation_manager.h"
#include "terminal.h"

/// The forms in which the foundations of a model are shown.
namespace ShowFormats {

/// For people: lines of at most `width` places.
void printTable(const Found::FoundationManager& manager, std::ostream& out, std::size_t width,
                const Terminal::Painter& painter);

/// For programs: every field under its name, numbers that read back as the same double.
void printJson(const Found::FoundationManager& manager, std::ostream& out);
void printCsv(const Found::FoundationManager& manager, std::ostream& out);

}  // namespace ShowFormats
