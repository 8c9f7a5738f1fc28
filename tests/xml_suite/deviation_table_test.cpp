#include "xml_suite/deviation_table.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

using XmlSuite::DeviationTable;

namespace {

DeviationTable read(const std::string& text) {
  std::istringstream in(text);
  return DeviationTable(in);
}

using Faults = std::vector<std::string>;

}  // namespace

TEST(DeviationTable, HasNoFaultWhereEveryDeviationIsListed) {
  DeviationTable table = read("# for people\n\n[one reason]\nrefused a-1 b-*\nchanged a-1\n");

  table.meet("a-1", {"refused", "changed"});
  table.meet("b-1", {"refused"});
  table.meet("b-2", {"refused"});
  table.meet("c-1", {});

  EXPECT_EQ(table.listFaults(), Faults());
  EXPECT_EQ(table.countReasons(), 1U);
}

TEST(DeviationTable, TellsOfADeviationThatIsNotListed) {
  DeviationTable table = read("[reason]\nrefused a-1\n");

  table.meet("a-1", {"refused", "changed"});

  EXPECT_EQ(table.listFaults(), Faults{"a-1: changed is listed 0 times"});
}

TEST(DeviationTable, TellsOfADeviationThatIsListedTwice) {
  DeviationTable table = read("[reason]\nrefused a-1\n[another]\nrefused a-*\n");

  table.meet("a-1", {"refused"});

  EXPECT_EQ(table.listFaults(), Faults{"a-1: refused is listed 2 times"});
}

TEST(DeviationTable, TellsOfACaseThatDoesNotDeviateAsListed) {
  DeviationTable table = read("[reason]\nrefused a-*\n");

  table.meet("a-1", {"refused"});
  table.meet("a-2", {});

  EXPECT_EQ(table.listFaults(), Faults{"a-2: listed, but does not deviate: refused a-*"});
}

TEST(DeviationTable, TellsOfALineWithoutACase) {
  DeviationTable table = read("[reason]\nrefused a-1\n");

  EXPECT_EQ(table.listFaults(), Faults{"there is no such case: refused a-1"});
}

TEST(DeviationTable, WantsAReasonAndACase) {
  EXPECT_THROW(read("refused a-1\n"), std::runtime_error);
  EXPECT_THROW(read("[reason]\nrefused\n"), std::runtime_error);
}
