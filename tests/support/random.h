#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>

#include "found/foundation.h"

/// Random inputs that a seed repeats on every machine.
namespace TestSupport {

/// Choices. The standard fixes the numbers of the engine but not those of a distribution, so none
/// is used. Draw once per statement: the compiler chooses the order within an expression.
class Random {
 public:
  explicit Random(unsigned seed) : engine(seed) {}

  /// 0 to `end` - 1.
  std::size_t below(std::size_t end) { return static_cast<std::size_t>(engine() % end); }

  /// Any of all that 32 bits can be.
  std::uint32_t bits() { return static_cast<std::uint32_t>(engine()); }

  /// `first` to `last`, of which there must be fewer than an int can count.
  int between(int first, int last) {
    return first + static_cast<int>(below(static_cast<std::size_t>(last - first) + 1));
  }

  bool oneIn(std::size_t n) { return below(n) == 0; }

  template <class Choices>
  const auto& pick(const Choices& choices) {
    return *std::next(std::begin(choices), static_cast<std::ptrdiff_t>(below(std::size(choices))));
  }

 private:
  std::mt19937 engine;
};

/// A new foundation of this number and name; its values, few different ones, may be any of those
/// that it can have.
inline std::unique_ptr<Found::Foundation> makeFoundation(Random& random, int number,
                                                         const std::string& name) {
  using Found::Foundation;
  const Foundation::Failure failures[] = {Foundation::None, Foundation::Tension,
                                          Foundation::Compression,
                                          static_cast<Foundation::Failure>(7)};
  auto made = std::make_unique<Foundation>();
  made->setNumber(number);
  made->setName(name);
  const auto setVector = [&](void (Foundation::*setter)(const KvVector3D*)) {
    if (random.oneIn(2)) return;
    KvVector3D v;
    v.x = random.between(-1, 2);
    v.z = random.between(0, 1) * 0.1;
    (made.get()->*setter)(&v);
  };
  setVector(&Foundation::setDispArea);
  setVector(&Foundation::setDispLine);
  setVector(&Foundation::setRotLine);
  made->setFailAreaZ(random.pick(failures));
  made->setFailLineX(random.pick(failures));
  made->setFailLineY(random.pick(failures));
  made->setFailLineZ(random.pick(failures));
  made->setFactorArea(random.between(-1, 1));
  made->setFactorLine(random.between(-1, 1));
  made->setFailPossible(random.oneIn(2));
  made->setGenerated(random.oneIn(3));
  made->setChanged(random.oneIn(2));
  return made;
}

}  // namespace TestSupport
