#include "kv/xml_error.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <type_traits>

#include "platform/support.h"
#include "support/comma_locale.h"

TEST(XmlError, TellsReasonAndPlaceApart) {
  const KvXmlError error("this tag is not closed", 3, 7);

  EXPECT_EQ(error.getReason(), "this tag is not closed");
  EXPECT_EQ(error.getLine(), 3u);
  EXPECT_EQ(error.getColumn(), 7u);
}

TEST(XmlError, SaysEverythingInOneLine) {
  const KvXmlError error("this tag is not closed", 3, 7);

  EXPECT_STREQ(error.what(), "line 3, column 7: this tag is not closed");
}

TEST(XmlError, IsARuntimeError) {
  EXPECT_TRUE((std::is_base_of_v<std::runtime_error, KvXmlError>));
}

TEST(XmlError, CopiesWithAllItSays) {
  const KvXmlError error("this tag is not closed", 3, 7);

  const KvXmlError copy = error;  // NOLINT: the copy is what is tested

  EXPECT_EQ(copy.getReason(), "this tag is not closed");
  EXPECT_EQ(copy.getLine(), 3u);
  EXPECT_EQ(copy.getColumn(), 7u);
  EXPECT_STREQ(copy.what(), "line 3, column 7: this tag is not closed");
}

TEST(XmlError, WritesPlacesAlikeUnderACommaLocale) {
  const TestSupport::CommaLocale locale;

  const KvXmlError error("this tag is not closed", 1234567, 7654321);

  EXPECT_STREQ(error.what(), "line 1234567, column 7654321: this tag is not closed");
}
