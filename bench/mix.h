#pragma once

#include <cstddef>
#include <memory>

namespace Found {
class Foundation;
class FoundationManager;
}  // namespace Found

/// Foundations as models have them, always the same: areas, lines and both, some with a rotation
/// or a failure, names of several lengths, round values and values of many digits.
namespace Mix {

enum class Parts {
  any,
  one  ///< area or line: both would be two elements of one number in a current exchange document
};

/// The one with the number `i` + 1.
std::unique_ptr<Found::Foundation> make(std::size_t i, Parts parts);

void fill(Found::FoundationManager& manager, std::size_t n, Parts parts);

}  // namespace Mix
