#include "results/uri.h"

#include <gtest/gtest.h>

namespace {

using Results::makeUri;

TEST(ResultUri, KeepsWhatIsPlain) { EXPECT_EQ(makeUri("a-b._~/C9.xml"), "a-b._~/C9.xml"); }

TEST(ResultUri, EncodesWhatHasAMeaningInUris) {
  EXPECT_EQ(makeUri("a b%20#1?x=[1]&\"<>.xml"), "a%20b%2520%231%3Fx%3D%5B1%5D%26%22%3C%3E.xml");
}

TEST(ResultUri, EncodesAColonThatWouldEndAScheme) {
#ifdef _WIN32
  EXPECT_EQ(makeUri("x/a:b.xml"), "x/a%3Ab.xml");
#else
  EXPECT_EQ(makeUri("a:b.xml"), "a%3Ab.xml");
#endif
}

#ifdef _WIN32
TEST(ResultUri, HasASchemeForAnAbsolutePath) {
  EXPECT_EQ(makeUri("C:\\my models\\a.xml"), "file:///C:/my%20models/a.xml");
}

TEST(ResultUri, PartsFoldersBySlashes) { EXPECT_EQ(makeUri("..\\a\\b.xml"), "../a/b.xml"); }
#else
TEST(ResultUri, EncodesUmlautsByteByByte) {
  EXPECT_EQ(makeUri("gr\xC3\xBCn/\xFC.xml"), "gr%C3%BCn/%FC.xml");
}

TEST(ResultUri, HasASchemeForAnAbsolutePath) {
  EXPECT_EQ(makeUri("/home/me/my models/a.xml"), "file:///home/me/my%20models/a.xml");
}

TEST(ResultUri, EncodesBackslashes) { EXPECT_EQ(makeUri("..\\a"), "..%5Ca"); }
#endif

}  // namespace
