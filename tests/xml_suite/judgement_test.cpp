#include "xml_suite/judgement.h"

#include <gtest/gtest.h>

using XmlSuite::judge;
using XmlSuite::Judgement;

TEST(Judgement, FindsNothingInAPlainDocument) {
  const Judgement judgement = judge("<?xml version='1.0'?>\n<r a='&lt;'><b>x</b></r>");

  EXPECT_TRUE(judgement.isAccepted);
  EXPECT_EQ(list(judgement.deviations), "");
  EXPECT_TRUE(judgement.leniencies.empty());
}

TEST(Judgement, TellsWhatLetsADocumentPass) {
  const Judgement judgement = judge(" <?xml version='1.0'?><r>]]></r>&#32;");

  EXPECT_TRUE(judgement.isAccepted);
  EXPECT_EQ(list(judgement.deviations), "");
  EXPECT_EQ(judgement.leniencies,
            (std::set<std::string>{"declaration", "reference-outside", "section-end"}));
}

TEST(Judgement, TellsOfAWellFormedDocumentThatIsRefused) {
  const Judgement judgement = judge("<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>");

  EXPECT_FALSE(judgement.isAccepted);
  EXPECT_EQ(list(judgement.deviations), "refused");
}

TEST(Judgement, LetsOnlyTheLegacyLibraryTakeADocumentWithoutARoot) {
  const Judgement judgement = judge("<!-- nothing else -->");

  EXPECT_TRUE(judgement.isAccepted);
  EXPECT_EQ(list(judgement.deviations), "");
  EXPECT_EQ(judgement.leniencies, std::set<std::string>{"no-root"});
}
