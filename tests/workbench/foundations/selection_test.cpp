#include "foundations/selection.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

using Found::Foundation;

Foundation makeFoundation(int number, const std::string& name) {
  Foundation foundation;
  foundation.setNumber(number);
  foundation.setName(name);
  return foundation;
}

bool includesNumber(const std::string& numbers, int number) {
  Selection selection;
  selection.selectNumbers(numbers);
  Foundation foundation;
  foundation.setNumber(number);
  return selection.includes(foundation);
}

TEST(SelectionNumbers, AreSingleOnesAndRangesWithBothEnds) {
  const struct {
    const char* numbers;
    int number;
    bool isIncluded;
  } rows[] = {{"3", 3, true},      {"3", 4, false},  {"3,5-9", 5, true}, {"3,5-9", 9, true},
              {"3,5-9", 4, false}, {"5-5", 5, true}, {"0", 0, true},     {"1-2147483647", 7, true}};
  for (const auto& row : rows)
    EXPECT_EQ(includesNumber(row.numbers, row.number), row.isIncluded)
        << row.numbers << " " << row.number;
}

TEST(SelectionNumbers, AreRefusedWhereTheyAreNone) {
  for (const char* text : {"", "a", "3-", "-3", "9-5", "3,,5", "3,", "1.5", "99999999999", "3 "}) {
    Selection selection;
    EXPECT_THROW(selection.selectNumbers(text), std::invalid_argument) << text;
  }
}

TEST(SelectionNames, FitAPattern) {
  const struct {
    const char* pattern;
    const char* name;
    bool isIncluded;
  } rows[] = {{"Slab", "Slab", true},
              {"Slab", "slab", false},
              {"Slab", "Slab 1", false},
              {"Slab*", "Slab 1", true},
              {"*1", "Slab 1", true},
              {"*1", "Slab 12", false},
              {"*a*b*", "xaxxbx", true},
              {"*ab", "aab", true},
              {"*ab*c", "abxabc", true},
              {"a?c",
               "a\xC3\xBC"
               "c",
               true},
              {"?", "", false},
              {"*", "", true},
              {"", "", true},
              {"", "a", false},
              {"**", "a", true},
              {"a*", "b", false}};
  for (const auto& row : rows) {
    Selection selection;
    selection.selectName(row.pattern);
    Foundation foundation = makeFoundation(1, row.name);
    EXPECT_EQ(selection.includes(foundation), row.isIncluded) << row.pattern << " " << row.name;
  }
}

TEST(Selection, AsksForOriginAndPart) {
  const KvVector3D stiffness(0.0, 0.0, 1.0);
  Foundation area = makeFoundation(1, "A");
  area.setDispArea(&stiffness);
  Foundation line = makeFoundation(2, "B");
  line.setDispLine(&stiffness);
  line.setGenerated(true);

  Selection generated;
  generated.selectGenerated();
  Selection withArea;
  withArea.selectPart(Selection::Part::area);
  Selection withLine;
  withLine.selectPart(Selection::Part::line);

  EXPECT_FALSE(generated.includes(area));
  EXPECT_TRUE(generated.includes(line));
  EXPECT_TRUE(withArea.includes(area));
  EXPECT_FALSE(withArea.includes(line));
  EXPECT_FALSE(withLine.includes(area));
  EXPECT_TRUE(withLine.includes(line));
}

TEST(Selection, IsOfAllUntilSomethingIsAskedFor) {
  Selection selection;
  EXPECT_TRUE(selection.isOfAll());
  selection.selectPart(Selection::Part::area);
  EXPECT_FALSE(selection.isOfAll());
}

TEST(Selection, FindsASingleNumberThatNoFoundationHas) {
  Foundation first = makeFoundation(1, "A");
  Selection selection;
  selection.selectNumbers("1,5-9");
  EXPECT_EQ(selection.findMissing({&first}), std::nullopt);
  selection.selectNumbers("3");
  EXPECT_EQ(selection.findMissing({&first}), 3);
}

}  // namespace
