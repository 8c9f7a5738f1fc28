#include "support/allocation_faults.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>

namespace Found::Tests {
namespace {

std::atomic<long> liveBlocks{0};
std::atomic<int> allocationsUntilFailure{0};  // 0: none fails
std::atomic<ReleaseLog*> activeLog{nullptr};

bool isFailureDue() {
  const int left = allocationsUntilFailure;
  if (left == 0) return false;
  allocationsUntilFailure = left - 1;
  return left == 1;
}

/// Stands before each block.
struct alignas(std::max_align_t) Header {
  std::size_t size;
};

void* allocate(std::size_t size) noexcept {
  if (isFailureDue()) return nullptr;
  auto* const header = static_cast<Header*>(std::malloc(sizeof(Header) + size));
  if (header == nullptr) return nullptr;
  ++liveBlocks;
  header->size = size;
  return header + 1;
}

void* allocateOrThrow(std::size_t size) {
  void* const block = allocate(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

/// Whoever still uses what stood here shall not find it. Volatile, or the compiler leaves it out.
/// Not sanitized, since the compiler guards the number that it puts before the elements of an
/// array.
[[gnu::no_sanitize_address]] void overwrite(void* block, std::size_t size) noexcept {
  volatile auto* const bytes = static_cast<unsigned char*>(block);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = 0xDD;
}

void release(void* block) noexcept {
  if (block == nullptr) return;
  if (ReleaseLog* const log = activeLog) log->note(block);
  --liveBlocks;
  Header* const header = static_cast<Header*>(block) - 1;
  overwrite(block, header->size);
  std::free(header);
}

}  // namespace

long countLiveBlocks() { return liveBlocks; }

FailingAllocation::FailingAllocation(int countdown) { allocationsUntilFailure = countdown; }

FailingAllocation::~FailingAllocation() { allocationsUntilFailure = 0; }

bool FailingAllocation::hasFailed() const { return allocationsUntilFailure == 0; }

ReleaseLog::ReleaseLog(const std::vector<const void*>& watched) {
  // As integers: the value of a pointer to a deleted object must not be read.
  for (const void* object : watched)
    entries.push_back({reinterpret_cast<std::uintptr_t>(object), 0});
  activeLog = this;
}

ReleaseLog::~ReleaseLog() { activeLog = nullptr; }

std::vector<int> ReleaseLog::getReleased() const {
  std::vector<int> places;
  for (int order = 1; order <= released; ++order)
    for (std::size_t i = 0; i < entries.size(); ++i)
      if (entries[i].order == order) places.push_back(static_cast<int>(i));
  return places;
}

void ReleaseLog::note(const void* block) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(block);
  for (Entry& entry : entries) {
    if (entry.address != address || entry.order != 0) continue;
    entry.order = ++released;
    return;
  }
}

}  // namespace Found::Tests

using Found::Tests::allocate;
using Found::Tests::allocateOrThrow;
using Found::Tests::release;

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
