#include "documents/markup.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using Markup::nowhere;

TEST(Markup, EndsWhereItsKindSays) {
  const struct {
    const char* text;
    std::size_t end;
  } rows[] = {
      {"<a>x", 3},
      {"<a b='>' c=\">'\"/>x", 17},
      {"</a>x", 4},
      {"<!-- > -- > -->x", 15},
      {"<![CDATA[ > ]] > ]]>x", 20},
      {"<?a > ? > ?>x", 12},
      {"<!DOCTYPE a SYSTEM '>'>x", 23},
      {"<!DOCTYPE a [<!ENTITY b \"]>\"> <!-- '] > --> <?c ]>?> ]>x", 55},
  };
  for (const auto& row : rows) EXPECT_EQ(Markup::findEnd(row.text, 0), row.end) << row.text;
}

TEST(Markup, WithoutAnEndEndsNowhere) {
  for (const char* text : {"<", "<a", "<a b='>", "<!-- >", "<!-->", "<![CDATA[ > ]]", "<?a >",
                           "<!DOCTYPE a [>", "<!DOCTYPE a '>", "<!DOCTYPE a [<!-- ]>"})
    EXPECT_EQ(Markup::findEnd(text, 0), nowhere) << text;
}

TEST(MarkupElement, EndsBehindItsEndTag) {
  const struct {
    const char* text;
    std::size_t end;
  } rows[] = {
      {"<a/><b/>", 4},
      {"<a b='/>'/><b/>", 11},
      {"<a></a><b/>", 7},
      {"<a><a/>t<a></a ></a><a/>", 20},
      {"<a><!-- </a> --><?b </a>?><![CDATA[</a>]]></a><a/>", 46},
  };
  for (const auto& row : rows) EXPECT_EQ(Markup::findElementEnd(row.text, 0), row.end) << row.text;
}

TEST(MarkupElement, StartsAnywhere) { EXPECT_EQ(Markup::findElementEnd("<x><a></a></x>", 3), 10u); }

TEST(MarkupElement, WithoutAnEndTagEndsNowhere) {
  for (const char* text : {"<a>", "<a><a></a>", "<a", "<a><b"})
    EXPECT_EQ(Markup::findElementEnd(text, 0), nowhere) << text;
}

TEST(MarkupRoot, StandsBehindTheProlog) {
  const struct {
    const char* text;
    std::size_t root;
  } rows[] = {
      {"<a/>", 0},
      {" \t\r\n<a/>", 4},
      {"\xEF\xBB\xBF<a/>", 3},
      {"<?xml?>\n<!-- <b> --><!DOCTYPE a [<!ENTITY c '<b>'>]><?d?><a/>", 57},
  };
  for (const auto& row : rows) EXPECT_EQ(Markup::findRoot(row.text), row.root) << row.text;
}

TEST(MarkupRoot, IsNowhereBehindAnythingElse) {
  for (const char* text : {"", " ", "text <a/>", "<?xml?>", "\xEF\xBB<a/>"})
    EXPECT_EQ(Markup::findRoot(text), nowhere) << text;
}

TEST(MarkupName, EndsBeforeAttributesAndEnds) {
  for (const char* text : {"<ab c='d'/>", "<ab\n>", "<ab\t>", "<ab\r>", "<ab/>", "<ab>", "<ab"})
    EXPECT_EQ(Markup::readName(text, 0), "ab") << text;
}

TEST(MarkupStartTag, TellsWhereItsAttributesStand) {
  const std::string text = "x<ab\tc='1>' \r\n d = \"'/\"/>";
  const Markup::StartTag tag = Markup::readStartTag(text, 1);

  EXPECT_EQ(tag.begin, 1u);
  EXPECT_EQ(tag.nameEnd, 4u);
  EXPECT_EQ(tag.end, text.size());
  EXPECT_TRUE(tag.isEmpty);
  ASSERT_EQ(tag.attributes.size(), 2u);
  const auto cut = [&](Markup::Range range) {
    return text.substr(range.begin, range.end - range.begin);
  };
  EXPECT_EQ(cut(tag.find("c")->all), "\tc='1>'");
  EXPECT_EQ(cut(tag.find("c")->value), "1>");
  EXPECT_EQ(tag.find("c")->quote, '\'');
  EXPECT_EQ(cut(tag.find("d")->all), " \r\n d = \"'/\"");
  EXPECT_EQ(cut(tag.find("d")->value), "'/");
  EXPECT_EQ(tag.find("d")->quote, '"');
  EXPECT_EQ(tag.find("e"), nullptr);
}

TEST(MarkupStartTag, MayHaveNoAttributesAndContent) {
  for (const char* text : {"<a>b</a>", "<a >", "<a\n>"}) {
    const Markup::StartTag tag = Markup::readStartTag(text, 0);
    EXPECT_TRUE(tag.attributes.empty()) << text;
    EXPECT_FALSE(tag.isEmpty) << text;
    EXPECT_EQ(tag.nameEnd, 2u) << text;
  }
}

TEST(MarkupEncoding, IsWhatTheDeclarationNames) {
  const struct {
    const char* text;
    const char* encoding;
  } rows[] = {
      {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", "ISO-8859-1"},
      {"<?xml version=\"1.0\" encoding = \"UTF-8\" standalone='yes'?>", "UTF-8"},
      {"<?xml version='1.0'?><a encoding='b'/>", ""},
      {"<?xml version='1.0' encoding='a", ""},
      {"\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>", ""},
      {"<?other encoding='a'?>", ""},
      {" <?xml encoding='a'?>", ""},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(Markup::readEncoding(row.text), row.encoding) << row.text;
}

TEST(MarkupProlog, HoldsNoElementAndNoText) {
  for (const char* text :
       {"", "\n", "<?xml version='1.0'?>\r\n", "\xEF\xBB\xBF<!-- a --> <?b?>", "<!DOCTYPE a>"})
    EXPECT_TRUE(Markup::isProlog(text)) << text;
  for (const char* text : {"a", "<a>", "<?xml?><a/>", "<!-- a", "<?xml?", "<!DOCTYPE a ["})
    EXPECT_FALSE(Markup::isProlog(text)) << text;
}

TEST(Markup, FindsNoEndOfADeclarationThatIsCutOff) {
  for (const char* text : {"<!DOCTYPE", "<!DOCTYPE a", "<!DOCTYPE a [", "<!DOCTYPE a \"b>"})
    EXPECT_EQ(Markup::findEnd(text, 0), Markup::nowhere) << text;
}

}  // namespace
