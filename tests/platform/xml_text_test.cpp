#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::parse;
using PlatformTest::print;

namespace {

/// The encoding that a printed document with this text in an attribute declares.
std::string encodingOf(const std::string& text) {
  KvXmlTree tree;
  tree.open("a", false)->setAttribute("text", text, true);
  const std::string printed = print(tree);
  const std::string mark = "encoding=\"";
  const std::size_t first = printed.find(mark) + mark.size();
  return printed.substr(first, printed.find('"', first) - first);
}

/// What an attribute holds after `text` was stored there.
std::string stored(const std::string& text) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  root->setAttribute("text", text, true);
  return root->findAttribute("text")->getData();
}

/// What an attribute holds after `text` was stored, printed and read again.
std::string readBack(const std::string& text) {
  KvXmlTree tree;
  tree.open("a", false)->setAttribute("text", text, true);
  return parse(print(tree))->findRoot("a", true)->findAttribute("text")->getData();
}

const std::vector<std::string> goodNames = {"a",   "Z",    "_",     "a1",       "a-b",        "a.b",
                                            "a_b", "ns:a", "FOUND", "\xC3\xA4", "\xE4hnlich", "_9"};

const std::vector<std::string> badNames = {"",
                                           " ",
                                           "1a",
                                           "-a",
                                           ".a",
                                           "a b",
                                           " a",
                                           "a ",
                                           "a\tb",
                                           "a\nb",
                                           "a<b",
                                           "a>b",
                                           "a&b",
                                           "a\"b",
                                           "a'b",
                                           "a=b",
                                           "a/b",
                                           "a!b",
                                           "a?b",
                                           "a;b",
                                           "a,b",
                                           "a(b",
                                           "a{b",
                                           "a#b",
                                           "a@b",
                                           "\x01",
                                           "a\x1F",
                                           "a\x7F",
                                           "=",
                                           "<",
                                           "0",
                                           std::string("a\0b", 3),
                                           std::string("\0", 1)};

bool mayNameAnElement(const std::string& name) {
  KvXmlTree tree;
  try {
    return tree.open(name, false) != nullptr;
  } catch (const std::invalid_argument&) {
    return false;
  }
}

}  // namespace

TEST(XmlEncoding, IsUtf8ForAscii) {
  EXPECT_EQ(encodingOf(""), "UTF-8");
  EXPECT_EQ(encodingOf("plain text ~ \x7F"), "UTF-8");
}

TEST(XmlEncoding, IsUtf8ForValidSequencesOfEachLength) {
  for (const char* text : {"\xC2\x80", "\xC3\xA4", "\xDF\xBF",  // two bytes
                           "\xE0\xA0\x80", "\xE2\x82\xAC", "\xED\x9F\xBF", "\xEE\x80\x80",  // three
                           "\xEF\xBF\xBD",  // next to FFFE
                           "\xF0\x90\x80\x80", "\xF0\x9F\x98\x80", "\xF4\x8F\xBF\xBF"})  // four
    EXPECT_EQ(encodingOf(text), "UTF-8") << text;
}

TEST(XmlEncoding, IsWindows1252ForItsBytes) {
  for (const char* text :
       {"\xE4", "\x80", "\xFF",
        "Gr\xFC\xDF"
        "e",
        "a\xA0"
        "b",
        "\xF6\xE4\xFC", "\xE4 abcdefghijklmnopqrstuvwxyz ABCDEFGHIJKLMNOPQRSTUVWXYZ"})
    EXPECT_EQ(encodingOf(text), "windows-1252") << text;
}

TEST(XmlEncoding, IsLatin1ForEachByteThatWindows1252Lacks) {
  for (const char* text : {"\x81", "\x8D", "\x8F", "\x90", "\x9D", "\xE4\x81", "a\x9D\xE4"})
    EXPECT_EQ(encodingOf(text), "ISO-8859-1") << text;
}

TEST(XmlEncoding, OfEverySingleByteIsOneThatDefinesIt) {
  const std::string undefined = "\x81\x8D\x8F\x90\x9D";
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    const bool isUndefined = undefined.find(text) != std::string::npos;
    EXPECT_EQ(encodingOf(text), isUndefined ? "ISO-8859-1" : "windows-1252") << byte;
  }
}

TEST(XmlEncoding, IsNotUtf8ForOverlongSequences) {
  EXPECT_EQ(encodingOf("\xC0\x80"), "windows-1252");
  EXPECT_EQ(encodingOf("\xC1\xBF"), "windows-1252");
  EXPECT_EQ(encodingOf("\xE0\x9F\xBF"), "windows-1252");
  EXPECT_EQ(encodingOf("\xF0\x80\x80\xAF"), "windows-1252");
  EXPECT_EQ(encodingOf("\xF0\x8F\xBF\xBF"), "ISO-8859-1");
}

TEST(XmlEncoding, IsNotUtf8ForSurrogates) {
  EXPECT_EQ(encodingOf("\xED\xA0\x80"), "windows-1252");
  EXPECT_EQ(encodingOf("\xED\xBF\xBF"), "windows-1252");
}

TEST(XmlEncoding, IsNotUtf8ForCharactersThatXmlForbids) {
  EXPECT_EQ(encodingOf("\xEF\xBF\xBE"), "windows-1252");      // FFFE
  EXPECT_EQ(encodingOf("\xEF\xBF\xBF"), "windows-1252");      // FFFF
  EXPECT_EQ(encodingOf("\xF4\x90\x80\x80"), "ISO-8859-1");    // 110000
  EXPECT_EQ(encodingOf("\xF7\xBF\xBF\xBF"), "windows-1252");  // 1FFFFF
}

TEST(XmlEncoding, IsNotUtf8ForBrokenSequences) {
  for (const char* text : {"\xC3", "\xC3(", "\xE2\x82", "\xE2\x82(", "\xF0\x9F\x98", "\x80", "\xBF",
                           "\xC3\xA4\xA4", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"})
    EXPECT_EQ(encodingOf(text), "windows-1252") << text;
}

TEST(XmlEncoding, SeesASingleByteAtEveryPlaceOfALongText) {
  for (std::size_t place = 0; place < 64; ++place) {
    std::string text(64, 'x');
    for (const char byte : {'\x80', '\xE4'}) {
      text[place] = byte;
      EXPECT_EQ(encodingOf(text), "windows-1252") << place;
    }
  }
}

TEST(XmlEncoding, TakesSequencesAcrossEveryPlaceOfALongText) {
  for (std::size_t place = 0; place <= 60; ++place) {
    std::string text(64, 'x');
    text.replace(place, 4, "\xF0\x9F\x98\x80");
    EXPECT_EQ(encodingOf(text), "UTF-8") << place;
  }
}

TEST(XmlEncoding, LooksAtNamesTextCommentsAndInstructionsToo) {
  for (const char* text :
       {"<\xE4/>", "<a \xE4='1'/>", "<a>\xE4</a>", "<a><![CDATA[\xE4]]></a>", "<a><!--\xE4--></a>",
        "<a><?p \xE4?></a>", "<!--\xE4--><a/>", "<!DOCTYPE a [<!-- \xE4 -->]><a/>"})
    EXPECT_NE(PlatformTest::reprint(text).find("encoding=\"windows-1252\""), std::string::npos)
        << text;
}

TEST(XmlEncoding, ThatWasDeclaredStaysWithOneByteACharacter) {
  for (const char* encoding : {"ISO-8859-1", "iso-8859-2", "ISO-8859-16", "latin1", "windows-1250",
                               "windows-1252", "cp1251", "KOI8-R", "koi8-u", "IBM850",
                               "csISOLatin2", "latin7", "iso-ir-101", "x-mac-roman", "hp-roman8"}) {
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"" + std::string(encoding);
    for (const char* text : {"plain", "\xB1\xE6", "\xC3\xA4", "\x81"})
      EXPECT_EQ(PlatformTest::reprint(declaration + "\"?><a>" + text + "</a>"),
                declaration + "\"?>\n<a>" + text + "</a>\n");
  }
}

TEST(XmlEncoding, ThatWasDeclaredStaysWhereUtf8WouldSaySomethingElse) {
  for (const char* encoding : {"Shift_JIS", "EUC-JP", "GB18030", "GBK", "Big5", "EUC-KR"}) {
    const std::string document = "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) +
                                 "\"?>\n<a b=\"\x83\x5C\" />\n";
    EXPECT_EQ(PlatformTest::reprint(document), document);
  }
}

TEST(XmlEncoding, ThatWasDeclaredStaysWhenThatLineWasReadBefore) {
  std::istringstream in("<?xml version='1.0' encoding='ISO-8859-2'?>\n<a b='\xB1'/>");
  std::string line;
  std::getline(in, line);

  EXPECT_EQ(PlatformTest::print(KvXmlTree(in)),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-2\"?>\n<a b='\xB1' />\n");
}

TEST(XmlEncoding, ThatWasDeclaredStaysBehindLinesThatAreNotOfTheDocument) {
  std::istringstream in("a host's own line\n<?xml version='1.0' encoding='ISO-8859-2'?><a/>");
  std::string line;
  std::getline(in, line);

  EXPECT_EQ(PlatformTest::print(KvXmlTree(in)),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-2\"?>\n<a />\n");
}

TEST(XmlEncoding, IsNotTakenFromALineThatOnlyLooksLikeADeclaration) {
  std::istringstream in("xml version='1.0' encoding='ISO-8859-2'?>\n<a b='\xB1'/>");
  std::string line;
  std::getline(in, line);

  EXPECT_EQ(PlatformTest::print(KvXmlTree(in)),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<a b='\xB1' />\n");
}

TEST(XmlEncoding, IsUtf8BehindAByteOrderMarkWhateverIsDeclared) {
  const auto tree =
      parse("\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-2'?><a b='\xC3\xA4&#228;'/>");

  EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), "\xC3\xA4\xC3\xA4");
  EXPECT_EQ(PlatformTest::print(*tree),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a b='\xC3\xA4&#228;' />\n");
}

TEST(XmlEncoding, ThatWasDeclaredStaysWhateverIsSetLater) {
  const auto tree = parse("<?xml version='1.0' encoding='ISO-8859-15'?><a/>");

  tree->findRoot("a", true)->setAttribute("b", "\xE2\x82\xAC\xA4", true);

  EXPECT_EQ(PlatformTest::print(*tree),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?>\n<a b=\"\xE2\x82\xAC\xA4\" />\n");
}

TEST(XmlEncoding, ThatWasDeclaredGivesWayWhereItIsUnknownOrUtf8AndNotTrue) {
  for (const char* encoding : {"UTF-8", "UTF-16", "x-unknown", "-latin1", "_latin1", ""}) {
    const std::string start = "<?xml version=\"1.0\" encoding=\"" + std::string(encoding) + "\"?>";
    EXPECT_EQ(PlatformTest::reprint(start + "<a>\xC3\xA4</a>"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xC3\xA4</a>\n");
    EXPECT_EQ(PlatformTest::reprint(start + "<a>\xE4</a>"),
              "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<a>\xE4</a>\n");
  }
}

TEST(XmlEncoding, SeesWhatIsSetAndWhatIsSetAnew) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  root->setAttribute("b", "\xE4", true);
  EXPECT_NE(PlatformTest::print(tree).find("windows-1252"), std::string::npos);

  root->setAttribute("b", "a", true);
  EXPECT_NE(PlatformTest::print(tree).find("UTF-8"), std::string::npos);

  root->setAttribute("\xE4", 1, true);
  EXPECT_NE(PlatformTest::print(tree).find("windows-1252"), std::string::npos);
}

TEST(XmlEncoding, SeesANameThatIsAllOfADocument) {
  KvXmlTree tree;
  tree.open("\xE4", false);

  EXPECT_NE(PlatformTest::print(tree).find("windows-1252"), std::string::npos);
}

TEST(XmlEncoding, SeesWhatComesWithElementsThatStoodForThemselves) {
  KvXmlTree tree;
  auto* const child = new KvXmlData("\xE4", nullptr);
  tree.open("a", false)->addChild(child);

  EXPECT_NE(PlatformTest::print(tree).find("windows-1252"), std::string::npos);
}

// The control characters of ISO-8859-1 are no letters, so only windows-1252 is left.
TEST(XmlEncoding, IsWindows1252ForNamesThatLatin1DoesNotHave) {
  for (const std::string name : {"\x8A", "\x9F"}) {
    const std::string element = "<" + name + ">\x81</" + name + ">";
    const std::string printed = PlatformTest::reprint(element);

    EXPECT_EQ(printed, "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n" + element + "\n");
    EXPECT_EQ(PlatformTest::reprint(printed), printed);
  }
}

TEST(XmlEncoding, DoesNotDependOnReferences) {
  EXPECT_EQ(PlatformTest::reprint("<a>&#228;</a>"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>&#228;</a>\n");
  EXPECT_EQ(PlatformTest::reprint("<a>\xE4&#228;</a>"),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<a>\xE4&#228;</a>\n");
}

TEST(XmlBytes, PassThroughAttributesUnchanged) {
  std::string all;
  for (int byte = 0x80; byte <= 0xFF; ++byte) all += static_cast<char>(byte);

  EXPECT_EQ(stored(all), all);
  EXPECT_EQ(readBack(all), all);
}

TEST(XmlBytes, PassThroughTextUnchanged) {
  std::string all;
  for (int byte = 0x80; byte <= 0xFF; ++byte) all += static_cast<char>(byte);

  EXPECT_EQ(PlatformTest::reprint("<a>" + all + "</a>"),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a>" + all + "</a>\n");
}

TEST(XmlBytes, AreReadTheSameWhateverIsDeclared) {
  for (const char* encoding : {"UTF-8", "windows-1252", "ISO-8859-1", "UTF-16", "unheard-of"}) {
    const auto tree = parse("<?xml version='1.0' encoding='" + std::string(encoding) +
                            "'?><a text='Gr\xFC\xC3\x9F'/>");
    EXPECT_EQ(tree->findRoot("a", true)->findAttribute("text")->getData(), "Gr\xFC\xC3\x9F");
  }
}

TEST(XmlCharacters, ThatXmlCannotHoldBecomeQuestionMarks) {
  for (int code = 0; code < 0x20; ++code) {
    const bool isKept = code == '\t' || code == '\n' || code == '\r';
    const std::string text = {'[', static_cast<char>(code), ']'};
    EXPECT_EQ(stored(text), isKept ? text : "[?]") << code;
  }
}

TEST(XmlCharacters, AfterAnEmbeddedNulAreNotLost) {
  EXPECT_EQ(stored(std::string("a\0b\0", 4)), "a?b?");
  EXPECT_EQ(readBack(std::string("a\0b\0", 4)), "a?b?");
}

TEST(XmlCharacters, DeleteIsAllowed) { EXPECT_EQ(readBack("[\x7F]"), "[\x7F]"); }

TEST(XmlCharacters, WithAMeaningInMarkupReadBack) {
  for (const char* text :
       {"<", ">", "&", "\"", "'", "<>&\"'", "&amp;", "&#65;", "]]>", "<!--", "?>"})
    EXPECT_EQ(readBack(text), text);
}

TEST(XmlCharacters, WhiteSpaceOfEveryKindReadsBack) {
  for (const char* text : {" ", "  a  b  ", "\t", "\n", "\r", "\r\n", "a\tb\nc\rd\r\n", "\n\n"})
    EXPECT_EQ(readBack(text), text);
}

TEST(XmlNames, OfElementsCanBeAnyXmlName) {
  for (const std::string& name : goodNames) {
    KvXmlTree tree;
    ASSERT_NE(tree.open(name, false), nullptr) << name;
    EXPECT_NE(parse(print(tree))->findRoot(name, true), nullptr) << name;
  }
}

TEST(XmlNames, OfAttributesCanBeAnyXmlName) {
  for (const std::string& name : goodNames) {
    KvXmlTree tree;
    tree.open("a", false)->setAttribute(name, 7, true);
    const auto read = parse(print(tree));
    ASSERT_NE(read->findRoot("a", true)->findAttribute(name), nullptr) << name;
  }
}

TEST(XmlNames, OtherThanXmlNamesAreRefusedForNewElements) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  for (const std::string& name : badNames) {
    EXPECT_THROW(KvXmlData(name, root), std::invalid_argument) << name;
    EXPECT_THROW(KvXmlData(name, nullptr), std::invalid_argument) << name;
  }
  EXPECT_EQ(print(tree), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a />\n");
}

TEST(XmlNames, OtherThanXmlNamesAreRefusedForARoot) {
  for (const std::string& name : badNames) {
    KvXmlTree tree;
    EXPECT_THROW(tree.open(name, false), std::invalid_argument) << name;
    EXPECT_EQ(tree.getCurrent(), nullptr);
    EXPECT_EQ(print(tree), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  }
}

TEST(XmlNames, OtherThanXmlNamesAreRefusedByOpenBelowTheCursor) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("root", false);
  for (const std::string& name : badNames) {
    EXPECT_THROW(tree.open(name, false), std::invalid_argument) << name;
    EXPECT_EQ(tree.getCurrent(), root);
    EXPECT_TRUE(root->getChildren().empty());
  }
}

TEST(XmlNames, OtherThanXmlNamesAreRefusedForAttributes) {
  KvXmlTree tree;
  KvXmlData* const root = tree.open("a", false);
  for (const std::string& name : badNames) {
    EXPECT_THROW(root->setAttribute(name, 7, true), std::invalid_argument) << name;
    EXPECT_THROW(root->setAttribute(name, std::string("7"), true), std::invalid_argument) << name;
    EXPECT_THROW(tree.setAttribute(name, 7.5), std::invalid_argument) << name;
  }
  EXPECT_EQ(print(tree), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a />\n");
}

TEST(XmlNames, StartWithTheFirstAndTheLastCharacterOfEachRange) {
  for (const char* start : {":",
                            "A",
                            "Z",
                            "_",
                            "a",
                            "z",
                            u8"\u00C0",
                            u8"\u00D6",
                            u8"\u00D8",
                            u8"\u00F6",
                            u8"\u00F8",
                            u8"\u02FF",
                            u8"\u0370",
                            u8"\u037D",
                            u8"\u037F",
                            u8"\u1FFF",
                            u8"\u200C",
                            u8"\u200D",
                            u8"\u2070",
                            u8"\u218F",
                            u8"\u2C00",
                            u8"\u2FEF",
                            u8"\u3001",
                            u8"\uD7FF",
                            u8"\uF900",
                            u8"\uFDCF",
                            u8"\uFDF0",
                            u8"\uFFFD",
                            u8"\U00010000",
                            u8"\U000EFFFF"}) {
    EXPECT_TRUE(mayNameAnElement(start)) << start;
    EXPECT_TRUE(mayNameAnElement(start + std::string("-"))) << start;
    EXPECT_TRUE(mayNameAnElement(std::string("a-") + start)) << start;
  }
}

TEST(XmlNames, HoldSomeCharactersThatTheyDoNotStartWith) {
  for (const char* part :
       {"-", ".", "0", "9", u8"\u00B7", u8"\u0300", u8"\u036F", u8"\u203F", u8"\u2040"}) {
    EXPECT_FALSE(mayNameAnElement(part)) << part;
    EXPECT_FALSE(mayNameAnElement(part + std::string("a"))) << part;
    EXPECT_TRUE(mayNameAnElement(std::string("a") + part)) << part;
    EXPECT_TRUE(mayNameAnElement(std::string("a-") + part)) << part;
  }
}

TEST(XmlNames, HoldNoNeighbourOfTheirRanges) {
  for (const char* other :
       {",",        "/",        ";",        "@",        "[",        "^",        "`",
        "{",        u8"\u00B6", u8"\u00B8", u8"\u00BF", u8"\u00D7", u8"\u00F7", u8"\u037E",
        u8"\u2000", u8"\u200B", u8"\u200E", u8"\u203E", u8"\u2041", u8"\u206F", u8"\u2190",
        u8"\u2BFF", u8"\u2FF0", u8"\u3000", u8"\uF8FF", u8"\uFDD0", u8"\uFDEF", u8"\U000F0000"}) {
    EXPECT_FALSE(mayNameAnElement(other)) << other;
    EXPECT_FALSE(mayNameAnElement(std::string("a") + other)) << other;
    EXPECT_FALSE(mayNameAnElement(std::string("a-") + other)) << other;
  }
}

TEST(XmlNames, WithAnEmbeddedNulAreNotFoundByTheirBeginning) {
  const std::string name("a\0b", 3);
  const auto tree = parse("<a a='1'><a/></a>");
  KvXmlData* const root = tree->findRoot("a", true);

  EXPECT_EQ(tree->findRoot(name, true), nullptr);
  EXPECT_EQ(root->findAttribute(name), nullptr);
  EXPECT_EQ(root->findTree(name, false), nullptr);
  EXPECT_EQ(root->findTree(name, true), nullptr);
}

TEST(XmlNames, WithAnEmbeddedNulAreRefusedWhereTheirBeginningIsAnAttribute) {
  const auto tree = parse("<a a='1'/>");

  EXPECT_THROW(tree->open("a", false)->setAttribute(std::string("a\0b", 3), 2, true),
               std::invalid_argument);

  EXPECT_EQ(tree->getCurrent()->findAttribute("a")->getData(), "1");
}

TEST(XmlNames, WithAnEmbeddedNulAreRefusedWhereTheirBeginningIsAChild) {
  const auto tree = parse("<a><b/></a>");
  KvXmlData* const root = tree->open("a", false);

  EXPECT_THROW(tree->open(std::string("b\0c", 3), false), std::invalid_argument);

  EXPECT_EQ(tree->getCurrent(), root);
}
