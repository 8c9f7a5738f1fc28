#include "documents/spelling.h"

#include <string>

#include <gtest/gtest.h>

#include "foundations/fields.h"

namespace {

namespace Exchange = Documents::Exchange;
namespace Legacy = Documents::Legacy;
using Documents::ElementWord;
using Found::Foundation;

Foundation makeFoundation() {
  const KvVector3D area(1.0, 0.0, 0.1);
  Foundation foundation(&area, nullptr);
  const KvVector3D line(2.0, 0.0, 1e300);
  foundation.setDispArea(&area);
  foundation.setDispLine(&line);
  foundation.setNumber(7);
  foundation.setName("\xE2\x82\xAC \"A\"");
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFailLineY(Foundation::Compression);
  foundation.setFactorLine(0.5);
  return foundation;
}

std::string makeElement(const ElementWord& word, const Documents::TagStyle& style,
                        const char* encoding) {
  Foundation foundation = makeFoundation();
  return Spelling::makeElement(word, foundation, style, Charset::recognise(encoding, ""));
}

TEST(SpellingElement, IsWhatTheFormTells) {
  const struct {
    const ElementWord& word;
    const char* element;
  } rows[] = {
      {Legacy::foundation,
       "<FOUND NUMBER=\"7\" NAME=\"\xE2\x82\xAC &quot;A&quot;\" FXAREA=\"1\" FYAREA=\"0\" "
       "FZAREA=\"0.1\" FXLINE=\"2\" FYLINE=\"0\" FZLINE=\"1e+300\" FAILZAREA=\"-1\" "
       "FAILYLINE=\"1\" FACAREA=\"0\" FACLINE=\"0.5\" IsGenerated=\"0\" />"},
      {Exchange::surface,
       "<SurfaceBedding Number=\"7\" Name=\"\xE2\x82\xAC &quot;A&quot;\" StiffnessX=\"1\" "
       "StiffnessY=\"0\" StiffnessZ=\"0.1\" StiffnessZFailure=\"tension\" "
       "TangentialStiffnessXYFactor=\"0\" />"},
      {Exchange::curve,
       "<CurveBedding Number=\"7\" Name=\"\xE2\x82\xAC &quot;A&quot;\" StiffnessX=\"2\" "
       "StiffnessY=\"0\" StiffnessZ=\"1e+300\" StiffnessYFailure=\"compression\" "
       "StiffnessZFailure=\"none\" TangentialStiffnessXFactor=\"0.5\" />"},
      {Exchange::whole,
       "<Bedding Name=\"\xE2\x82\xAC &quot;A&quot;\" SurfaceStiffnessX=\"1\" "
       "SurfaceStiffnessY=\"0\" SurfaceStiffnessZ=\"0.1\" SurfaceStiffnessZFailure=\"tension\" "
       "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessX=\"2\" CurveStiffnessY=\"0\" "
       "CurveStiffnessZ=\"1e+300\" CurveStiffnessYFailure=\"compression\" "
       "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0.5\" />"},
  };
  for (const auto& row : rows) EXPECT_EQ(makeElement(row.word, {}, "UTF-8"), row.element);
}

TEST(SpellingElement, LooksLikeItsNeighboursInTheBytesOfTheDocument) {
  const Documents::TagStyle style = {"\n\t", '\'', "/>"};

  EXPECT_EQ(makeElement(Exchange::surface, style, "ISO-8859-15"),
            "<SurfaceBedding\n\tNumber='7'\n\tName='\xA4 \"A\"'\n\tStiffnessX='1'\n\t"
            "StiffnessY='0'\n\tStiffnessZ='0.1'\n\tStiffnessZFailure='tension'\n\t"
            "TangentialStiffnessXYFactor='0'/>");
  EXPECT_NE(makeElement(Exchange::surface, style, "ISO-8859-1").find("Name='&#8364; \"A\"'"),
            std::string::npos);
}

TEST(Spelling, IsNoneForAStiffnessThatIsAbsent) {
  Foundation foundation;

  EXPECT_EQ(Spelling::spell({"FZAREA", Documents::Kind::stiffness, "areaZ"}, foundation),
            std::nullopt);
  EXPECT_EQ(Spelling::spell({"FACAREA", Documents::Kind::factor, "areaFactor"}, foundation), "0");
}

TEST(SpellingFailure, IsANumberOrAWord) {
  Foundation foundation;
  const auto spell = [&](Documents::Kind kind) {
    return Spelling::spell({"", kind, "areaFailureZ"}, foundation);
  };
  const struct {
    int mode;
    const char* number;
    const char* word;
  } rows[] = {{0, "0", "none"}, {-1, "-1", "tension"}, {1, "1", "compression"}, {7, "7", ""}};
  for (const auto& row : rows) {
    foundation.setFailAreaZ(static_cast<Foundation::Failure>(row.mode));
    EXPECT_EQ(spell(Documents::Kind::failureNumber), row.number);
    EXPECT_EQ(spell(Documents::Kind::failureWord), row.word);
  }
}

}  // namespace
