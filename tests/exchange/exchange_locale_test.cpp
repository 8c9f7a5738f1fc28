#include "exchange/documents.h"
#include "support/comma_locale.h"

using Found::Foundation;
using Found::FoundationManager;
using TestSupport::CommaCLocale;
using TestSupport::CommaLocale;

namespace ExchangeTest {
namespace {

const std::string current = makePrinted(
    {"<CurveBedding Number=\"1234567\" Name=\"A\" StiffnessX=\"12345.5\" StiffnessY=\"1e+22\" "
     "StiffnessZ=\"-0.25\" StiffnessXX=\"1234567.125\" StiffnessYFailure=\"none\" "
     "StiffnessZFailure=\"none\" TangentialStiffnessXFactor=\"0.5\" />",
     "<SurfaceBedding Number=\"1234567\" Name=\"A\" StiffnessX=\"2345.5\" StiffnessY=\"0\" "
     "StiffnessZ=\"0\" StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"1234.5\" />"});
const std::string first = makePrinted(
    {"<Bedding Name=\"A\" SurfaceStiffnessX=\"2345.5\" SurfaceStiffnessY=\"0\" "
     "SurfaceStiffnessZ=\"0\" SurfaceStiffnessZFailure=\"none\" "
     "TangentialSurfaceStiffnessXYFactor=\"1234.5\" CurveStiffnessX=\"12345.5\" "
     "CurveStiffnessY=\"1e+22\" CurveStiffnessZ=\"-0.25\" CurveStiffnessXX=\"1234567.125\" "
     "CurveStiffnessYFailure=\"none\" CurveStiffnessZFailure=\"none\" "
     "TangentialCurveStiffnessX=\"0.5\" />"});

void expectWritten() {
  FoundationManager manager;
  Foundation& foundation = addFoundation(manager, 1234567, "A");
  setDispArea(foundation, 2345.5, 0.0, 0.0);
  setDispLine(foundation, 12345.5, 1e22, -0.25);
  setRotLine(foundation, 1234567.125, 0.0, 0.0);
  foundation.setFactorArea(1234.5);
  foundation.setFactorLine(0.5);
  EXPECT_EQ(write(manager, currentVersion), current);
  EXPECT_EQ(write(manager, "1.0"), first);
}

void expectRead() {
  FoundationManager manager;
  readText(manager, current, currentVersion);
  EXPECT_EQ(describe(manager), "1234567 A");
  EXPECT_EQ(describeValues(*manager.getFoundations().at(0)),
            "line (12345.5, 1e+22, -0.25), rotation (1234567.125, 0, 0), factor line 0.5");

  FoundationManager other;
  readText(other, first, "1.0");
  EXPECT_EQ(describeValues(*other.getFoundations().at(0)),
            "area (2345.5, 0, 0), line (12345.5, 1e+22, -0.25), rotation (1234567.125, 0, 0), "
            "factor area 1234.5, factor line 0.5");
}

void expectNumberRead() {
  FoundationManager manager;
  readText(manager,
           makeDocument("<CurveBedding Number='1.234' Name='A'/><CurveBedding Number='2,5' "
                        "Name='B'/>"),
           currentVersion);
  EXPECT_EQ(describe(manager), "1 A, 2 B");
}

void expectNameGiven() {
  FoundationManager manager;
  addFoundation(manager, 1, "A");
  for (int i = 1; i < 1000; ++i) addFoundation(manager, 1, "A_" + std::to_string(i));
  readText(manager, makeDocument("<CurveBedding Number='2' Name='A'/>"), currentVersion);
  EXPECT_EQ(manager.getFoundations().back()->getName(), "A_1000");
}

void expectAll() {
  expectWritten();
  expectRead();
  expectNumberRead();
  expectNameGiven();
}

TEST(ExchangeLocale, OfTheProgramDoesNotShow) {
  const CommaLocale locale;
  expectAll();
}

TEST(ExchangeLocale, OfTheCLibraryDoesNotShow) {
  const CommaCLocale locale;
  if (!locale.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  expectAll();
}

}  // namespace
}  // namespace ExchangeTest
