#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace KvXmlView {

/// Allocates objects in blocks, side by side. They never move and are deleted with their pool.
template <class Object>
class Pool {
 public:
  /// The first of `count` new objects in a row.
  Object* make(std::size_t count) {
    if (count > left) addBlock(count);
    Object* const made = next;
    next += count;
    left -= count;
    return made;
  }

 private:
  /// Small documents get small blocks, and large ones waste little.
  void addBlock(std::size_t least) {
    constexpr std::size_t greatestBlock = 4096;
    const std::size_t size = std::max(least, std::min(greatestBlock, blockSize));
    std::unique_ptr<Object[]> block(new Object[size]);
    blocks.push_back(std::move(block));
    next = blocks.back().get();
    left = size;
    blockSize = 2 * size;
  }

  std::vector<std::unique_ptr<Object[]>> blocks;
  Object* next = nullptr;  // the first unused object; `left` objects are unused
  std::size_t left = 0;
  std::size_t blockSize = 8;  // of the next block
};

}  // namespace KvXmlView
