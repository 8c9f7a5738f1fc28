#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <unordered_set>

#include "kv/xml_tree.h"
#include "legacy_files.h"
#include "support/cpu_time.h"

using Found::FoundationManager;

// Numbers that somebody has chosen so that tables keep them all in one place.

namespace LegacyTest {
namespace {

using TestSupport::measureTime;
using TestSupport::mostTimes;

constexpr long long count = 20000;

using Numbering = std::function<long long(long long)>;

const Numbering ordinary = [](long long i) { return i; };
const Numbering alikeInBothHalves = [](long long i) { return i * 0x10001; };

/// All in one bucket of a standard table that has been made for them.
long long multiplyByBuckets(long long i) {
  static const auto buckets = [] {
    std::unordered_set<long long> numbers;
    numbers.reserve(count);
    return static_cast<long long>(numbers.bucket_count());
  }();
  return i * buckets;
}

/// The same where the table has grown to their size.
long long multiplyByGrownBuckets(long long i) {
  static const auto buckets = [] {
    std::unordered_set<long long> numbers;
    for (long long number = 0; number < count; ++number) numbers.insert(number);
    return static_cast<long long>(numbers.bucket_count());
  }();
  return i * buckets;
}

double measureUpdate(const Numbering& numberOf) {
  FoundationManager manager;
  for (long long i = 1; i <= count; ++i) addFoundation(manager, static_cast<int>(numberOf(i)), "A");
  return measureTime([&] {
    KvXmlTree tree;
    tree.open("SMOD", false);
    manager.updateXml(&tree);
    EXPECT_EQ(tree.findRoot("SMOD", true)->getChildren()[0]->getChildren().size(), 20000u);
  });
}

TEST(CraftedUpdate, TakesNoLongerWhereNumbersAreMultiplesOfTheNumberOfBuckets) {
  EXPECT_LT(measureUpdate(multiplyByBuckets), mostTimes * measureUpdate(ordinary));
}

TEST(CraftedUpdate, TakesNoLongerWhereBothHalvesOfAllNumbersAreAlike) {
  EXPECT_LT(measureUpdate(alikeInBothHalves), mostTimes * measureUpdate(ordinary));
}

/// Of a document with default names of these numbers and an unnamed foundation in front.
double measureNaming(const Numbering& numberOf) {
  std::string elements = "<FOUND/>";
  for (long long i = 1; i <= count; ++i) {
    const std::string digits = std::to_string(numberOf(1000 + i));
    elements += "<FOUND NUMBER='0' NAME='Found" + digits + "'/>";
  }
  std::istringstream text("<SMOD><FOUNDATIONS>" + elements + "</FOUNDATIONS></SMOD>");
  const KvXmlTree tree(text);
  return measureTime([&] {
    FoundationManager manager;
    manager.createFromXml(tree.findRoot("SMOD", true));
    EXPECT_EQ(manager.getFoundations().size(), 20001u);
  });
}

TEST(CraftedNaming, TakesNoLongerWhereNamesHaveMultiplesOfTheNumberOfBuckets) {
  EXPECT_LT(measureNaming(multiplyByGrownBuckets), mostTimes * measureNaming(ordinary));
}

}  // namespace
}  // namespace LegacyTest
