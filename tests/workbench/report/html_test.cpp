#include "report/html.h"

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

}  // namespace
