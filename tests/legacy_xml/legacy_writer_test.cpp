#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <limits>
#include <sstream>

#include "kv/xml_tree.h"
#include "legacy_files.h"

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// A document of the host, with the cursor on its root.
class HostTree : public KvXmlTree {
 public:
  explicit HostTree(std::istream&& in) : KvXmlTree(in) { open("SMOD", false); }
  explicit HostTree(const std::string& text) : HostTree(std::istringstream(text)) {}

  std::string print() const {
    std::ostringstream out;
    putToStream(out);
    return out.str();
  }
};

/// What `manager` leaves of this document once it has updated it. Its apostrophes stand for quotes.
std::string update(const FoundationManager& manager, std::string text) {
  std::replace(text.begin(), text.end(), '\'', '"');
  HostTree tree(text);
  manager.updateXml(&tree);
  return tree.print();
}

void fill(Foundation& foundation) {
  const KvVector3D area(1.5, 2.0, 1e-5);
  const KvVector3D line(4.0, -5.0, 1e22);
  const KvVector3D rotation(7.25, 8.0, 9.0);
  foundation.setDispArea(&area);
  foundation.setDispLine(&line);
  foundation.setRotLine(&rotation);
  foundation.setFailAreaZ(Foundation::Compression);
  foundation.setFailLineX(Foundation::Tension);
  foundation.setFailLineY(Foundation::Compression);
  foundation.setFailLineZ(Foundation::Tension);
  foundation.setFactorArea(0.1);
  foundation.setFactorLine(123456.75);
  foundation.setGenerated(true);
}

TEST(LegacyWrite, OfAnEmptyManagerPrintsEmptyFoundations) {
  EXPECT_EQ(write(FoundationManager()), declaration +
                                            "<SMOD>\n"
                                            "  <FOUNDATIONS />\n"
                                            "</SMOD>\n");
}

TEST(LegacyWrite, PrintsAllAttributesInTheirOrder) {
  FoundationManager manager;
  fill(addFoundation(manager, 3, "A"));
  manager.setCurrentFoundation(manager.getFoundations()[0]);

  EXPECT_EQ(write(manager),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS CURRENT=\"A\">\n"
                "    <FOUND NUMBER=\"3\" NAME=\"A\" FXAREA=\"1.5\" FYAREA=\"2\" FZAREA=\"1e-05\" "
                "FXLINE=\"4\" FYLINE=\"-5\" FZLINE=\"1e+22\" FXX=\"7.25\" FAILZAREA=\"1\" "
                "FAILXLINE=\"-1\" FAILYLINE=\"1\" FAILZLINE=\"-1\" FACAREA=\"0.1\" "
                "FACLINE=\"123456.75\" IsGenerated=\"1\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyWrite, OfAFoundationWithoutValuesPrintsNameFactorsAndGenerated) {
  FoundationManager manager;
  addFoundation(manager, 1, "");

  EXPECT_EQ(write(manager), declaration +
                                "<SMOD>\n"
                                "  <FOUNDATIONS>\n"
                                "    <FOUND NUMBER=\"1\" NAME=\"\" FACAREA=\"0\" FACLINE=\"0\" "
                                "IsGenerated=\"0\" />\n"
                                "  </FOUNDATIONS>\n"
                                "</SMOD>\n");
}

TEST(LegacyWrite, KeepsTheOrderOfTheList) {
  FoundationManager manager;
  addFoundation(manager, 9, "C");
  addFoundation(manager, -1, "A");
  addFoundation(manager, std::numeric_limits<int>::max(), "B");
  addFoundation(manager, std::numeric_limits<int>::min(), "D");

  EXPECT_EQ(write(manager),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"9\" NAME=\"C\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "    <FOUND NUMBER=\"-1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "    <FOUND NUMBER=\"2147483647\" NAME=\"B\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "    <FOUND NUMBER=\"-2147483648\" NAME=\"D\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyWrite, PassesOverNullEntries) {
  FoundationManager manager;
  manager.add(static_cast<Foundation*>(nullptr));

  EXPECT_EQ(write(manager), declaration + "<SMOD>\n  <FOUNDATIONS />\n</SMOD>\n");
}

TEST(LegacyWrite, WritesZeroVectorsThatArePresent) {
  FoundationManager manager;
  Foundation& foundation = addFoundation(manager, 1, "A");
  const KvVector3D zero;
  foundation.setDispArea(&zero);
  foundation.setDispLine(&zero);
  foundation.setRotLine(&zero);

  EXPECT_EQ(write(manager),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"1\" NAME=\"A\" FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"0\" "
                "FXLINE=\"0\" FYLINE=\"0\" FZLINE=\"0\" FXX=\"0\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyWrite, WritesEachFailureModeByItself) {
  const struct {
    void (Foundation::*setter)(Foundation::Failure);
    const char* key;
  } rows[] = {{&Foundation::setFailAreaZ, "FAILZAREA"},
              {&Foundation::setFailLineX, "FAILXLINE"},
              {&Foundation::setFailLineY, "FAILYLINE"},
              {&Foundation::setFailLineZ, "FAILZLINE"}};
  for (const auto& row : rows) {
    FoundationManager manager;
    (addFoundation(manager, 1, "A").*row.setter)(Foundation::Tension);
    EXPECT_EQ(write(manager), declaration +
                                  "<SMOD>\n"
                                  "  <FOUNDATIONS>\n"
                                  "    <FOUND NUMBER=\"1\" NAME=\"A\" " +
                                  row.key +
                                  "=\"-1\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
                                  "  </FOUNDATIONS>\n"
                                  "</SMOD>\n");
  }
}

TEST(LegacyWrite, WritesStoredFailuresWhetherOrNotFailingIsPossible) {
  for (const bool possible : {false, true}) {
    FoundationManager manager;
    Foundation& foundation = addFoundation(manager, 1, "A");
    foundation.setFailLineX(Foundation::Tension);
    foundation.setFailPossible(possible);
    EXPECT_EQ(write(manager), declaration +
                                  "<SMOD>\n"
                                  "  <FOUNDATIONS>\n"
                                  "    <FOUND NUMBER=\"1\" NAME=\"A\" FAILXLINE=\"-1\" "
                                  "FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
                                  "  </FOUNDATIONS>\n"
                                  "</SMOD>\n")
        << possible;
  }
}

TEST(LegacyWrite, WritesAnUnknownFailureModeAsItIs) {
  FoundationManager manager;
  addFoundation(manager, 1, "A").setFailAreaZ(static_cast<Foundation::Failure>(2));

  EXPECT_NE(write(manager).find(" FAILZAREA=\"2\" "), std::string::npos);
}

TEST(LegacyWrite, WritesTwoFoundationsOfOneNumberIntoOneElement) {
  FoundationManager manager;
  addFoundation(manager, 4, "A");
  addFoundation(manager, 4, "B");

  EXPECT_EQ(write(manager), declaration +
                                "<SMOD>\n"
                                "  <FOUNDATIONS>\n"
                                "    <FOUND NUMBER=\"4\" NAME=\"B\" FACAREA=\"0\" FACLINE=\"0\" "
                                "IsGenerated=\"0\" />\n"
                                "  </FOUNDATIONS>\n"
                                "</SMOD>\n");
}

TEST(LegacyWrite, LeavesWhatOnlyTheEarlierOfOneNumberWrote) {
  FoundationManager manager;
  fill(addFoundation(manager, 4, "A"));
  addFoundation(manager, 4, "B");

  EXPECT_EQ(write(manager),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"4\" NAME=\"B\" FXAREA=\"1.5\" FYAREA=\"2\" FZAREA=\"1e-05\" "
                "FXLINE=\"4\" FYLINE=\"-5\" FZLINE=\"1e+22\" FXX=\"7.25\" FAILZAREA=\"1\" "
                "FAILXLINE=\"-1\" FAILYLINE=\"1\" FAILZLINE=\"-1\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyWrite, NamesTheCurrentFoundationEvenWithoutAName) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, ""));

  EXPECT_NE(write(manager).find("<FOUNDATIONS CURRENT=\"\">"), std::string::npos);
}

TEST(LegacyWrite, NamesACurrentFoundationThatIsNotInTheList) {
  FoundationManager manager;
  Foundation other;
  other.setName("Other");
  manager.setCurrentFoundation(&other);

  EXPECT_EQ(write(manager), declaration + "<SMOD>\n  <FOUNDATIONS CURRENT=\"Other\" />\n</SMOD>\n");
}

TEST(LegacyWrite, LeavesRemovedFoundationsOut) {
  FoundationManager manager;
  Foundation removed;
  manager.add(&removed);
  manager.remove(&removed, false, true);

  EXPECT_EQ(write(manager), declaration + "<SMOD>\n  <FOUNDATIONS />\n</SMOD>\n");
}

TEST(LegacyWrite, LeavesTheManagerAsItWas) {
  FoundationManager manager;
  fill(addFoundation(manager, 3, "A"));
  addFoundation(manager, 3, "").setChanged(true);
  manager.getFoundations()[0]->setChanged(false);
  manager.setCurrentFoundation(manager.getFoundations()[1]);

  write(manager);

  EXPECT_EQ(describe(manager), "3 A, 3 ; current ");
  EXPECT_EQ(describeValues(*manager.getFoundations()[0]),
            "area (1.5, 2, 1e-05), line (4, -5, 1e+22), rotation (7.25, 8, 9), fails area z 1, "
            "fails line x -1, fails line y 1, fails line z -1, factor area 0.1, "
            "factor line 123456.75, generated");
  EXPECT_FALSE(manager.getFoundations()[0]->getChanged());
  EXPECT_TRUE(manager.getFoundations()[1]->getChanged());
}

TEST(LegacyWrite, GoesOnWhereTheStreamStands) {
  const TemporaryPath path;
  std::ofstream out(path.get());
  out << "before\n";

  FoundationManager().writeXml(out);

  EXPECT_TRUE(out.is_open());
  out << "after\n";
  out.close();
  EXPECT_EQ(load(path.get()),
            "before\n" + declaration + "<SMOD>\n  <FOUNDATIONS />\n</SMOD>\nafter\n");
}

TEST(LegacyWrite, ReportsNothingOfAStreamThatIsNotOpen) {
  std::ofstream out;

  EXPECT_NO_THROW(FoundationManager().writeXml(out));
  EXPECT_FALSE(out.is_open());
}

TEST(LegacyWrite, WritesAFoundationListedTwiceIntoOneElement) {
  FoundationManager manager;
  Foundation& foundation = addFoundation(manager, 4, "A");
  manager.add(&foundation);

  EXPECT_EQ(write(manager), declaration +
                                "<SMOD>\n"
                                "  <FOUNDATIONS>\n"
                                "    <FOUND NUMBER=\"4\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                                "IsGenerated=\"0\" />\n"
                                "  </FOUNDATIONS>\n"
                                "</SMOD>\n");
  manager.remove(&foundation, false, false);
}

TEST(LegacyUpdate, CreatesFoundationsBehindWhatTheHostHas) {
  FoundationManager manager;
  addFoundation(manager, 1, "A");

  EXPECT_EQ(update(manager, "<SMOD UNIT='kN'><BEAMS><BEAM NUMBER='1'/></BEAMS></SMOD>"),
            declaration +
                "<SMOD UNIT=\"kN\">\n"
                "  <BEAMS>\n"
                "    <BEAM NUMBER=\"1\" />\n"
                "  </BEAMS>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, ChangesTheElementOfTheSameNumber) {
  FoundationManager manager;
  addFoundation(manager, 2, "New").setFactorArea(0.5);

  EXPECT_EQ(update(manager,
                   "<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A'/>"
                   "<FOUND NAME='Old' FACAREA='9' NUMBER='2' IsGenerated='1' FACLINE='9'/>"
                   "<FOUND NUMBER='3' NAME='C'/></FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"1\" NAME=\"A\" />\n"
                "    <FOUND NAME=\"New\" FACAREA=\"0.5\" NUMBER=\"2\" IsGenerated=\"0\" "
                "FACLINE=\"0\" />\n"
                "    <FOUND NUMBER=\"3\" NAME=\"C\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, ChangesTheFirstOfSeveralElementsOfTheSameNumber) {
  FoundationManager manager;
  addFoundation(manager, 2, "New");

  EXPECT_EQ(update(manager,
                   "<SMOD><FOUNDATIONS><FOUND NUMBER='2' NAME='A'/><FOUND NUMBER='2' NAME='B'/>"
                   "</FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"2\" NAME=\"New\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "    <FOUND NUMBER=\"2\" NAME=\"B\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, DoesNotMatchOtherElementsNorNumbersThatAreNone) {
  FoundationManager manager;
  addFoundation(manager, 0, "New");

  EXPECT_EQ(update(manager,
                   "<SMOD><FOUNDATIONS><OTHER NUMBER='0'/><FOUND/><FOUND NUMBER='x'/>"
                   "<FOUND NUMBER=''/><FOUND NUMBER='0.0'/><FOUND number='0'/>"
                   "<OTHER><FOUND NUMBER='0'/></OTHER></FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <OTHER NUMBER=\"0\" />\n"
                "    <FOUND />\n"
                "    <FOUND NUMBER=\"x\" />\n"
                "    <FOUND NUMBER=\"\" />\n"
                "    <FOUND NUMBER=\"0.0\" />\n"
                "    <FOUND number=\"0\" />\n"
                "    <OTHER>\n"
                "      <FOUND NUMBER=\"0\" />\n"
                "    </OTHER>\n"
                "    <FOUND NUMBER=\"0\" NAME=\"New\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, MatchesByTheNumberAndKeepsItsText) {
  FoundationManager manager;
  addFoundation(manager, 4, "New");

  EXPECT_EQ(update(manager, "<SMOD><FOUNDATIONS><FOUND NUMBER=' +04 '/></FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\" +04 \" NAME=\"New\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, DoesNotMatchByName) {
  FoundationManager manager;
  addFoundation(manager, 2, "A");

  EXPECT_EQ(
      update(manager, "<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A'/></FOUNDATIONS></SMOD>"),
      declaration +
          "<SMOD>\n"
          "  <FOUNDATIONS>\n"
          "    <FOUND NUMBER=\"1\" NAME=\"A\" />\n"
          "    <FOUND NUMBER=\"2\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
          "  </FOUNDATIONS>\n"
          "</SMOD>\n");
}

TEST(LegacyUpdate, LeavesAttributesThatItDoesNotWrite) {
  FoundationManager manager;
  addFoundation(manager, 1, "A");

  EXPECT_EQ(update(manager,
                   "<SMOD><FOUNDATIONS CURRENT='B' OTHER='x'>"
                   "<FOUND NUMBER='1' FXAREA='9' FXLINE='8' FXX='7' FAILXLINE='1' NOTE='y'/>"
                   "</FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS CURRENT=\"B\" OTHER=\"x\">\n"
                "    <FOUND NUMBER=\"1\" FXAREA=\"9\" FXLINE=\"8\" FXX=\"7\" FAILXLINE=\"1\" "
                "NOTE=\"y\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, LeavesElementsOfFoundationsThatWentAway) {
  EXPECT_EQ(update(FoundationManager(),
                   "<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='Gone'/></FOUNDATIONS></SMOD>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"1\" NAME=\"Gone\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, LeavesTextCommentsAndInstructions) {
  FoundationManager manager;
  addFoundation(manager, 1, "A");

  const std::string text =
      update(manager,
             "<!-- top --><?host hint?><SMOD><NOTE>some text<![CDATA[ <raw> ]]></NOTE><FOUNDATIONS>"
             "<!-- kept --><FOUND NUMBER='1'><CHILD/></FOUND></FOUNDATIONS></SMOD><!-- end -->");

  for (const char* part : {"<!-- top -->", "<?host hint?>", "some text<![CDATA[ <raw> ]]>",
                           "<!-- kept -->", "<CHILD />", "<!-- end -->"})
    EXPECT_NE(text.find(part), std::string::npos) << part << " in\n" << text;
}

TEST(LegacyUpdate, TwiceGivesOneElementForEachFoundation) {
  FoundationManager manager;
  addFoundation(manager, 5, "A");
  addFoundation(manager, 6, "B");
  HostTree tree("<SMOD/>");

  manager.updateXml(&tree);
  const std::string once = tree.print();
  manager.updateXml(&tree);

  EXPECT_EQ(tree.print(), once);
  EXPECT_EQ(once, declaration +
                      "<SMOD>\n"
                      "  <FOUNDATIONS>\n"
                      "    <FOUND NUMBER=\"5\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                      "IsGenerated=\"0\" />\n"
                      "    <FOUND NUMBER=\"6\" NAME=\"B\" FACAREA=\"0\" FACLINE=\"0\" "
                      "IsGenerated=\"0\" />\n"
                      "  </FOUNDATIONS>\n"
                      "</SMOD>\n");
}

TEST(LegacyUpdate, WritesBelowWhateverElementIsCurrent) {
  FoundationManager manager;
  addFoundation(manager, 1, "A");
  HostTree tree("<SMOD><FOUNDATIONS/><PART/></SMOD>");
  KvXmlData* const part = tree.open("PART", false);

  manager.updateXml(&tree);

  EXPECT_EQ(tree.getCurrent(), part);
  EXPECT_EQ(tree.print(), declaration +
                              "<SMOD>\n"
                              "  <FOUNDATIONS />\n"
                              "  <PART>\n"
                              "    <FOUNDATIONS>\n"
                              "      <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                              "IsGenerated=\"0\" />\n"
                              "    </FOUNDATIONS>\n"
                              "  </PART>\n"
                              "</SMOD>\n");
}

TEST(LegacyUpdate, WritesIntoTheFirstOfSeveralFoundationsElements) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "A"));

  EXPECT_EQ(
      update(manager, "<SMOD><FOUNDATIONS/><FOUNDATIONS><FOUND NUMBER='1'/></FOUNDATIONS></SMOD>"),
      declaration +
          "<SMOD>\n"
          "  <FOUNDATIONS CURRENT=\"A\">\n"
          "    <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"0\" />\n"
          "  </FOUNDATIONS>\n"
          "  <FOUNDATIONS>\n"
          "    <FOUND NUMBER=\"1\" />\n"
          "  </FOUNDATIONS>\n"
          "</SMOD>\n");
}

TEST(LegacyUpdate, MakesFoundationsTheRootOfAnEmptyTree) {
  FoundationManager manager;
  addFoundation(manager, 1, "A");
  KvXmlTree tree;

  manager.updateXml(&tree);

  std::ostringstream out;
  tree.putToStream(out);
  EXPECT_EQ(tree.getCurrent(), nullptr);
  EXPECT_EQ(out.str(), declaration +
                           "<FOUNDATIONS>\n"
                           "  <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                           "IsGenerated=\"0\" />\n"
                           "</FOUNDATIONS>\n");
}

TEST(LegacyUpdate, LeavesTheTreeAloneWhenTheCursorStaysEmpty) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "A"));
  fill(*manager.getFoundations()[0]);
  HostTree tree("<SMOD><FOUNDATIONS/></SMOD>");
  tree.close();

  manager.updateXml(&tree);

  EXPECT_EQ(tree.getCurrent(), nullptr);
  EXPECT_EQ(tree.print(), declaration + "<SMOD>\n  <FOUNDATIONS />\n</SMOD>\n");
}

TEST(LegacyUpdate, PassesOverNullEntries) {
  FoundationManager manager;
  manager.add(static_cast<Foundation*>(nullptr));
  addFoundation(manager, 1, "A");

  EXPECT_EQ(update(manager, "<SMOD/>"),
            declaration +
                "<SMOD>\n"
                "  <FOUNDATIONS>\n"
                "    <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
                "IsGenerated=\"0\" />\n"
                "  </FOUNDATIONS>\n"
                "</SMOD>\n");
}

TEST(LegacyUpdate, IgnoresAMissingTree) {
  FoundationManager manager;
  manager.setCurrentFoundation(&addFoundation(manager, 1, "A"));

  manager.updateXml(nullptr);

  EXPECT_EQ(describe(manager), "1 A; current A");
}

}  // namespace
}  // namespace LegacyTest
