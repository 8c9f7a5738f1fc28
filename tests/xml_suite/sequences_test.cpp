#include "xml_suite/sequences.h"

#include <gtest/gtest.h>

using XmlSuite::judgeSequences;
using XmlSuite::SequencesResult;

TEST(Sequences, AreAllJudged) {
  // One, and one for each of 14 marks; then twice those that are shorter, which is one alone.
  EXPECT_EQ(judgeSequences(1).texts, 17U);
  EXPECT_EQ(judgeSequences(2).texts, 1U + 14 + 14 * 14 + 2 * (1 + 14));
}

TEST(Sequences, OfFourMarksInADocumentTypeAreTakenAsLibxml2TakesThem) {
  const SequencesResult result = judgeSequences(4);

  EXPECT_GT(result.accepted, 0U);
  EXPECT_EQ(result.faults, std::vector<std::string>());
}
