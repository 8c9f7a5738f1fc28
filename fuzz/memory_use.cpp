#include "memory_use.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>
#include <string>

#include <pugixml.hpp>

#include "property.h"

namespace {

std::size_t held = 0;
std::size_t most = 0;

void* allocate(std::size_t size) noexcept {
  void* const block = std::malloc(size > 0 ? size : 1);
  if (block == nullptr) return nullptr;
  held += malloc_usable_size(block);
  most = std::max(most, held);
  return block;
}

void* allocateOrThrow(std::size_t size) {
  void* const block = allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void release(void* block) noexcept {
  if (block == nullptr) return;
  held -= malloc_usable_size(block);
  std::free(block);
}

/// Lets the XML parser have its memory from where everything else has it.
struct ParserMemory {
  ParserMemory() { pugi::set_memory_management_functions(allocate, release); }
};
const ParserMemory parserMemory;

}  // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { release(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { release(block); }

namespace Fuzz {

MemoryUse::MemoryUse() : before(held) { most = held; }

std::size_t MemoryUse::getMost() const { return most - before; }

void requireLittle(const MemoryUse& use, std::size_t size) {
  constexpr std::size_t megabyte = 1000000;
  require(use.getMost() <= 20 * size + 10 * megabyte, "a document takes little memory",
          std::to_string(use.getMost()) + " bytes of memory for one of " + std::to_string(size));
}

}  // namespace Fuzz
