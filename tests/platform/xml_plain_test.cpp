// Documents of nothing but tags, as programs write them, are looked through in their text; all
// others are looked through once they were parsed. Nothing of that shows.
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::findError;
using PlatformTest::parse;
using PlatformTest::print;
using PlatformTest::repeat;

namespace {

int getInteger(const KvXmlData& element, const std::string& name) {
  const KvXmlAttributeData* const attribute = element.findAttribute(name);
  return attribute != nullptr ? attribute->getInteger() : -1;
}

/// Names of each length up to `longest`; all of a length differ in one letter.
std::vector<std::string> makeNames(std::size_t longest) {
  std::vector<std::string> names;
  const std::string all = "abcdefghijklmnopqrstuvwxyz";
  for (std::size_t length = 1; length <= longest; ++length) {
    const std::string name = all.substr(0, length);
    names.push_back(name);
    for (std::size_t place = 0; place < length; ++place) {
      names.push_back(name);
      names.back()[place] = 'Z';
    }
  }
  return names;
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

// White space between tags means nothing where no element holds text, whatever the values hold:
// none is left when the elements are removed that it stood between.
TEST(PlainDocument, KeepsNoWhiteSpaceAmongItsTags) {
  const struct {
    std::string text;
    std::string root;
  } rows[] = {
      {"<r a=\">x\"> <b/>\n<b/>\r\n\t</r>", "<r a=\">x\" />"},
      {"<?xml version=\"1.0\"?>\n<r\na=\">x\"\tb=\"\" >\n<b/>\n</r>\n", "<r a=\">x\" b=\"\" />"},
      {"<r a=\"&gt;>x\">\n<bc d=\"1\" ef=\"2\"/>\n<bc d=\"3\" />\n</r >", "<r a=\"&gt;>x\" />"},
      {"<r a=\">x\">\n<b c=\"1\">\n<b c=\"2\"></b>\n</b>\n<c></c>\n</r>", "<r a=\">x\" />"},
      {"<r a=\"xml:space\">\n<b c=\"1\"/>\n<b cd=\"2\"/>\n</r>", "<r a=\"xml:space\" />"},
      {"<r a='1'> <b/>\n<b/>\t<b/>\r</r>", "<r a='1' />"},
      {"<r>\r\n<b/>\n\n<b/> \t \r</r>", "<r />"},
  };

  for (const auto& row : rows) {
    const auto tree = parse(row.text);
    tree->findRoot("r", true)->removeChildren([](const KvXmlData&) { return true; });

    EXPECT_EQ(print(*tree), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + row.root + "\n")
        << row.text;
  }
}

TEST(PlainDocument, IsRefusedWhereItIsMalformed) {
  const char* const texts[] = {
      "<r a=\"1\" b=\"2\" a=\"3\"/>",
      "<r><a n=\"1\"/><a n=\"1\" n=\"1\"/></r>",
      "<r a=\"1<2\"/>",
      "<r a=\"<\"/>",
      "<r a=\"1 & 2\"/>",
      "<r a=\"&\"/>",
      "<r><s a=\"/><t b=\"/></r>",
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
      "<r a=\"1\" a=\"2\"><?p?></r>",
      "<?p?><r a=\"1\" a=\"2\"><?q?>X</r>",
      "<r a=\"< b=\">\"></r>",
      ("<r><a x=\"1\" abc=\"1\"/><a y=\"1\"/><b x=\"1\" abc=\"1\"/><b y=\"1\"/>"
       "<a x=\"=\" abc=\"/><b x=\" k=\" abc=\"/></r>"),
      "<\xD7r/>",
  };

  for (const char* const text : texts) EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(PlainDocument, IsRefusedOneLevelTooDeepWhateverItsTagsLookLike) {
  constexpr std::size_t levels = 999;
  for (const std::string start : {"<a>", "<a0>", "<a b=\"/\">"}) {
    const std::string end = start == "<a0>" ? "</a0>" : "</a>";
    const std::string inside = repeat("<x/>", levels);
    const std::string deep = repeat(start, levels) + inside + repeat(end, levels);

    EXPECT_TRUE(findError("<r>" + deep + "</r>").has_value()) << start;
    EXPECT_FALSE(findError(deep).has_value()) << start;
  }
}

TEST(PlainDocument, IsNoneWhereATextLooksLikeTheEndOfATag) {
  const std::string printed = print(*parse("<r>><a>></a></r>"));

  EXPECT_EQ(printed, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<r>><a>></a></r>\n");
}

TEST(PlainDocument, IsNoneWhereValuesHoldWhatLooksLikeTags) {
  for (const char* const text : {"<r><s a='x\" b=\"'/>\"/></r>", "<r><s a='x\" b='/>\" /></r>"}) {
    const auto tree = parse(text);
    const KvXmlData& s = *tree->findRoot("r", true)->findTree("s", false);

    EXPECT_EQ(s.findAttribute("b"), nullptr) << text;
    EXPECT_EQ(s.getAttributeNames(), std::vector<std::string>{"a"}) << text;
  }
}

TEST(PlainDocument, FindsAttributesWhereOtherElementsHaveOneOfTheSameLength) {
  const auto tree = parse("<r><a x=\"1\"/><a y=\"2\"/><a x=\"3\"/></r>");
  const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();

  EXPECT_EQ(getInteger(*children[1], "y"), 2);
  EXPECT_EQ(getInteger(*children[1], "x"), -1);
  EXPECT_EQ(getInteger(*children[2], "x"), 3);
}

TEST(PlainDocument, TakesXmlNamesOnlyForNewElements) {
  for (const char* const text :
       {"<r/>", "<r n=\"1\"/>", "<r><a/></r>", "<!-- c --><r/>", "<?p?><r n='1'/>"}) {
    const auto tree = parse(text);
    tree->open("r", false);
    for (const char* const name : {"", "1", "a b", "!", "a="})
      EXPECT_THROW(tree->open(name, false), std::invalid_argument) << text << name;
  }
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

TEST(PlainDocument, FindsAttributesInAnyOrderWhereAllElementsHaveOthers) {
  constexpr std::size_t count = 1500;
  for (const std::string first : {"n=\"1\"", "n='1'"}) {
    std::string text = "<r>\n";
    for (std::size_t i = 0; i < count; ++i)
      text += "<a " + first + " n" + std::to_string(i) + "=\"2\" last=\"3\"/>\n";
    const auto tree = parse(text + "<a " + first + " other=\"4\"/></r>");

    const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
    ASSERT_EQ(children.size(), count + 1);
    for (std::size_t i = 0; i < count; ++i) {
      const KvXmlData& child = *children[i];
      EXPECT_EQ(getInteger(child, "last"), 3);
      EXPECT_EQ(getInteger(child, "n" + std::to_string(i)), 2);
      EXPECT_EQ(getInteger(child, "last"), 3);
      EXPECT_EQ(getInteger(child, "n"), 1);
      EXPECT_EQ(getInteger(child, "last"), 3);
      EXPECT_EQ(getInteger(child, "absent"), -1);
    }
    EXPECT_EQ(getInteger(*children.back(), "last"), -1);
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

TEST(PlainDocument, TellsNamesApartThatDifferInOneLetter) {
  const std::vector<std::string> names = makeNames(20);
  for (const std::string quote : {"\"", "'"}) {
    std::string text = "<r";
    for (std::size_t i = 0; i < names.size(); ++i)
      text += " " + names[i] + "=" + quote + std::to_string(i) + quote;
    const auto tree = parse(text + "/>");

    const KvXmlData& root = *tree->findRoot("r", true);
    for (std::size_t i = names.size(); i-- > 0;)
      EXPECT_EQ(getInteger(root, names[i]), static_cast<int>(i)) << names[i];
    for (std::string name : names) {
      name.back() = 'Y';
      EXPECT_EQ(getInteger(root, name), -1) << name;
    }
  }
}

TEST(PlainDocument, TellsNamesApartThatDifferInTheLetterBeforeAnUmlaut) {
  const auto tree = parse("<r b\xE4='1' c\xE4='2' d\xC3\xA4='3' e\xC3\xA4='4'/>");
  const KvXmlData& root = *tree->findRoot("r", true);

  EXPECT_EQ(getInteger(root, "c\xE4"), 2);
  EXPECT_EQ(getInteger(root, "b\xE4"), 1);
  EXPECT_EQ(getInteger(root, "e\xC3\xA4"), 4);
  EXPECT_EQ(getInteger(root, "d\xC3\xA4"), 3);
}

TEST(PlainDocument, FindsAttributesOfElementsBehindSomeWithOthers) {
  for (const char* const text :
       {"<r><a x=\"1\"/><a x=\"1\"/><a y=\"2\"/><a y=\"2\"/><a z=\"3\" y=\"2\" x=\"1\"/></r>",
        "<r><a x='1'/><a x='1'/><a y='2'/><a y='2'/><a z='3' y='2' x='1'/></r>"}) {
    const auto tree = parse(text);
    const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
    EXPECT_EQ(getInteger(*children[1], "x"), 1);
    EXPECT_EQ(getInteger(*children[1], "y"), -1);
    EXPECT_EQ(getInteger(*children[2], "x"), -1);
    EXPECT_EQ(getInteger(*children[2], "y"), 2);
    EXPECT_EQ(getInteger(*children[3], "y"), 2);
    EXPECT_EQ(getInteger(*children[4], "x"), 1);
    EXPECT_EQ(getInteger(*children[4], "z"), 3);
  }
}

TEST(PlainDocument, FindsAttributesOfHundredsOfKindsOfElements) {
  for (const std::string quote : {"\"", "'"}) {
    std::string text = "<r>";
    for (int i = 0; i < 1200; ++i) {
      const std::string number = std::to_string(i / 2);
      text += "<e" + number + " n" + number + "=" + quote + number + quote + "/>";
    }
    const auto tree = parse(text + "<empty/></r>");

    const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
    ASSERT_EQ(children.size(), 1201u);
    for (std::size_t i = 0; i < 1200; ++i)
      EXPECT_EQ(getInteger(*children[i], "n" + std::to_string(i / 2)), static_cast<int>(i / 2));
    EXPECT_EQ(getInteger(*children.back(), "n0"), -1);
  }
}

TEST(PlainDocument, FindsAttributesWhereverTheKindsOfElementsGrowTooMany) {
  for (int kinds = 1020; kinds < 1027; ++kinds) {
    std::string text = "<r>";
    for (int i = 0; i < kinds; ++i) text += "<e" + std::to_string(i) + "/>";
    const auto tree = parse(text + "<e0 n=\"1\"/></r>");

    const std::vector<KvXmlData*>& children = tree->findRoot("r", true)->getChildren();
    ASSERT_EQ(children.size(), static_cast<std::size_t>(kinds) + 1);
    EXPECT_EQ(getInteger(*children.front(), "n"), -1) << kinds;
    EXPECT_EQ(getInteger(*children.back(), "n"), 1) << kinds;
  }
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
