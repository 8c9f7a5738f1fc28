#pragma once

#include <istream>
#include <streambuf>
#include <string_view>

namespace Files {

/// Reads bytes without copying them; they must outlive it.
class MemoryBuffer : public std::streambuf {
 public:
  explicit MemoryBuffer(std::string_view bytes) {
    char* const begin = const_cast<char*>(bytes.data());  // never written to
    setg(begin, begin, begin + bytes.size());
  }

 private:
  pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                   std::ios_base::openmode /*which*/) override {
    const off_type size = egptr() - eback();
    const off_type base = from == std::ios_base::beg   ? 0
                          : from == std::ios_base::cur ? gptr() - eback()
                                                       : size;
    const off_type place = base + offset;
    if (place < 0 || place > size) return off_type(-1);
    setg(eback(), eback() + place, egptr());
    return place;
  }

  pos_type seekpos(pos_type place, std::ios_base::openmode which) override {
    return seekoff(off_type(place), std::ios_base::beg, which);
  }
};

/// A stream of such bytes.
class MemoryStream : public std::istream {
 public:
  explicit MemoryStream(std::string_view bytes) : std::istream(nullptr), buffer(bytes) {
    rdbuf(&buffer);
  }

 private:
  MemoryBuffer buffer;
};

}  // namespace Files
