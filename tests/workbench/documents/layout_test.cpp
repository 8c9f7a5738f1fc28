#include "documents/layout.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Edit;
using Documents::Layout;
using Documents::TagStyle;

TEST(LayoutStyle, IsThatOfTheLastAttributeAndOfTheEnd) {
  const struct {
    const char* tag;
    const char* separator;
    char quote;
    const char* closing;
  } rows[] = {
      {"<a/>", " ", '"', " />"},
      {"<a b=\"1\"/>", " ", '"', "/>"},
      {"<a b='1'  c='2' />", "  ", '\'', " />"},
      {"<a\r\n\tb=\"1\"\r\n/>", "\r\n\t", '"', "\r\n/>"},
      {"<a b='1'></a>", " ", '\'', " />"},
  };
  for (const auto& row : rows) {
    const TagStyle style = Layout(row.tag).findStyle(Markup::readStartTag(row.tag, 0));
    EXPECT_EQ(style.separator, row.separator) << row.tag;
    EXPECT_EQ(style.quote, row.quote) << row.tag;
    EXPECT_EQ(style.closing, row.closing) << row.tag;
  }
}

TEST(LayoutAttribute, BelongsBehindTheLastOne) {
  const struct {
    const char* tag;
    std::size_t end;
  } rows[] = {{"<ab/>", 3}, {"<ab />", 3}, {"<ab c='d' />", 9}, {"<ab c='d'\n>", 9}};
  for (const auto& row : rows)
    EXPECT_EQ(Layout(row.tag).findAttributeEnd(Markup::readStartTag(row.tag, 0)), row.end)
        << row.tag;
}

TEST(LayoutIndentation, IsWhatStandsBeforeOnTheSameLine) {
  const struct {
    const char* text;
    const char* indentation;
  } rows[] = {
      {"<a/>", ""},       {"  <a/>", ""},
      {"x\n<a/>", "\n"},  {"x\n \t<a/>", "\n \t"},
      {"x\n  y<a/>", ""}, {"x\r\n  <a/>", "\r\n  "},
      {"<b/> <a/>", ""},
  };
  for (const auto& row : rows) {
    const std::string text = row.text;
    EXPECT_EQ(Layout(text).findIndentation(text.find("<a")), row.indentation) << row.text;
  }
}

TEST(LayoutLine, EndsBehindComments) {
  const struct {
    const char* text;
    std::size_t end;
  } rows[] = {{"<a/>", 4},
              {"<a/>\n", 4},
              {"<a/>  \r\n", 4},
              {"<a/> <!-- -->\n", 13},
              {"<a/><!----> \t<!-- -->", 21},
              {"<a/>x", Markup::nowhere},
              {"<a/> <!-- --><b/>\n", Markup::nowhere}};
  for (const auto& row : rows) EXPECT_EQ(Layout(row.text).findLineEnd(4), row.end) << row.text;
}

TEST(LayoutLines, AreThoseOfAnElementThatStandsAlone) {
  const struct {
    const char* text;
    const char* left;
  } rows[] = {
      {"x\n  <a/>\ny", "x\ny"}, {"x\r\n\t<a/> \r\ny", "x\r\ny"},
      {"x\n<a/>y\n", "x\ny\n"}, {"x\n<b/><a/>\ny", "x\n<b/>\ny"},
      {"<a/>\ny", "\ny"},       {"x\n<a/>", "x\n"},
  };
  for (const auto& row : rows) {
    const std::string text = row.text;
    const std::size_t begin = text.find("<a");
    Edit edit;
    edit.erase(Layout(text).widenToLines({begin, begin + 4}));
    EXPECT_EQ(edit.apply(text), row.left) << row.text;
  }
}

/// `text` with these children at the end of its first element <a>.
std::string addChildren(const std::string& text, const std::vector<std::string>& children) {
  const std::size_t begin = text.find("<a");
  Edit edit;
  Layout(text).addChildren({begin, Markup::findElementEnd(text, begin)}, children, edit);
  return edit.apply(text);
}

TEST(LayoutChildren, StandOnLinesOfTheirOwn) {
  const struct {
    const char* text;
    const char* result;
  } rows[] = {
      {"<a/>", "<a>\n  <b/>\n  <c/>\n</a>"},
      {"<a d='1' />", "<a d='1'>\n  <b/>\n  <c/>\n</a>"},
      {"<a></a>", "<a>\n  <b/>\n  <c/>\n</a>"},
      {"<x>\r\n\t<a/>\r\n</x>", "<x>\r\n\t<a>\r\n\t\t<b/>\r\n\t\t<c/>\r\n\t</a>\r\n</x>"},
      {"<x>\n   <a>\n   </a>\n</x>", "<x>\n   <a>\n      <b/>\n      <c/>\n   </a>\n</x>"},
      {"<a><!-- d -->\n</a>", "<a><!-- d -->\n  <b/>\n  <c/>\n</a>"},
      {"<x><a/></x>\r\n", "<x><a>\r\n  <b/>\r\n  <c/>\r\n</a></x>\r\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(addChildren(row.text, {"<b/>", "<c/>"}), row.result);
}

TEST(LayoutChild, StandsAroundItsOwnChildren) {
  const std::string text = "<x>\n <a/>\n</x>";
  Edit edit;
  Layout(text).addChild({0, text.size()}, "<l>", {"<b/>", "<c/>"}, "</l>", edit);

  EXPECT_EQ(edit.apply(text), "<x>\n <a/>\n <l>\n  <b/>\n  <c/>\n </l>\n</x>");
}

}  // namespace
