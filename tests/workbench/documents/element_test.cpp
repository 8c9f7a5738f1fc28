#include "documents/element.h"

#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Element;

const char* const text =
    "<root empty='' text=' a ' integer=' +7' zero='-0.0' half='.5' words='12 a' far='1e999'\n"
    "  large='9999999999'><b/><c x='&lt;'/></root>";

/// The same element of both libraries.
class BothElements : public testing::TestWithParam<bool> {
 protected:
  BothElements() {
    std::istringstream in(text);
    std::istringstream again(text);
    tree = std::make_unique<KvXmlTree>(in);
    document = std::make_unique<KvXmlN::Document>(again);
  }

  Element getRoot() const {
    return GetParam() ? Element(tree->findRoot("root", true)) : Element(&document->getRoot());
  }

 private:
  std::unique_ptr<KvXmlTree> tree;
  std::unique_ptr<KvXmlN::Document> document;
};

TEST_P(BothElements, ListChildrenAndAttributesInTheirOrder) {
  std::vector<std::string> names;
  for (const Element& child : getRoot().listChildren()) names.push_back(child.getName());

  EXPECT_EQ(getRoot().getName(), "root");
  EXPECT_EQ(names, (std::vector<std::string>{"b", "c"}));
  EXPECT_EQ(getRoot().listAttributeNames(),
            (std::vector<std::string>{"empty", "text", "integer", "zero", "half", "words", "far",
                                      "large"}));
}

TEST_P(BothElements, ReadTexts) {
  EXPECT_EQ(getRoot().readText("none"), std::nullopt);
  EXPECT_EQ(getRoot().readText("empty"), "");
  EXPECT_EQ(getRoot().readText("text"), " a ");
  EXPECT_EQ(getRoot().listChildren()[1].readText("x"), "<");
}

TEST_P(BothElements, ReadWholeNumbers) {
  EXPECT_EQ(getRoot().readInteger("integer"), 7);
  for (const char* name : {"none", "empty", "text", "zero", "half", "words", "far", "large"})
    EXPECT_EQ(getRoot().readInteger(name), std::nullopt) << name;
}

TEST_P(BothElements, ReadNumbers) {
  EXPECT_EQ(getRoot().readNumber("integer"), 7.0);
  EXPECT_EQ(getRoot().readNumber("zero"), 0.0);
  EXPECT_EQ(getRoot().readNumber("half"), 0.5);
  EXPECT_EQ(getRoot().readNumber("far"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(getRoot().readNumber("large"), 9999999999.0);
  for (const char* name : {"none", "empty", "text", "words"})
    EXPECT_EQ(getRoot().readNumber(name), std::nullopt) << name;
}

TEST_P(BothElements, TellWhereTheyAndTheirAttributesStand) {
  EXPECT_EQ(getRoot().getPosition().column, 1u);
  EXPECT_EQ(getRoot().locate("text").column, 16u);
  EXPECT_EQ(getRoot().locate("large").line, 2u);
  EXPECT_EQ(getRoot().locate("large").column, 3u);
}

TEST_P(BothElements, StandForAttributesThatTheyLack) {
  const Element child = getRoot().listChildren()[1];

  EXPECT_EQ(child.locate("none").line, 2u);
  EXPECT_EQ(child.locate("none").column, 26u);
}

INSTANTIATE_TEST_SUITE_P(Element, BothElements, testing::Bool(), [](const auto& instance) {
  return instance.param ? "OfALegacyDocument" : "OfANewerDocument";
});

}  // namespace
