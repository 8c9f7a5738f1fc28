#include "report/scale.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;
using Report::Bar;
using Report::Part;
using Report::Scale;
using Report::Summary;

Scale makeScale(double least, double greatest) {
  Scale scale;
  scale.include(least);
  scale.include(greatest);
  return scale;
}

TEST(ReportScale, IsEmptyUntilItIsShownAValue) {
  Scale scale;
  EXPECT_TRUE(scale.isEmpty());
  scale.include(5.0);
  EXPECT_FALSE(scale.isEmpty());
}

TEST(ReportScale, IsOfWholeDecadesWithTheLeastValueSomeWayOffTheStart) {
  const struct {
    double least;
    double greatest;
    int start;
    int end;
  } rows[] = {{5.0, 50.0, 0, 2}, {1.0, 100.0, -1, 2},  {1.5, 1.5, -1, 1},
              {1.6, 1.6, 0, 1},  {0.001, 10.0, -4, 1}, {100.0, 100.0, 1, 2}};
  for (const auto& row : rows) {
    const Scale scale = makeScale(row.least, row.greatest);
    EXPECT_EQ(scale.getStart(), row.start) << row.least;
    EXPECT_EQ(scale.getEnd(), row.end) << row.greatest;
  }
}

TEST(ReportScale, HasFewLines) {
  EXPECT_EQ(makeScale(5.0, 1e6).getStep(), 1);
  EXPECT_EQ(makeScale(5.0, 1e7).getStep(), 2);
  EXPECT_EQ(makeScale(5.0, 1e13).getStep(), 5);
  EXPECT_EQ(makeScale(1e-150, 1e150).getStep(), 200);
}

TEST(ReportScale, PlacesValuesByTheirLogarithm) {
  const Scale scale = makeScale(5.0, 100.0);
  EXPECT_DOUBLE_EQ(scale.place(10.0), 0.5);
  EXPECT_DOUBLE_EQ(scale.place(100.0), 1.0);
  EXPECT_DOUBLE_EQ(scale.place(1.0), 0.0);
  EXPECT_DOUBLE_EQ(scale.placePower(1.0), 0.5);
}

TEST(ReportSummary, CountsEveryKindOfValue) {
  const double infinity = std::numeric_limits<double>::infinity();
  Summary summary;
  for (const Bar& bar :
       {Bar{true, 5.0, Foundation::Tension}, Bar{true, 0.0, Foundation::None},
        Bar{true, -1.0, Foundation::Tension}, Bar{true, infinity, Foundation::None},
        Bar{false, 0.0, Foundation::Compression}})
    summary.include(bar);

  EXPECT_EQ(summary.range.getLeast(), 5.0);
  EXPECT_EQ(summary.zeros, 1u);
  EXPECT_EQ(summary.beyond, 2u);
  EXPECT_EQ(summary.lacking, 1u);
  EXPECT_EQ(summary.failures.at(Foundation::Tension), 2u);
  EXPECT_EQ(summary.failures.count(Foundation::None), 0u);
}

TEST(ReportSummary, IsOfThoseThatHaveThePart) {
  const KvVector3D area(1.0, 2.0, 3.0);
  const KvVector3D rotation(4.0, 0.0, 0.0);
  Foundation surface(&area, nullptr);
  surface.setDispLine(nullptr);
  Foundation line;
  line.setRotLine(&rotation);
  const std::vector<Foundation*> foundations = {&surface, &line};

  const std::vector<Summary> areas = Report::summarize(foundations, Part::area);
  const std::vector<Summary> lines = Report::summarize(foundations, Part::line);

  ASSERT_EQ(areas.size(), 3u);
  EXPECT_EQ(areas[2].range.getGreatest(), 3.0);
  EXPECT_EQ(areas[2].lacking, 0u);
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].lacking, 1u);
  EXPECT_EQ(lines[3].range.getGreatest(), 4.0);
}

TEST(ReportScales, AreOneForAllTranslationsAndOneForRotation) {
  const auto directions = Report::listDirections(Part::line, {});
  std::vector<Summary> summaries(4);
  summaries[0].range.include(1.0);
  summaries[2].range.include(100.0);
  summaries[3].range.include(7.0);

  const Report::Scales scales = Report::makeScales(directions, summaries);

  EXPECT_EQ(scales.translation.getLeast(), 1.0);
  EXPECT_EQ(scales.translation.getGreatest(), 100.0);
  EXPECT_EQ(scales.get(directions[3]).getLeast(), 7.0);
  EXPECT_EQ(&scales.get(directions[1]), &scales.translation);
}

}  // namespace
