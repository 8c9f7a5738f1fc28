#include "mix.h"

#include <cstdint>

#include "found/foundation_manager.h"

namespace Mix {
namespace {

using Found::Foundation;

/// Scattered, so that no processor guesses what comes next.
std::uint32_t scatter(std::size_t i) {
  std::uint32_t bits = static_cast<std::uint32_t>(i) * 2654435761U;
  bits ^= bits >> 15;
  bits *= 2246822519U;
  return bits ^ (bits >> 13);
}

std::string makeName(std::size_t i, std::uint32_t chance) {
  constexpr const char* beginnings[] = {"Found", "Soil ", "Strip footing, axis ",
                                        "Raft on stiff clay "};
  return beginnings[chance % 4] + std::to_string(i + 1);
}

/// A third of all values was converted from other units and has as many digits as a double takes.
KvVector3D makeVector(std::uint32_t chance, double unit) {
  const double vertical = unit * (1 + chance % 977) * (chance % 3 == 0 ? 0.3048 / 0.4536 : 1.0);
  return KvVector3D(vertical / 10, vertical / 10, vertical);
}

/// Three of ten fail.
Foundation::Failure makeFailure(std::uint32_t chance) {
  switch (chance % 10) {
    case 0:
    case 1:
      return Foundation::Tension;
    case 2:
      return Foundation::Compression;
    default:
      return Foundation::None;
  }
}

void addArea(Foundation& foundation, std::uint32_t chance) {
  const KvVector3D disp = makeVector(chance, 12.5);
  foundation.setDispArea(&disp);
  foundation.setFailAreaZ(makeFailure(chance >> 4));
  foundation.setFactorArea(0.1);
}

void addLine(Foundation& foundation, std::uint32_t chance) {
  const KvVector3D disp = makeVector(chance, 100.0);
  foundation.setDispLine(&disp);
  if (chance % 2 == 0) {
    const KvVector3D rot(disp.z / 4, 0.0, 0.0);
    foundation.setRotLine(&rot);
  }
  foundation.setFailLineY(makeFailure(chance >> 6));
  foundation.setFailLineZ(makeFailure(chance >> 8));
  foundation.setFactorLine(0.25);
}

}  // namespace

std::unique_ptr<Foundation> make(std::size_t i, Parts parts) {
  const std::uint32_t chance = scatter(i);
  const bool hasBoth = parts == Parts::any && chance % 5 == 0;
  const bool isArea = chance % 9 < 5;
  auto foundation = std::make_unique<Foundation>();
  foundation->setNumber(static_cast<int>(i) + 1);
  foundation->setName(makeName(i, chance >> 3));
  foundation->setGenerated((chance >> 5) % 4 == 0);
  if (hasBoth || isArea) addArea(*foundation, chance >> 7);
  if (hasBoth || !isArea) addLine(*foundation, chance >> 11);
  return foundation;
}

void fill(Found::FoundationManager& manager, std::size_t n, Parts parts) {
  for (std::size_t i = 0; i < n; ++i) manager.add(make(i, parts));
}

}  // namespace Mix
