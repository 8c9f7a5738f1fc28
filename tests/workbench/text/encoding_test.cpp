#include "text/encoding.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Encoding::Kind;

TEST(Encoding, IsToldByTheBytes) {
  EXPECT_EQ(Encoding::recognise(""), Kind::ascii);
  EXPECT_EQ(Encoding::recognise("a\x7F"), Kind::ascii);
  EXPECT_EQ(Encoding::recognise("a\xC3\xA4"), Kind::utf8);
  EXPECT_EQ(Encoding::recognise("\xE4"), Kind::codePage);
  EXPECT_EQ(Encoding::recognise("\xC3\xA4 \xE4"), Kind::codePage);
}

TEST(Encoding, OfUtf8IsLeftAsItIs) {
  EXPECT_EQ(Encoding::toUtf8("a\xC3\xA4"), "a\xC3\xA4");
  EXPECT_EQ(Encoding::toUtf8(""), "");
}

TEST(Encoding, OfOtherBytesIsTakenAsWindows1252) {
  EXPECT_EQ(Encoding::toUtf8("a\xE4\xFF"), "a\xC3\xA4\xC3\xBF");
  EXPECT_EQ(Encoding::toUtf8("\x80\x9F\xA0"), "\xE2\x82\xAC\xC5\xB8\xC2\xA0");
  EXPECT_EQ(Encoding::toUtf8("\x81\xE4"), "\xC2\x81\xC3\xA4");  // not defined there
}

TEST(Encoding, OfADocumentIsThatOfItsNewNames) {
  EXPECT_EQ(Encoding::convert("a\xE4", Kind::utf8), "a\xC3\xA4");
  EXPECT_EQ(Encoding::convert("a\xC3\xA4", Kind::utf8), "a\xC3\xA4");
  EXPECT_EQ(Encoding::convert("a\xC3\xA4\xE2\x82\xAC", Kind::codePage), "a\xE4\x80");
  EXPECT_EQ(Encoding::convert("a\xE4", Kind::codePage), "a\xE4");
  EXPECT_EQ(Encoding::convert("a\xE4", Kind::ascii), "a\xE4");
  EXPECT_EQ(Encoding::convert("a\xC3\xA4", Kind::ascii), "a\xC3\xA4");
}

TEST(Encoding, LosesWhatTheCodePageLacks) {
  EXPECT_EQ(Encoding::convert("\xE2\x89\xA5\xC4\x80 5", Kind::codePage), "?? 5");
}

TEST(Encoding, OfEveryByteComesBack) {
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    const std::string name = "\xFF" + std::string(1, static_cast<char>(byte));
    EXPECT_EQ(Encoding::convert(Encoding::toUtf8(name), Kind::codePage), name) << byte;
  }
}

}  // namespace
