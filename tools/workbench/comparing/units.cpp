#include "comparing/units.h"

#include <fmt/format.h>

#include "documents/units.h"

namespace Comparing {
namespace {

using Documents::Document;

/// A model says how its units are called, but nobody relies on that.
std::optional<UnitNote> describeSilent(const Document& naming, const Document& silent) {
  const Units units = naming.getUnits();
  if (units.force.empty()) return std::nullopt;
  return UnitNote{false, naming,
                  fmt::format("its units are {} and {}; {} names none, and is taken for the same",
                              units.force, units.length, silent.getShownPath())};
}

}  // namespace

std::optional<UnitNote> compareUnits(const Document& document, const Document& other) {
  Documents::chooseUnits(document, other.getUnits());
  const Units named = document.getLabels();
  const Units ofOther = other.getLabels();
  if (named.force.empty()) return describeSilent(other, document);
  if (ofOther.force.empty()) return describeSilent(document, other);
  if (named == ofOther) return std::nullopt;
  return UnitNote{
      true, document,
      fmt::format("its units are {} and {}, but those of {} are {} and {}; nothing is converted",
                  named.force, named.length, other.getShownPath(), ofOther.force, ofOther.length)};
}

}  // namespace Comparing
