#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

/// The test program replaces operator new and operator delete, so that a test can let memory run
/// out at a chosen allocation, count what is still held, and see which objects were deleted.
namespace Found::Tests {

/// Blocks from operator new that are not deleted yet.
long countLiveBlocks();

/// While it lives, the `countdown`-th allocation from its construction throws std::bad_alloc; those
/// before and after it succeed.
class FailingAllocation {
 public:
  explicit FailingAllocation(int countdown);
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;
  ~FailingAllocation();

  /// True when that allocation was asked for.
  bool hasFailed() const;
};

/// Runs `call` with its `n`-th allocation failing (1 is the first). True when it threw
/// std::bad_alloc, false when it ended, normally because it makes fewer allocations.
template <class Call>
bool runsOutOfMemory(int n, const Call& call) {
  const FailingAllocation failing(n);
  try {
    call();
  } catch (const std::bad_alloc&) {
    return true;
  }
  return false;
}

/// Records which of the watched objects are deleted while it lives, in the order of deletion.
/// There is one log at a time.
class ReleaseLog {
 public:
  explicit ReleaseLog(const std::vector<const void*>& watched);
  ReleaseLog(const ReleaseLog&) = delete;
  ReleaseLog& operator=(const ReleaseLog&) = delete;
  ~ReleaseLog();

  /// Places in the watched list, counted from 0.
  std::vector<int> getReleased() const;

  /// Called by operator delete; allocates nothing.
  void note(const void* block) noexcept;

 private:
  struct Entry {
    std::uintptr_t address = 0;
    int order = 0;  // 0 while not deleted
  };
  std::vector<Entry> entries;
  int released = 0;
};

}  // namespace Found::Tests
