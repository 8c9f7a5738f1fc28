#include "kv/xml_position.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "kv/xml_n.h"
#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::TemporaryFile;

namespace {

std::string show(const KvXmlPosition& position) {
  return std::to_string(position.line) + ":" + std::to_string(position.column);
}

const std::string document =
    "<?xml version='1.0'?>\n<r a='1'>\n  <b/><c x='&lt;'\r\n  y=\"2\n3\" zz='4'/>\n</r>\n";

}  // namespace

TEST(XmlPosition, OfAnElementIsThatOfItsStartTag) {
  const auto tree = parse(document);
  const KvXmlData* const root = tree->findRoot("r", true);

  EXPECT_EQ(show(root->getPosition()), "2:1");
  EXPECT_EQ(show(tree->findRoot("r", true)->findTree("b", true)->getPosition()), "3:3");
  EXPECT_EQ(show(tree->findRoot("r", true)->findTree("c", true)->getPosition()), "3:7");
}

TEST(XmlPosition, OfAnAttributeIsThatOfItsName) {
  const auto tree = parse(document);
  const KvXmlData* const c = tree->findRoot("r", true)->findTree("c", true);

  EXPECT_EQ(show(c->getAttributePosition("x")), "3:10");
  EXPECT_EQ(show(c->getAttributePosition("y")), "4:3");
  EXPECT_EQ(show(c->getAttributePosition("zz")), "5:4");
}

TEST(XmlPosition, OfAnAttributeThatIsNotThereIsNowhere) {
  const auto tree = parse(document);

  EXPECT_EQ(show(tree->findRoot("r", true)->getAttributePosition("zz")), "0:0");
}

TEST(XmlPosition, IsThatInTheFileAlsoWhenLinesWereReadBefore) {
  const TemporaryFile written("<?xml version='1.0'?>\n\n<r>\n <b/></r>");
  std::ifstream file(written.get());
  std::string line;
  std::getline(file, line);
  const KvXmlTree tree(file);

  EXPECT_EQ(show(tree.findRoot("r", true)->getPosition()), "3:1");
  EXPECT_EQ(show(tree.findRoot("r", true)->findTree("b", true)->getPosition()), "4:2");
}

TEST(XmlPosition, OfWhatWasNotParsedIsNowhere) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);
  auto added = std::make_unique<KvXmlData>("d", root);
  auto taken = std::make_unique<KvXmlData>("e", nullptr);
  root->addChild(added.get());
  KvXmlData* const d = added.release();
  root->addChild(taken.get());
  KvXmlData* const e = taken.release();
  root->setAttribute("new", "text", true);

  EXPECT_EQ(show(d->getPosition()), "0:0");
  EXPECT_EQ(show(e->getPosition()), "0:0");
  EXPECT_EQ(show(root->getAttributePosition("new")), "0:0");
  EXPECT_EQ(show(KvXmlTree().open("r", false)->getPosition()), "0:0");
}

TEST(XmlPosition, OfAnAttributeStaysWhenItIsSetAgain) {
  const auto tree = parse(document);
  KvXmlData* const root = tree->findRoot("r", true);

  root->setAttribute("a", "a text that is longer than the one before", true);

  EXPECT_EQ(show(root->getAttributePosition("a")), "2:4");
}

TEST(XmlPosition, IsToldByTheNewerLibraryToo) {
  std::istringstream in(document);
  const KvXmlN::Document parsed(in);
  const KvXmlN::Data& root = parsed.getRoot();

  EXPECT_EQ(show(root.getPosition()), "2:1");
  EXPECT_EQ(show(root.getChildren()[1]->getPosition()), "3:7");
  EXPECT_EQ(show(root.getChildren()[1]->getAttributePosition("y")), "4:3");
  EXPECT_EQ(show(root.getAttributePosition("y")), "0:0");
  EXPECT_EQ(show(KvXmlN::Data("r").getPosition()), "0:0");
}

TEST(XmlAttributeNames, AreListedInTheirOrder) {
  const auto tree = parse(document);
  std::istringstream in(document);
  const KvXmlN::Document parsed(in);
  const std::vector<std::string> names = {"x", "y", "zz"};

  EXPECT_EQ(tree->findRoot("r", true)->findTree("c", true)->getAttributeNames(), names);
  EXPECT_EQ(parsed.getRoot().getChildren()[1]->getAttributeNames(), names);
  EXPECT_TRUE(parsed.getRoot().getChildren()[0]->getAttributeNames().empty());
}
