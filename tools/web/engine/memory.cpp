#include <algorithm>
#include <cstddef>

namespace {

constexpr std::size_t pageSize = 65536;
constexpr std::size_t leastStep = std::size_t{16} * 1024 * 1024 / pageSize;

bool grow(std::size_t pages) {
  return __builtin_wasm_memory_grow(0, pages) != static_cast<std::size_t>(-1);
}

}  // namespace

extern "C" int resizeHeap(std::size_t size) __asm__("__wrap_emscripten_resize_heap");

/// Called where memory is to have this size, in place of Emscripten's own function, which grows it
/// by no more. Browsers collect garbage when memory has grown, which takes longer than what it grew
/// for.
int resizeHeap(std::size_t size) {
  const std::size_t pages = __builtin_wasm_memory_size(0);
  const std::size_t missing = (size - 1) / pageSize + 1 - pages;
  return grow(std::max({missing, leastStep, pages / 4})) || grow(missing) ? 1 : 0;
}
