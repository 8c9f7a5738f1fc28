#include <algorithm>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "exchange/documents.h"
#include "found/bedding_reader.h"
#include "support/cpu_time.h"
#include "support/random.h"

using Found::FoundationManager;

// Names and numbers that somebody has chosen so that tables keep them all in one place.

namespace ExchangeTest {
namespace {

using TestSupport::measureTime;
using TestSupport::mostTimes;
using TestSupport::Random;

constexpr std::size_t count = 20000;

using Names = std::vector<std::string>;

double measureReading(const KvXmlN::Document& document) {
  const Tools::VersionText version("1.0");
  return measureTime([&] {
    FoundationManager manager;
    Found::Umo::BeddingReader(manager, version).read(document.getRoot());
    EXPECT_GE(manager.getFoundations().size(), count);
  });
}

// --- Names

constexpr std::uint64_t multiplier = 0xC6A4A7935BD1E995u;

std::uint64_t mix(std::uint64_t bits) { return bits ^ (bits >> 47); }

/// The factor that undoes a multiplication with `factor`: each round gets twice as many bits right.
std::uint64_t invert(std::uint64_t factor) {
  std::uint64_t inverse = factor;
  for (int round = 0; round < 6; ++round) inverse *= 2 - factor * inverse;
  return inverse;
}

/// The standard hash of libstdc++ works on eight bytes at a time and adds what it makes of them to
/// the hash. This gives other bytes of which it makes the same but for the uppermost bit. Twice in
/// a row, that bit falls out.
std::string findPartner(const std::string& bytes) {
  static const std::uint64_t inverse = invert(multiplier);
  std::uint64_t bits = 0;
  std::memcpy(&bits, bytes.data(), sizeof bits);
  bits = mix(bits * multiplier) * multiplier;
  bits ^= std::uint64_t{1} << 63;
  bits = mix(bits * inverse) * inverse;
  std::string partner(sizeof bits, '\0');
  std::memcpy(&partner[0], &bits, sizeof bits);
  return partner;
}

bool hasControlCharacter(const std::string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

/// Two texts of one length that may stand for each other anywhere in a name without changing its
/// hash.
std::pair<std::string, std::string> findPair() {
  Random random(1);
  std::string bytes(8, '\0');
  std::string partner;
  do {
    for (char& c : bytes) c = static_cast<char>(random.between('a', 'z'));
    partner = findPartner(bytes);
  } while (hasControlCharacter(partner));
  return {bytes + bytes, partner + partner};
}

Names makeNamesOfOneHash() {
  const auto [one, other] = findPair();
  Names names;
  for (std::size_t i = 0; i < count; ++i) {
    std::string name;
    for (std::size_t bit = 1; bit < count; bit *= 2) name += (i & bit) != 0 ? one : other;
    names.push_back(name);
  }
  return names;
}

Names makeOrdinaryNames(std::size_t length) {
  Names names;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    names.push_back(std::string(length - number.size(), 'x') + number);
  }
  return names;
}

/// Each name as often as `times` says; all but the first are changed.
double measureBeddings(const Names& names, int times) {
  KvXmlN::Document document("Beddings");
  for (int time = 0; time < times; ++time)
    for (const std::string& name : names)
      document.getRoot().createChild("Bedding")->setAttribute("Name", name, true);
  return measureReading(document);
}

class CraftedReading : public testing::TestWithParam<int> {};

TEST_P(CraftedReading, TakesNoLongerWhereAllNamesHashAlike) {
  const Names crafted = makeNamesOfOneHash();
  const std::hash<std::string> hash;
  if (hash(crafted.front()) != hash(crafted.back()))
    GTEST_SKIP() << "this standard library hashes otherwise";
  const Names ordinary = makeOrdinaryNames(crafted.front().size());

  EXPECT_LT(measureBeddings(crafted, GetParam()),
            mostTimes * measureBeddings(ordinary, GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Times, CraftedReading, testing::Values(1, 2));

TEST(CraftedNameReading, TakesNoLongerWhereAllHaveOneName) {
  EXPECT_LT(measureBeddings(Names(count, "A"), 1),
            mostTimes * measureBeddings(makeOrdinaryNames(8), 1));
}

// --- Numbers

double measureCurves(int numberOf(int)) {
  KvXmlN::Document document("Beddings");
  for (int i = 1; i <= static_cast<int>(count); ++i) {
    KvXmlN::Data& element = *document.getRoot().createChild("CurveBedding");
    element.setAttribute("Number", numberOf(i), true);
    element.setAttribute("Name", "A" + std::to_string(i), true);
  }
  return measureReading(document);
}

TEST(CraftedNumberReading, TakesNoLongerWhereBothHalvesOfAllNumbersAreAlike) {
  EXPECT_LT(measureCurves([](int i) { return i * 0x10001; }),
            mostTimes * measureCurves([](int i) { return i; }));
}

TEST(CraftedNumberReading, RefusesEachNumberThatIsGivenAgain) {
  KvXmlN::Document document("Beddings");
  for (int i = 1; i <= 200; ++i) {
    KvXmlN::Data& element = *document.getRoot().createChild("CurveBedding");
    element.setAttribute("Number", (i % 100 + 1) * 0x10001, true);
    element.setAttribute("Name", "A" + std::to_string(i), true);
  }
  const Tools::VersionText version("2.0");
  FoundationManager manager;
  Found::Umo::BeddingReader(manager, version).read(document.getRoot());

  EXPECT_EQ(manager.getFoundations().size(), 100u);
}

}  // namespace
}  // namespace ExchangeTest
