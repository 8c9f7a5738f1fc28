#include "kv/xml_view.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::print;

namespace {

const std::string document =
    "<r n='1'><a n='2'><b n='3'/><c n='4'><d n='5'/></c></a><a n='6'/><e n='7'><b n='8'/></e></r>";

}  // namespace

TEST(XmlView, OfAnElementIsTheSameHoweverItIsReached) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);

  KvXmlData* const d = root->findTree("d", true);
  KvXmlData* const a = root->findTree("a", false);

  ASSERT_EQ(root->getChildren().size(), 3u);
  EXPECT_EQ(root->getChildren()[0], a);
  ASSERT_EQ(a->getChildren().size(), 2u);
  EXPECT_EQ(a->getChildren()[1], a->findTree("c", false));
  EXPECT_EQ(a->getChildren()[1]->getChildren()[0], d);
  EXPECT_EQ(root->findTree("d", true), d);
}

TEST(XmlView, OfAnElementIsTheSameWhenChildrenAreAskedForFirst) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);
  const std::vector<KvXmlData*> children = root->getChildren();

  EXPECT_EQ(root->findTree("e", false), children[2]);
  EXPECT_EQ(root->findTree("e", true), children[2]);
  EXPECT_EQ(root->getChildren(), children);
}

TEST(XmlView, OfAnElementIsTheSameForTheCursor) {
  const auto tree = parse(document);
  KvXmlData* const e = tree->findRoot("r", true)->findTree("e", true);
  tree->open("r", false);

  EXPECT_EQ(tree->open("e", false), e);
}

TEST(XmlView, OfChildrenFoundInAnyOrderStandsInDocumentOrder) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);
  KvXmlData* const e = root->findTree("e", false);
  KvXmlData* const a = root->findTree("a", false);

  const std::vector<KvXmlData*>& children = root->getChildren();

  ASSERT_EQ(children.size(), 3u);
  EXPECT_EQ(children[0], a);
  EXPECT_EQ(children[1]->findAttribute("n")->getData(), "6");
  EXPECT_EQ(children[2], e);
}

TEST(XmlView, OfChildrenAddedBeforeTheOthersWereAskedForStandsInDocumentOrder) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->open("r", false);
  auto* const added = new KvXmlData("x", root);
  root->addChild(added);
  KvXmlData* const opened = tree->open("y", false);

  const std::vector<KvXmlData*>& children = root->getChildren();

  ASSERT_EQ(children.size(), 5u);
  EXPECT_EQ(children[0]->getName(), "a");
  EXPECT_EQ(children[3], added);
  EXPECT_EQ(children[4], opened);
}

TEST(XmlView, OfAnElementStaysValidWhileOthersAreAdded) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);
  KvXmlData* const d = root->findTree("d", true);
  const std::string& name = d->getName();

  for (int i = 0; i < 2000; ++i) {
    auto* const added = new KvXmlData("x" + std::to_string(i), i % 2 == 0 ? d : nullptr);
    d->addChild(added);
    ASSERT_EQ(added->getName(), "x" + std::to_string(i));
  }

  EXPECT_EQ(name, "d");
  EXPECT_EQ(&d->getName(), &name);
  EXPECT_EQ(d->findAttribute("n")->getInteger(), 5);
  EXPECT_EQ(d->getChildren().size(), 2000u);
  EXPECT_EQ(root->findTree("x1999", true), d->getChildren().back());
}

TEST(XmlView, OfAnAttributeStaysValidWhileOthersAreAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  std::vector<const KvXmlAttributeData*> attributes;
  for (int i = 0; i < 300; ++i) {
    const std::string name = "a" + std::to_string(i);
    root->setAttribute(name, i, true);
    attributes.push_back(root->findAttribute(name));
  }

  for (int i = 0; i < 300; ++i) {
    const auto place = static_cast<std::size_t>(i);
    ASSERT_NE(attributes[place], nullptr);
    EXPECT_EQ(attributes[place]->getInteger(), i);
    EXPECT_EQ(attributes[place]->getData(), std::to_string(i));
  }
}

TEST(XmlView, OfAnAttributeIsTheSameWhicheverWasAskedForBefore) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  std::vector<const KvXmlAttributeData*> attributes;
  for (const char* const name : {"a", "b", "c", "d", "e"}) {
    root->setAttribute(name, static_cast<int>(attributes.size()), true);
    attributes.push_back(root->findAttribute(name));
  }

  EXPECT_EQ(root->findAttribute("c"), attributes[2]);
  EXPECT_EQ(root->findAttribute("a"), attributes[0]);
  EXPECT_EQ(root->findAttribute("e"), attributes[4]);
  EXPECT_EQ(root->findAttribute("b"), attributes[1]);
  EXPECT_EQ(root->findAttribute("d"), attributes[3]);
}

TEST(XmlView, OfAnAttributeFollowsChangesMadeAfterOthersWereAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("r", false);
  root->setAttribute("a", 1, true);
  const KvXmlAttributeData* const before = root->findAttribute("a");
  ASSERT_EQ(before->getData(), "1");
  root->setAttribute("b", 2, true);
  const KvXmlAttributeData* const after = root->findAttribute("a");

  root->setAttribute("a", 7, true);

  EXPECT_EQ(before->getData(), "7");
  EXPECT_EQ(after->getData(), "7");
  EXPECT_EQ(before->getInteger(), 7);
}

TEST(XmlView, OfAnAttributeFollowsChangesOfItsText) {
  const auto tree = parse("<r a='1'/>");
  KvXmlData* const root = tree->open("r", false);
  const KvXmlAttributeData* const attribute = root->findAttribute("a");
  ASSERT_EQ(attribute->getData(), "1");

  root->setAttribute("a", std::string("a text longer than any that was here before"), true);
  EXPECT_EQ(attribute->getData(), "a text longer than any that was here before");
  tree->setAttribute("a", 2.5);
  EXPECT_EQ(attribute->getData(), "2.5");
  EXPECT_EQ(attribute->getDouble(), 2.5);
  root->setAttribute("a", std::string(), true);
  EXPECT_EQ(attribute->getData(), "");
  root->setAttribute("a", 3, true);
  EXPECT_TRUE(attribute->checkValue(3));
}

TEST(XmlView, OfAnAttributeReadsNumbersBeforeAndAfterItsText) {
  const auto tree = parse("<r a='1.5'/>");
  const KvXmlAttributeData* const attribute = tree->findRoot("r", true)->findAttribute("a");

  EXPECT_EQ(attribute->getDouble(), 1.5);
  EXPECT_EQ(attribute->getData(), "1.5");
  EXPECT_EQ(attribute->getDouble(), 1.5);
}

TEST(XmlView, OfAnAttributeGivesTheSameReferenceEachTime) {
  const auto tree = parse("<r a='1' b='2'/>");
  const KvXmlData* const root = tree->findRoot("r", true);

  const std::string& data = root->findAttribute("a")->getData();
  root->findAttribute("b")->getData();

  EXPECT_EQ(&root->findAttribute("a")->getData(), &data);
  EXPECT_EQ(data, "1");
}

TEST(XmlView, OfAnAttributeKeepsItsTextWhileOthersAreAdded) {
  const auto tree = parse("<r a='a rather long text that no small buffer holds'/>");
  KvXmlData* const root = tree->findRoot("r", true);
  const std::string& data = root->findAttribute("a")->getData();

  for (int i = 0; i < 100; ++i) {
    root->setAttribute("x" + std::to_string(i), i, true);
    root->findAttribute("x0");
  }

  EXPECT_EQ(data, "a rather long text that no small buffer holds");
}

TEST(XmlView, LeavesThePrintedDocumentAlone) {
  const auto looked = parse(document);
  KvXmlData* const root = looked->findRoot("r", true);
  for (KvXmlData* child : root->getChildren()) {
    child->findAttribute("n")->getData();
    child->findAttribute("missing");
    child->findTree("b", true);
    child->getChildren();
  }

  EXPECT_EQ(print(*looked), print(*parse(document)));
}
