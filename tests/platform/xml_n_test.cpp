#include "kv/xml_n.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/support.h"
#include "support/comma_locale.h"
#include "support/error_place.h"
#include "support/newer_documents.h"

using TestSupport::findErrorPlace;
using TestSupport::parse;
using TestSupport::Place;
using TestSupport::print;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

void expectErrorAt(const std::string& text, std::size_t line, std::size_t column) {
  EXPECT_EQ(findErrorPlace([&] { parse(text); }), (Place{line, column})) << text;
}

std::string format(double value, const char* text) {
  KvXmlN::Document document("a");
  document.getRoot().setAttribute("b", value, text);
  return document.getRoot().findAttribute("b")->getData();
}

std::vector<std::string> namesOf(const std::vector<KvXmlN::Data*>& elements) {
  std::vector<std::string> names;
  names.reserve(elements.size());
  for (const KvXmlN::Data* element : elements) names.push_back(element->getName());
  return names;
}

using Names = std::vector<std::string>;

}  // namespace

TEST(NewerXmlDocument, OfANameHasThatRootOnly) {
  const KvXmlN::Document document("root");

  EXPECT_EQ(document.getRoot().getName(), "root");
  EXPECT_TRUE(document.getRoot().getChildren().empty());
  EXPECT_EQ(print(document), declaration + "<root />\n");
}

TEST(NewerXmlDocument, RefusesARootWithoutAnXmlName) {
  for (const char* name : {"", "1", "a b", "<a>"})
    EXPECT_THROW(KvXmlN::Document document(name), std::invalid_argument) << name;
}

TEST(NewerXmlDocument, GivesTheSameRootEachTime) {
  const auto document = parse("<!-- c --><a/>");
  const KvXmlN::Document& unchanged = *document;

  EXPECT_EQ(&document->getRoot(), &document->getRoot());
  EXPECT_EQ(&document->getRoot(), &unchanged.getRoot());
  EXPECT_EQ(document->getRoot().getName(), "a");
}

TEST(NewerXmlDocument, WithoutARootIsRefused) {
  for (const char* text : {"", " \n", "<!-- c -->", "<?p?>", "<?xml version='1.0'?>\n<!-- c -->\n"})
    EXPECT_THROW(parse(text), KvXmlError) << text;
}

TEST(NewerXmlDocument, WithoutARootIsRefusedAtItsEnd) {
  expectErrorAt("", 1, 1);
  expectErrorAt("<?xml version='1.0'?>\n<!-- c -->\n  ", 3, 3);
}

TEST(NewerXmlDocument, ThatIsMalformedIsRefused) {
  expectErrorAt("<a b='1' b='2'/>", 1, 10);
  expectErrorAt("<a/>\n<b/>", 2, 2);
  expectErrorAt("<a/>text", 1, 5);
  expectErrorAt(std::string("<a>\0</a>", 8), 1, 4);
  expectErrorAt(PlatformTest::repeat("<a>", 1001) + PlatformTest::repeat("</a>", 1001), 1, 3002);
  EXPECT_THROW(parse("<a><b></a>"), KvXmlError);
  EXPECT_NO_THROW(parse(PlatformTest::repeat("<a>", 1000) + PlatformTest::repeat("</a>", 1000)));
}

TEST(NewerXmlDocument, OfAStreamThatCannotBeReadIsRefused) {
  std::istringstream failed("<a/>");
  failed.setstate(std::ios::failbit);
  EXPECT_THROW(KvXmlN::Document document(failed), KvXmlError);

  std::istream empty(nullptr);
  EXPECT_THROW(KvXmlN::Document document(empty), KvXmlError);
}

TEST(NewerXmlDocument, IsReadFromTheStreamsPosition) {
  std::istringstream in("first line\n<a b='1' b='2'/>");
  std::string line;
  std::getline(in, line);

  try {
    const KvXmlN::Document document(in);
    ADD_FAILURE() << "no error";
  } catch (const KvXmlError& error) {
    EXPECT_EQ(error.getLine(), 2u);
    EXPECT_EQ(error.getColumn(), 10u);
  }
}

TEST(NewerXmlDocument, KeepsWhatWasParsed) {
  const auto document = parse(
      "<?xml version='1.0' standalone='yes'?><!-- c --><a z='1' b='&lt;'><?p q?>t<b/>u"
      "<![CDATA[<]]></a>");

  EXPECT_EQ(print(*document),
            "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<!-- c -->\n"
            "<a z='1' b='&lt;'><?p q?>t<b />u<![CDATA[<]]></a>\n");
}

TEST(NewerXmlDocument, DeclaresItsEncodingTruthfully) {
  EXPECT_EQ(print(*parse("<a>\xE4</a>")),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<a>\xE4</a>\n");
}

TEST(NewerXmlElement, HasItsChildElementsInDocumentOrder) {
  const auto document = parse("<r>t<c/><!-- x --><a><z/></a><?p?><b/></r>");

  EXPECT_EQ(namesOf(document->getRoot().getChildren()), (Names{"c", "a", "b"}));
}

TEST(NewerXmlElement, AppendsNewChildren) {
  const auto document = parse("<r><a/>t</r>");

  KvXmlN::Data* const child = document->getRoot().createChild("b");
  ASSERT_NE(child, nullptr);
  ASSERT_NE(child->createChild("c"), nullptr);

  EXPECT_EQ(document->getRoot().getChildren().back(), child);
  EXPECT_EQ(print(*document), declaration + "<r><a />t<b><c /></b></r>\n");
}

TEST(NewerXmlElement, CreatesAnotherChildOfTheSameName) {
  KvXmlN::Document document("r");

  EXPECT_NE(document.getRoot().createChild("a"), document.getRoot().createChild("a"));

  EXPECT_EQ(namesOf(document.getRoot().getChildren()), (Names{"a", "a"}));
}

TEST(NewerXmlElement, CreatesNoChildWithoutAnXmlName) {
  KvXmlN::Document document("r");
  for (const std::string& name : {std::string(), std::string("1a"), std::string("a b"),
                                  std::string("a<"), std::string("a\0b", 3), std::string("-")})
    EXPECT_EQ(document.getRoot().createChild(name), nullptr) << name;

  EXPECT_TRUE(document.getRoot().getChildren().empty());
  EXPECT_EQ(print(document), declaration + "<r />\n");
}

TEST(NewerXmlElement, StaysValidWhileOthersAreCreated) {
  KvXmlN::Document document("r");
  std::vector<KvXmlN::Data*> created;
  for (int i = 0; i < 1000; ++i) created.push_back(document.getRoot().createChild("a"));

  EXPECT_EQ(document.getRoot().getChildren(), created);
}

TEST(NewerXmlElement, MayStandForItself) {
  KvXmlN::Data element("a");
  element.setAttribute("b", 1, true);
  KvXmlN::Data* const child = element.createChild("c");

  EXPECT_EQ(element.getName(), "a");
  EXPECT_EQ(element.findAttribute("b")->getData(), "1");
  EXPECT_EQ(element.getChildren(), std::vector<KvXmlN::Data*>{child});
}

TEST(NewerXmlElement, ThatStandsForItselfNeedsAnXmlName) {
  for (const char* name : {"", "1", "a b"})
    EXPECT_THROW(KvXmlN::Data element(name), std::invalid_argument) << name;
}

TEST(NewerXmlElement, VeryFarDownEndsWithoutRunningOutOfStack) {
  auto document = std::make_unique<KvXmlN::Document>("r");
  KvXmlN::Data* element = &document->getRoot();
  for (int i = 0; i < 100000; ++i) element = element->createChild("level");
  EXPECT_EQ(element->getName(), "level");

  document.reset();
}

TEST(NewerXmlAttributes, AreFoundByTheirWholeName) {
  const auto document = parse("<a b='1' bb='2' B='3'/>");
  const KvXmlN::Data& root = document->getRoot();

  EXPECT_EQ(root.findAttribute("b")->getData(), "1");
  EXPECT_EQ(root.findAttribute("bb")->getData(), "2");
  EXPECT_EQ(root.findAttribute("B")->getData(), "3");
  EXPECT_EQ(root.findAttribute("c"), nullptr);
}

TEST(NewerXmlAttributes, AreTheSameEachTime) {
  const auto document = parse("<a b='1' c='2'/>");
  const KvXmlN::Data& root = document->getRoot();
  const KvXmlN::AttributeData* const b = root.findAttribute("b");
  const KvXmlN::AttributeData* const c = root.findAttribute("c");

  EXPECT_EQ(root.findAttribute("b"), b);
  EXPECT_EQ(root.findAttribute("c"), c);
}

TEST(NewerXmlAttributes, KeepTheirPlaceWhenSetAgain) {
  for (bool flag : {false, true}) {
    const auto document = parse("<a w='0' x='1' y='2' z='3'/>");
    KvXmlN::Data& root = document->getRoot();
    root.setAttribute("y", -7, flag);
    root.setAttribute("w", std::string("<text>"), flag);
    root.setAttribute("z", 0.5);
    root.setAttribute("x", 2.0, "%.2f");
    root.setAttribute("new", 1, flag);
    EXPECT_EQ(print(*document),
              declaration + "<a w=\"&lt;text>\" x=\"2.00\" y=\"-7\" z=\"0.5\" new=\"1\" />\n");
  }
}

TEST(NewerXmlAttributes, NeedAnXmlName) {
  KvXmlN::Document document("a");
  KvXmlN::Data& root = document.getRoot();

  EXPECT_THROW(root.setAttribute("1", std::string("x"), true), std::invalid_argument);
  EXPECT_THROW(root.setAttribute("", 1, true), std::invalid_argument);
  EXPECT_THROW(root.setAttribute("a b", 1.0), std::invalid_argument);
  EXPECT_THROW(root.setAttribute("a=", 1.0, "%g"), std::invalid_argument);

  EXPECT_EQ(print(document), declaration + "<a />\n");
}

TEST(NewerXmlAttributes, HoldQuestionMarksForCharactersThatXmlForbids) {
  KvXmlN::Document document("a");
  document.getRoot().setAttribute("b", std::string("x\0y\x1F\tz", 6), true);

  EXPECT_EQ(document.getRoot().findAttribute("b")->getData(), "x?y?\tz");
}

TEST(NewerXmlAttributes, FollowChangesWhileOthersAreAdded) {
  KvXmlN::Document document("a");
  KvXmlN::Data& root = document.getRoot();
  root.setAttribute("b", 1, true);
  const KvXmlN::AttributeData* const attribute = root.findAttribute("b");
  ASSERT_EQ(attribute->getData(), "1");

  for (int i = 0; i < 100; ++i) root.setAttribute("x" + std::to_string(i), i, true);
  ASSERT_NE(root.findAttribute("x99"), nullptr);
  root.setAttribute("b", 2, true);

  EXPECT_EQ(attribute->getData(), "2");
}

TEST(NewerXmlAttributes, ReadAsTextOrNone) {
  const auto document = parse("<a b='text' c=''/>");

  EXPECT_EQ(KvXmlN::AttributeIn::readString(document->getRoot(), "b"),
            std::optional<std::string>("text"));
  EXPECT_EQ(KvXmlN::AttributeIn::readString(document->getRoot(), "c"),
            std::optional<std::string>(""));
  EXPECT_EQ(KvXmlN::AttributeIn::readString(document->getRoot(), "d"), std::nullopt);
}

TEST(NewerXmlAttributes, ReadAsNumbersOrNone) {
  const auto document = parse("<a b=' 7 ' c='7.5' d='7x' e=''/>");
  const KvXmlN::Data& root = document->getRoot();
  using KvXmlN::AttributeIn;

  EXPECT_EQ(AttributeIn::readDouble(root, "b"), 7.0);
  EXPECT_EQ(AttributeIn::readDouble(root, "c"), 7.5);
  EXPECT_EQ(AttributeIn::readInteger(root, "b"), 7);
  EXPECT_EQ(AttributeIn::readInteger(root, "c"), std::nullopt);
  for (const char* name : {"d", "e", "absent"}) {
    EXPECT_EQ(AttributeIn::readDouble(root, name), std::nullopt) << name;
    EXPECT_EQ(AttributeIn::readInteger(root, name), std::nullopt) << name;
  }
}

TEST(NewerXmlNumbers, ReadLikeThoseOfTheOlderLibrary) {
  const TestSupport::CommaLocale locale;
  const auto document = parse(
      "<a plain='1.5' plus=' +2.5 ' wrong='12abc' comma='1,5' empty='' twice='+-1' high='1e400' "
      "low='-1e400' tiny='-1e-400' inf='-inf' nan='nan'/>");
  const KvXmlN::Data& root = document->getRoot();

  EXPECT_EQ(root.getAttributeDouble("plain"), 1.5);
  EXPECT_EQ(root.getAttributeDouble("plus"), 2.5);
  EXPECT_EQ(root.getAttributeDouble("wrong"), 0.0);
  EXPECT_EQ(root.getAttributeDouble("comma"), 0.0);
  EXPECT_EQ(root.getAttributeDouble("empty"), 0.0);
  EXPECT_EQ(root.getAttributeDouble("twice"), 0.0);
  EXPECT_EQ(root.getAttributeDouble("high"), infinity);
  EXPECT_EQ(root.getAttributeDouble("low"), -infinity);
  EXPECT_TRUE(std::signbit(root.getAttributeDouble("tiny")));
  EXPECT_EQ(root.getAttributeDouble("inf"), -infinity);
  EXPECT_TRUE(std::isnan(root.getAttributeDouble("nan")));
}

TEST(NewerXmlNumbers, AreZeroWhereTheAttributeIsAbsent) {
  EXPECT_EQ(parse("<a/>")->getRoot().getAttributeDouble("b"), 0.0);
}

TEST(NewerXmlNumbers, AreWrittenInTheShortestForm) {
  const TestSupport::CommaLocale locale;
  KvXmlN::Document document("a");
  document.getRoot().setAttribute("b", 1234.5);
  document.getRoot().setAttribute("c", 0.1);
  document.getRoot().setAttribute("d", 1234567, true);
  document.getRoot().setAttribute("e", -infinity);

  EXPECT_EQ(print(document),
            declaration + "<a b=\"1234.5\" c=\"0.1\" d=\"1234567\" e=\"-inf\" />\n");
}

TEST(NewerXmlFormat, PrintsAsPrintfDoes) {
  const TestSupport::CommaLocale locale;

  EXPECT_EQ(format(1234.5, "%f"), "1234.500000");
  EXPECT_EQ(format(1234.5, "%.0f"), "1234");
  EXPECT_EQ(format(1234.5, "%.3f"), "1234.500");
  EXPECT_EQ(format(1234567.0, "%g"), "1.23457e+06");
  EXPECT_EQ(format(1234567.0, "%.10G"), "1234567");
  EXPECT_EQ(format(-1.5, "%e"), "-1.500000e+00");
  EXPECT_EQ(format(1.5, "%E"), "1.500000E+00");
  EXPECT_EQ(format(1.5, "%F"), "1.500000");
  EXPECT_EQ(format(1.5, "[%8.2f]"), "[    1.50]");
  EXPECT_EQ(format(1.5, "[%-8.2f]"), "[1.50    ]");
  EXPECT_EQ(format(1.5, "%+08.2f"), "+0001.50");
  EXPECT_EQ(format(1.0, "%#.0f"), "1.");
  EXPECT_EQ(format(1.5, "% .1f"), " 1.5");
  EXPECT_EQ(format(50.0, "%%%.0f%%"), "%50%");
}

TEST(NewerXmlFormat, RoundsHalvesOfTheExactValueToEven) {
  EXPECT_EQ(format(1.25, "%.1f"), "1.2");
  EXPECT_EQ(format(-1.75, "%.1f"), "-1.8");
  EXPECT_EQ(format(2.5, "%.0e"), "2e+00");
  EXPECT_EQ(format(0.15, "%.1f"), "0.1");  // the double is a little less
}

TEST(NewerXmlFormat, KeepsZerosAndPointsThatAreAskedFor) {
  EXPECT_EQ(format(1.5, "%#g"), "1.50000");
  EXPECT_EQ(format(0.0, "%#g"), "0.00000");
  EXPECT_EQ(format(0.0001234, "%#.3g"), "0.000123");
  EXPECT_EQ(format(0.00001234, "%#.2g"), "1.2e-05");
  EXPECT_EQ(format(999999.5, "%#G"), "1.00000E+06");
  EXPECT_EQ(format(123456.0, "%#g"), "123456.");
  EXPECT_EQ(format(1.5, "%#.0g"), "2.");
  EXPECT_EQ(format(1.5, "%#.0e"), "2.e+00");
  EXPECT_EQ(format(1.0, "%#a"), "0x1.p+0");
}

TEST(NewerXmlFormat, PrintsHexadecimalDigits) {
  EXPECT_EQ(format(1.5, "%a"), "0x1.8p+0");
  EXPECT_EQ(format(-1.5, "%12.2A"), "  -0X1.80P+0");
  EXPECT_EQ(format(1.5, "%012a"), "0x00001.8p+0");
  EXPECT_EQ(format(0.0, "%a"), "0x0p+0");
  EXPECT_EQ(format(-0.0, "%+.2a"), "-0x0.00p+0");
  EXPECT_EQ(format(0.1, "% a"), " 0x1.999999999999ap-4");
  EXPECT_EQ(format(0.1, "%.15a"), "0x1.999999999999a00p-4");
  EXPECT_EQ(format(0.1, "%A"), "0X1.999999999999AP-4");
  EXPECT_EQ(format(1e300, "%-26A|"), "0X1.7E43C8800759CP+996    |");
}

TEST(NewerXmlFormat, RoundsHexadecimalDigitsToEven) {
  EXPECT_EQ(format(1.53125, "%.1a"), "0x1.8p+0");   // 1.88
  EXPECT_EQ(format(1.59375, "%.1a"), "0x1.ap+0");   // 1.98
  EXPECT_EQ(format(1.546875, "%.1a"), "0x1.9p+0");  // 1.8c
  EXPECT_EQ(format(1.96875, "%.0a"), "0x2p+0");
}

TEST(NewerXmlFormat, PrintsDenormalsWithoutADigitBeforeThePoint) {
  EXPECT_EQ(format(5e-324, "%a"), "0x0.0000000000001p-1022");
  EXPECT_EQ(format(2.2250738585072014e-308, "%a"), "0x1p-1022");
  EXPECT_EQ(format(2.2250738585072009e-308, "%a"), "0x0.fffffffffffffp-1022");
}

TEST(NewerXmlFormat, FillsNumbersWithZerosAndOtherValuesWithBlanks) {
  EXPECT_EQ(format(-1.5, "%08.2f"), "-0001.50");
  EXPECT_EQ(format(-1.5, "%-08.2f|"), "-1.50   |");
  EXPECT_EQ(format(infinity, "%08f"), "     inf");
  EXPECT_EQ(format(infinity, "%+f"), "+inf");
}

TEST(NewerXmlFormat, TakesTheLengthThatPrintfIgnoresForADouble) {
  EXPECT_EQ(format(1.5, "%lf"), "1.500000");
}

TEST(NewerXmlFormat, PrintsInfinityAndNotANumber) {
  EXPECT_EQ(format(infinity, "%f"), "inf");
  EXPECT_EQ(format(-infinity, "%.2F"), "-INF");
  EXPECT_EQ(format(std::numeric_limits<double>::quiet_NaN(), "%g"), "nan");
}

TEST(NewerXmlFormat, PrintsHundredsOfCharacters) {
  EXPECT_EQ(format(1e300, "%.1f").size(), 303u);
  EXPECT_EQ(format(1.0, "%.500f"), "1." + std::string(500, '0'));
  EXPECT_EQ(format(1.5, "%.999e"), "1.5" + std::string(998, '0') + "e+00");
  EXPECT_EQ(format(0.0, "%.999f"), "0." + std::string(999, '0'));
  EXPECT_EQ(format(-1234.5, "%.999f"), "-1234.5" + std::string(998, '0'));
  EXPECT_EQ(format(0.0625, "%.999f"), "0.0625" + std::string(995, '0'));
  EXPECT_EQ(format(1e22, "%#.999g"), "10000000000000000000000." + std::string(976, '0'));
}

TEST(NewerXmlFormat, PrintsEveryDigitOfTheSmallestNumbers) {
  const std::string text = format(5e-324, "%.999f");
  EXPECT_EQ(text.substr(0, 345), "0." + std::string(323, '0') + "49406564584124654417");
  EXPECT_EQ(text.substr(984), "55837389733598994");  // rounded up
  EXPECT_EQ(text.size(), 1001u);
}

TEST(NewerXmlFormat, PrintsEveryDigitOfTheLongestNumber) {
  const std::string text = format(2.2250738585072009e-308, "%.999e");
  EXPECT_EQ(text.substr(0, 22), "2.22507385850720088902");
  EXPECT_EQ(text.substr(748, 30), "802817344665527343750000000000");
  EXPECT_EQ(text.size(), 1006u);
}

TEST(NewerXmlFormat, HoldsQuestionMarksForCharactersThatXmlForbids) {
  EXPECT_EQ(format(1.5, "\x01%.1f\n"), "?1.5\n");
}

TEST(NewerXmlFormat, NeedsExactlyOneConversionOfADouble) {
  KvXmlN::Document document("a");
  document.getRoot().setAttribute("b", 1.5);
  for (const char* text : {"",     "no conversion",
                           "%",    "%%",
                           "%5",   "%.2",
                           "%d",   "%i",
                           "%s",   "%c",
                           "%n",   "%p",
                           "%x",   "%ld",
                           "%Lf",  "%hf",
                           "%f%f", "%f %d",
                           "%f%n", "%f%",
                           "%*f",  "%.*f",
                           "%1$f", "%q",
                           "%X",   "%Xf",
                           "%1Xf", "%.1Xf"})
    EXPECT_THROW(document.getRoot().setAttribute("b", 2.5, text), std::invalid_argument) << text;
  EXPECT_THROW(document.getRoot().setAttribute("b", 2.5, nullptr), std::invalid_argument);

  EXPECT_EQ(document.getRoot().findAttribute("b")->getData(), "1.5");
}

TEST(NewerXmlFormat, TellsWhyItIsRefused) {
  try {
    format(1.5, "%d");
    FAIL();
  } catch (const std::invalid_argument& refusal) {
    EXPECT_STREQ(refusal.what(), "this is no format for one double");
  }
}

TEST(NewerXmlFormat, TakesWidthAndPrecisionUpToThreeDigits) {
  EXPECT_EQ(format(1.5, "%999.1f"), std::string(996, ' ') + "1.5");
  EXPECT_EQ(format(1.5, "%.999f"), "1.5" + std::string(998, '0'));
  EXPECT_THROW(format(1.5, "%1000f"), std::invalid_argument);
  EXPECT_THROW(format(1.5, "%.1000f"), std::invalid_argument);
}

TEST(NewerXmlFormat, RefusesAWidthBeyondWhatPrintfCanCount) {
  EXPECT_THROW(format(1.5, "%99999999999f"), std::invalid_argument);
}
