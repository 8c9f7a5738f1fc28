#include "found/kvml_writer.h"

#include <array>
#include <limits>
#include <sstream>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "kv/text.h"
#include "support/comma_locale.h"
#include "support/foundations.h"
#include "support/newer_documents.h"

using Found::Foundation;
using Found::KvmlWriter;
using TestSupport::CommaCLocale;
using TestSupport::CommaLocale;
using TestSupport::print;
using TestSupport::setDispArea;

namespace KvmlTest {
namespace {

using Chosen = std::set<Foundation*>;

std::string write(const Chosen& areas, const Chosen& beams) {
  KvXmlN::Document document("Kvml");
  KvmlWriter().write(document.getRoot(), areas, beams);
  return print(document);
}

/// How a listing of these elements is printed, one element a line.
std::string makePrinted(const std::vector<std::string>& elements) {
  const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kvml>\n";
  if (elements.empty()) return head + "  <Beddings />\n</Kvml>\n";
  std::string text = head + "  <Beddings>\n";
  for (const std::string& element : elements) text += "    " + element + "\n";
  return text + "  </Beddings>\n</Kvml>\n";
}

void setLine(Foundation& foundation, const KvVector3D& disp, const KvVector3D& rot) {
  foundation.setDispLine(&disp);
  foundation.setRotLine(&rot);
}

/// The value of an attribute of the only bedding of this kind.
std::string getAttribute(const std::string& printed, const std::string& key) {
  const std::string mark = " " + key + "=\"";
  const std::size_t begin = printed.find(mark);
  if (begin == std::string::npos) return "absent";
  const std::size_t from = begin + mark.size();
  return printed.substr(from, printed.find('"', from) - from);
}

class Kvml : public testing::Test {
 protected:
  Kvml() {
    full.setNumber(12);
    full.setName("A");
    setDispArea(full, 1.25, -20.0, 300.04);
    setLine(full, KvVector3D(4.0, 5.55, -6.0), KvVector3D(7.77, 8.0, 9.0));
    full.setFailAreaZ(Foundation::Compression);
    full.setFailLineX(Foundation::Tension);
    full.setFailLineY(Foundation::Tension);
    full.setFailLineZ(Foundation::Compression);
    full.setFactorArea(0.5);
    full.setFactorLine(-1.0);
  }

  Foundation full;
  const std::string fullArea =
      "<BeddingArea Number=\"12\" Name=\"A\" ksx=\"1.2\" ksy=\"-20.0\" ksz=\"300.0\" "
      "Failure=\"Fails in z under compression\" Tangential=\"0.50\" />";
  const std::string fullBeam =
      "<BeddingBeam Number=\"12\" Name=\"A\" ksx=\"4.0\" ksy=\"5.5\" ksz=\"-6.0\" ksxx=\"7.8\" "
      "Failure=\"Fails in y under tension, in z under compression\" Tangential=\"-1.00\" />";
};

TEST_F(Kvml, OfNothingLeavesTheParentAlone) {
  EXPECT_EQ(write({}, {}), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kvml />\n");
}

TEST_F(Kvml, ListsAnArea) { EXPECT_EQ(write({&full}, {}), makePrinted({fullArea})); }

TEST_F(Kvml, ListsABeam) { EXPECT_EQ(write({}, {&full}), makePrinted({fullBeam})); }

TEST_F(Kvml, ListsAFoundationTwiceThatIsInBothSets) {
  EXPECT_EQ(write({&full}, {&full}), makePrinted({fullArea, fullBeam}));
}

TEST_F(Kvml, ListsAllAreasBeforeAllBeams) {
  Foundation other(full);
  other.setNumber(2);

  const std::string printed = write({&full, &other}, {&full, &other});

  const std::string otherArea = "<BeddingArea Number=\"2\"" + fullArea.substr(24);
  const std::string otherBeam = "<BeddingBeam Number=\"2\"" + fullBeam.substr(24);
  EXPECT_EQ(printed, makePrinted({otherArea, fullArea, otherBeam, fullBeam}));
}

TEST_F(Kvml, SortsByNumberWhateverTheOrderOfPointers) {
  const int orders[][3] = {{1, 2, 3}, {1, 3, 2}, {2, 1, 3}, {2, 3, 1}, {3, 1, 2}, {3, 2, 1}};
  for (const auto& order : orders) {
    std::array<Foundation, 3> foundations;
    Chosen chosen;
    for (std::size_t i = 0; i < 3; ++i) {
      setDispArea(foundations[i], 1.0, 0.0, 0.0);
      setLine(foundations[i], KvVector3D(), KvVector3D());
      foundations[i].setNumber(order[i]);
      chosen.insert(&foundations[i]);
    }
    KvXmlN::Document document("Kvml");
    KvmlWriter().write(document.getRoot(), chosen, chosen);
    std::string numbers;
    for (const KvXmlN::Data* element : document.getRoot().getChildren().at(0)->getChildren())
      numbers += element->findAttribute("Number")->getData() + " ";
    EXPECT_EQ(numbers, "1 2 3 1 2 3 ") << order[0] << order[1] << order[2];
  }
}

TEST_F(Kvml, SortsNegativeNumbersBeforePositiveOnes) {
  std::array<Foundation, 5> foundations;
  const int numbers[] = {2147483647, 0, -1, std::numeric_limits<int>::min(), 10};
  Chosen chosen;
  for (std::size_t i = 0; i < foundations.size(); ++i) {
    setDispArea(foundations[i], 1.0, 0.0, 0.0);
    foundations[i].setNumber(numbers[i]);
    chosen.insert(&foundations[i]);
  }
  KvXmlN::Document document("Kvml");

  KvmlWriter().write(document.getRoot(), chosen, {});

  std::string listed;
  for (const KvXmlN::Data* element : document.getRoot().getChildren().at(0)->getChildren())
    listed += element->findAttribute("Number")->getData() + " ";
  EXPECT_EQ(listed, "-2147483648 -1 0 10 2147483647 ");
}

TEST_F(Kvml, ListsEachOfThoseWithEqualNumbers) {
  std::array<Foundation, 20> foundations;
  Chosen chosen;
  for (Foundation& foundation : foundations) {
    setDispArea(foundation, 1.0, 0.0, 0.0);
    foundation.setNumber(4);
    foundation.setName(std::string(1, static_cast<char>('a' + chosen.size())));
    chosen.insert(&foundation);
  }
  KvXmlN::Document document("Kvml");

  KvmlWriter().write(document.getRoot(), chosen, {});

  std::set<std::string> names;
  for (const KvXmlN::Data* element : document.getRoot().getChildren().at(0)->getChildren())
    names.insert(element->findAttribute("Name")->getData());
  EXPECT_EQ(names.size(), 20u);
}

TEST_F(Kvml, PassesOverAreasWithoutAreaStiffness) {
  full.setDispArea(nullptr);

  EXPECT_EQ(write({&full}, {}), makePrinted({}));
  EXPECT_EQ(write({&full}, {&full}), makePrinted({fullBeam}));
}

TEST_F(Kvml, PassesOverBeamsWithoutLineTranslation) {
  full.setDispLine(nullptr);

  EXPECT_EQ(write({}, {&full}), makePrinted({}));
  EXPECT_EQ(write({&full}, {&full}), makePrinted({fullArea}));
}

TEST_F(Kvml, ListsVectorsOfZeros) {
  Foundation zeros;
  setDispArea(zeros, 0.0, 0.0, 0.0);
  setLine(zeros, KvVector3D(), KvVector3D());

  EXPECT_EQ(write({&zeros}, {&zeros}),
            makePrinted({"<BeddingArea Number=\"-1\" Name=\"\" ksx=\"0.0\" ksy=\"0.0\" ksz=\"0.0\" "
                         "Failure=\"No failure\" Tangential=\"0.00\" />",
                         "<BeddingBeam Number=\"-1\" Name=\"\" ksx=\"0.0\" ksy=\"0.0\" ksz=\"0.0\" "
                         "ksxx=\"0.0\" Failure=\"No failure\" Tangential=\"0.00\" />"}));
}

TEST_F(Kvml, ListsAnAbsentRotationAsZero) {
  full.setRotLine(nullptr);

  EXPECT_EQ(getAttribute(write({}, {&full}), "ksxx"), "0.0");
}

TEST_F(Kvml, ListsNoRotationAboutYAndZ) {
  setLine(full, KvVector3D(), KvVector3D(0.0, 8.0, 9.0));

  EXPECT_EQ(getAttribute(write({}, {&full}), "ksxx"), "0.0");
}

TEST_F(Kvml, PassesOverNullFoundations) {
  EXPECT_EQ(write({nullptr, &full}, {nullptr, &full}), makePrinted({fullArea, fullBeam}));
  EXPECT_EQ(write({nullptr}, {}), makePrinted({}));
  EXPECT_EQ(write({}, {nullptr}), makePrinted({}));
}

// Numbers

const struct {
  double value;
  const char* printed;
} stiffnesses[] = {{1234.56, "1234.6"},
                   {-0.04, "-0.0"},
                   {-0.0, "-0.0"},
                   {0.04, "0.0"},
                   {0.06, "0.1"},
                   {0.25, "0.2"},
                   {0.75, "0.8"},
                   {-0.25, "-0.2"},
                   {9.96, "10.0"},
                   {1e-300, "0.0"},
                   {12345678.9, "12345678.9"},
                   {1e22, "10000000000000000000000.0"}};

const struct {
  double value;
  const char* printed;
} factors[] = {{0.125, "0.12"},          {0.375, "0.38"}, {-0.004, "-0.00"},
               {0.006, "0.01"},          {0.996, "1.00"}, {1.0, "1.00"},
               {1234.565625, "1234.57"}, {-0.5, "-0.50"}, {1e6, "1000000.00"}};

void expectStiffnessWithOneDecimal() {
  for (const auto& row : stiffnesses) {
    Foundation foundation;
    setDispArea(foundation, row.value, 0.5, 0.5);
    EXPECT_EQ(getAttribute(write({&foundation}, {}), "ksx"), row.printed);
    setDispArea(foundation, 0.5, row.value, 0.5);
    EXPECT_EQ(getAttribute(write({&foundation}, {}), "ksy"), row.printed);
    setDispArea(foundation, 0.5, 0.5, row.value);
    EXPECT_EQ(getAttribute(write({&foundation}, {}), "ksz"), row.printed);
    setLine(foundation, KvVector3D(row.value, 0.5, 0.5), KvVector3D(0.5, 0.5, 0.5));
    EXPECT_EQ(getAttribute(write({}, {&foundation}), "ksx"), row.printed);
    setLine(foundation, KvVector3D(0.5, row.value, 0.5), KvVector3D(0.5, 0.5, 0.5));
    EXPECT_EQ(getAttribute(write({}, {&foundation}), "ksy"), row.printed);
    setLine(foundation, KvVector3D(0.5, 0.5, row.value), KvVector3D(0.5, 0.5, 0.5));
    EXPECT_EQ(getAttribute(write({}, {&foundation}), "ksz"), row.printed);
    setLine(foundation, KvVector3D(0.5, 0.5, 0.5), KvVector3D(row.value, 0.5, 0.5));
    EXPECT_EQ(getAttribute(write({}, {&foundation}), "ksxx"), row.printed);
  }
}

void expectFactorsWithTwoDecimals() {
  for (const auto& row : factors) {
    Foundation foundation;
    setDispArea(foundation, 1.0, 1.0, 1.0);
    setLine(foundation, KvVector3D(1.0, 1.0, 1.0), KvVector3D());
    foundation.setFactorArea(row.value);
    EXPECT_EQ(getAttribute(write({&foundation}, {}), "Tangential"), row.printed);
    foundation.setFactorLine(row.value);
    EXPECT_EQ(getAttribute(write({}, {&foundation}), "Tangential"), row.printed);
  }
}

TEST_F(Kvml, PrintsStiffnessWithOneDecimal) { expectStiffnessWithOneDecimal(); }

TEST_F(Kvml, PrintsFactorsWithTwoDecimals) { expectFactorsWithTwoDecimals(); }

TEST_F(Kvml, PrintsTheSameUnderALocaleOfTheProgram) {
  const CommaLocale locale;
  full.setNumber(1234567);

  expectStiffnessWithOneDecimal();
  expectFactorsWithTwoDecimals();
  EXPECT_EQ(getAttribute(write({&full}, {}), "Number"), "1234567");
}

TEST_F(Kvml, PrintsTheSameUnderALocaleOfTheCLibrary) {
  const CommaCLocale locale;
  if (!locale.isInstalled()) GTEST_SKIP() << "no locale with a decimal comma is installed";
  full.setNumber(1234567);

  expectStiffnessWithOneDecimal();
  expectFactorsWithTwoDecimals();
  EXPECT_EQ(getAttribute(write({&full}, {}), "Number"), "1234567");
}

// Failure texts

Foundation::Failure toFailure(int value) { return static_cast<Foundation::Failure>(value); }

TEST_F(Kvml, NamesTheFailureOfABeam) {
  const struct {
    int y;
    int z;
    const char* text;
  } rows[] = {{0, 0, "No failure"},
              {-1, 0, "Fails in y under tension"},
              {1, 0, "Fails in y under compression"},
              {0, -1, "Fails in z under tension"},
              {0, 1, "Fails in z under compression"},
              {-1, -1, "Fails in y and z under tension"},
              {1, -1, "Fails in y under compression, in z under tension"},
              {-1, 1, "Fails in y under tension, in z under compression"},
              {1, 1, "Fails in y and z under compression"}};
  for (const auto& row : rows) {
    full.setFailLineY(toFailure(row.y));
    full.setFailLineZ(toFailure(row.z));
    EXPECT_EQ(getAttribute(write({}, {&full}), "Failure"), row.text) << row.y << ", " << row.z;
  }
}

TEST_F(Kvml, NamesNoFailureOfABeamForUnknownModes) {
  const int pairs[][2] = {{2, 0}, {0, 2}, {-2, -2}, {2, 1}, {-1, 2}, {1, -2}, {2147483647, -1}};
  for (const auto& pair : pairs) {
    full.setFailLineY(toFailure(pair[0]));
    full.setFailLineZ(toFailure(pair[1]));
    EXPECT_EQ(getAttribute(write({}, {&full}), "Failure"), "No failure")
        << pair[0] << ", " << pair[1];
  }
}

TEST_F(Kvml, NamesTheFailureOfAnArea) {
  const struct {
    int z;
    const char* text;
  } rows[] = {{0, "No failure"},
              {-1, "Fails in z under tension"},
              {1, "Fails in z under compression"},
              {2, "No failure"},
              {-2, "No failure"}};
  for (const auto& row : rows) {
    full.setFailAreaZ(toFailure(row.z));
    EXPECT_EQ(getAttribute(write({&full}, {}), "Failure"), row.text) << row.z;
  }
}

TEST_F(Kvml, DoesNotShowTheFailureOfLineX) {
  full.setFailLineX(Foundation::Tension);
  full.setFailLineY(Foundation::None);
  full.setFailLineZ(Foundation::None);
  full.setFailAreaZ(Foundation::None);

  EXPECT_EQ(getAttribute(write({}, {&full}), "Failure"), "No failure");
  EXPECT_EQ(getAttribute(write({&full}, {}), "Failure"), "No failure");
}

TEST_F(Kvml, ShowsFailuresWhetherFailingIsSwitchedOnOrOff) {
  for (const bool isPossible : {false, true}) {
    full.setFailPossible(isPossible);
    EXPECT_EQ(write({&full}, {&full}), makePrinted({fullArea, fullBeam}));
  }
}

TEST_F(Kvml, HasATextForEachIdAndForNoOther) {
  std::set<std::string> texts;
  for (unsigned id = 7469; id <= 7477; ++id) texts.insert(KvText::Load(id));
  EXPECT_EQ(texts.size(), 9u);
  EXPECT_EQ(texts.count(""), 0u);
  EXPECT_EQ(KvText::Load(7468), "");
  EXPECT_EQ(KvText::Load(7478), "");
}

// Document and foundations

TEST_F(Kvml, AppendsToWhatTheParentHas) {
  std::istringstream in("<Kvml Version='1'><Beddings Kept='1'/><Other/></Kvml>");
  KvXmlN::Document document(in);

  KvmlWriter().write(document.getRoot(), {&full}, {});

  const std::vector<KvXmlN::Data*>& children = document.getRoot().getChildren();
  ASSERT_EQ(children.size(), 3u);
  EXPECT_EQ(children[0]->findAttribute("Kept")->getData(), "1");
  EXPECT_EQ(children[0]->getChildren().size(), 0u);
  EXPECT_EQ(children[1]->getName(), "Other");
  EXPECT_EQ(children[2]->getName(), "Beddings");
  EXPECT_EQ(children[2]->getChildren().size(), 1u);
  EXPECT_EQ(document.getRoot().findAttribute("Version")->getData(), "1");
}

TEST_F(Kvml, AppendsAnotherListEachTime) {
  KvXmlN::Document document("Kvml");
  const KvmlWriter writer;

  writer.write(document.getRoot(), {&full}, {});
  writer.write(document.getRoot(), {}, {});
  writer.write(document.getRoot(), {}, {&full});

  EXPECT_EQ(print(document),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Kvml>\n  <Beddings>\n"
            "    " +
                fullArea + "\n  </Beddings>\n  <Beddings>\n    " + fullBeam +
                "\n  </Beddings>\n</Kvml>\n");
}

TEST_F(Kvml, KeepsNamesOfAnyKind) {
  for (const std::string& name :
       {std::string("<a b=\"c\" & 'd'>"), std::string("\ttab\nline\r"),
        std::string("Gr\xFC"
                    "n"),
        std::string("Gr\xC3\xBCn"), std::string(" "), std::string(100000, '&')}) {
    full.setName(name);
    std::istringstream in(write({&full}, {&full}));
    const KvXmlN::Document document(in);
    for (const KvXmlN::Data* element : document.getRoot().getChildren().at(0)->getChildren())
      EXPECT_TRUE(element->findAttribute("Name")->getData() == name) << name.substr(0, 100);
  }
}

TEST_F(Kvml, PrintsNamesInAFormThatKeepsThem) {
  full.setName("<a b=\"c\" & 'd'>\t\n");

  EXPECT_EQ(getAttribute(write({&full}, {}), "Name"), "&lt;a b=&quot;c&quot; &amp; 'd'>&#09;&#10;");
}

TEST_F(Kvml, ChangesNothingOfTheFoundations) {
  full.setChanged(false);
  const Foundation before(full);

  write({&full}, {&full});

  EXPECT_TRUE(full == before);
  EXPECT_FALSE(full.getChanged());
  EXPECT_EQ(full.getNumber(), 12);
  EXPECT_EQ(full.getName(), "A");
}

TEST(KvmlWriter, CannotBeCopied) {
  EXPECT_FALSE(std::is_copy_constructible_v<KvmlWriter>);
  EXPECT_FALSE(std::is_copy_assignable_v<KvmlWriter>);
}

TEST(KvmlWriter, IsOnePointer) {
  EXPECT_EQ(sizeof(KvmlWriter), sizeof(void*));
  EXPECT_FALSE(std::is_polymorphic_v<KvmlWriter>);
}

}  // namespace
}  // namespace KvmlTest
