#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <vector>

#include "legacy_files.h"
#include "support/double_bits.h"

using Found::Foundation;
using Found::FoundationManager;
using TestSupport::AbsentVector;
using TestSupport::bitsOf;
using TestSupport::fromBits;

namespace LegacyTest {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// Writes `from` and lets `to` read that.
void pass(const FoundationManager& from, FoundationManager& to) {
  const TemporaryPath path;
  write(from, path.get());
  ASSERT_TRUE(to.readXml(path.get()));
}

/// What differs, field by field, in the order of the list.
std::vector<std::string> compare(const FoundationManager& before, const FoundationManager& after) {
  std::vector<std::string> differences;
  if (before.getFoundations().size() != after.getFoundations().size())
    return {"not the same number of foundations"};
  for (std::size_t i = 0; i < before.getFoundations().size(); ++i)
    for (const std::string& difference :
         TestSupport::compare(*before.getFoundations()[i], *after.getFoundations()[i],
                              AbsentVector::HasNoComponents))
      differences.push_back(difference);
  const auto getName = [](const Foundation* f) { return f != nullptr ? f->getName() : "none"; };
  if (getName(before.getCurrentFoundation()) != getName(after.getCurrentFoundation()))
    differences.emplace_back("current foundation");
  return differences;
}

/// Sets every field that the format holds.
Foundation& addFull(FoundationManager& manager, int number, const std::string& name) {
  const KvVector3D area(0.1, -2.0, 1e300);
  const KvVector3D line(-4.0, 5e-324, 6.5);
  const KvVector3D rotation(7.0, 0.0, 0.0);
  Foundation& foundation = addFoundation(manager, number, name);
  foundation.setDispArea(&area);
  foundation.setDispLine(&line);
  foundation.setRotLine(&rotation);
  foundation.setFailAreaZ(Foundation::Compression);
  foundation.setFailLineX(Foundation::Tension);
  foundation.setFailLineY(Foundation::Compression);
  foundation.setFailLineZ(Foundation::Tension);
  foundation.setFactorArea(0.3);
  foundation.setFactorLine(-1.0 / 3.0);
  foundation.setGenerated(true);
  return foundation;
}

TEST(LegacyRoundTrip, LosesExactlyWhatTheFormatCannotHold) {
  const KvVector3D zero;
  const KvVector3D onlyYAndZ(0.0, 8.0, 9.0);
  const KvVector3D all(7.0, 8.0, 9.0);
  FoundationManager before;
  addFull(before, 10, "full");
  addFoundation(before, 4, "bare").setChanged(true);
  Foundation& zeros = addFull(before, 7, "zeros");
  zeros.setDispArea(&zero);
  zeros.setDispLine(&zero);
  zeros.setRotLine(&zero);
  addFull(before, 12, "turned").setRotLine(&all);
  addFull(before, 13, "turned without x").setRotLine(&onlyYAndZ);
  addFull(before, 14, "can fail").setFailPossible(true);
  addFull(before, 15, "unchanged").setChanged(false);
  addFull(before, 0, "number 0");
  addFull(before, -7, "number below 0");
  before.setCurrentFoundation(before.getFoundations()[3]);

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(compare(before, after),
            (std::vector<std::string>{"bare: dispArea came up", "zeros: dispLine was dropped",
                                      "zeros: rotLine was dropped", "turned: rotLine y",
                                      "turned: rotLine z", "turned without x: rotLine was dropped",
                                      "can fail: failPossible", "unchanged: changed"}));
}

TEST(LegacyRoundTrip, GivesAZeroAreaToAFoundationWithoutOne) {
  FoundationManager before;
  addFoundation(before, 1, "A");

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describeValues(*after.getFoundations().at(0)), "area (0, 0, 0)");
}

TEST(LegacyRoundTrip, NumbersWhatWasNotNumbered) {
  FoundationManager before;
  addFoundation(before, 5, "A");
  addFoundation(before, -1, "B");

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describe(after), "5 A, 6 B");
}

TEST(LegacyRoundTrip, KeepsTheLastOfThoseThatShareTheLargestInt) {
  FoundationManager before;
  addFoundation(before, std::numeric_limits<int>::max(), "A");
  before.giveFoundation("B");
  before.giveFoundation("C");

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describe(after), "2147483647 C");
}

TEST(LegacyRoundTrip, NamesWhatHadNoName) {
  FoundationManager before;
  addFoundation(before, 5, "A");
  before.setCurrentFoundation(&addFoundation(before, 9, ""));

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describe(after), "5 A, 9 Found0006");
}

TEST(LegacyRoundTrip, MakesTheFirstOfTwoWithTheCurrentNameCurrent) {
  FoundationManager before;
  addFoundation(before, 1, "A");
  before.setCurrentFoundation(&addFoundation(before, 2, "A"));

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(after.getCurrentFoundation(), after.getFoundations().at(0));
}

TEST(LegacyRoundTrip, PrintsTheSameTextTheSecondTime) {
  FoundationManager before;
  before.setCurrentFoundation(&addFull(before, 10, "first"));
  addFull(before, 3, "second");

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(write(after), write(before));
}

TEST(LegacyRoundTrip, KeepsTheSignOfAZeroComponent) {
  const KvVector3D v(0.0, -0.0, 0.0);
  FoundationManager before;
  addFoundation(before, 1, "A").setDispArea(&v);

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describeValues(*after.getFoundations().at(0)), "area (0, -0, 0)");
}

class LegacyDoubles : public testing::Test {
 protected:
  /// Stores these as components and factors, writes, reads, and demands the same bits.
  void expectSame(const std::vector<double>& values) {
    FoundationManager before;
    int number = 0;
    for (const double value : values) {
      Foundation& foundation = addFoundation(before, ++number, "A");
      const KvVector3D vector(value, -value, value);
      const KvVector3D withLength(value, 1.0, -value);
      foundation.setDispArea(&vector);
      foundation.setDispLine(&withLength);
      foundation.setRotLine(&vector);
      foundation.setFactorArea(value);
      foundation.setFactorLine(-value);
    }
    FoundationManager after;
    pass(before, after);
    ASSERT_EQ(after.getFoundations().size(), values.size());
    for (std::size_t i = 0; i < values.size(); ++i) check(*after.getFoundations()[i], values[i]);
  }

 private:
  static void check(const Foundation& foundation, double value) {
    KvVector3D v;
    foundation.getDispArea(v);
    EXPECT_EQ(bitsOf(v.x), bitsOf(value)) << value;
    EXPECT_EQ(bitsOf(v.y), bitsOf(-value)) << value;
    EXPECT_EQ(bitsOf(v.z), bitsOf(value)) << value;
    // Line and rotation are only read when they have a length.
    if (foundation.getDispLine(v)) {
      EXPECT_EQ(bitsOf(v.x), bitsOf(value)) << value;
      EXPECT_EQ(bitsOf(v.z), bitsOf(-value)) << value;
    } else {
      EXPECT_TRUE(std::isnan(value)) << value;
    }
    if (foundation.getRotLine(v))
      EXPECT_EQ(bitsOf(v.x), bitsOf(value)) << value;
    else
      EXPECT_TRUE(std::isnan(value)) << value;
    EXPECT_EQ(bitsOf(foundation.getFactorArea()), bitsOf(value)) << value;
    EXPECT_EQ(bitsOf(foundation.getFactorLine()), bitsOf(-value)) << value;
  }
};

TEST_F(LegacyDoubles, AtTheLimitsOfTheirRangeReadBackBitForBit) {
  using Limits = std::numeric_limits<double>;
  expectSame({Limits::max(), Limits::lowest(), Limits::min(), -Limits::min(), Limits::denorm_min(),
              -Limits::denorm_min(), Limits::epsilon(), std::nextafter(Limits::min(), 0.0)});
}

TEST_F(LegacyDoubles, ThatNeedAllTheirDigitsReadBackBitForBit) {
  expectSame({0.1, 1.0 / 3.0, 2.0 / 3.0, 3.141592653589793, 0.30000000000000004, 9007199254740993.0,
              1.7976931348623155e308, 2.2250738585072011e-308, 123456789.125, 5e-5, 1e21, 1e22,
              1e23});
}

TEST_F(LegacyDoubles, OfAllMagnitudesReadBackBitForBit) {
  std::vector<double> values;
  for (int exponent = -1074; exponent < 1024; ++exponent) {
    values.push_back(std::ldexp(1.0, exponent));
    values.push_back(std::nextafter(std::ldexp(1.0, exponent), infinity));
  }
  expectSame(values);
}

TEST_F(LegacyDoubles, OfAnyBitsReadBackBitForBit) {
  std::mt19937_64 random(1);
  std::vector<double> values;
  while (values.size() < 5000) {
    const double value = fromBits(random());
    if (std::isfinite(value)) values.push_back(value);
  }
  expectSame(values);
}

TEST_F(LegacyDoubles, ThatAreInfiniteReadBackBitForBit) { expectSame({infinity, -infinity}); }

TEST_F(LegacyDoubles, ThatAreNoNumbersReadBackBitForBit) { expectSame({notANumber, -notANumber}); }

TEST_F(LegacyDoubles, ThatAreNotFiniteArePrintedAsWords) {
  FoundationManager manager;
  const KvVector3D v(infinity, -infinity, notANumber);
  addFoundation(manager, 1, "A").setDispArea(&v);

  EXPECT_NE(write(manager).find("FXAREA=\"inf\" FYAREA=\"-inf\" FZAREA=\"nan\""),
            std::string::npos);
}

class LegacyBytes : public testing::Test {
 protected:
  /// Writes a current foundation of this name, reads it, and demands the same bytes. The result is
  /// what was written.
  std::string expectSame(const std::string& name) {
    FoundationManager before;
    before.setCurrentFoundation(&addFoundation(before, 1, name));
    FoundationManager after;
    pass(before, after);
    EXPECT_EQ(after.getFoundations().at(0)->getName(), name);
    EXPECT_EQ(after.getCurrentFoundation(), after.getFoundations().at(0));
    return write(before);
  }

  static std::string getFirstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
  }
};

TEST_F(LegacyBytes, OfAnUmlautInACodePageAreKept) {
  const std::string text = expectSame("Gr\xFCndung \x80 \xDF");

  EXPECT_EQ(getFirstLine(text), "<?xml version=\"1.0\" encoding=\"windows-1252\"?>");
  EXPECT_NE(text.find("NAME=\"Gr\xFCndung \x80 \xDF\""), std::string::npos);
}

TEST_F(LegacyBytes, OfUtf8AreKept) {
  const std::string text = expectSame("Gr\xC3\xBCndung \xE2\x82\xAC \xF0\x9F\x8F\x97");

  EXPECT_EQ(getFirstLine(text), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
  EXPECT_NE(text.find("NAME=\"Gr\xC3\xBCndung \xE2\x82\xAC \xF0\x9F\x8F\x97\""), std::string::npos);
}

TEST_F(LegacyBytes, OfAllEightBitCharactersAreKept) {
  for (int c = 0x80; c <= 0xFF; ++c) expectSame(std::string("a") + static_cast<char>(c) + "b");
}

TEST_F(LegacyBytes, ThatNoWindowsCodePageDefinesAreDeclaredAsLatin1) {
  EXPECT_EQ(getFirstLine(expectSame("a\x81\x8D\x8F\x90\x9D\xFC")),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>");
}

TEST_F(LegacyBytes, OfTwoEncodingsInOneFileAreKept) {
  FoundationManager before;
  addFoundation(before, 1, "\xFC");
  addFoundation(before, 2, "\xC3\xBC");

  FoundationManager after;
  pass(before, after);

  EXPECT_EQ(describe(after), "1 \xFC, 2 \xC3\xBC");
  EXPECT_EQ(getFirstLine(write(before)), "<?xml version=\"1.0\" encoding=\"windows-1252\"?>");
}

TEST_F(LegacyBytes, OfMarkupAreKept) {
  const std::string text = expectSame("<a> & \"b\" 'c' &amp; ]]> <!-- --> <?xml?>");

  EXPECT_NE(
      text.find("NAME=\"&lt;a> &amp; &quot;b&quot; 'c' &amp;amp; ]]> &lt;!-- --> &lt;?xml?>\""),
      std::string::npos)
      << text;
}

TEST_F(LegacyBytes, OfTabsAndLineBreaksAreKept) { expectSame("\ta\tb\nc\n\nd\re\r\nf\n"); }

TEST_F(LegacyBytes, OfSpacesAreKept) { expectSame("  a   b  "); }

TEST_F(LegacyBytes, OfEveryCharacterThatXmlHoldsAreKept) {
  std::string name = "\t\n\r";
  for (int c = 0x20; c <= 0xFF; ++c) name += static_cast<char>(c);
  expectSame(name);
}

TEST_F(LegacyBytes, OfAVeryLongNameAreKept) {
  std::string name;
  while (name.size() < 100000) name += "<Gr\xFCndung & ";
  expectSame(name);
}

TEST_F(LegacyBytes, OfASingleCharacterAreKept) {
  for (const char* name : {" ", "\t", "\n", "<", "&", "\"", "'", ">", "0"}) expectSame(name);
}

class LegacyWellFormed : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("command -v xmllint >/dev/null 2>&1") != 0)
      GTEST_SKIP() << "xmllint is not installed";
  }

  /// True when xmllint finds nothing wrong with what the manager writes.
  static bool passesXmllint(const FoundationManager& manager) {
    const TemporaryPath path;
    write(manager, path.get());
    return std::system(("xmllint --noout '" + path.get() + "'").c_str()) == 0;
  }
};

TEST_F(LegacyWellFormed, IsADocumentOfAnEmptyManager) {
  EXPECT_TRUE(passesXmllint(FoundationManager()));
}

TEST_F(LegacyWellFormed, IsADocumentOfAllAttributes) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFull(manager, 1, "A"));
  addFull(manager, 2, "B");

  EXPECT_TRUE(passesXmllint(manager));
}

TEST_F(LegacyWellFormed, IsADocumentOfNamesInAnyEncoding) {
  for (const char* name : {"Gr\xFCndung \x80", "Gr\xC3\xBCndung \xE2\x82\xAC", "a\x81\x8D\x8F",
                           "\xFC \xC3\xBC", "\xED\xA0\x80", "\xEF\xBF\xBF", "\xC0\x80"}) {
    FoundationManager manager;
    manager.setCurrentFoundation(&addFoundation(manager, 1, name));
    EXPECT_TRUE(passesXmllint(manager)) << name;
  }
}

TEST_F(LegacyWellFormed, IsADocumentOfNamesWithMarkupAndControlCharacters) {
  std::string controls;
  for (int c = 1; c < 0x20; ++c) controls += static_cast<char>(c);
  for (const std::string& name : {std::string("<a> & \"b\" 'c' ]]> <!-- --"), controls}) {
    FoundationManager manager;
    manager.setCurrentFoundation(&addFoundation(manager, 1, name));
    EXPECT_TRUE(passesXmllint(manager)) << name;
  }
}

TEST_F(LegacyWellFormed, IsADocumentOfNumbersThatAreNotFinite) {
  FoundationManager manager;
  const KvVector3D v(infinity, -infinity, notANumber);
  addFoundation(manager, 1, "A").setDispArea(&v);

  EXPECT_TRUE(passesXmllint(manager));
}

}  // namespace
}  // namespace LegacyTest
