#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "xml_suite/judgement.h"

// Small documents, each judged by what XML says of it, by libxml2 and by both XML libraries.

namespace {

using Documents = std::vector<std::string>;
using XmlSuite::judge;
using XmlSuite::Judgement;

std::string describe(const std::string& text, const Judgement& judgement) {
  return text + "\n" + list(judgement.deviations) + "\n" + judgement.details;
}

void expectTaken(const Documents& documents) {
  for (const std::string& text : documents) {
    const Judgement judgement = judge(text);
    EXPECT_TRUE(judgement.isAccepted && judgement.leniencies.empty() &&
                judgement.deviations.empty())
        << describe(text, judgement);
  }
}

void expectRefused(const Documents& documents) {
  for (const std::string& text : documents) {
    const Judgement judgement = judge(text);
    EXPECT_TRUE(!judgement.isAccepted && judgement.deviations.empty()) << describe(text, judgement);
  }
}

/// Not well-formed, but let pass on purpose.
void expectLetPass(const Documents& documents) {
  for (const std::string& text : documents) {
    const Judgement judgement = judge(text);
    EXPECT_TRUE(judgement.isAccepted && !judgement.leniencies.empty() &&
                judgement.deviations.empty())
        << describe(text, judgement);
  }
}

}  // namespace

TEST(SmallDocuments, WhiteSpaceOfAttributesAndTextsThatAreTaken) {
  expectTaken({"<r> <a/>&#32;<a/> </r>",
               "<r><a/>&#32;<a/></r>",
               "<r><a/>&#10;<a/></r>",
               "<r><?p?> text</r>",
               "<r> text <?p?> <a/></r>",
               "<r>text <a/> <a/> </r>",
               "<r><a/> text</r>",
               "<r a=\"x\ty\nz\r\nw\rv\"/>",
               "<r a=\"&#9;&#10;&#13;&#32;\"/>",
               "<r a=\"&#x9;&#xA;&#xD;&#x20;\"/>",
               "<r>a\r\nb\rc\nd</r>",
               "<r>a&#13;b&#xD;\n</r>",
               "<r>&#10;</r>",
               "<r>&#32;</r>",
               "<r>&#9; </r>",
               "<r>&#13;\n<a/></r>",
               "<r><!--c--> </r>",
               "<r> <!--c--></r>",
               "<r> </r>",
               "<r>\n</r>",
               "<r> <a> </a> </r>"});
}

TEST(SmallDocuments, CdataSectionsThatAreTaken) {
  expectTaken({"<r><![CDATA[ ]]></r>", "<r><a/><![CDATA[ ]]> <a/></r>", "<r><![CDATA[]]></r>",
               "<r> <![CDATA[x]]> </r>", "<r><![CDATA[a]]b]]></r>", "<r><![CDATA[]]]></r>",
               "<r><![CDATA[]]]]></r>", "<r><![CDATA[<&>\"']]></r>", "<r><![CDATA[a\r\nb]]></r>",
               "<r><![CDATA[a]]><![CDATA[b]]></r>", "<r><![CDATA[a]]>&gt;</r>", "<r a=\"]]>\"/>",
               "<r>]]&gt;</r>", "<r>]]&#62;</r>", "<r>]&#93;></r>"});
}

TEST(SmallDocuments, CdataSectionsThatAreLetPass) { expectLetPass({"<r>a]]>b</r>"}); }

TEST(SmallDocuments, CdataSectionsThatAreRefused) {
  expectRefused({"<r><![cdata[a]]></r>", "<r><![CDATA [a]]></r>", "<r><![CDATA[a]] ></r>",
                 "<![CDATA[x]]><r/>", "<r/><![CDATA[x]]>", "<r/><![CDATA[]]>"});
}

TEST(SmallDocuments, CharacterReferencesThatAreTaken) {
  expectTaken({"<r>&#xFFFD;</r>", "<r>&#xD7FF;</r>", "<r>&#xE000;</r>", "<r>&#x10FFFF;</r>",
               "<r>&#1114111;</r>", "<r>&#127;</r>", "<r>&#128;</r>", "<r>&#x85;</r>",
               "<r>&#x2028;</r>", "<r>&#xFDD0;</r>", "<r>&#x1FFFE;</r>",
               "<r>&#0000000000000000000000065;</r>", "<r>&#x0000000000000000000000041;</r>"});
}

TEST(SmallDocuments, CharacterReferencesThatAreRefused) {
  expectRefused({"<r>&#xFFFE;</r>",      "<r>&#xFFFF;</r>",      "<r>&#xD800;</r>",
                 "<r>&#xDFFF;</r>",      "<r>&#x110000;</r>",    "<r>&#1114112;</r>",
                 "<r>&#4294967361;</r>", "<r>&#x100000041;</r>", "<r>&#18446744073709551681;</r>",
                 "<r>&#0;</r>",          "<r>&#x0;</r>",         "<r>&#1;</r>",
                 "<r>&#8;</r>",          "<r>&#11;</r>",         "<r>&#31;</r>",
                 "<r>&#;</r>",           "<r>&#x;</r>",          "<r>&#xG;</r>",
                 "<r>&#X41;</r>",        "<r>&#65</r>",          "<r>&#65 ;</r>",
                 "<r>&# 65;</r>",        "<r>&#-65;</r>",        "<r>&#+65;</r>",
                 "<r>&#x-41;</r>"});
}

TEST(SmallDocuments, EntityReferencesThatAreTaken) {
  expectTaken({"<r>&lt;&gt;&amp;&quot;&apos;</r>", "<r>&amp;lt;</r>", "<r>&#38;lt;</r>",
               "<r>&#60;a/></r>", "<r a=\"&lt;&gt;&amp;&quot;&apos;\"/>",
               "<r a='&lt;&gt;&amp;&quot;&apos;\"'/>", "<r a=\"&#60;\"/>", "<r a=\"&#x3C;\"/>",
               "<r a=\"&#34;&#39;\"/>"});
}

TEST(SmallDocuments, EntityReferencesThatAreRefused) {
  expectRefused({"<r>&amp</r>", "<r>&</r>", "<r>& </r>", "<r>&;</r>", "<r>&a;</r>", "<r>&amp ;</r>",
                 "<r>& amp;</r>", "<r>&AMP;</r>", "<r>&nbsp;</r>"});
}

TEST(SmallDocuments, AttributesThatAreTaken) {
  expectTaken({"<r a=\">\"/>", "<r a=\"&#38;\"/>", "<r a=\"&#38;amp;\"/>", "<r a = \"1\"/>",
               "<r a\n=\n\"1\"\n/>", "<r a=\"\"/>"});
}

TEST(SmallDocuments, AttributesThatAreRefused) {
  expectRefused({"<r a=\"<\"/>", "<r a=\"&\"/>", "<r a=\"&a\"/>", "<r a=\"&a;\"/>",
                 "<r a=\"1\"a=\"2\"/>", "<r a=\"1\" a=\"2\"/>", "<r a=\"1\"b=\"2\"/>",
                 "<r a=\"1\" b/>", "<r a=1/>", "<r a=\"1/>", "<r a='1\"/>", "<r a/>", "<r =\"1\"/>",
                 "<r a= />", "<r \"1\"/>", "<r a=\"1\" =\"2\"/>", "<r a==\"1\"/>",
                 "<r a=\"1\" / >"});
}

TEST(SmallDocuments, TagsThatAreTaken) {
  expectTaken({"<r\t/>", "<r\n/>", "<r></r >", "<r></r\n>"});
}

TEST(SmallDocuments, TagsThatAreRefused) {
  expectRefused({"<r/ >",    "<r / >", "<r></ r>", "<r></r/>", "<r></r a=\"1\">",
                 "<r></>",   "<></>",  "<>",       "< r/>",    "<",
                 "<r",       "<r/",    "<r>",      "<r><",     "<r></",
                 "<r></r",   "<r/><",  "<r/>x",    "x<r/>",    "<r/><r/>",
                 "<r/></r>", "</r>",   "<r></R>",  "<R></r>",  "<r><a></r></a>"});
}

TEST(SmallDocuments, NamesThatAreTaken) {
  expectTaken({"<r.-1_:/>", "<:r/>", "<r:/>", "<a:b:c/>", "<a:b/>", "<r a:b=\"1\"/>",
               "<r xmlns:a=\"u\" a:b=\"1\"/>", "<r xmlns=\"u\"/>", "<r xmlns:a=\"\"/>",
               "<r xml:space=\"preserve\"> <a/> </r>",
               "<r xmlns:a=\"u\" xmlns:b=\"u\" a:c=\"1\" b:c=\"2\"/>", "<r\xC3\xA4/>",
               "<\xC3\xA4/>", "<r\xC2\xB7/>", "<r\xCC\x80/>", "<r\xE2\x80\xBF/>",
               "<\xF0\x90\x80\x80/>", "<r a\xC3\xA4=\"1\"/>"});
}

TEST(SmallDocuments, NamesThatAreRefused) {
  expectRefused({"<1/>", "<-r/>", "<.r/>", "<\xC2\xB7/>", "<\xCC\x80/>", "<\xC3\x97/>",
                 "<r\xC3\x97/>", "<\xCD\xBE/>", "<\xE2\x80\xBF/>", "<\xF3\xB0\x80\x80/>",
                 "<r 1a=\"1\"/>", "<r -a=\"1\"/>", "<r a&b=\"1\"/>", "<r a,b=\"1\"/>",
                 "<r a<b=\"1\"/>", "<r<a/>", "<r,/>", "<r;a/>", "<r'a'/>"});
}

TEST(SmallDocuments, CharactersThatAreTaken) {
  expectTaken({"<r>\xC2\x80\xC2\x85\xC2\x9F</r>", "<r>\xEF\xB7\x90</r>", "<r>\xF0\x9F\xBF\xBE</r>",
               "<r>\xF4\x8F\xBF\xBF</r>", "<r>\x7F</r>", "\xEF\xBB\xBF<r/>",
               "\xEF\xBB\xBF<?xml version=\"1.0\"?><r/>", "\xEF\xBB\xBF <r/>",
               "<r>\xEF\xBB\xBF</r>"});
}

TEST(SmallDocuments, CharactersThatAreLetPass) {
  expectLetPass({"<r>\xEF\xBF\xBE</r>", "<r>\xEF\xBF\xBF</r>", "<r>\xED\xA0\x80</r>",
                 "<r>\xF4\x90\x80\x80</r>", "<r>\xC0\x80</r>", "<r>\xE0\x80\xAF</r>", "<r>\xE4</r>",
                 "<r a=\"\xE4\"/>", "<r\xE4/>"});
}

TEST(SmallDocuments, CharactersThatAreRefused) {
  expectRefused({"<r>\x01</r>", "<r>\x0B</r>", "<r>\x1F</r>", "<r a=\"\x02\"/>", "<!--\x02--><r/>",
                 "<?p \x02?><r/>", "\xEF\xBB\xBF\xEF\xBB\xBF<r/>", "<r/>\xEF\xBB\xBF"});
}

TEST(SmallDocuments, CommentsThatAreTaken) {
  expectTaken({"<!----><r/>", "<!--->--><r/>", "<!-- - --><r/>",
               "<!-- & < > ]]> &foo; <?p?> --><r/>", "<r><!-- a --></r>", "<r/><!-- a -->",
               "<r/><!-- a\r\nb\rc -->"});
}

TEST(SmallDocuments, CommentsThatAreRefused) {
  expectRefused({"<!--><r/>", "<!---><r/>", "<!-- -- --><r/>", "<!-- ---><r/>", "<!--a-><r/>",
                 "<!-- --", "<!- - --><r/>", "<! -- --><r/>", "<r a=\"<!-- -->\"/>",
                 "<r <!-- --> a=\"1\"/>"});
}

TEST(SmallDocuments, InstructionsThatAreTaken) {
  expectTaken({"<?p?><r/>", "<?p ?><r/>", "<?p  x ?><r/>", "<?p\nx\r\ny?><r/>", "<?p ?\?><r/>",
               "<?p:q x?><r/>"});
}

TEST(SmallDocuments, InstructionsThatAreRefused) {
  expectRefused({"<? p?><r/>", "<?\?><r/>", "<?1?><r/>", "<?p>?><r/>", "<?p?\?><r/>", "<?p/?><r/>",
                 "<?p<?><r/>", "<?p x> <r/>"});
}

TEST(SmallDocuments, DeclarationsThatAreTaken) {
  expectTaken({"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\x80</r>",
               "<?xml version=\"1.0\" encoding=\"ISO-8859-2\"?><r>\xB1\xE6</r>",
               "<?xml version=\"1.0\" encoding=\"ISO-8859-2\"?><r a=\"\xC3\xA4\"/>",
               "<?xml version=\"1.0\" encoding=\"windows-1252\"?><r>\x80&#8364;</r>",
               "<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?><r a=\"\xA4\"/>",
               "<?xml version=\"1.0\" encoding=\"KOI8-R\"?><r a=\"\xC1\"/>",
               "<?xml version=\"1.0\" encoding=\"KOI8-R\"?><\xC1/>", "<?xml version=\"1.0\"?><r/>",
               "<?xml version='1.0' encoding='UTF-8' standalone='yes' ?><r/>",
               "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\xE4</r>",
               "<?xml version=\"1.1\"?><r/>", "<?xml version=\"1.2\"?><r/>",
               "<?xml-stylesheet href=\"a\"?><r/>", "<?xmlx?><r/>", "<?xm?><r/>",
               "<r><?xml-x?></r>"});
}

TEST(SmallDocuments, DeclarationsThatAreLetPass) {
  expectLetPass({"<?xml version=\"1.0\" encoding=\"\"?><r/>",
                 "<?xml?><r/>",
                 "<?xml ?><r/>",
                 "<?xml version=\"1.0\" standalone=\"yes\" encoding=\"UTF-8\"?><r/>",
                 "<?xml encoding=\"UTF-8\" version=\"1.0\"?><r/>",
                 "<?xml encoding=\"UTF-8\"?><r/>",
                 "<?xml version=\"1.0\" standalone=\"maybe\"?><r/>",
                 "<?xml version=\"1.0\" standalone=\"YES\"?><r/>",
                 "<?xml version=\"1.0\" encoding=\"1x\"?><r/>",
                 "<?xml version=\"1.0\" encoding=\"a b\"?><r/>",
                 "<?xml version=\"1.0\" encoding=\"unheard-of\"?><r/>",
                 "<?xml version=\"1.0\" encoding=\"UTF-16\"?><r/>",
                 "<?xml version=\"1.0\" encoding=\"US-ASCII\"?><r>\xE4</r>",
                 "<?xml version=\"1.0\" encoding=\"windows-1252\"?><r>\x81</r>",
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r>\xE4</r>",
                 "<?xml version=\"2.0\"?><r/>",
                 "<?xml version=\"1.a\"?><r/>",
                 "<?xml version=\"\"?><r/>",
                 "<?xml version=\"1.0\" a=\"1\"?><r/>",
                 "<?xml version=\"1.0\" a=\">\"?><r/>",
                 " <?xml version=\"1.0\"?><r/>",
                 "\n<?xml version=\"1.0\"?><r/>",
                 "<?XML version=\"1.0\"?><r/>",
                 "<?XML?><r/>"});
}

TEST(SmallDocuments, DeclarationsThatAreRefused) {
  expectRefused({"<?xml version=\"&#49;.0\"?><r/>",
                 "<?xml version=\"1.0\" a=\"&\"?><r/>",
                 "<?xml version=\"1.0\" standalone=yes?><r/>",
                 "<?xml version=\"1.0\"encoding=\"UTF-8\"?><r/>",
                 "<?xml version=\"1.1\"?><r>&#1;</r>",
                 "<?xml version=\"1.0\" version=\"1.0\"?><r/>",
                 "<?xml version=\"1.0\" ><r/>",
                 "<?xml version=\"1.0\"><r/>",
                 "<?xml version=\"1.0?><r/>",
                 "<?xml version=\"1.0\" ? ><r/>",
                 "<?xml version=\"1.0\"?\?><r/>",
                 "<?xml version=\"1.0\" a=\"<\"?><r/>",
                 "<?xml version=\"1.0\" a=\"?>\"?><r/>",
                 "<!-- --><?xml version=\"1.0\"?><r/>",
                 "<?p?><?xml version=\"1.0\"?><r/>",
                 "<?xml version=\"1.0\"?><?xml version=\"1.0\"?><r/>",
                 "<r><?xml version=\"1.0\"?></r>",
                 "<r/><?xml version=\"1.0\"?>",
                 "<?Xml x?><r/>",
                 "<?xML x y z?><r/>",
                 "<r><?XML x?></r>",
                 "<r/><?xMl?>"});
}

TEST(SmallDocuments, DocumentTypesThatAreTaken) {
  expectTaken({"<!DOCTYPE r><r/>",
               "<!DOCTYPE s><r/>",

               "<!DOCTYPE r []><r/>",
               "<!DOCTYPE r[]><r/>",
               "<!DOCTYPE r [ ] ><r/>",
               "<!DOCTYPE r SYSTEM \"a\"><r/>",
               "<!DOCTYPE r SYSTEM 'a\"b'><r/>",
               "<!DOCTYPE r SYSTEM \"a>b\"><r/>",
               "<!DOCTYPE r SYSTEM \"a[b\"><r/>",
               "<!DOCTYPE r PUBLIC \"a\" \"b\"><r/>",
               "<!DOCTYPE r PUBLIC 'a' \"b\" []><r/>",
               "<!DOCTYPE r [<!-- ]> -->]><r/>",
               "<!DOCTYPE r [<?p ]> ?>]><r/>",
               "<!DOCTYPE r [<!ENTITY a \"]>\">]><r/>",
               "<!DOCTYPE r [<!ENTITY a ']>'>]><r/>",
               "<!DOCTYPE r [<!-- \" -->]><r/>",
               "<!DOCTYPE r [<?p \" ?>]><r/>",
               "<!DOCTYPE r [<!ENTITY a \"<!--\">]><r/>",
               "<!DOCTYPE r [<!ENTITY amp \"x\">]><r>&amp;</r>",
               "<!DOCTYPE r [<!ATTLIST r a CDATA \"1\">]><r/>",
               "<!DOCTYPE r [<!ATTLIST r a NMTOKENS \"1\">]><r a=\"  1  2 \"/>",
               "<!DOCTYPE r [<!ELEMENT r ANY>]><r> <r/> </r>",
               "<!DOCTYPE r [<!ENTITY a \"\r\n\">]><r/>",
               "<!DOCTYPE r [\r\n<!ELEMENT r ANY>\r]><r/>"});
}

TEST(SmallDocuments, DocumentTypesThatAreLetPass) {
  expectLetPass({"<!DOCTYPE r [<!ENTITY a \"&\">]><r/>",
                 "<!DOCTYPE r [<!ENTITY % a \"x\">%a;]><r/>", "<!DOCTYPE r [%a;]><r/>"});
}

TEST(SmallDocuments, DocumentTypesThatAreRefused) {
  expectRefused({"<!DOCTYPE r [<!FOO>]><r/>",
                 "<!DOCTYPE 1><r/>",
                 "<!DOCTYPE r [] x><r/>",
                 "<!DOCTYPE r SYSTEM><r/>",
                 "<!DOCTYPE r SYSTEM \"a\" \"b\"><r/>",
                 "<!DOCTYPE r SYSTEM\"a\"><r/>",
                 "<!DOCTYPE rSYSTEM \"a\"><r/>",
                 "<!DOCTYPE r PUBLIC \"a\"><r/>",
                 "<!DOCTYPE r PUBLIC \"a\"\"b\"><r/>",
                 "<!DOCTYPE r PUBLIC \"{\" \"b\"><r/>",
                 "<!DOCTYPE r system \"a\"><r/>",
                 "<!DOCTYPE r x><r/>",
                 "<!DOCTYPE r \"x\"><r/>",
                 "<!DOCTYPE r <!-- --> ><r/>",
                 "<!DOCTYPE r <?p?> ><r/>",
                 "<!DOCTYPE r []]><r/>",
                 "<!DOCTYPE r [[]]><r/>",
                 "<!DOCTYPE r [ > <r b=\"&foo;\" c=\"x\">&bar; &</r>",
                 "<!DOCTYPE animal {...]><animal/>",
                 "<!DOCTYPE r [<!-- -- -->]><r/>",
                 "<!DOCTYPE r [%a]><r/>",
                 "<!DOCTYPE r [&a;]><r/>",
                 "<!DOCTYPE r [&amp;]><r/>",
                 "<!DOCTYPE r [x]><r/>",
                 "<!DOCTYPE r [<!>]><r/>",
                 "<!DOCTYPE r [<! >]><r/>",
                 "<!DOCTYPE r [<![INCLUDE[]]>]><r/>",
                 "<!DOCTYPE r [<?xml version=\"1.0\"?>]><r/>",
                 "<!DOCTYPE r [<?1?>]><r/>",
                 "<!DOCTYPE r>",
                 "<!DOCTYPE r [<!ENTITY a \"x\">]>",
                 "<r><!DOCTYPE r></r>",
                 "<r/><!DOCTYPE r>",
                 "<!DOCTYPE r><!DOCTYPE r><r/>",
                 "<!doctype r><r/>",
                 "<!DOCTYPE><r/>",
                 "<!DOCTYPE ><r/>",
                 "<!DOCTYPE r [>]><r/>",
                 "<!DOCTYPE r [\"]><r/>",
                 "<!DOCTYPE r [<!ENTITY a \"x>]><r/>",
                 "<!DOCTYPE r [<r/>]><r/>",
                 "<!DOCTYPE r [<!-x>]><r/>",
                 "<!DOCTYPE r [<!ELEMENT r ANY]><r/>",
                 "<!DOCTYPE r [<!ELEMENT r ANY><r/>"});
}

TEST(SmallDocuments, WithReferencesToEntitiesOfTheirOwnAreRefusedAlone) {
  for (const char* text : {"<!DOCTYPE r [<!ENTITY a \"x\">]><r>&a;</r>",
                           "<!DOCTYPE r [<!ENTITY a \"x\">]><r b=\"&a;\"/>"})
    EXPECT_EQ(list(judge(text).deviations), "refused") << text;
}

TEST(SmallDocuments, TextOutsideTheRootThatAreTaken) { expectTaken({"<r/>\n\n", "\n\n<r/>"}); }

TEST(SmallDocuments, TextOutsideTheRootThatAreLetPass) {
  expectLetPass({"", "&#32;<r/>", "<r/>&#32;", "<r/>&#x0A;"});
}

TEST(SmallDocuments, TextOutsideTheRootThatAreRefused) {
  expectRefused({"<r/>&#65;", "<r/>&amp;", "<r/>&", "&<r/>"});
}

TEST(SmallDocuments, ThatOnlyLibxml2TakesAreRefused) {
  // It wants no white space before the name of a document type.
  EXPECT_EQ(list(judge("<!DOCTYPEr><r/>").deviations), "refused");
}
