#include <gtest/gtest.h>

#include <clocale>
#include <locale>

#include "legacy_files.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

/// Prints 12.345,5 for 12345.5.
struct CommaNumbers : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

/// Makes a locale with such numbers the global one, as long as it lives.
class CommaLocale {
 public:
  CommaLocale()
      : previous(std::locale::global(std::locale(std::locale::classic(), new CommaNumbers))) {}
  ~CommaLocale() { std::locale::global(previous); }
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  std::locale previous;
};

/// Makes an installed locale with a decimal comma that of the C library, as long as it lives.
class CommaCLocale {
 public:
  CommaCLocale() : previous(std::setlocale(LC_ALL, nullptr)) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "fr_FR.UTF-8"}) {
      installed = std::setlocale(LC_ALL, name) != nullptr;
      if (installed) return;
    }
  }
  ~CommaCLocale() { std::setlocale(LC_ALL, previous.c_str()); }
  CommaCLocale(const CommaCLocale&) = delete;
  CommaCLocale& operator=(const CommaCLocale&) = delete;

  bool isInstalled() const { return installed; }

 private:
  std::string previous;
  bool installed = false;
};

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
