#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>

namespace Fuzz {

/// Choices made by the bytes of an input. Behind the last byte all choices are the first ones. A
/// choice looks at the low bits of its byte, so that inputs can be written in small letters: '`' is
/// the first choice, 'a' the second, up to 'o'.
class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : next(data), end(data + size) {}

  bool isEmpty() const { return next == end; }

  unsigned take() { return isEmpty() ? 0 : *next++; }

  /// 0 to `count` - 1, where `count` is 32 at most.
  std::size_t below(std::size_t count) { return (take() & 31U) % count; }

  bool flip() { return below(2) == 1; }

  template <class Choices>
  const auto& pick(const Choices& choices) {
    return choices[below(std::size(choices))];
  }

  /// The bytes up to the next '.', which is passed over, but no more than `most`.
  std::string takeText(std::size_t most) {
    std::string text;
    while (!isEmpty() && text.size() < most) {
      const char c = static_cast<char>(take());
      if (c == '.') break;
      text += c;
    }
    return text;
  }

 private:
  const std::uint8_t* next;
  const std::uint8_t* end;
};

}  // namespace Fuzz
