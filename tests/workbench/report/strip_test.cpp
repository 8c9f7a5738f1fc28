#include "report/strip.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;
using Report::Bar;
using Report::Scale;

Bar make(double value) { return {true, value, Foundation::None}; }

Scale reach(double least, double greatest) {
  Scale scale;
  scale.include(least);
  scale.include(greatest);
  return scale;
}

/// The strip of these values on a scale from 1 to 100.
std::string draw(const std::vector<Bar>& bars, std::size_t first, std::size_t last) {
  std::string page;
  Report::appendStrip(bars, first, last, reach(2.0, 100.0), page);
  return page;
}

std::string drawTranslations(double x, double y, double z) {
  return draw({make(x), make(y), make(z)}, 0, 3);
}

std::string drawAxis(double least, double greatest) {
  std::string page;
  Report::appendAxis(reach(least, greatest), page);
  return page;
}

std::string drawSample(std::size_t direction) {
  std::string page;
  Report::appendSample(direction, page);
  return page;
}

TEST(ReportStrip, HasAMarkOfItsOwnForEachTranslation) {
  EXPECT_EQ(drawTranslations(2.0, 10.0, 100.0),
            "<td class=\"plot\"><svg aria-hidden=\"true\"><circle cx=\"15.1%\"/><rect "
            "x=\"50%\"/><ellipse cx=\"100%\"/></svg>");
}

TEST(ReportStrip, OfRotationHasItsMarkAlone) {
  EXPECT_EQ(draw({make(5.0), make(6.0), make(7.0), make(10.0)}, 3, 4),
            "<td class=\"plot turn\"><svg aria-hidden=\"true\"><rect x=\"50%\"/></svg>");
}

TEST(ReportStrip, HasZerosBesideTheScale) {
  EXPECT_EQ(drawTranslations(0.0, -0.0, 100.0),
            "<td class=\"plot\"><svg aria-hidden=\"true\"><circle cx=\"-24\"/><rect "
            "x=\"-24\"/><ellipse cx=\"100%\"/></svg>");
}

TEST(ReportStrip, HasNoMarkOfAValueThatIsLacking) {
  EXPECT_EQ(
      draw({{false, 0.0, Foundation::None}, {false, 10.0, Foundation::None}, make(10.0)}, 0, 3),
      "<td class=\"plot\"><svg aria-hidden=\"true\"><ellipse cx=\"50%\"/></svg>");
}

TEST(ReportStrip, HasNoMarkOfAValueBeyondTheScale) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const std::string empty = "<td class=\"plot\"><svg aria-hidden=\"true\"></svg>";

  EXPECT_EQ(drawTranslations(-10.0, infinity, nan), empty);
  EXPECT_EQ(drawTranslations(-infinity, -0.001, -nan), empty);
}

TEST(ReportAxis, NamesZeroAndThePowersOfTen) {
  EXPECT_EQ(
      drawAxis(2.0, 100.0),
      "<span class=\"axis\"><i>0</i> <i style=\"left:0%\">10<sup>0</sup></i> <i "
      "style=\"left:50%\">10<sup>1</sup></i> <i style=\"left:100%\">10<sup>2</sup></i></span>");
}

TEST(ReportAxis, NamesFourPowersAtMost) {
  EXPECT_EQ(drawAxis(2.0, 1000.0),
            "<span class=\"axis\"><i>0</i> <i style=\"left:0%\">10<sup>0</sup></i> <i "
            "style=\"left:33.3%\">10<sup>1</sup></i> <i style=\"left:66.7%\">10<sup>2</sup></i> <i "
            "style=\"left:100%\">10<sup>3</sup></i></span>");
  EXPECT_EQ(
      drawAxis(2.0, 10000.0),
      "<span class=\"axis\"><i>0</i> <i style=\"left:0%\">10<sup>0</sup></i> <i "
      "style=\"left:50%\">10<sup>2</sup></i> <i style=\"left:100%\">10<sup>4</sup></i></span>");
  EXPECT_EQ(
      drawAxis(0.002, 1e5),
      "<span class=\"axis\"><i>0</i> <i style=\"left:0%\">10<sup>-3</sup></i> <i "
      "style=\"left:50%\">10<sup>1</sup></i> <i style=\"left:100%\">10<sup>5</sup></i></span>");
}

TEST(ReportAxis, NamesFewPowersOfAllThatANumberCanBe) {
  EXPECT_EQ(
      drawAxis(5e-324, 1.7976931348623157e308),
      "<span class=\"axis\"><i>0</i> <i style=\"left:0%\">10<sup>-324</sup></i> <i "
      "style=\"left:31.6%\">10<sup>-124</sup></i> <i style=\"left:63.2%\">10<sup>76</sup></i> "
      "<i style=\"left:94.8%\">10<sup>276</sup></i></span>");
}

TEST(ReportSample, IsTheMarkOfADirection) {
  EXPECT_EQ(drawSample(0), "<svg class=\"mark\" aria-hidden=\"true\"><circle cx=\"50%\"/></svg> ");
  EXPECT_EQ(drawSample(1), "<svg class=\"mark\" aria-hidden=\"true\"><rect x=\"50%\"/></svg> ");
  EXPECT_EQ(drawSample(2), "<svg class=\"mark\" aria-hidden=\"true\"><ellipse cx=\"50%\"/></svg> ");
  EXPECT_EQ(drawSample(3),
            "<svg class=\"mark turn\" aria-hidden=\"true\"><rect x=\"50%\"/></svg> ");
}

}  // namespace
