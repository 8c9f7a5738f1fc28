#include <gtest/gtest.h>

#include <iomanip>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"
#include "support/comma_locale.h"

using PlatformTest::parse;
using PlatformTest::print;
using PlatformTest::repeat;
using PlatformTest::reprint;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// Documents with something of everything, and what each of them is printed as.
struct Sample {
  const char* name;
  std::string text;
  std::string printed;
};

const std::vector<Sample> samples = {
    {"empty root", "<a/>", declaration + "<a />\n"},
    {"open and closed root", "<a></a>", declaration + "<a />\n"},
    {"nested elements", "<a><b><c/></b><d/></a>",
     declaration + "<a>\n  <b>\n    <c />\n  </b>\n  <d />\n</a>\n"},
    {"text", "<a>some text</a>", declaration + "<a>some text</a>\n"},
    {"text with white space around", "<a>  some \n text\t</a>",
     declaration + "<a>  some \n text\t</a>\n"},
    {"white space as the only content", "<a> </a>", declaration + "<a> </a>\n"},
    {"line end as the only content", "<a>\n</a>", declaration + "<a>\n</a>\n"},
    {"comment", "<a><!-- one --></a>", declaration + "<a>\n  <!-- one -->\n</a>\n"},
    {"empty comment", "<a><!----></a>", declaration + "<a>\n  <!---->\n</a>\n"},
    {"CDATA", "<a><![CDATA[<raw> & ]] text]]></a>",
     declaration + "<a><![CDATA[<raw> & ]] text]]></a>\n"},
    {"empty CDATA", "<a><![CDATA[]]></a>", declaration + "<a><![CDATA[]]></a>\n"},
    {"instruction", "<a><?target  some data ?></a>",
     declaration + "<a>\n  <?target some data ?>\n</a>\n"},
    {"instruction without data", "<a><?target?></a>", declaration + "<a>\n  <?target?>\n</a>\n"},
    {"document type", "<!DOCTYPE a SYSTEM \"a.dtd\"><a/>",
     declaration + "<!DOCTYPE a SYSTEM \"a.dtd\">\n<a />\n"},
    {"document type with a subset", "<!DOCTYPE a [<!ENTITY b \"<c>\">\n<!-- d -->]><a/>",
     declaration + "<!DOCTYPE a [<!ENTITY b \"<c>\">\n<!-- d -->]>\n<a />\n"},
    {"outside the root", "<!-- before --><?pi one?><a/><!-- behind --><?pi two?>",
     declaration + "<!-- before -->\n<?pi one?>\n<a />\n<!-- behind -->\n<?pi two?>\n"},
    {"mixed content", "<a>one<b>two</b>three<c/>four</a>",
     declaration + "<a>one<b>two</b>three<c />four</a>\n"},
    {"mixed content with spaces", "<a>one <b>two</b> three</a>",
     declaration + "<a>one <b>two</b> three</a>\n"},
    {"text with CDATA", "<a>one<![CDATA[two]]>three</a>",
     declaration + "<a>one<![CDATA[two]]>three</a>\n"},
    {"order of attributes", "<a z='1' b='2' m='3' a='4'/>",
     declaration + "<a z='1' b='2' m='3' a='4' />\n"},
    {"empty attribute", "<a b=''/>", declaration + "<a b='' />\n"},
    {"references in text", "<a>&lt;&gt;&amp;&quot;&apos;&#65;&#8364;&#13;</a>",
     declaration + "<a>&lt;&gt;&amp;&quot;&apos;&#65;&#8364;&#13;</a>\n"},
    {"references in attributes", "<a b=\"&lt;&gt;&amp;&quot;&apos;&#65;&#8364;&#10;\"/>",
     declaration + "<a b=\"&lt;&gt;&amp;&quot;&apos;&#65;&#8364;&#10;\" />\n"},
    {"quotes in attributes", "<a b='\"' c=\"'\"/>", declaration + "<a b='\"' c=\"'\" />\n"},
    {"line ends and tabs in attributes", "<a b='1\r\n2\n3\r4\t5'/>",
     declaration + "<a b='1\r\n2\n3\r4\t5' />\n"},
    {"namespaces", "<n:a xmlns:n='urn:x' n:b='1'/>",
     declaration + "<n:a xmlns:n='urn:x' n:b='1' />\n"},
    {"code page", "<a b='\xE4'>\xFC</a>",
     "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<a b='\xE4'>\xFC</a>\n"},
    {"undefined in the code page", "<a b='\xE4'>\x81</a>",
     "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a b='\xE4'>\x81</a>\n"},
    {"UTF-8", "<a b='\xC3\xA4'>\xE2\x82\xAC</a>",
     declaration + "<a b='\xC3\xA4'>\xE2\x82\xAC</a>\n"},
    {"text behind an instruction", "<a><?p?> text</a>", declaration + "<a><?p?> text</a>\n"},
    {"white space among mixed content", "<a>one <b/> <c/>\n</a>",
     declaration + "<a>one <b /> <c />\n</a>\n"},
    {"white space as a reference", "<a><b/>&#32;<c/></a>",
     declaration + "<a><b />&#32;<c /></a>\n"},
    {"white space that is all of an element", "<a><b> </b>\n<c>t</c></a>",
     declaration + "<a>\n  <b> </b>\n  <c>t</c>\n</a>\n"},
    {"white space that counts", "<a xml:space='preserve'> <b> <c/> </b></a>",
     declaration + "<a xml:space='preserve'> <b> <c /> </b></a>\n"},
    {"white space that counts in a document of tags alone",
     "<a xml:space=\"preserve\"> <b /></a>\n",
     declaration + "<a xml:space=\"preserve\"> <b /></a>\n"},
    {"white space that counts by a reference", "<a xml:space='preserv&#101;'> <b/></a>",
     declaration + "<a xml:space='preserv&#101;'> <b /></a>\n"},
    {"text below elements that hold none", "<a> <b><c>t</c> <d/></b> </a>",
     declaration + "<a>\n  <b>\n    <c>t</c>\n    <d />\n  </b>\n</a>\n"},
    {"a single letter between elements", "<a> <b/>X<c/></a>",
     declaration + "<a> <b />X<c /></a>\n"},
    {"a single sign between elements", "<a> <b/>=<c/></a>", declaration + "<a> <b />=<c /></a>\n"},
    {"a sign at each place for text", "<a>=<b/>=</a>", declaration + "<a>=<b />=</a>\n"},
    {"a sign before an element", "<a>!<b/></a>", declaration + "<a>!<b /></a>\n"},
    {"a letter at each place for text", "<a>x<b>y</b>z</a>\n", declaration + "<a>x<b>y</b>z</a>\n"},
    {"a section between elements", "<a> <b/><![CDATA[x]]><c/></a>",
     declaration + "<a> <b /><![CDATA[x]]><c /></a>\n"},
    {"standalone", "<?xml version='1.0' standalone='yes'?><a/>",
     "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<a />\n"},
};

std::string printAttribute(const std::string& text) {
  KvXmlTree tree;
  tree.open("a", false)->setAttribute("b", text, true);
  return print(tree);
}

}  // namespace

TEST(XmlPrinting, StartsWithADeclarationOnALineOfItsOwn) {
  for (const Sample& sample : samples) {
    const std::string printed = reprint(sample.text);
    EXPECT_EQ(printed.compare(0, 6, "<?xml "), 0) << sample.name;
    EXPECT_EQ(printed.find("?>"), printed.find('\n') - 2) << sample.name;
  }
}

TEST(XmlPrinting, OfAnEmptyDocumentIsTheDeclaration) { EXPECT_EQ(print(KvXmlTree()), declaration); }

TEST(XmlPrinting, KeepsWhatWasParsed) {
  for (const Sample& sample : samples)
    EXPECT_EQ(reprint(sample.text), sample.printed) << sample.name;
}

TEST(XmlPrinting, ReadsBackAndPrintsTheSame) {
  for (const Sample& sample : samples) {
    const std::string printed = reprint(sample.text);
    EXPECT_EQ(reprint(printed), printed) << sample.name;
  }
}

TEST(XmlPrinting, IsAcceptedByAnotherParser) {
  SKIP_WITHOUT_SECOND_PARSER();
  for (const Sample& sample : samples)
    EXPECT_TRUE(PlatformTest::SecondParser::accepts(reprint(sample.text))) << sample.name;
}

TEST(XmlPrinting, OfEveryByteIsAcceptedByAnotherParser) {
  SKIP_WITHOUT_SECOND_PARSER();
  std::string all;
  for (int byte = 0; byte <= 0xFF; ++byte) all += static_cast<char>(byte);
  std::string upper = all.substr(0xA0);

  EXPECT_TRUE(PlatformTest::SecondParser::accepts(printAttribute(all)));
  EXPECT_TRUE(PlatformTest::SecondParser::accepts(printAttribute(upper)));
  EXPECT_TRUE(PlatformTest::SecondParser::accepts(printAttribute(all.substr(0, 0x80))));
}

TEST(XmlPrinting, OfBrokenUtf8IsAcceptedByAnotherParser) {
  SKIP_WITHOUT_SECOND_PARSER();
  for (const char* text :
       {"\xC3\xA4", "\xC3", "\xC0\x80", "\xED\xA0\x80", "\xEF\xBF\xBE", "\xEF\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xC2\x80", "\x81"})
    EXPECT_TRUE(PlatformTest::SecondParser::accepts(printAttribute(text))) << text;
}

TEST(XmlPrinting, KeepsTheVersionOfTheDeclaration) {
  EXPECT_EQ(reprint("<?xml version='1.1'?><a/>"),
            "<?xml version=\"1.1\" encoding=\"UTF-8\"?>\n<a />\n");
}

TEST(XmlPrinting, KeepsStandaloneOfTheDeclaration) {
  EXPECT_EQ(reprint("<?xml version='1.0' encoding='UTF-8' standalone='no'?><a/>"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n<a />\n");
}

TEST(XmlPrinting, DropsWhiteSpaceBetweenElementsOnly) {
  EXPECT_EQ(reprint("<a>\n\n\n<b/>\t<c> </c>     </a>\n\n"),
            declaration + "<a>\n  <b />\n  <c> </c>\n</a>\n");
}

TEST(XmlPrinting, AddsNoWhiteSpaceWhereAnElementWasSetToPreserveIt) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  root->setAttribute("xml:space", std::string("preserve"), true);
  tree.open("b", false);
  EXPECT_EQ(print(tree), declaration + "<a xml:space=\"preserve\"><b /></a>\n");

  for (const char* const text :
       {"<r><a n=\"1\"/><c><d/></c></r>", "<r><a n='1'/><c><d/></c></r>"}) {
    const auto parsed = parse(text);
    KvXmlData* const c = parsed->findRoot("r", true)->findTree("c", false);
    c->setAttribute("xml:space", std::string("preserve"), true);
    EXPECT_NE(print(*parsed).find("\n  <c xml:space=\"preserve\"><d /></c>\n"), std::string::npos);
  }
}

// Also where there is text elsewhere, or what might end a tag.
TEST(XmlPrinting, DropsWhiteSpaceBetweenElementsForGood) {
  for (const char* const start : {"<t />", "<t>text</t>", "<t><![CDATA[]]></t>", "<t n='>' />",
                                  "<t n=\">\" />", "<t>text</t><!-- --><?p?>"}) {
    const std::string before = std::string("<r> ") + start + "\n<a> <b> <c /> </b>\r<c /> <!----> ";
    const auto tree = parse(before + "</a> </r>");
    tree->open("r", false)->setAttribute("xml:space", std::string("preserve"), true);

    EXPECT_EQ(print(*tree), declaration + "<r xml:space=\"preserve\">" + start +
                                "<a><b><c /></b><c /><!----></a></r>\n");
  }
}

TEST(XmlPrinting, AddsNoWhiteSpaceWhereAnElementFromOutsidePreservesIt) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  auto outside = std::make_unique<KvXmlData>("b", nullptr);
  outside->setAttribute("xml:space", std::string("preserve"), true);
  auto below = std::make_unique<KvXmlData>("c", outside.get());
  outside->addChild(below.get());
  static_cast<void>(below.release());
  root->addChild(outside.get());
  static_cast<void>(outside.release());

  EXPECT_EQ(print(tree), declaration + "<a>\n  <b xml:space=\"preserve\"><c /></b>\n</a>\n");
}

TEST(XmlPrinting, KeepsWhiteSpaceBetweenCdataSections) {
  const std::string printed = reprint("<a><![CDATA[one]]> <![CDATA[two]]></a>");

  EXPECT_EQ(printed, declaration + "<a><![CDATA[one]]> <![CDATA[two]]></a>\n");
}

TEST(XmlPrinting, KeepsWhiteSpaceBesideCdata) {
  EXPECT_EQ(reprint("<a> <![CDATA[one]]> </a>"), declaration + "<a> <![CDATA[one]]> </a>\n");
}

TEST(XmlPrinting, KeepsLineEndsAsTheyWereParsed) {
  EXPECT_EQ(reprint("<?p a\r\nb\rc\n?>\r\n<a/>"), declaration + "<?p a\r\nb\rc\n?>\n<a />\n");
  EXPECT_EQ(reprint("<!DOCTYPE a\r\n[\r]>\r\n<a/>"), declaration + "<!DOCTYPE a\r\n[\r]>\n<a />\n");
  EXPECT_EQ(reprint("<a>one\r\ntwo\rthree\n</a>"), declaration + "<a>one\r\ntwo\rthree\n</a>\n");
}

TEST(XmlPrinting, KeepsACarriageReturnInText) {
  const std::string printed = reprint("<a>one&#13;two</a>");

  EXPECT_EQ(printed, declaration + "<a>one&#13;two</a>\n");
  EXPECT_EQ(reprint(printed), printed);
}

TEST(XmlPrinting, KeepsACarriageReturnAloneInText) {
  const std::string printed = reprint("<a>&#13;</a>");

  EXPECT_EQ(reprint(printed), printed);
}

TEST(XmlPrinting, KeepsCarriageReturnsInAttributes) {
  const std::string printed = reprint("<a b='&#13;&#10;&#9;'/>");

  EXPECT_EQ(parse(printed)->findRoot("a", true)->findAttribute("b")->getData(), "\r\n\t");
  EXPECT_EQ(reprint(printed), printed);
}

TEST(XmlPrinting, EscapesMarkupInAttributes) {
  EXPECT_EQ(printAttribute("<>&\"'"), declaration + "<a b=\"&lt;>&amp;&quot;'\" />\n");
}

TEST(XmlPrinting, EscapesWhiteSpaceInAttributes) {
  EXPECT_EQ(printAttribute("a\tb\nc\rd e"), declaration + "<a b=\"a&#09;b&#10;c&#13;d e\" />\n");
}

TEST(XmlPrinting, NeverPrintsForbiddenCharacters) {
  EXPECT_EQ(printAttribute(std::string("a\0b\x01"
                                       "c\x1F",
                                       6)),
            declaration + "<a b=\"a?b?c?\" />\n");
}

TEST(XmlPrinting, LeavesOutElementsThatWereNotAdded) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  KvXmlData detached("detached", root);
  detached.setAttribute("b", 1, true);

  EXPECT_EQ(print(tree), declaration + "<a />\n");
}

TEST(XmlPrinting, CanBeRepeatedWithTheSameResult) {
  const auto tree = parse("<a b='1'>text<c/></a>");

  EXPECT_EQ(print(*tree), print(*tree));
}

TEST(XmlPrinting, ContinuesAStreamWhereItStands) {
  std::ostringstream out;
  out << "before\n";

  parse("<a/>")->putToStream(out);
  out << "behind\n";

  EXPECT_EQ(out.str(), "before\n" + declaration + "<a />\nbehind\n");
}

TEST(XmlPrinting, IsAlikeUnderACommaLocale) {
  const TestSupport::CommaLocale locale;
  KvXmlTree tree;
  tree.open("a", false)->setAttribute("count", 1234567, true);
  tree.setAttribute("size", 1234.5);
  std::ostringstream out;

  tree.putToStream(out);

  EXPECT_EQ(out.str(), declaration + "<a count=\"1234567\" size=\"1234.5\" />\n");
}

TEST(XmlPrinting, OfAThousandLevelsReadsBack) {
  const std::string text = repeat("<a>", 1000) + repeat("</a>", 1000);
  const std::string printed = reprint(text);

  EXPECT_EQ(reprint(printed), printed);
}

// Else a document of 100 KB could print as 40 MB of blanks.
TEST(XmlPrinting, IndentsFiftyLevelsAtMost) {
  const std::string start = repeat("<a>", 60);
  const std::string printed = reprint(start + "<b/>" + repeat("</a>", 60));

  EXPECT_NE(printed.find("\n" + std::string(98, ' ') + "<a>\n" + std::string(100, ' ') + "<a>\n" +
                         std::string(100, ' ') + "<a>\n"),
            std::string::npos);
  EXPECT_NE(printed.find("\n" + std::string(100, ' ') + "<b />\n"), std::string::npos);
  EXPECT_EQ(reprint(printed), printed);
}

TEST(XmlPrinting, ShowsWhatWasChangedAmongWhatWasKept) {
  const auto tree = parse("<a x='1'><!-- kept --><b y='2'>text</b><c/></a>");
  KvXmlData* const root = tree->findRoot("a", true);
  root->setAttribute("x", 7, true);
  root->findTree("b", false)->setAttribute("z", std::string("new"), true);
  root->addChild(new KvXmlData("d", root));

  EXPECT_EQ(print(*tree), declaration +
                              "<a x=\"7\">\n  <!-- kept -->\n  <b y='2' z=\"new\">text</b>\n"
                              "  <c />\n  <d />\n</a>\n");
}
