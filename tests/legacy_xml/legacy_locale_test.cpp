#include <gtest/gtest.h>

#include "legacy_files.h"
#include "support/comma_locale.h"

using Found::Foundation;
using Found::FoundationManager;
using TestSupport::CommaCLocale;
using TestSupport::CommaLocale;

namespace LegacyTest {
namespace {

const std::string written =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<SMOD>\n"
    "  <FOUNDATIONS>\n"
    "    <FOUND NUMBER=\"1234567\" NAME=\"A\" FXAREA=\"12345.5\" FYAREA=\"1e+22\" "
    "FZAREA=\"-0.25\" FACAREA=\"1234567.125\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
    "  </FOUNDATIONS>\n"
    "</SMOD>\n";

std::string writeNumbers() {
  FoundationManager manager;
  Foundation& foundation = addFoundation(manager, 1234567, "A");
  const KvVector3D v(12345.5, 1e22, -0.25);
  foundation.setDispArea(&v);
  foundation.setFactorArea(1234567.125);
  return write(manager);
}

void expectNumbersRead() {
  FoundationManager manager;
  EXPECT_TRUE(read(manager, written));
  EXPECT_EQ(describe(manager), "1234567 A");
  EXPECT_EQ(describeValues(*manager.getFoundations().at(0)),
            "area (12345.5, 1e+22, -0.25), factor area 1234567.125");
}

void expectNameGiven() {
  FoundationManager manager;
  EXPECT_TRUE(read(manager, makeDocument("<FOUND NUMBER='12344' NAME='A'/><FOUND/>")));
  EXPECT_EQ(describe(manager), "12344 A, 12345 Found12345");
}

TEST(LegacyLocale, OfTheProgramDoesNotChangeWhatIsWritten) {
  const CommaLocale locale;
  EXPECT_EQ(writeNumbers(), written);
}

TEST(LegacyLocale, OfTheProgramDoesNotChangeWhatIsRead) {
  const CommaLocale locale;
  expectNumbersRead();
}

TEST(LegacyLocale, OfTheProgramDoesNotChangeTheNamesThatAreGiven) {
  const CommaLocale locale;
  expectNameGiven();
}

TEST(LegacyLocale, OfTheCLibraryDoesNotChangeWhatIsWritten) {
  const CommaCLocale locale;
  if (!locale.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  EXPECT_EQ(writeNumbers(), written);
}

TEST(LegacyLocale, OfTheCLibraryDoesNotChangeWhatIsRead) {
  const CommaCLocale locale;
  if (!locale.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  expectNumbersRead();
}

TEST(LegacyLocale, OfTheCLibraryDoesNotChangeTheNamesThatAreGiven) {
  const CommaCLocale locale;
  if (!locale.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  expectNameGiven();
}

}  // namespace
}  // namespace LegacyTest
