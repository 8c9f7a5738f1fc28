#pragma once

#include <cstddef>

namespace Fuzz {

/// How much memory is held at most, beyond what is held when it is made: by operator new, which the
/// target replaces, and by the XML parser.
class MemoryUse {
 public:
  MemoryUse();

  std::size_t getMost() const;

 private:
  std::size_t before;
};

/// Requires of what an input of `size` bytes made the workbench hold that it is at most twenty
/// times as much, and ten megabytes.
void requireLittle(const MemoryUse& use, std::size_t size);

}  // namespace Fuzz
