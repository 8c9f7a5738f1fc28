#include <gtest/gtest.h>

#if __has_include(<iconv.h>)
#include <iconv.h>

#include <array>
#include <string>

#include "kv/xml_tree.h"
#include "platform/support.h"

namespace {

/// What the system knows of an encoding.
class System {
 public:
  explicit System(const std::string& encoding)
      : descriptor(iconv_open("UTF-8", encoding.c_str())) {}
  ~System() {
    if (isKnown()) iconv_close(descriptor);
  }
  System(const System&) = delete;
  System& operator=(const System&) = delete;

  bool isKnown() const { return descriptor != reinterpret_cast<iconv_t>(-1); }

  /// The character that a byte stands for, in UTF-8; empty when there is none.
  std::string convert(char byte) const {
    std::array<char, 8> result{};
    char* in = &byte;
    char* out = result.data();
    std::size_t inLeft = 1;
    std::size_t outLeft = result.size();
    iconv(descriptor, nullptr, nullptr, nullptr, nullptr);
    const bool isThere =
        iconv(descriptor, &in, &inLeft, &out, &outLeft) != static_cast<std::size_t>(-1);
    iconv(descriptor, nullptr, nullptr, &out, &outLeft);  // some pages wait for what combines
    return isThere ? std::string(result.data(), out) : std::string();
  }

 private:
  iconv_t descriptor;
};

unsigned decode(const std::string& utf8) {
  const auto byte = [&utf8](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
  if (utf8.size() == 1) return byte(0);
  if (utf8.size() == 2) return (byte(0) & 0x1Fu) << 6 | (byte(1) & 0x3Fu);
  return (byte(0) & 0x0Fu) << 12 | (byte(1) & 0x3Fu) << 6 | (byte(2) & 0x3Fu);
}

class CodePage : public testing::TestWithParam<const char*> {};

constexpr const char* encodings[] = {
    "ISO-8859-1",   "ISO-8859-2",   "ISO-8859-3",   "ISO-8859-4",   "ISO-8859-5",   "ISO-8859-6",
    "ISO-8859-7",   "ISO-8859-8",   "ISO-8859-9",   "ISO-8859-10",  "ISO-8859-11",  "ISO-8859-13",
    "ISO-8859-14",  "ISO-8859-15",  "ISO-8859-16",  "windows-1250", "windows-1251", "windows-1252",
    "windows-1253", "windows-1254", "windows-1255", "windows-1256", "windows-1257", "windows-1258",
    "KOI8-R",       "KOI8-U"};

}  // namespace

// What a reference to the character of each byte means is that byte again.
TEST_P(CodePage, HasTheCharactersThatTheSystemKnows) {
  const System system(GetParam());
  if (!system.isKnown()) GTEST_SKIP() << "the system does not know " << GetParam();
  for (int code = 0x80; code <= 0xFF; ++code) {
    const char byte = static_cast<char>(code);
    const std::string character = system.convert(byte);
    if (character.empty()) continue;
    const auto tree =
        PlatformTest::parse("<?xml version='1.0' encoding='" + std::string(GetParam()) +
                            "'?><a b='&#" + std::to_string(decode(character)) + ";'/>");
    EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), std::string(1, byte))
        << code;
  }
}

INSTANTIATE_TEST_SUITE_P(Declared, CodePage, testing::ValuesIn(encodings));

#endif
