#include <gtest/gtest.h>

#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::findError;
using PlatformTest::repeat;

namespace {

struct Row {
  std::string text;
  std::string reason;
};

void expectReasons(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    const auto error = findError(row.text);
    ASSERT_TRUE(error.has_value()) << row.text;
    EXPECT_EQ(error->getReason(), row.reason) << row.text.substr(0, 200);
  }
}

/// Why an element is not added.
template <class Call>
std::string findRefusal(const Call& call) {
  try {
    call();
  } catch (const std::invalid_argument& refusal) {
    return refusal.what();
  }
  return {};
}

}  // namespace

TEST(XmlReason, NamesTheMarkupThatIsMalformed) {
  expectReasons({
      {"<a></b>", "this end tag does not close the element that is open"},
      {"<a b=1/>", "this attribute is malformed or not closed"},
      {"<a //>", "this start tag is malformed or not closed"},
      {"<a></a", "this end tag is malformed or not closed"},
      {"<ab></a", "this end tag does not close the element that is open"},
      {"<a></", "this end tag is malformed or not closed"},
      {"<!-- x", "this comment is malformed or not closed"},
      {"<a><![CDATA[x", "this CDATA section is malformed or not closed"},
      {"<a><!DOCTYPE a></a>", "this document type declaration is malformed or not closed"},
      {"<a><?=?></a>", "this processing instruction is malformed or not closed"},
      {"<a><!x></a>", "a tag cannot start like this"},
      {"<a>", "the text ends before its last element is closed"},
  });
}

TEST(XmlReason, NamesTheRuleThatIsBroken) {
  expectReasons({
      {"text<a/>", "text outside the root element"},
      {"<a/><bc/>", "a second root element, <bc>"},
      {"<a/><?xml version='1.0'?>", "the XML declaration must come first"},
      {"&#32;<?xml version='1.0'?><a/>", "the XML declaration must come first"},
      {"<a/><!DOCTYPE a>", "one document type declaration may stand before the root element"},
      {repeat("<a>", 1001) + repeat("</a>", 1001),
       "elements are nested more than 1000 levels deep"},
      {"<?xml version='&#49;.0'?><a/>", "no reference may stand in the XML declaration"},
      {"<?xml a='?>'?><a/>", "a text in the XML declaration is not closed"},
      {"<a bc='1' bc='2'/>", "the attribute \"bc\" is given twice"},
      {"<a\xC3\x97/>", "this is no XML name"},
      {"<a b='<'/>", "'<' in an attribute is written &lt;"},
      {"<a>&</a>",
       "this '&' starts no reference that can be resolved; '&' itself is written &amp;"},
      {"<a><!-- -- --></a>", "\"--\" must not stand in a comment"},
      {"<!DOCTYPE a>", "the document has no root element"},
      {"<a>\x01</a>", "a control character that XML does not allow"},
      {std::string("<a>\0</a>", 8), "a NUL character; only 8-bit text such as UTF-8 can be read"},
  });
}

TEST(XmlReason, NamesTheRuleThatADocumentTypeBreaks) {
  expectReasons({
      {"<!DOCTYPE><a/>", "\"<!DOCTYPE\" is followed by white space and a name"},
      {"<!DOCTYPE ><a/>", "this document type declaration has no name"},
      {"<!DOCTYPE a", "this document type declaration is not closed"},
      {"<!DOCTYPE a x><a/>", "here the document type declaration must end with '>'"},
      {"&#13;<!DOCTYPE a x><a/>", "here the document type declaration must end with '>'"},
      {"X<!DOCTYPE a x><a/>", "here the document type declaration must end with '>'"},
      {"<!-- <b> --><!DOCTYPE a x><a/>", "here the document type declaration must end with '>'"},
      {"<?p <b>?><!DOCTYPE a x><a/>", "here the document type declaration must end with '>'"},
      {"<!DOCTYPE a PUBLIC '{' 'x'><a/>",
       "this public identifier holds a character that none may hold"},
      {"<!DOCTYPE a SYSTEM'x'><a/>", "white space and a quoted text must stand here"},
      {"<!DOCTYPE a SYSTEM x><a/>", "a quoted text must stand here"},
      {"<!DOCTYPE a SYSTEM 'x><a/>", "this quoted text is not closed"},
      {"<!DOCTYPE a [", "this '[' of the document type is not closed"},
      {"<!DOCTYPE a [%1;]><a/>", "'%' is followed by the name of an entity and ';'"},
      {"<!DOCTYPE a [%p]><a/>", "the name of an entity ends with ';'"},
      {"<!DOCTYPE a [x]><a/>", "this cannot stand in a document type"},
      {"<!DOCTYPE a [<!ENTITY>]><a/>", "white space must stand here"},
      {"<!DOCTYPE a [<!-- x", "this comment is not closed"},
      {"<!DOCTYPE a [<!-- -- -->]><a/>", "\"--\" must not stand in a comment"},
      {"<!DOCTYPE a [<?p x", "this processing instruction is not closed"},
      {"<!DOCTYPE a [<?1?>]><a/>", "this is no XML name"},
      {"<!DOCTYPE a [<?xml?>]><a/>", "no instruction may be named like this"},
      {"<!DOCTYPE a [<!ENTITY b ", "this declaration is not closed"},
      {"<!DOCTYPE a [<!ENTITY b <", "'<' must not stand in a declaration"},
  });
}

TEST(XmlReason, OfAStreamThatCannotBeReadTellsSo) {
  std::istream none(nullptr);
  std::istringstream failed("<a/>");
  failed.setstate(std::ios::failbit);

  EXPECT_EQ(findError(none)->getReason(), "there is nothing to read from");
  EXPECT_EQ(findError(failed)->getReason(), "the text cannot be read from here on");
}

TEST(XmlReason, OfANameTellsTheName) {
  KvXmlTree tree;

  EXPECT_EQ(findRefusal([&tree] { tree.open("1a", false); }), "\"1a\" is no XML name");
}

TEST(XmlReason, OfAnElementThatIsNotAddedTellsWhy) {
  KvXmlTree tree;
  KvXmlTree otherTree;
  KvXmlData* const root = tree.open("a", false);
  KvXmlData other("b", otherTree.open("a", false));
  KvXmlData standalone("c", nullptr);
  KvXmlData below("d", &standalone);
  KvXmlData child("e", root);

  EXPECT_EQ(findRefusal([&] { root->addChild(nullptr); }), "no element to add");
  EXPECT_EQ(findRefusal([&] { root->addChild(&other); }),
            "the element was made for another document");
  EXPECT_EQ(findRefusal([&] { below.addChild(&standalone); }),
            "an element cannot be added to one that was made for it");
  EXPECT_EQ(findRefusal([&] { tree.open("f", false)->addChild(root); }),
            "the element was added before");
  EXPECT_EQ(findRefusal([&] { child.addChild(&child); }),
            "an element cannot be added below itself");
}
