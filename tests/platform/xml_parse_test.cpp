#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <ios>
#include <istream>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

#include "kv/xml_tree.h"
#include "platform/support.h"

using PlatformTest::expectErrorAt;
using PlatformTest::findError;
using PlatformTest::parse;
using PlatformTest::print;
using PlatformTest::repeat;
using PlatformTest::reprint;
using PlatformTest::TemporaryFile;

namespace {

/// Hands out a text in small pieces and cannot be positioned, like a pipe.
class Pipe : public std::streambuf {
 public:
  explicit Pipe(std::string pipedText) : text(std::move(pipedText)) {}

 protected:
  int_type underflow() override {
    if (place == text.size()) return traits_type::eof();
    const std::size_t size = std::min<std::size_t>(7, text.size() - place);
    setg(&text[place], &text[place], &text[place] + size);
    place += size;
    return traits_type::to_int_type(*gptr());
  }

 private:
  std::string text;
  std::size_t place = 0;
};

/// Has more text each time that it is positioned anew.
class GrowingBuffer : public std::stringbuf {
 public:
  GrowingBuffer(const std::string& text, std::string addedText)
      : std::stringbuf(text, std::ios::in), added(std::move(addedText)) {}

 protected:
  pos_type seekpos(pos_type place, std::ios::openmode which) override {
    str(str() + added);
    return std::stringbuf::seekpos(place, which);
  }

 private:
  std::string added;
};

/// Fails after a few characters.
template <class Failure>
class BrokenBuffer : public std::streambuf {
 protected:
  int_type underflow() override {
    if (isBroken) throw Failure("the line is cut");
    isBroken = true;
    setg(text, text, text + 3);
    return traits_type::to_int_type(text[0]);
  }

 private:
  char text[3] = {'<', 'a', '>'};
  bool isBroken = false;
};

bool hasRoot(const KvXmlTree& tree) { return tree.findRoot("root", true) != nullptr; }

/// `depth` elements, each in the one before.
std::string nest(std::size_t depth) { return repeat("<a>", depth) + repeat("</a>", depth); }

std::string numberedAttributes(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += " a" + std::to_string(i) + "='1'";
  return text;
}

struct Piece {
  std::string text;
  bool isWhiteSpace;
};

const std::vector<Piece> prolog = {
    {"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone='yes'?>", false},
    {"\r\n", true},
    {"<!-- one - comment -->", false},
    {"\n  \t", true},
    {"<?target some data?>", false},
    {"\n", true}};

const std::string rootPiece =
    "<root a=\"1\" b='two &amp; &#x41;&lt;'>text &gt; <![CDATA[<raw> ]] & ]]>"
    "<child\n  c = \"\xC3\xA4\" /><!-- inner --><?inner x?><leaf>  </leaf><leaf></leaf >\n"
    "<deep><deeper d='>'>mixed<b/>content</deeper></deep>\n</root\n>";

const std::vector<Piece> epilog = {
    {"\n", true}, {"<!-- last -->", false}, {" ", true}, {"<?end?>", false}, {"\n\n", true}};

std::string join(const std::vector<Piece>& pieces) {
  std::string text;
  for (const Piece& piece : pieces) text += piece.text;
  return text;
}

const std::string sample = join(prolog) + rootPiece + join(epilog);

/// Calls `check(start, piece)` for each piece, which stands from `start` on.
template <class Check>
void forEachPiece(const std::vector<Piece>& pieces, std::size_t start, Check check) {
  for (const Piece& piece : pieces) {
    check(start, piece);
    start += piece.text.size();
  }
}

std::string mutate(std::string text, std::mt19937& random) {
  static const std::string marks = "<>&\"'/?!-[]=;#x \n\r\t";
  const auto below = [&random](std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
  };
  for (std::size_t count = 1 + below(4); count > 0 && !text.empty(); --count) {
    const std::size_t place = below(text.size());
    const char any = static_cast<char>(below(256));
    switch (below(5)) {
      case 0:
        text[place] = any;
        break;
      case 1:
        text[place] = marks[below(marks.size())];
        break;
      case 2:
        text.erase(place, 1 + below(8));
        break;
      case 3:
        text.insert(place, 1, marks[below(marks.size())]);
        break;
      default:
        text.insert(place, text.substr(below(text.size()), 1 + below(20)));
    }
  }
  return text;
}

}  // namespace

TEST(XmlParsing, GivesADocumentForARootElement) {
  const auto tree = parse("<root/>");

  EXPECT_NE(tree->findRoot("root", true), nullptr);
  EXPECT_EQ(tree->getCurrent(), nullptr);
}

TEST(XmlParsing, OfNothingGivesAnEmptyDocument) {
  for (const char* text :
       {"", " ", "\n", " \t\r\n ", "<!-- only -->", "<?only this?>", "<?xml version='1.0'?>",
        "<?xml version='1.0'?>\n<!-- a -->\n<?b c?>\n", "\xEF\xBB\xBF\n<!-- a -->"}) {
    const auto tree = parse(text);
    EXPECT_EQ(print(*tree).find("<a"), std::string::npos) << text;
    EXPECT_EQ(tree->open("root", false)->getName(), "root") << text;
  }
}

TEST(XmlParsing, TakesWhiteSpaceInsideTags) {
  EXPECT_EQ(reprint("<root\n\ta\r\n=\n'1'\n\n>x</root \n>"), reprint("<root a='1'>x</root>"));
}

TEST(XmlParsing, KeepsNamesApartByCase) {
  const auto tree = parse("<Root a='1' A='2'/>");

  EXPECT_EQ(tree->findRoot("root", true), nullptr);
  const KvXmlData* const root = tree->findRoot("Root", true);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->findAttribute("a")->getData(), "1");
  EXPECT_EQ(root->findAttribute("A")->getData(), "2");
}

TEST(XmlParsing, ReadsReferencesInAttributes) {
  const auto tree = parse("<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x42;&#x20AC;'/>");

  EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), "<>&\"'AB\xE2\x82\xAC");
}

TEST(XmlParsing, TurnsWhiteSpaceOfAnAttributeIntoSpaces) {
  const auto tree = parse("<a b='1\n2\t3\r\n4'/>");

  EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), "1 2 3 4");
}

TEST(XmlParsing, TurnsAnAttributeOfWhiteSpaceAloneIntoSpaces) {
  const auto tree = parse("<a b='\t' c='\n' d='\r\n\t'/>");
  const KvXmlData& root = *tree->findRoot("a", true);

  EXPECT_EQ(root.findAttribute("b")->getData(), " ");
  EXPECT_EQ(root.findAttribute("c")->getData(), " ");
  EXPECT_EQ(root.findAttribute("d")->getData(), "  ");
}

TEST(XmlParsing, TurnsEachLineEndOfAnAttributeIntoOneSpace) {
  const auto tree = parse("<a b='\r\n1\r\n\r\n2\n\r3&amp;\r\n'/>");

  EXPECT_EQ(tree->findRoot("a", true)->findAttribute("b")->getData(), " 1  2  3& ");
}

TEST(XmlParsing, KeepsEntityDeclarationsThatAreNotUsed) {
  const std::string text =
      "<!DOCTYPE a [<!ENTITY e SYSTEM '/etc/hostname'><!ENTITY f '&e;'>]>\n<a />\n";

  EXPECT_EQ(reprint(text), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + text);
}

TEST(XmlParsing, SkipsAByteOrderMark) {
  EXPECT_EQ(reprint("\xEF\xBB\xBF<a/>"), reprint("<a/>"));
  EXPECT_EQ(reprint("\xEF\xBB\xBF<?xml version='1.0'?><a/>"), reprint("<a/>"));
}

TEST(XmlParsing, TakesDocumentsOfAnySizeAroundTheReadersChunks) {
  for (std::size_t size : {65534u, 65535u, 65536u, 65537u, 131072u, 200000u}) {
    const std::string text = "<a>" + std::string(size - 7, 'x') + "</a>";
    std::istringstream seekable(text);
    Pipe pipe(text);
    std::istream unseekable(&pipe);
    EXPECT_EQ(print(KvXmlTree(seekable)), print(KvXmlTree(unseekable))) << size;
    EXPECT_EQ(reprint(text), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + text + "\n") << size;
  }
}

TEST(XmlParsing, OfAByteOrderMarkAloneGivesAnEmptyDocument) {
  EXPECT_FALSE(findError("\xEF\xBB\xBF").has_value());
}

// --- What is refused

TEST(XmlRefusal, OfTagsThatDoNotMatch) {
  for (const char* text :
       {"<a></b>", "<a><b></a>", "<a><b></a></b>", "<A></a>", "</a>", "<a></a></a>", "<a></ab>",
        "<ab></a>", "<a>", "<a><b/>", "<a><b></b>", "<a>text"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfMalformedTags) {
  for (const char* text : {"<",
                           "<>",
                           "< a/>",
                           "<1a/>",
                           "<-a/>",
                           "<a",
                           "<a/",
                           "<a //>",
                           "<a/ >",
                           "<a b/>",
                           "<a b=/>",
                           "<a b=1/>",
                           "<a b='1/>",
                           "<a b='1\"/>",
                           "<a ='1'/>",
                           "<a 1='1'/>",
                           "<a b='1'c='2'/>",
                           "<a></ a>",
                           "<a></a b='1'>",
                           "<a></a",
                           "<a><></a>",
                           "<a b=\"1\" / >",
                           "<a b c='1'/>",
                           "<a,b/>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfSectionsThatDoNotEnd) {
  for (const char* text : {"<!",
                           "<!-",
                           "<!--",
                           "<!-- a",
                           "<!-- a -",
                           "<!-- a --",
                           "<a><!-- ></a>",
                           "<![CDATA[",
                           "<a><![",
                           "<a><![CDATA",
                           "<a><![CDATA[x",
                           "<a><![CDATA[x]",
                           "<a><![CDATA[x]]",
                           "<a><![CDATA[x></a>",
                           "<?",
                           "<?a",
                           "<?a b",
                           "<?a b?",
                           "<?xml version='1.0'",
                           "<?xml version='1.0'?",
                           "<!DOCTYPE",
                           "<!DOCTYPE a",
                           "<!DOCTYPE a [",
                           "<!DOCTYPE a [<!ENTITY b 'c'>",
                           "<!DOCTYPE a [<!ENTITY b 'c'>]"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfSectionsThatAreNone) {
  for (const char* text : {"<a><!x></a>", "<a><![cdata[x]]></a>", "<a><!></a>", "<a><?=?></a>",
                           "<a><?></a>", "<a><!ELEMENT b></a>", "<a><!DOCTYPE a></a>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfASecondRoot) {
  for (const char* text : {"<a/><b/>", "<a/><a/>", "<a></a>\n<b></b>", "<a/><!-- x --><b/>",
                           "<a/>\n<?x?>\n<b>text</b>\n"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfTextOutsideTheRoot) {
  for (const char* text :
       {"text<a/>", "<a/>text", "\n text\n<a/>", "<a/>\ntext\n", "<!-- a -->text<a/>",
        "<a/>text<!-- a -->", "<?xml version='1.0'?>text<a/>", "only text", "text\n", "&lt;a/>",
        "<a/>&amp;"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfASingleCharacterOutsideTheRoot) {
  for (const char* text :
       {"x", "<a/>x", "x<a/>", "<a/>\nx", "<a/> x ", "<!-- a -->x", "<a/>;", "\nx"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfCdataOutsideTheRoot) {
  for (const char* text : {"<![CDATA[text]]>", "<a/><![CDATA[text]]>", "<![CDATA[text]]><a/>",
                           "<a/><![CDATA[ ]]>", "<a/><![CDATA[]]>\n"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

// Nothing is lost where the parser is lenient: what it lets pass is printed as it should have been.
TEST(XmlLeniency, TakesWhatIsPrintedWellFormed) {
  const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  EXPECT_EQ(reprint("<a>]]></a>"), declaration + "<a>]]&gt;</a>\n");
  EXPECT_EQ(reprint("<a/>&#32;"), declaration + "<a />\n");
  EXPECT_EQ(reprint(" <?xml version='1.0'?><a/>"), declaration + "<a />\n");
  EXPECT_EQ(reprint(" <?xml version='1.0'?><a>text</a>"), declaration + "<a>text</a>\n");
  for (const char* attributes :
       {"", " encoding='UTF-8'", " version=''", " version='two'", " standalone='a\"b'"})
    EXPECT_EQ(reprint("<?xml" + std::string(attributes) + "?><a/>"), declaration + "<a />\n");
}

TEST(XmlRefusal, OfAnAmpersandThatStartsNoReference) {
  for (const char* text : {"<a>a & b</a>", "<a b='a & b'/>", "<a>&</a>", "<a>&;</a>", "<a>&amp</a>",
                           "<a>&#;</a>", "<a>&#x;</a>", "<a>&#65a;</a>", "<a>& #65;</a>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfAReferenceToAnUndeclaredEntity) {
  EXPECT_TRUE(findError("<a>&nbsp;</a>").has_value());
  EXPECT_TRUE(findError("<a b='&unknown;'/>").has_value());
}

// It would not be expanded, and so could not be told from an ampersand when it is printed.
TEST(XmlRefusal, OfAReferenceToADeclaredEntity) {
  EXPECT_TRUE(findError("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>").has_value());
}

TEST(XmlRefusal, LeavesAmpersandsAloneWhereTheyAreLiteral) {
  for (const char* text : {"<!-- & --><a/>", "<?p & ?><a/>", "<a><![CDATA[&]]>&amp;</a>",
                           "<!DOCTYPE a [<!ENTITY e '&f;'>]><a/>", "<!DOCTYPE a SYSTEM '&'><a/>",
                           "<a><!-- &#0; --><![CDATA[ &; ]]><!-- & --></a>"})
    EXPECT_FALSE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfALessThanSignInAnAttribute) {
  for (const char* text : {"<a b='<'/>", "<a b='1><c d='2'/></a>", "<a b='&lt;' c='<'>&lt;</a>",
                           "<a b='<!--' c='&#0;d'/>", "<a b='<'><!-- &lt; --></a>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, LeavesLessThanSignsAloneThatAreReferences) {
  for (const char* text : {"<a b='&lt;'/>", "<a b='x&lt;&#60;&#x3C;&#x003c;&#0060;'>&lt;</a>",
                           "<a b='&lt;'><!-- < &lt; --><![CDATA[<&lt;]]></a>"})
    EXPECT_FALSE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfWhatIsNoXmlName) {
  for (const char* text : {"<a\xC3\x97/>", "<a b\xC2\xA0='1'/>", "<\x95/>", "<?\xC2\xA0?><a/>",
                           "<!DOCTYPE><a/>", "<!DOCTYPE [<!ENTITY e ''>]><a/>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
  for (const char* text :
       {"<\xC3\xA4/>", "<\xE4/>", "<a \xE4='1'/>", "<a-.1\xC2\xB7/>", "<a\xB7/>", "<\x8Ak/>"})
    EXPECT_FALSE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfADeclarationThatEndsInAQuotedText) {
  expectErrorAt("<?xml a=\"?>\" encoding=\"ISO-8859-2\"/><r/>", 1, 1);
  expectErrorAt("\n<?xml a='?><r b='1'/>", 2, 1);
  expectErrorAt("\xEF\xBB\xBF<?xml a='?><r b='1'/>", 1, 4);
}

TEST(XmlParsing, LooksForQuotesInTheDeclarationUpToItsEnd) {
  EXPECT_FALSE(findError("<?xml version='1.0'?><a>it's</a>").has_value());
  EXPECT_FALSE(findError("<?xml?><?p it's?><a b=\"'\"/>").has_value());
}

TEST(XmlRefusal, OfReferencesInTheDeclaration) {
  for (const char* attribute : {"version='&#49;.0'", "version='1.0&quot;'", "encoding='UTF&#45;8'"})
    EXPECT_TRUE(findError("<?xml " + std::string(attribute) + "?><a/>").has_value()) << attribute;
}

TEST(XmlRefusal, OfADocumentTypeWithoutAnElement) {
  EXPECT_TRUE(findError("<!DOCTYPE a>").has_value());
  EXPECT_TRUE(findError("<!DOCTYPE a []><!-- a -->").has_value());
}

TEST(XmlRefusal, OfDocumentTypesThatAreNotWellFormed) {
  for (const char* type : {"",
                           " ",
                           " 1",
                           " {",
                           "a",
                           " a x",
                           " a SYSTEM",
                           " a SYSTEM'x'",
                           " a SYSTEM 'x' 'y'",
                           " a PUBLIC 'x'",
                           " a PUBLIC 'x''y'",
                           " a PUBLIC '{' 'y'",
                           " a public 'x' 'y'",
                           " a 'x'",
                           " a {...]",
                           " a [",
                           " a [ > ",
                           " a []]",
                           " a [[]]",
                           " a [] x",
                           " a [x]",
                           " a [%p]",
                           " a [&p;]",
                           " a [%1;]",
                           " a [<!>]",
                           " a [<! >]",
                           " a [<!X y>]",
                           " a [<!ENTITY>]",
                           " a [<!ENTITY 'x>]",
                           " a [<!ENTITY <x>>]",
                           " a [<![INCLUDE[]]>]",
                           " a [<!-- -- -->]",
                           " a [<!--->]",
                           " a [<?1?>]",
                           " a [<?xml?>]",
                           " a [<?XmL x?>]",
                           " a [<b/>]",
                           " a <!-- -->",
                           " a <?p?>"})
    EXPECT_TRUE(findError("<!DOCTYPE" + std::string(type) + "><a/>").has_value()) << type;
}

TEST(XmlParsing, TakesDocumentTypesThatAreWellFormed) {
  for (const char* type :
       {" a", "\na\t", " a SYSTEM 'x'", " a SYSTEM \"'\" ", " a PUBLIC 'x-(1)' '>&]['", " a[]",
        " a [ ] ", " a SYSTEM 'x'[\n]", " a SYSTEM 'x' []", " a [%p; %q;]", " a [<!ENTITY e ']>'>]",
        " a [<!ENTITY e \"'\"><!ELEMENT a ANY>]", " a [<!-- ]> ' - -->]", " a [<?p ]> \" ?>]",
        " a [<?p?><!NOTATION n SYSTEM 'x'><!ATTLIST a b CDATA '<'>]"})
    EXPECT_FALSE(findError("<!DOCTYPE" + std::string(type) + "><a b='&lt;'/>").has_value()) << type;
}

TEST(XmlParsing, TakesDocumentTypesInCommentsAndInstructionsForNone) {
  for (const char* text : {"<!-- <!DOCTYPE x --><a/>", "<?p <!DOCTYPE x ?><a/>"})
    EXPECT_FALSE(findError(text).has_value()) << text;
}

TEST(XmlParsing, TakesPublicIdentifiersOfTheirCharactersOnly) {
  const std::string allowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 \r\n-'()+,./:=?;!*#@$_%";
  for (int byte = 1; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    const bool isAllowed = allowed.find(c) != std::string::npos;
    const std::string text = std::string("<!DOCTYPE a PUBLIC \"") + c + "\" 'x'><a/>";
    EXPECT_EQ(findError(text).has_value(), !isAllowed) << byte;
  }
}

TEST(XmlRefusal, OfAnAmpersandMindsWhereADocumentTypeEnds) {
  for (const char* text :
       {"<!DOCTYPE a [<!ENTITY e 'a]&b;'>]><a/>", "<!DOCTYPE a [<!-- ] & --><!ENTITY f 'x'>]><a/>",
        "<!DOCTYPE a [<?p it's ]> & ?>]><a b='&lt;'/>", "<!DOCTYPE a SYSTEM '>&'><a/>",
        "<!--> & --><a/>", "<a>&#000000000000000000000000065;</a>"})
    EXPECT_FALSE(findError(text).has_value()) << text;
  EXPECT_TRUE(findError("<!DOCTYPE a [<!ENTITY e '>'>]><a b='&'/>").has_value());
  EXPECT_TRUE(findError("<!DOCTYPE a [<?p it's?>]><a b='&foo;'/>").has_value());
}

TEST(XmlRefusal, OfReferencesTakesNoLongerForManyLiteralSections) {
  std::string text = "<a>";
  for (int i = 0; i < 200000; ++i) text += "<!--&#0;-->";
  EXPECT_FALSE(findError(text + "</a>").has_value());
}

TEST(XmlRefusal, OfAReferenceToACharacterThatXmlCannotHold) {
  for (const char* text :
       {"<a b='&#0;'/>", "<a b='x&#0;y'/>", "<a>x&#0;y</a>", "<a>&#1;</a>", "<a b='&#x1F;'/>",
        "<a>&#xD800;</a>", "<a>&#xFFFE;</a>", "<a>&#x110000;</a>", "<a>&#99999999999;</a>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfControlCharacters) {
  for (const char* text : {"<a>\x01</a>", "<a b='\x1F'/>", "<!--\x02--><a/>",
                           "<a><![CDATA[\x0B]]></a>", "<a>\x0C</a>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfDashesInsideAComment) {
  EXPECT_TRUE(findError("<a><!-- a -- b --></a>").has_value());
  EXPECT_TRUE(findError("<a><!-- a ---></a>").has_value());
}

TEST(XmlRefusal, OfADeclarationThatIsNotFirst) {
  for (const char* text :
       {"<a/><?xml version='1.0'?>", "<!-- a --><?xml version='1.0'?><a/>",
        "<a><?xml version='1.0'?></a>", "<?xml version='1.0'?><?xml version='1.0'?><a/>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlRefusal, OfADeclarationAttributeGivenTwice) {
  EXPECT_TRUE(findError("<?xml version='1.0' version='1.0'?><a/>").has_value());
}

TEST(XmlRefusal, OfADocumentTypeThatDoesNotPrecedeTheRoot) {
  for (const char* text :
       {"<a/><!DOCTYPE a>", "<!DOCTYPE a><a/><!DOCTYPE a>", "<!DOCTYPE a><!DOCTYPE a><a/>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

// Where the parts of a text are told apart by their characters, no letter counts as another kind.
TEST(XmlRefusal, TakesNoLetterForWhiteSpace) {
  for (const char* text : {"<a/>X", "X<a/>", "<!DOCTYPEX a><a/>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlParsing, TakesNoLetterForTheEndOfAName) {
  for (const char* type :
       {" aXb", " a [%pXq;]", " a [<?pXq?>]", " a [<!ENTITY X 'x'>]", " X SYSTEM 'X'"})
    EXPECT_FALSE(findError("<!DOCTYPE" + std::string(type) + "><a/>").has_value()) << type;
}

TEST(XmlParsing, TakesAnEncodingFromTheAttributeOfThatWholeNameOnly) {
  const std::string printed = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
  EXPECT_EQ(reprint("<?xml version='1.0' encodingX='KOI8-R'?><a/>"), printed + "<a />\n");
  EXPECT_EQ(reprint("<?xmlX encoding='KOI8-R'?><a/>"),
            printed + "<?xmlX encoding='KOI8-R'?>\n<a />\n");
  EXPECT_EQ(reprint("<?xmlX a='1' encoding='KOI8-R'?><a/>"),
            printed + "<?xmlX a='1' encoding='KOI8-R'?>\n<a />\n");
}

// --- Attributes given twice

TEST(XmlDuplicateAttributes, AreRefused) {
  for (const char* text : {"<a b='1' b='1'/>", "<a b='1' b='2'/>", "<a b='1' c='2' b='3'></a>",
                           "<r><a/><a b='1' b='2'/></r>", "<r><a><b><c d='' d=''/></b></a></r>",
                           "<r>\n<!-- x -->text<a b='1' b='2'/></r>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlDuplicateAttributes, AreFoundWhereverTheFirstOneStands) {
  for (std::size_t count : {1u, 2u, 38u, 39u, 40u, 41u, 42u, 80u, 300u})
    for (std::size_t i = 0; i < count; ++i) {
      const std::string attributes = numberedAttributes(count);
      const std::string text = "<a" + attributes + " a" + std::to_string(i) + "='2'/>";
      expectErrorAt(text, 1, attributes.size() + 4);
    }
}

TEST(XmlDuplicateAttributes, AreToldWhereTheFirstRepetitionStands) {
  expectErrorAt("<a b='' c='' b='' c=''/>", 1, 14);
  expectErrorAt("<a c='' b='' c='' b=''/>", 1, 14);
}

TEST(XmlDuplicateAttributes, AreNotSeenInDifferentNames) {
  for (std::size_t count : {1u, 39u, 40u, 41u, 42u, 80u, 300u})
    EXPECT_FALSE(findError("<a" + numberedAttributes(count) + "/>").has_value()) << count;
  EXPECT_FALSE(findError("<a b='1' B='1' bb='1'/>").has_value());
}

TEST(XmlDuplicateAttributes, AreNotSeenInDifferentElements) {
  EXPECT_FALSE(findError("<a b='1'><a b='1'/><a b='1'/></a>").has_value());
}

TEST(XmlDuplicateAttributes, AreFoundAmongAHundredThousand) {
  const std::string attributes = numberedAttributes(100000);

  EXPECT_FALSE(findError("<a" + attributes + "/>").has_value());
  expectErrorAt("<a" + attributes + " a99999='2'/>", 1, attributes.size() + 4);
  expectErrorAt("<a" + attributes + " a0='2'/>", 1, attributes.size() + 4);
}

TEST(XmlDuplicateAttributes, AreFoundBehindElementsWithLikeAttributes) {
  for (const char* text :
       {"<r><a b='' c=''/><a b='' c='' b=''/></r>", "<r><a b='' c=''/><a b='' b=''/></r>",
        "<r><a b=''/><a b='' b=''/></r>", "<r><a/><a b='' b=''/></r>",
        "<r><a b='' c=''/><a b='' c=''/><a c='' c=''/></r>",
        "<r b=''><a b='' c=''><a b='' c='' c=''/></a></r>"})
    EXPECT_TRUE(findError(text).has_value()) << text;
}

TEST(XmlDuplicateAttributes, AreNotSeenInElementsWithLikeAttributes) {
  EXPECT_FALSE(
      findError("<r><a b='' c=''/><a b='' c=''/><a c='' b=''/><a b=''/><a/><a b='' c='' d=''/></r>")
          .has_value());
}

// --- Depth

TEST(XmlDepth, OfAThousandLevelsIsRead) {
  EXPECT_FALSE(findError(nest(1000)).has_value());
  EXPECT_FALSE(findError(repeat("<a>", 999) + "<b/>" + repeat("</a>", 999)).has_value());
}

TEST(XmlDepth, OfAThousandAndOneIsRefusedAtTheElementTooMany) {
  expectErrorAt(nest(1001), 1, 3002);
  expectErrorAt(repeat("<a>\n", 1000) + "<b/>" + repeat("</a>", 1000), 1001, 2);
}

TEST(XmlDepth, OfAMillionIsRefusedAlike) { expectErrorAt(nest(1000000), 1, 3002); }

TEST(XmlDepth, OfAMillionUnclosedIsRefused) {
  EXPECT_TRUE(findError(repeat("<a>", 1000000)).has_value());
}

TEST(XmlDepth, CountsElementsOnly) {
  const std::string inner = "text<!-- c --><![CDATA[x]]><?p?>";

  EXPECT_FALSE(
      findError("<!-- c -->" + repeat("<a>", 1000) + inner + repeat("</a>", 1000)).has_value());
}

TEST(XmlDepth, CountsLevelsNotElements) {
  EXPECT_FALSE(findError("<a>" + repeat("<a/>", 5000) + "</a>").has_value());
  EXPECT_FALSE(findError("<a>" + nest(999) + nest(998) + "<a/>" + nest(999) + "</a>").has_value());
  EXPECT_TRUE(findError("<a>" + nest(999) + nest(998) + "<a/>" + nest(1000) + "</a>").has_value());
}

// --- Bytes that are no 8-bit text

TEST(XmlNulCharacter, IsRefusedWhereItStands) {
  expectErrorAt(std::string("\0", 1), 1, 1);
  expectErrorAt(std::string("<a>\0</a>", 8), 1, 4);
  expectErrorAt(std::string("<a/>\0", 5), 1, 5);
  expectErrorAt(std::string("<a\n b='x\0y'/>", 13), 2, 6);
  expectErrorAt(std::string("<a>\r\n\r\n  <!--\0--></a>", 21), 3, 7);
}

TEST(XmlNulCharacter, IsNamedInTheReason) {
  const auto error = findError(std::string("<a>\0</a>", 8));

  ASSERT_TRUE(error.has_value());
  EXPECT_NE(error->getReason().find("NUL"), std::string::npos);
}

TEST(XmlUtf16, IsRefused) {
  EXPECT_TRUE(findError(std::string("\xFF\xFE<\0a\0/\0>\0", 10)).has_value());
  EXPECT_TRUE(findError(std::string("\xFE\xFF\0<\0a\0/\0>", 10)).has_value());
  EXPECT_TRUE(findError(std::string("<\0a\0/\0>\0", 8)).has_value());
  EXPECT_TRUE(findError(std::string("\0<\0a\0/\0>", 8)).has_value());
}

TEST(XmlUtf16, ByteOrderMarkAloneIsRefused) {
  EXPECT_TRUE(findError("\xFF\xFE").has_value());
  EXPECT_TRUE(findError("\xFE\xFF").has_value());
}

// --- Where it went wrong

TEST(XmlErrorPlace, OfADuplicateAttributeIsTheSecondName) {
  expectErrorAt("<a b='1' b='2'/>", 1, 10);
  expectErrorAt("<a>\n  <b c='1' c='2'/>\n</a>", 2, 12);
}

TEST(XmlErrorPlace, OfAnAmpersandIsItsOwnAlsoBehindLiteralSections) {
  expectErrorAt("<a><!-- & -->\n&</a>", 2, 1);
  expectErrorAt("<!DOCTYPE a [<!ENTITY e '&f;'>]><a>&</a>", 1, 36);
}

TEST(XmlErrorPlace, InATagOfSeveralLinesIsTheLineOfTheAttribute) {
  expectErrorAt("<a>\n<b\n  c='1'\n  d='2'\n   c='3'/>\n</a>", 5, 4);
}

TEST(XmlErrorPlace, CountsCarriageReturnLineFeedAsOneLineEnd) {
  expectErrorAt("<a>\r\n<b\r\n  c='1'\r\n  d='2'\r\n   c='3'/>\r\n</a>", 5, 4);
  expectErrorAt("<?xml version='1.0'?>\r\n\r\n<a/>\r\n\r\n <b/>", 5, 3);
}

TEST(XmlErrorPlace, CountsLinesOfEarlierTextAttributesCommentsAndSections) {
  expectErrorAt("<a x='1\r\n2'>t\r\nt<!-- \r\n --><![CDATA[\r\n\r\n]]><?p\r\n?><b c='' c=''/></a>",
                7, 11);
  expectErrorAt("<a x='1\n2'>t\nt<!-- \n --><![CDATA[\n\n]]><?p\n?><b c='' c=''/></a>", 7, 11);
}

TEST(XmlErrorPlace, CountsColumnsInBytes) {
  expectErrorAt("<a>\xC3\xA4<b c='1' c='2'/></a>", 1, 15);
}

TEST(XmlErrorPlace, OfASecondRootIsItsName) {
  expectErrorAt("<a/><b/>", 1, 6);
  expectErrorAt("<a/>\n<!-- x\n -->\n  <b/>\n", 4, 4);
}

TEST(XmlErrorPlace, OfTextOutsideTheRootIsItsFirstCharacter) {
  expectErrorAt("text<a/>", 1, 1);
  expectErrorAt("<a/>text", 1, 5);
}

TEST(XmlErrorPlace, OfTextOutsideTheRootIsTheLineOfItsFirstCharacter) {
  expectErrorAt("<a/>\n\n  text\n", 3, 3);
  expectErrorAt("\r\n\r\n text<a/>", 3, 2);
}

TEST(XmlErrorPlace, OfTextOutsideTheRootCountsLineFeedsOnlyAsLineEnds) {
  expectErrorAt("<a/>\n\rtext", 2, 2);
  expectErrorAt("<a/>\r\n\rtext", 2, 2);
  expectErrorAt("<a/>\r\r\n\n text", 3, 2);
  expectErrorAt("<a/>\nXtext", 2, 1);
}

TEST(XmlErrorPlace, OfAWrongEndTagIsThatTag) {
  const auto error = findError("<a>\n  <b>\n  </c>\n</a>");

  ASSERT_TRUE(error.has_value());
  EXPECT_EQ(error->getLine(), 3u);
  EXPECT_GE(error->getColumn(), 3u);
  EXPECT_LE(error->getColumn(), 6u);
}

TEST(XmlErrorPlace, OfAnUnquotedValueIsThatValue) {
  expectErrorAt("<a>\n <b\n  c=1/>\n</a>", 3, 5);
}

TEST(XmlErrorPlace, OfWhatIsNotClosedIsWhereItOpens) {
  expectErrorAt("<a>\n<b>\n</b>", 1, 1);
  expectErrorAt("<a>\n<b>\n", 2, 1);
  expectErrorAt("<a>\n<b/>\n<c >\n", 3, 1);
  expectErrorAt("<a>\n<b x='/'>\n<c x='>'/>\n", 2, 1);
  expectErrorAt("<a>\n<b x=''>\n<c x=\"\"/>\n", 2, 1);
  expectErrorAt("<a>\n<b>t</b>u<c>v<!-- </c> --><?p </c>?><![CDATA[</c>]]>", 2, 10);
  expectErrorAt("<a>\n<b>\n<!--<--><?p <?><![CDATA[<]]>\n", 2, 1);
  expectErrorAt("<!DOCTYPE a [<!ENTITY e '<z>'>]>\n<a>\n<b/>", 2, 1);
  expectErrorAt("<a>\n <!-- x\n", 2, 2);
  expectErrorAt("<a>\n text <!-- x\n", 2, 7);
  expectErrorAt("<a>\n <![CDATA[x\n", 2, 2);
  expectErrorAt("<a>\n <?p x\n", 2, 2);
  expectErrorAt("<a>\n <b\nc='1'\n", 2, 2);
  expectErrorAt("<a>\n <b\nc=\n", 2, 2);
  expectErrorAt("<a>\n <b\nc='1\n", 3, 4);
  expectErrorAt("<a>\n <b\nc='1/><d e=\"2\"/>\n", 3, 4);
  expectErrorAt("<a>\n <b\nc='", 3, 4);
  expectErrorAt("<a>\n</a", 2, 1);
  expectErrorAt("<a>\nt</", 2, 2);
  expectErrorAt("<!-- x\n\n", 1, 1);
  expectErrorAt("<X>\n<b>\n", 2, 1);
  expectErrorAt("<a x='1' X='2'>\n<b>\n", 2, 1);
}

TEST(XmlErrorPlace, OfWhatIsNotClosedComesWithTheReason) {
  for (const char* text : {"<a>", "<a><b>", "<a>\n<b/>\n", "<a>\n<b></b>", "<a>text"}) {
    const auto error = findError(text);
    ASSERT_TRUE(error.has_value());
    EXPECT_EQ(error->getReason(), "the text ends before its last element is closed") << text;
  }
  EXPECT_EQ(findError("<a></a")->getReason(), "this end tag is malformed or not closed");
  EXPECT_EQ(findError("<a></")->getReason(), "this end tag is malformed or not closed");
}

TEST(XmlErrorPlace, OfWhatIsNotClosedIsTheEndWhereAStreamCannotBeReadAgain) {
  Pipe pipe("<a>\n<b>\n  ");
  std::istream in(&pipe);

  expectErrorAt(in, 3, 3);
}

TEST(XmlErrorPlace, OfWhatIsNotClosedIsTheEndWhereAStreamGrewMeanwhile) {
  GrowingBuffer buffer("<a>\n<b>\n  ", "</b>");
  std::istream in(&buffer);

  expectErrorAt(in, 3, 3);
}

TEST(XmlErrorPlace, OfALessThanSignInAnAttributeIsThatAttribute) {
  expectErrorAt("<a>\n<b c='&lt;' d='1' e='&lt;<'/></a>", 2, 19);
}

TEST(XmlErrorPlace, InADocumentTypeIsThatOfTheFault) {
  expectErrorAt("<!DOCTYPE>\n<a/>", 1, 10);
  expectErrorAt("<!DOCTYPE\n1><a/>", 2, 1);
  expectErrorAt("<!DOCTYPE a\n x><a/>", 2, 2);
  expectErrorAt("<!DOCTYPE a\n SYSTEM x><a/>", 2, 9);
  expectErrorAt("<!DOCTYPE a\n SYSTEM 'x><a/>", 2, 9);
  expectErrorAt("<!DOCTYPE a\n PUBLIC '{' 'x'><a/>", 2, 9);
  expectErrorAt("<!DOCTYPE a\n PUBLIC 'x'><a/>", 2, 12);
  expectErrorAt("<!DOCTYPE a\n [\n x ]><a/>", 3, 2);
  expectErrorAt("<!DOCTYPE a\n [\n <!ELEMENT b ANY ", 3, 2);
  expectErrorAt("<!DOCTYPE a\n [\n <!ENTITY b\n 'c]><a/>", 4, 2);
  expectErrorAt("<!DOCTYPE a\n [\n <!-- x ]><a/>", 3, 2);
  expectErrorAt("<!DOCTYPE a\n [\n <?p x ]><a/>", 3, 2);
  expectErrorAt("<!DOCTYPE a\n [\n <?1 x?> ]><a/>", 3, 4);
  expectErrorAt("<!DOCTYPE a\n [\n <?xml x?> ]><a/>", 3, 4);
  expectErrorAt("<!DOCTYPE a\n [\n %p ]><a/>", 3, 4);
  expectErrorAt("<!DOCTYPE a\n [\n <!ENTITY b <c> ]><a/>", 3, 13);
  expectErrorAt("<!DOCTYPE a\n [\n <a/>", 3, 2);
  expectErrorAt("<!DOCTYPE a\n [\n", 2, 2);
  expectErrorAt("<!DOCTYPE a\n [ ] x><a/>", 2, 6);
  expectErrorAt("\n<!DOCTYPE a ", 2, 1);
}

TEST(XmlErrorPlace, OfAStreamWithoutABufferIsTheBeginning) {
  std::istream none(nullptr);
  expectErrorAt(none, 1, 1);
}

TEST(XmlErrorPlace, IsThatInTheFileWhenOneCharacterWasRead) {
  std::istringstream in(" <a b='1' b='2'/>");
  in.get();
  expectErrorAt(in, 1, 11);
}

TEST(XmlErrorPlace, IsThatInTheFileWhenEarlierLinesWereRead) {
  std::istringstream in("<?xml version='1.0'?>\n<!-- x -->\n<a>\n  <b c='1' c='2'/>\n</a>\n");
  std::string line;
  std::getline(in, line);
  std::getline(in, line);

  expectErrorAt(in, 4, 12);
}

TEST(XmlErrorPlace, IsThatInTheFileWhenPartOfALineWasRead) {
  std::istringstream in("first\nskipped<a b='1' b='2'/>\n");
  in.ignore(13);

  expectErrorAt(in, 2, 17);
}

TEST(XmlErrorPlace, OnLaterLinesIgnoresThePartOfALineThatWasRead) {
  std::istringstream in("first\nskipped<a>\n<b c='1' c='2'/></a>");
  in.ignore(13);

  expectErrorAt(in, 3, 10);
}

TEST(XmlErrorPlace, IsThatInTheFileForFilesToo) {
  const TemporaryFile file("<?xml version='1.0'?>\r\n<a>\r\n  <b c='1' c='2'/>\r\n</a>\r\n");
  std::ifstream in(file.get());
  char line[1024];
  in.getline(line, sizeof line);

  expectErrorAt(in, 3, 12);
}

TEST(XmlErrorPlace, IsThatInTheFileForFilesLongerThanTheirBuffers) {
  const TemporaryFile file("<?xml version='1.0'?>\n" +
                           repeat("<!-- a line of a comment -->\n", 5000) + "<a b='1'\n b='2'/>");
  std::ifstream in(file.get(), std::ios::binary);
  std::string line;
  for (int i = 0; i < 3000; ++i) std::getline(in, line);

  expectErrorAt(in, 5003, 2);
}

TEST(XmlErrorPlace, IsThatInTheFileWhereLineEndsAreTranslated) {
  const TemporaryFile file(repeat("a line that is left out\r\n", 3000) +
                           "left out <a b='1' b='2'/>\r\n");
  std::ifstream in(file.get());
  std::string skipped;
  for (int i = 0; i < 3000; ++i) std::getline(in, skipped);
  in >> skipped >> skipped;

  expectErrorAt(in, 3001, 19);
}

TEST(XmlErrorPlace, CountsFromTheStartWhereAStreamCannotBePositioned) {
  Pipe pipe("<?xml version='1.0'?>\n<a>\n  <b c='1' c='2'/>\n</a>\n");
  std::istream in(&pipe);
  std::string line;
  std::getline(in, line);

  expectErrorAt(in, 2, 12);
}

// --- Streams

TEST(XmlStream, IsReadFromItsPositionToItsEnd) {
  std::istringstream in("this line is no XML\n<root/>\n");
  std::string line;
  std::getline(in, line);

  const KvXmlTree tree(in);

  EXPECT_NE(tree.findRoot("root", true), nullptr);
}

TEST(XmlStream, ThatIsAFileIsReadFromItsPositionToItsEnd) {
  const TemporaryFile file("this line is no XML\r\n<root>\r\n<leaf/></root>\r\n");
  std::ifstream in(file.get());
  std::string line;
  std::getline(in, line);

  const KvXmlTree tree(in);

  ASSERT_NE(tree.findRoot("root", true), nullptr);
  EXPECT_EQ(tree.findRoot("root", true)->getChildren().size(), 1u);
}

TEST(XmlStream, ThatCannotBePositionedIsReadToItsEnd) {
  Pipe pipe("skipped\n<root>" + repeat("<leaf/>", 30000) + "</root>");
  std::istream in(&pipe);
  std::string line;
  std::getline(in, line);

  const KvXmlTree tree(in);

  ASSERT_NE(tree.findRoot("root", true), nullptr);
  EXPECT_EQ(tree.findRoot("root", true)->getChildren().size(), 30000u);
}

TEST(XmlStream, AtItsEndGivesAnEmptyDocument) {
  std::istringstream in("x");
  in.get();
  in.peek();
  ASSERT_TRUE(in.eof());
  ASSERT_FALSE(in.fail());

  EXPECT_FALSE(findError(in).has_value());
}

TEST(XmlStream, ThatFailedIsRefusedWhereItStands) {
  std::istringstream in("<a/>\n<b/>\n");
  std::string line;
  std::getline(in, line);
  in.setstate(std::ios::failbit);

  expectErrorAt(in, 2, 1);
}

TEST(XmlStream, ThatIsBadIsRefused) {
  std::istringstream in("<a/>");
  in.setstate(std::ios::badbit);

  expectErrorAt(in, 1, 1);
}

TEST(XmlStream, ThatFailedOnALineLongerThanItsBufferIsRefused) {
  std::istringstream in("<?xml version='1.0'?>" + std::string(2000, ' ') + "\n<a/>\n");
  char line[1024];
  in.getline(line, sizeof line);
  ASSERT_TRUE(in.fail());

  expectErrorAt(in, 1, 1024);
}

TEST(XmlStream, WithALineThatJustFitsItsBufferIsRead) {
  std::istringstream in(std::string(1023, 'x') + "\n<a/>\n");
  char line[1024];
  in.getline(line, sizeof line);
  ASSERT_FALSE(in.fail());

  EXPECT_FALSE(findError(in).has_value());
}

TEST(XmlStream, WithoutABufferIsRefused) {
  std::istream in(nullptr);

  expectErrorAt(in, 1, 1);
}

TEST(XmlStream, WithoutABufferIsRefusedEvenAfterClearing) {
  struct Bare : std::istream {
    Bare() : std::istream(nullptr) {}
  } in;

  EXPECT_TRUE(findError(in).has_value());
}

TEST(XmlStream, OfAFileThatDoesNotExistIsRefused) {
  std::ifstream in(testing::TempDir() + "no such folder/no such file.xml");

  expectErrorAt(in, 1, 1);
}

#ifndef _LIBCPP_VERSION  // whose file streams find a folder empty
TEST(XmlStream, OfAFolderIsRefused) {
  std::ifstream in(testing::TempDir());

  EXPECT_TRUE(findError(in).has_value());
}
#endif

TEST(XmlStream, ThatBreaksOffIsRefused) {
  BrokenBuffer<std::ios_base::failure> buffer;
  std::istream in(&buffer);

  EXPECT_TRUE(findError(in).has_value());
}

TEST(XmlStream, LetsOtherExceptionsOfItsBufferPass) {
  BrokenBuffer<std::domain_error> buffer;
  std::istream in(&buffer);

  EXPECT_THROW(KvXmlTree tree(in), std::domain_error);
}

TEST(XmlStream, ThatThrowsAtItsEndIsReadAllTheSame) {
  std::istringstream in("<a/>");
  in.exceptions(std::ios::failbit | std::ios::badbit | std::ios::eofbit);

  EXPECT_NO_THROW(KvXmlTree tree(in));
}

// --- Damaged documents

TEST(XmlDamage, SampleIsWellFormed) {
  EXPECT_FALSE(findError(sample).has_value());
  SKIP_WITHOUT_SECOND_PARSER();
  EXPECT_TRUE(PlatformTest::SecondParser::accepts(sample));
}

TEST(XmlDamage, CutBeforeTheRootGivesAnEmptyDocumentOrAnError) {
  forEachPiece(prolog, 0, [](std::size_t start, const Piece& piece) {
    for (std::size_t cut = 0; cut < piece.text.size(); ++cut) {
      const std::string text = sample.substr(0, start + cut);
      EXPECT_EQ(findError(text).has_value(), cut > 0 && !piece.isWhiteSpace) << text;
    }
  });
}

TEST(XmlDamage, CutInsideTheRootIsAnError) {
  const std::size_t start = join(prolog).size();
  for (std::size_t cut = 1; cut < rootPiece.size(); ++cut) {
    const std::string text = sample.substr(0, start + cut);
    EXPECT_TRUE(findError(text).has_value()) << text;
  }
}

TEST(XmlDamage, CutBehindTheRootGivesTheDocumentOrAnError) {
  forEachPiece(epilog, (join(prolog) + rootPiece).size(),
               [](std::size_t start, const Piece& piece) {
                 for (std::size_t cut = 0; cut < piece.text.size(); ++cut) {
                   const std::string text = sample.substr(0, start + cut);
                   EXPECT_EQ(findError(text).has_value(), cut > 0 && !piece.isWhiteSpace) << text;
                   if (cut > 0 && !piece.isWhiteSpace) continue;
                   EXPECT_TRUE(hasRoot(*parse(text))) << text;
                 }
               });
}

TEST(XmlDamage, LeavesEveryErrorInsideTheText) {
  const auto lines = static_cast<std::size_t>(std::count(sample.begin(), sample.end(), '\n')) + 1;
  for (std::size_t cut = 0; cut < sample.size(); ++cut) {
    const auto error = findError(sample.substr(0, cut));
    if (!error.has_value()) continue;
    EXPECT_GE(error->getLine(), 1u);
    EXPECT_LE(error->getLine(), lines);
    EXPECT_GE(error->getColumn(), 1u);
    EXPECT_LE(error->getColumn(), cut + 1);
  }
}

TEST(XmlDamage, OfRandomBytesIsReadOrRefused) {
  std::mt19937 random(12345);
  int read = 0;
  int refused = 0;
  for (int i = 0; i < 6000; ++i) {
    const std::string text = mutate(sample, random);
    ++(findError(text).has_value() ? refused : read);
  }
  EXPECT_GT(read, 100);
  EXPECT_GT(refused, 100);
}

TEST(XmlDamage, ThatIsReadPrintsToWhatReadsAndPrintsTheSame) {
  std::mt19937 random(54321);
  for (int i = 0; i < 3000; ++i) {
    const std::string text = mutate(sample, random);
    if (findError(text).has_value()) continue;
    const std::string printed = reprint(text);
    const auto error = findError(printed);
    ASSERT_FALSE(error.has_value()) << error->what() << "\n--- of\n"
                                    << text << "\n---\n"
                                    << printed;
    ASSERT_EQ(reprint(printed), printed) << "--- of\n" << text;
  }
}
