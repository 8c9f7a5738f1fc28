#include "xml_suite/other_parser.h"

#include <gtest/gtest.h>

using XmlSuite::readElements;
using XmlSuite::readInfoset;

TEST(OtherParser, TellsAllThatADocumentSays) {
  EXPECT_EQ(readInfoset("<?xml version='1.0' standalone='yes'?><!DOCTYPE p:r SYSTEM 's' [<?q?>]>"
                        "<p:r xmlns:p='u' b='&#10;' a='1&amp;'>x<![CDATA[<y>]]><!--c--><e/></p:r>"),
            "!standalone\n!p:r\n!\n!s\n!<?q?>\n"
            "<p:r\n#p=u\n@b=\\n\n@a=1&\n\"x<y>\n-c\n<e\n>\n>\n");
}

TEST(OtherParser, PassesOverWhiteSpaceBetweenElementsOnly) {
  EXPECT_EQ(readInfoset("<r> <a/>\n<!--c--> </r>"), readInfoset("<r><a/><!--c--></r>"));
  EXPECT_EQ(readInfoset("<r> </r>"), "<r\n\" \n>\n");
  EXPECT_EQ(readInfoset("<r>x<a/> <a/></r>"), "<r\n\"x\n<a\n>\n\" \n<a\n>\n>\n");
  EXPECT_EQ(readInfoset("<r><a/><![CDATA[ ]]></r>"), "<r\n<a\n>\n\" \n>\n");
}

TEST(OtherParser, RefusesWhatIsNotWellFormed) {
  EXPECT_EQ(readInfoset("<r><a></r>"), std::nullopt);
  EXPECT_EQ(readElements("<r>&amp</r>"), std::nullopt);
}

TEST(OtherParser, LoadsNothing) {
  EXPECT_NE(readInfoset("<!DOCTYPE r SYSTEM 'file:///etc/passwd' [<!ENTITY e SYSTEM "
                        "'file:///etc/passwd'>]><r>&e;</r>"),
            std::nullopt);
}

TEST(OtherParser, TellsElementsOfUtf8Only) {
  EXPECT_EQ(readElements("<r xmlns='u' a='\xC3\xA4'>x<b/></r>"), "<r\n@a=\xC3\xA4\n<b\n>\n>\n");
  EXPECT_EQ(readElements("<?xml version='1.0' encoding='ISO-8859-1'?><r/>"), std::nullopt);
}
