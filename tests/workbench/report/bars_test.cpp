#include "report/bars.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;
using Report::Bar;
using Report::Part;

std::vector<std::string> listUnits(Part part, const Units& units) {
  std::vector<std::string> texts;
  for (const Report::Direction& direction : Report::listDirections(part, units))
    texts.push_back(std::string(direction.name) + " " + direction.unit);
  return texts;
}

TEST(ReportDirections, HaveTheUnitsOfTheirPart) {
  EXPECT_EQ(listUnits(Part::area, {"kN", "m"}),
            (std::vector<std::string>{"x kN/m\xC2\xB3", "y kN/m\xC2\xB3", "z kN/m\xC2\xB3"}));
  EXPECT_EQ(listUnits(Part::line, {"kN", "m"}),
            (std::vector<std::string>{"x kN/m\xC2\xB2", "y kN/m\xC2\xB2", "z kN/m\xC2\xB2",
                                      "rotation x kNm/m/rad"}));
  EXPECT_EQ(listUnits(Part::line, {"lbf", "ft"}).back(),
            "rotation x lbf\xC2\xB7"
            "ft/ft/rad");
  EXPECT_EQ(listUnits(Part::line, {}).back(), "rotation x ");
}

TEST(ReportBars, AreAStiffnessAndAFailureForEachDirection) {
  const KvVector3D area(1.0, 2.0, 3.0);
  const KvVector3D rotation(7.0, 0.0, 0.0);
  Foundation foundation(&area, &rotation);
  foundation.setDispLine(nullptr);
  foundation.setFailAreaZ(Foundation::Tension);
  foundation.setFailLineX(Foundation::Compression);

  const std::vector<Bar> areas = Report::listBars(Part::area, foundation);
  const std::vector<Bar> lines = Report::listBars(Part::line, foundation);

  ASSERT_EQ(areas.size(), 3u);
  EXPECT_EQ(areas[0].value, 1.0);
  EXPECT_EQ(areas[0].failure, Foundation::None);
  EXPECT_EQ(areas[2].value, 3.0);
  EXPECT_EQ(areas[2].failure, Foundation::Tension);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_FALSE(lines[0].isPresent);
  EXPECT_EQ(lines[0].failure, Foundation::Compression);
  EXPECT_TRUE(lines[3].isPresent);
  EXPECT_EQ(lines[3].value, 7.0);
}

TEST(ReportDirections, AreNoneOfNoPart) {
  Foundation foundation;

  EXPECT_TRUE(Report::listDirections(Part::none, {"kN", "m"}).empty());
  EXPECT_TRUE(Report::listBars(Part::none, foundation).empty());
}

TEST(ReportPart, OfAFoundationIsWhatItHas) {
  const KvVector3D area(1.0, 2.0, 3.0);
  Foundation surface(&area, nullptr);
  surface.setDispLine(nullptr);
  Foundation nothing;
  nothing.setDispArea(nullptr);
  nothing.setDispLine(nullptr);

  EXPECT_TRUE(Report::hasPart(Part::area, surface));
  EXPECT_FALSE(Report::hasPart(Part::line, surface));
  EXPECT_FALSE(Report::hasPart(Part::none, surface));
  EXPECT_FALSE(Report::hasPart(Part::area, nothing));
  EXPECT_TRUE(Report::hasPart(Part::none, nothing));
}

TEST(ReportPart, WithALineOnlyIsNotNone) {
  const KvVector3D rotation(7.0, 0.0, 0.0);
  Foundation line;
  line.setDispArea(nullptr);
  line.setRotLine(&rotation);

  EXPECT_TRUE(Report::hasPart(Part::line, line));
  EXPECT_FALSE(Report::hasPart(Part::none, line));
}

TEST(ReportPart, HasAFactorOfItsOwn) {
  Foundation foundation;
  foundation.setFactorArea(0.25);
  foundation.setFactorLine(0.5);

  EXPECT_EQ(Report::getFactor(Part::area, foundation), 0.25);
  EXPECT_EQ(Report::getFactor(Part::line, foundation), 0.5);
}

TEST(ReportPart, HasAName) {
  EXPECT_STREQ(Report::getName(Part::area), "area");
  EXPECT_STREQ(Report::getName(Part::line), "line");
  EXPECT_STREQ(Report::getName(Part::none), "none");
}

TEST(ReportBars, AreDrawnWhereALogarithmicScaleHasAPlace) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const struct {
    Bar bar;
    bool isDrawable;
    bool isBeyond;
  } rows[] = {{{true, 5e-324, Foundation::None}, true, false},
              {{true, 0.0, Foundation::None}, false, false},
              {{true, -1.0, Foundation::None}, false, true},
              {{true, infinity, Foundation::None}, false, true},
              {{true, nan, Foundation::None}, false, true},
              {{false, 1.0, Foundation::None}, false, false}};
  for (const auto& row : rows) {
    EXPECT_EQ(Report::isDrawable(row.bar), row.isDrawable) << row.bar.value;
    EXPECT_EQ(Report::isBeyond(row.bar), row.isBeyond) << row.bar.value;
  }
}

}  // namespace
