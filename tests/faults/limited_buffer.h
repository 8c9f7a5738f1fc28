#pragma once

#include <algorithm>
#include <cstddef>
#include <streambuf>
#include <string>

namespace FaultTest {

/// Takes so many bytes and refuses the rest, as a full device does. Needs no memory for what it
/// takes.
class LimitedBuffer : public std::streambuf {
 public:
  explicit LimitedBuffer(std::size_t limit) : room(limit) { taken.reserve(limit); }

  const std::string& get() const { return taken; }

 protected:
  int_type overflow(int_type c) override {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    if (taken.size() == room) return traits_type::eof();
    taken += traits_type::to_char_type(c);
    return c;
  }

  std::streamsize xsputn(const char* text, std::streamsize size) override {
    const std::size_t count = std::min(static_cast<std::size_t>(size), room - taken.size());
    taken.append(text, count);
    return static_cast<std::streamsize>(count);
  }

 private:
  std::size_t room;
  std::string taken;
};

}  // namespace FaultTest
