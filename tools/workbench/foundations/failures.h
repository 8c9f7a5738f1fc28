#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "found/foundation.h"

/// The words for failure modes.
namespace Failures {

/// A mode that the library knows, which documents hold as its word or as its number.
struct Mode {
  Found::Foundation::Failure value;
  std::string_view word;
  char letter;         // where room is short
  const char* arrows;  // in UTF-8: they pull at a support or push it
};

constexpr Mode modes[] = {
    {Found::Foundation::Tension, "tension", 'T', "\xE2\x86\x90\xE2\x86\x92"},
    {Found::Foundation::None, "none", '\0', ""},
    {Found::Foundation::Compression, "compression", 'C', "\xE2\x86\x92\xE2\x86\x90"}};

/// Null for a number that is no mode, which a legacy document may hold.
const Mode* find(Found::Foundation::Failure failure);
/// Null for a text that is none of the words.
const Mode* find(std::string_view word);

/// What getWord() gives for it; none for other texts.
std::optional<Found::Foundation::Failure> read(std::string_view text);

/// The word of a mode, or the number of what is none.
std::string getWord(Found::Foundation::Failure failure);

}  // namespace Failures
