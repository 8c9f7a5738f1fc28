#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "kv/xml_n.h"
#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::print;

namespace {

std::string declare(const std::string& encoding) {
  return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>\n";
}

/// What an attribute that is written so means in a document of this encoding.
std::string read(const std::string& encoding, const std::string& written) {
  const auto tree = parse(declare(encoding) + "<a b=\"" + written + "\"/>");
  return tree->findRoot("a", true)->findAttribute("b")->getData();
}

}  // namespace

TEST(XmlReference, ToACharacterBeyondAsciiIsUtf8WhereNoCodePageIsDeclared) {
  EXPECT_EQ(read("UTF-8", "&#228;&#x20AC;&#x1F600;"), "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(read("UTF-8", "\xE4&#228;"), "\xE4\xC3\xA4");
}

TEST(XmlReference, ToTheFirstAndTheLastCharacterOfEachLengthIsUtf8) {
  EXPECT_EQ(read("UTF-8", "&#x7F;&#x80;&#x7FF;"), "\x7F\xC2\x80\xDF\xBF");
  EXPECT_EQ(read("UTF-8", "&#x800;&#xFFFD;"), "\xE0\xA0\x80\xEF\xBF\xBD");
  EXPECT_EQ(read("UTF-8", "&#x10000;&#x10FFFF;"), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(XmlReference, ToACharacterOfTheDeclaredCodePageIsItsByte) {
  const struct {
    const char* encoding;
    const char* written;
    const char* expected;
  } rows[] = {
      {"ISO-8859-1", "M\xFCller &#252;", "M\xFCller \xFC"},
      {"ISO-8859-15", "500 &#8364;", "500 \xA4"},
      {"windows-1252", "500 &#8364;", "500 \x80"},
      {"CP1252", "&#x152;", "\x8C"},
      {"iso-8859-2", "&#261;", "\xB1"},
      {"Latin2", "&#261;", "\xB1"},
      {"windows-1251", "&#1046;", "\xC6"},
      {"KOI8-R", "&#1046;", "\xF6"},
      {"ISO-8859-16", "&#8364;", "\xA4"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(read(row.encoding, row.written), row.expected) << row.encoding;
}

TEST(XmlReference, ToACharacterThatTheCodePageDoesNotHaveIsUtf8) {
  EXPECT_EQ(read("ISO-8859-1", "&#8364;"), "\xE2\x82\xAC");
  EXPECT_EQ(read("windows-1252", "&#261;"), "\xC4\x85");
  EXPECT_EQ(read("ISO-8859-7", "&#xFFFD;"), "\xEF\xBF\xBD");
  EXPECT_EQ(read("IBM850", "&#228;"), "\xC3\xA4");
}

TEST(XmlReference, ToMarkupAndWhiteSpaceIsThatCharacter) {
  EXPECT_EQ(read("UTF-8", "&lt;&gt;&amp;&quot;&apos;&#9;&#10;&#13;&#32;"), "<>&\"'\t\n\r ");
  EXPECT_EQ(read("UTF-8", "&amp;lt;&#38;amp;"), "&lt;&amp;");
}

TEST(XmlReference, IsResolvedByTheNewerLibraryToo) {
  std::istringstream in(declare("ISO-8859-15") + "<a b=\"500 &#8364;\" c=\"&#49;2\"/>");
  const KvXmlN::Document document(in);
  const KvXmlN::Data& root = document.getRoot();

  EXPECT_EQ(root.findAttribute("b")->getData(), "500 \xA4");
  EXPECT_EQ(KvXmlN::AttributeIn::readString(root, "b"), "500 \xA4");
  EXPECT_EQ(root.getAttributeDouble("c"), 12.0);
  EXPECT_EQ(KvXmlN::AttributeIn::readDouble(root, "c"), 12.0);
  EXPECT_EQ(KvXmlN::AttributeIn::readInteger(root, "c"), 12);
}

TEST(XmlReference, MayStandInANumber) {
  const auto tree = parse("<a b='&#49;2' c='&#x31;.5' d='&#32;3'/>");
  KvXmlData* const root = tree->findRoot("a", true);

  EXPECT_EQ(root->findAttribute("b")->getInteger(), 12);
  EXPECT_TRUE(root->findAttribute("b")->checkValue(12));
  EXPECT_EQ(root->findAttribute("c")->getDouble(), 1.5);
  EXPECT_EQ(root->findAttribute("d")->getInteger(), 3);
}

TEST(XmlReference, IsPrintedAsItWasWrittenAfterItWasAskedFor) {
  const std::string document = declare("ISO-8859-1") + "<a b=\"&#8364; &#xFC;\">&#8364;</a>\n";
  const auto tree = parse(document);

  EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), "\xE2\x82\xAC \xFC");
  EXPECT_EQ(print(*tree), document);
}

TEST(XmlReference, GivesWayToWhatIsSet) {
  const auto tree = parse(declare("ISO-8859-1") + "<a b='&#252;&#252;' c='&#8364;'/>");
  KvXmlData* const root = tree->findRoot("a", true);
  const std::string& text = root->findAttribute("b")->getData();
  EXPECT_EQ(text, "\xFC\xFC");

  root->setAttribute("b", "it's \"&\"", true);

  EXPECT_EQ(root->findAttribute("b")->getData(), "it's \"&\"");
  EXPECT_EQ(text, "it's \"&\"");
  EXPECT_EQ(print(*tree),
            declare("ISO-8859-1") + "<a b=\"it's &quot;&amp;&quot;\" c='&#8364;' />\n");
}

TEST(XmlReference, GivesWayToWhatIsSetAlsoWhereThatIsWrittenAsTheOldOneMeant) {
  const auto tree = parse("<a b='&amp;amp;'/>");
  KvXmlData* const root = tree->findRoot("a", true);
  EXPECT_EQ(root->findAttribute("b")->getData(), "&amp;");

  root->setAttribute("b", "&", true);

  EXPECT_EQ(root->findAttribute("b")->getData(), "&");
}

TEST(XmlReference, GivesWayToWhatIsSetInTheNewerLibrary) {
  std::istringstream in(declare("ISO-8859-1") + "<a b='&#252;' c='&#8364;'/>");
  KvXmlN::Document document(in);
  KvXmlN::Data& root = document.getRoot();
  const std::string& text = root.findAttribute("b")->getData();

  root.setAttribute("b", "&", true);
  EXPECT_EQ(text, "&");
  root.setAttribute("b", 7, true);
  EXPECT_EQ(text, "7");
  root.setAttribute("b", 0.5);
  EXPECT_EQ(text, "0.5");
  root.setAttribute("b", 0.25, "%.1f");
  EXPECT_EQ(text, "0.2");
  std::ostringstream printed;
  document.putToStream(printed);
  EXPECT_EQ(printed.str(), declare("ISO-8859-1") + "<a b=\"0.2\" c='&#8364;' />\n");
}

// 0xD7 is a letter in the first, and the sign of multiplication in the second.
TEST(XmlNames, AreThoseOfTheDeclaredCodePage) {
  EXPECT_FALSE(PlatformTest::findError(declare("ISO-8859-5") + "<\xD7/>").has_value());
  EXPECT_FALSE(PlatformTest::findError(declare("windows-1251") + "<\x80/>").has_value());
  EXPECT_TRUE(PlatformTest::findError(declare("ISO-8859-1") + "<\xD7/>").has_value());
  EXPECT_TRUE(PlatformTest::findError(declare("ISO-8859-7") + "<a\xD2/>").has_value());
}

// A host may have set bytes of another encoding; what is printed then reads back.
TEST(XmlNames, MayBeInUtf8WhateverIsDeclared) {
  const auto tree = parse("<r\xC3\xA9/>");
  tree->findRoot("r\xC3\xA9", true)->setAttribute("a", "\xE4", true);
  const std::string printed = print(*tree);

  EXPECT_EQ(printed, declare("windows-1252") + "<r\xC3\xA9 a=\"\xE4\" />\n");
  EXPECT_EQ(PlatformTest::reprint(printed), printed);
}
