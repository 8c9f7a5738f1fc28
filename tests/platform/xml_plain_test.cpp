// Documents of nothing but tags, as programs write them, are looked through in their text; all
// others are looked through once they were parsed. Nothing of that shows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::findError;
using PlatformTest::parse;
using PlatformTest::print;

namespace {

int getInteger(const KvXmlData& element, const std::string& name) {
  const KvXmlAttributeData* const attribute = element.findAttribute(name);
  return attribute != nullptr ? attribute->getInteger() : -1;
}

}  // namespace

TEST(PlainDocument, IsReadWhateverWhiteSpaceStandsAmongItsTags) {
  const char* const texts[] = {
      "<r><a n=\"1\"/></r>",
      "\n<r>\r\n\t<a n=\"1\"></a>\n</r>\n\n",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r >\n  <a\n n=\"1\"\t/>\n</r >",
      "<?p a>b?><r><a n=\"1\" m=\"\"> </a></r>",
      "<r><a m=\"&#65;&lt;'>\" n=\"1\"/></r>",
  };

  for (const char* const text : texts) {
    const auto tree = parse(text);
    KvXmlData* const root = tree->findRoot("r", true);
    ASSERT_NE(root, nullptr) << text;
    ASSERT_EQ(root->getChildren().size(), 1u) << text;
    EXPECT_EQ(getInteger(*root->getChildren()[0], "n"), 1) << text;
  }
}

TEST(PlainDocument, IsRefusedWhereItIsMalformed) {
  const char* const texts[] = {
      "<r a=\"1\" b=\"2\" a=\"3\"/>",
      "<r><a n=\"1\"/><a n=\"1\" n=\"1\"/></r>",
      "<r a=\"1<2\"/>",
      "<r a=\"1 & 2\"/>",
      "<r a=\"&unknown;\"/>",
      "<r a=\"&#0;\"/>",
      "<r a=\"1\"b=\"2\"/>",
      "<r a=1/>",
      "<r a/>",
      "<r 1=\"1\"/>",
      "<r a=\"1\" /",
      "<r a=\"1\" / >",
      "<r a=\"1",
      "<r a=\"1\"",
      "<r",
      "<",
      "</r>",
      "</r><r>",
      "<r></s>",
      "<r></r x>",
      "<r><a></r></a>",
      "<r><a/>",
      "<r/><r/>",
      "<r></r>text",
      "<r/>&#65;",
      "<?p <r a=\"?>\"/>",
      "<?p <r/>",
      "<?xml version=\"&#49;.0\"?><r/>",
  };

  for (const char* const text : texts) EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(PlainDocument, FindsAttributesOfElementsThatAllHaveOthers) {
  constexpr int count = 1500;
  std::string text = "<r>\n";
  for (int i = 0; i < count; ++i) {
    const std::string number = std::to_string(i);
    text += "<a n=\"1\" n" + number + "=\"" + number + "\" last=\"2\"/>\n";
  }
  const auto tree = parse(text + "</r>");

  const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
  ASSERT_EQ(children.size(), static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const KvXmlData& child = *children[static_cast<std::size_t>(i)];
    EXPECT_EQ(getInteger(child, "n" + std::to_string(i)), i);
    EXPECT_EQ(getInteger(child, "n" + std::to_string(i + 1)), -1);
    EXPECT_EQ(getInteger(child, "last"), 2);
  }
}

TEST(PlainDocument, FindsWhatWasSetOnItsElements) {
  const auto tree = parse("<r><a n=\"1\"/><a n=\"2\"/></r>");
  const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
  children[1]->setAttribute("m", 3, true);
  EXPECT_EQ(getInteger(*children[0], "m"), -1);

  EXPECT_EQ(getInteger(*children[1], "m"), 3);
  EXPECT_EQ(getInteger(*children[0], "n"), 1);
  children[1]->setAttribute("m", 4, true);

  EXPECT_EQ(print(*tree),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<r>\n  <a n=\"1\" />\n  <a n=\"2\" m=\"4\" />\n</r>\n");
}

TEST(PlainDocument, TellsLongNamesApartThatDifferInTheMiddle) {
  const auto tree = parse(
      "<r TheSameBefore1TheSameBehind=\"1\" TheSameBefore2TheSameBehind=\"2\" a=\"3\" ab=\"4\" "
      "ba=\"5\" abcde=\"6\" abxde=\"7\"/>");
  const KvXmlData& root = *tree->findRoot("r", true);

  EXPECT_EQ(getInteger(root, "TheSameBefore2TheSameBehind"), 2);
  EXPECT_EQ(getInteger(root, "TheSameBefore1TheSameBehind"), 1);
  EXPECT_EQ(getInteger(root, "TheSameBefore3TheSameBehind"), -1);
  EXPECT_EQ(getInteger(root, "ba"), 5);
  EXPECT_EQ(getInteger(root, "ab"), 4);
  EXPECT_EQ(getInteger(root, "abxde"), 7);
  EXPECT_EQ(getInteger(root, "abcde"), 6);
}

TEST(PlainDocument, TellsTextsAndNumbersAsTheyAreSet) {
  const auto tree = parse("<r a=\"text\" b=\"12\"/>");
  KvXmlData* const root = tree->findRoot("r", true);
  const KvXmlAttributeData* const a = root->findAttribute("a");
  const KvXmlAttributeData* const b = root->findAttribute("b");
  EXPECT_EQ(a->getData(), "text");
  EXPECT_EQ(a->getInteger(), 0);
  EXPECT_EQ(b->getData(), "12");

  root->setAttribute("a", 34, true);
  root->setAttribute("b", std::string("other text"), true);

  EXPECT_EQ(a->getData(), "34");
  EXPECT_EQ(a->getInteger(), 34);
  EXPECT_EQ(b->getData(), "other text");
  EXPECT_EQ(root->findAttribute("b")->getInteger(), 0);
}
