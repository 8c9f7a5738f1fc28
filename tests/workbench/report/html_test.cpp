#include "report/html.h"

#include <limits>

#include <gtest/gtest.h>

namespace {

TEST(ReportHtml, EscapesWhatOpensAndClosesTagsAndAttributes) {
  EXPECT_EQ(Report::escape(""), "");
  EXPECT_EQ(Report::escape("a & <b class=\"c\" d='e'>"),
            "a &amp; &lt;b class=&quot;c&quot; d=&#39;e&#39;&gt;");
  EXPECT_EQ(Report::escape("&amp;"), "&amp;amp;");
  EXPECT_EQ(Report::escape("R\xC3\xBC"
                           "ck"),
            "R\xC3\xBC"
            "ck");
}

TEST(ReportHtml, ShowsNamesEscapedWhateverTheyConsistOf) {
  EXPECT_EQ(Report::escapeName("<b>"), "&lt;b&gt;");
  EXPECT_EQ(Report::escapeName(" "), "&quot; &quot;");
  EXPECT_EQ(Report::escapeName("a\n\xFC"), "a\\n\xC3\xBC");
}

TEST(ReportHtml, WritesExponentsAsPowersOfTen) {
  EXPECT_EQ(Report::writeRounded(12345.0), "12345");
  EXPECT_EQ(Report::writeRounded(-1.23456e-7),
            "\xE2\x89\x88-1.2346\xC2\xB7"
            "10<sup>-7</sup>");
  EXPECT_EQ(Report::writeRounded(1e300), "10<sup>300</sup>");
  EXPECT_EQ(Report::writeRounded(-std::numeric_limits<double>::infinity()), "-inf");
}

TEST(ReportHtml, WritesPowersOfTen) {
  EXPECT_EQ(Report::writePower(3), "10<sup>3</sup>");
  EXPECT_EQ(Report::writePower(-12), "10<sup>-12</sup>");
}

}  // namespace
