#include "files/memory_stream.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Files::MemoryStream;

std::string readLine(std::istream& in) {
  std::string line;
  std::getline(in, line);
  return line;
}

TEST(MemoryStream, ReadsToTheEnd) {
  MemoryStream in("one\ntwo");

  EXPECT_EQ(readLine(in), "one");
  EXPECT_FALSE(in.eof());
  EXPECT_EQ(readLine(in), "two");
  EXPECT_TRUE(in.eof());
}

TEST(MemoryStream, OfNothingIsAtItsEnd) { EXPECT_EQ(MemoryStream("").get(), EOF); }

TEST(MemoryStream, TellsWhereItStands) {
  MemoryStream in("one\ntwo");
  EXPECT_EQ(in.tellg(), 0);

  readLine(in);

  EXPECT_EQ(in.tellg(), 4);
}

TEST(MemoryStream, GoesToAnyPlaceOfItsBytes) {
  MemoryStream in("0123456789");

  EXPECT_EQ(in.seekg(7).get(), '7');
  EXPECT_EQ(in.seekg(-2, std::ios::cur).get(), '6');
  EXPECT_EQ(in.seekg(-1, std::ios::end).get(), '9');
  EXPECT_EQ(in.seekg(0).get(), '0');
  EXPECT_EQ(in.seekg(10).get(), EOF);
}

TEST(MemoryStream, FailsToGoBeyondItsBytes) {
  EXPECT_TRUE(MemoryStream("0123").seekg(5).fail());
  EXPECT_TRUE(MemoryStream("0123").seekg(-1).fail());
}

}  // namespace
