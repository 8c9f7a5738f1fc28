#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "kv/xml_n.h"
#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::print;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

bool isB(const KvXmlData& element) { return element.getName() == "b"; }

}  // namespace

TEST(XmlRemoval, EndsTheUnwantedChildrenWithAllBelow) {
  const auto tree = parse("<r><b><c/></b><!--kept--><a/><b/></r>");
  KvXmlData* const root = tree->findRoot("r", true);

  root->removeChildren(isB);

  EXPECT_EQ(print(*tree), declaration + "<r>\n  <!--kept-->\n  <a />\n</r>\n");
  ASSERT_EQ(root->getChildren().size(), 1u);
  EXPECT_EQ(root->getChildren()[0]->getName(), "a");
  EXPECT_EQ(root->findTree("c", true), nullptr);
}

TEST(XmlRemoval, LooksAtDirectChildrenOnly) {
  const auto tree = parse("<r><a><b/></a></r>");

  tree->findRoot("r", true)->removeChildren(isB);

  EXPECT_NE(tree->findRoot("r", true)->findTree("b", true), nullptr);
}

TEST(XmlRemoval, KeepsTheOtherElementsWhereTheyAre) {
  const auto tree = parse("<r><a n='1'/><b/><c n='2'/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  KvXmlData* const c = root->findTree("c", true);
  const KvXmlAttributeData* const n = c->findAttribute("n");

  root->removeChildren(isB);

  EXPECT_EQ(root->findTree("c", true), c);
  EXPECT_EQ(c->findAttribute("n"), n);
  EXPECT_EQ(n->getData(), "2");
}

TEST(XmlRemoval, EndsElementsThatWereAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  auto taken = std::make_unique<KvXmlData>("b", nullptr);
  auto below = std::make_unique<KvXmlData>("c", taken.get());
  taken->addChild(below.get());
  static_cast<void>(below.release());
  root->addChild(taken.get());
  static_cast<void>(taken.release());

  root->removeChildren(isB);

  EXPECT_EQ(print(tree), declaration + "<r />\n");
}

TEST(XmlRemoval, BelowAnElementWithoutAParentLetsThatBeAdded) {
  KvXmlTree tree;
  auto taken = std::make_unique<KvXmlData>("a", nullptr);
  auto below = std::make_unique<KvXmlData>("b", taken.get());
  below->setAttribute("n", std::string(1000000, 'x'), true);  // memory that is given back at once
  taken->addChild(below.get());
  static_cast<void>(below.release());
  taken->removeChildren(isB);

  tree.open("r", false)->addChild(taken.get());
  static_cast<void>(taken.release());

  EXPECT_EQ(print(tree), declaration + "<r>\n  <a />\n</r>\n");
}

TEST(XmlRemoval, BetweenTwoMovesLetsTheTreeEnd) {
  auto tree = std::make_unique<KvXmlTree>();
  auto inner = std::make_unique<KvXmlData>("a", nullptr);
  auto below = std::make_unique<KvXmlData>("b", inner.get());
  inner->addChild(below.get());
  static_cast<void>(below.release());
  auto outer = std::make_unique<KvXmlData>("c", nullptr);
  outer->addChild(inner.get());
  inner.release()->removeChildren(isB);
  tree->open("r", false)->addChild(outer.get());
  static_cast<void>(outer.release());
  EXPECT_EQ(print(*tree), declaration + "<r>\n  <c>\n    <a />\n  </c>\n</r>\n");

  tree.reset();
}

TEST(XmlRemoval, LeavesRoomForNewChildren) {
  const auto tree = parse("<r><b n='1' m='2'/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  ASSERT_NE(root->findTree("b", true)->findAttribute("m"), nullptr);

  root->removeChildren(isB);
  tree->open("r", false);
  tree->open("b", false)->setAttribute("m", 3, true);

  EXPECT_EQ(print(*tree), declaration + "<r>\n  <b m=\"3\" />\n</r>\n");
}

TEST(XmlRemoval, ChangesNothingWhenTheTestThrows) {
  const auto tree = parse("<r><b/><a/></r>");
  KvXmlData* const root = tree->findRoot("r", true);
  const auto refuseA = [](const KvXmlData& element) {
    if (element.getName() == "a") throw std::runtime_error("refused");
    return true;
  };

  EXPECT_THROW(root->removeChildren(refuseA), std::runtime_error);

  EXPECT_EQ(print(*tree), declaration + "<r>\n  <b />\n  <a />\n</r>\n");
  EXPECT_EQ(root->getChildren().size(), 2u);
}

TEST(XmlRemoval, LeavesNoWhiteSpaceThatStoodBetweenElements) {
  for (const char* const text :
       {"<b/></r>", " <b/></r>", "<b/> </r>", "\n<b> </b>\n</r>", " <b/> <b>text</b> </r>"}) {
    const auto tree = parse("<r n='>'>" + std::string(text));

    tree->findRoot("r", true)->removeChildren(isB);

    EXPECT_EQ(print(*tree), declaration + "<r n='>' />\n") << text;
  }
}

TEST(XmlRemoval, LeavesWhiteSpaceThatCounts) {
  const auto tree = parse("<r xml:space='preserve'> <b/>\n</r>");

  tree->findRoot("r", true)->removeChildren(isB);

  EXPECT_EQ(print(*tree), declaration + "<r xml:space='preserve'> \n</r>\n");
}

// A new element may stand in memory where one stood that was removed.
TEST(XmlRemoval, LeavesNoAttributesToNewElements) {
  KvXmlN::Document document("r");
  KvXmlN::Data& emptied = *document.getRoot().createChild("emptied");
  KvXmlN::Data& kept = *document.getRoot().createChild("kept");
  for (int i = 0; i < 2000; ++i) {
    emptied.createChild("a")->setAttribute("n", 1, true);
    emptied.removeChildren([](const KvXmlN::Data&) { return true; });

    ASSERT_EQ(kept.createChild("a")->findAttribute("n"), nullptr) << i;
  }
}

TEST(XmlRemoval, IsOfferedByTheNewerLibraryToo) {
  std::istringstream in("<r><b/><a/><b><c/></b></r>");
  KvXmlN::Document document(in);

  document.getRoot().removeChildren(
      [](const KvXmlN::Data& element) { return element.getName() == "b"; });

  std::ostringstream out;
  document.putToStream(out);
  EXPECT_EQ(out.str(), declaration + "<r>\n  <a />\n</r>\n");
  EXPECT_EQ(document.getRoot().getChildren().size(), 1u);
}
