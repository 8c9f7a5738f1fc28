#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

const std::string legend =
    "\n* current   gen generated   T fails in tension   C fails in compression   - none\n";

/// The table of a legacy model with these foundations, as it is printed to a file.
std::string showTable(const std::string& foundations) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS>" + foundations + "</FOUNDATIONS>"));
  return run("show '" + path + "'").out;
}

TEST(ShowTable, HasARowForEachPartOfAFoundation) {
  const Result result = run("show '" KVFOUND_EXAMPLES_DIR "/model.xml'");

  EXPECT_EQ(
      result.out,
      "   No  Name                       Gen  Part       x       y       z   rot x  Fails  Factor\n"
      "    1  Strip footing, axis A           line    9000    9000   45000    3750  -         0.2\n"
      "    2  Strip footing, axis D           line    7200    7200   36000    3000  zT        0.2\n"
      "*   3  Raft on stiff clay              area    1500    1500   15000       -  zT        0.1\n"
      "    4  Slab on dense sand              area    8000    8000   80000       -  zT        0.1\n"
      "    5  Pile cap P1 <4 piles>           area    2500    2500  120000       -  -        0.05\n"
      "                                       line   16000   16000  350000  125000  -        0.05\n"
      "    6  Sheet-pile wall, embedded       line     500   18000    2500       -  xC yT       0\n"
      "    7  R\xC3\xBC"
      "ckwand Kranbahn               line    4000    4000   22000  1850.5  yC zT    0.15\n"
      "    8  Floor on gravel \"0/45\"          area       0       0   62500       -  zT          "
      "0\n"
      "    9  Ground anchor beam              line       0       0    5200       -  zC          0\n"
      "   10  Found0010                  gen  area     620     620    6200       -  zT        0.1\n"
      "   11  Found0011                  gen  area     745     745    7450       -  zT        0.1\n"
      "   12  Found0012                  gen  area  871.25  871.25  8712.5       -  zT        "
      "0.1\n" +
          legend + "12 foundations, largest stiffness 350730.6658962116\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(ShowTable, NamesTheUnitsOfEachKindBelowIt) {
  const std::string model = makeModelFile("<FOUND NUMBER='1' NAME='A' FZAREA='7'/>");
  const std::string units =
      "area in kN/m\xC2\xB3   line in kN/m\xC2\xB2   rot x in kNm/m/rad\n"
      "1 foundation, largest stiffness 7\n";

  const std::string out = run("show '" + model + "' --unit-force kN --unit-length m").out;

  EXPECT_EQ(out.substr(out.find(legend) + legend.size()), units);
}

TEST(ShowTable, NamesNoUnitsWithoutFoundations) {
  EXPECT_EQ(run("show '" + makeModelFile("") + "' --unit-force kN --unit-length m").out,
            "0 foundations, largest stiffness 0\n");
}

TEST(ShowTable, NamesTheUnitsOfATableWithoutBeingAsked) {
  const std::string table = makeFile("in.csv", "#units,lbf,ft\nareaZ\n7\n");

  EXPECT_NE(run("show '" + table + "'").out.find("area in lbf/ft\xC2\xB3   "), std::string::npos);
}

TEST(ShowTable, ShowsAPartForAVectorAFailureOrAFactor) {
  EXPECT_EQ(showTable("<FOUND NAME='rotation' FXX='2'/>"
                      "<FOUND NAME='line failure' FAILZLINE='1'/>"
                      "<FOUND NAME='line factor' FACLINE='-0.5'/>"
                      "<FOUND NAME='area failure' FAILZAREA='1' FZLINE='3'/>"
                      "<FOUND NAME='area factor' FACAREA='0.5' FZLINE='3'/>"
                      "<FOUND NAME='small area' FYAREA='1e-300' FZLINE='3'/>"
                      "<FOUND NAME='nothing'/>"),
            "  No  Name          Gen  Part  x       y  z  rot x  Fails  Factor\n"
            "   1  rotation           line  -       -  -      2  -           0\n"
            "   2  line failure       line  -       -  -      -  zC          0\n"
            "   3  line factor        line  -       -  -      -  -        -0.5\n"
            "   4  area failure       area  0       0  0      -  zC          0\n"
            "                         line  0       0  3      -  -           0\n"
            "   5  area factor        area  0       0  0      -  -         0.5\n"
            "                         line  0       0  3      -  -           0\n"
            "   6  small area         area  0  1e-300  0      -  -           0\n"
            "                         line  0       0  3      -  -           0\n"
            "   7  nothing            area  0       0  0      -  -           0\n" +
                legend + "7 foundations, largest stiffness 3\n");
}

TEST(ShowTable, ShowsAnUnknownFailureAsItsNumber) {
  EXPECT_EQ(showTable("<FOUND FAILXLINE='-1' FAILYLINE='7'/>"),
            "  No  Name       Gen  Part  x  y  z  rot x  Fails  Factor\n"
            "   1  Found0001       line  -  -  -      -  xT y7       0\n" +
                legend + "1 foundation, largest stiffness 0\n");
}

TEST(ShowTable, ShowsNamesOfAnEightBitCodePageInUtf8) {
  EXPECT_NE(showTable("<FOUND NAME='Stra\xDF"
                      "e \x80'/>")
                .find("  Stra\xC3\x9F"
                      "e \xE2\x82\xAC       area"),
            std::string::npos);
}

TEST(ShowTable, EscapesControlCharactersInNames) {
  EXPECT_NE(showTable("<FOUND NAME='a&#10;b&#9;c\x7F'/>").find("  a\\nb\\tc\\x7F  "),
            std::string::npos);
}

TEST(ShowTable, EscapesCharactersThatChangeTheDirectionOfWriting) {
  EXPECT_NE(showTable("<FOUND NAME='a\xE2\x80\xAE"
                      "b'/>")
                .find("  a\\u202Eb  "),
            std::string::npos);
}

TEST(ShowTable, AlignsWideAndCombiningCharactersByTheirPlaces) {
  EXPECT_EQ(showTable("<FOUND NAME='\xE5\x9C\xB0\xE5\x9F\xBA'/>"
                      "<FOUND NAME='u\xCC\x88"
                      "o'/>"),
            "  No  Name  Gen  Part  x  y  z  rot x  Fails  Factor\n"
            "   1  \xE5\x9C\xB0\xE5\x9F\xBA       area  0  0  0      -  -           0\n"
            "   2  u\xCC\x88"
            "o         area  0  0  0      -  -           0\n" +
                legend + "2 foundations, largest stiffness 0\n");
}

// The other columns take 48 places.
TEST(ShowTable, ShortensNamesUntilItFitsIntoAHundredPlaces) {
  const std::string longest(52, 'x');

  EXPECT_EQ(
      showTable("<FOUND NAME='" + longest + "'/><FOUND NAME='" + longest +
                "y'/><FOUND NAME='short'/>"),
      "  No  Name                                                  Gen  Part  x  y  z  rot x  "
      "Fails  Factor\n"
      "   1  xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx       area  0  0  0      -  "
      "-           0\n"
      "   2  xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\xE2\x80\xA6       area  0  0 "
      " 0      -  -           0\n"
      "   3  short                                                      area  0  0  0      -  "
      "-           0\n" +
          legend + "3 foundations, largest stiffness 0\n");
}

TEST(ShowTable, LeavesAWideCharacterOutThatHasNoRoomAsAWhole) {
  std::string longer;
  for (int i = 0; i < 27; ++i) longer += "\xE5\x9C\xB0";  // two places each

  EXPECT_NE(
      showTable("<FOUND NAME='" + longer + "'/>")
          .find("   1  " + longer.substr(0, std::size_t{25} * 3) + "\xE2\x80\xA6        area  0"),
      std::string::npos);
}

TEST(ShowTable, FitsExactlyWithTwentyPlacesOfAName) {
  EXPECT_EQ(
      showTable("<FOUND NAME='Foundation under the silo' FXLINE='12345678901234.5' "
                "FYLINE='-98765432109876' FZLINE='0.25'/>"),
      "  No  Name                  Gen  Part                 x                y     z  rot x  "
      "Fails  Factor\n"
      "   1  Foundation under th\xE2\x80\xA6       line  12345678901234.5  -98765432109876  0.25  "
      "    -  -           0\n" +
          legend + "1 foundation, largest stiffness 99534046272533.86\n");
}

// The first block fits exactly.
TEST(ShowTable, BreaksItsColumnsIntoBlocksWhereThatIsNotEnough) {
  EXPECT_EQ(showTable("<FOUND NAME='Foundation under the silo' FXLINE='12345678901234.5' "
                      "FYLINE='-98765432109876' FZLINE='0.12345678' FZAREA='1'/>"),
            "  No  Name                  Gen  Part                 x                y           z  "
            "rot x  Fails\n"
            "   1  Foundation under th\xE2\x80\xA6       area                 0                0   "
            "        "
            "1      -  -\n"
            "                                 line  12345678901234.5  -98765432109876  0.12345678  "
            "    -  -\n"
            "\n"
            "  No  Name                  Gen  Part  Factor\n"
            "   1  Foundation under th\xE2\x80\xA6       area       0\n"
            "                                 line       0\n" +
                legend + "1 foundation, largest stiffness 99534046272533.86\n");
}

TEST(ShowTable, NeverRoundsANumberToMakeItFit) {
  EXPECT_EQ(showTable("<FOUND FXLINE='-0.0000012345678901234567' "
                      "FYLINE='-0.0000012345678901234567' FZLINE='-0.0000012345678901234567' "
                      "FXX='-2.2250738585072014e-308' FAILXLINE='-2147483648' "
                      "FAILYLINE='-2147483648' FAILZLINE='-2147483648' "
                      "FACLINE='-1.7976931348623157e308'/>"),
            "  No  Name       Gen  Part                          x                          y\n"
            "   1  Found0001       line  -0.0000012345678901234567  -0.0000012345678901234567\n"
            "\n"
            "  No  Name       Gen  Part                          z                     rot x\n"
            "   1  Found0001       line  -0.0000012345678901234567  -2.2250738585072014e-308\n"
            "\n"
            "  No  Name       Gen  Part  Fails                                                     "
            "Factor\n"
            "   1  Found0001       line  x-2147483648 y-2147483648 z-2147483648  "
            "-1.7976931348623157e+308\n" +
                legend + "1 foundation, largest stiffness 0.000002138334311086938\n");
}

TEST(ShowTable, IsLeftOutWhenThereAreNoFoundations) {
  EXPECT_EQ(showTable(""), "0 foundations, largest stiffness 0\n");
}

TEST(ShowTable, AlignsWhatFollowsNamesInAllScripts) {
  // A vowel over a Thai letter, marks over a Hebrew and an Arabic one, and a face, which is wide.
  const std::string thai = "\xE0\xB8\x81\xE0\xB8\xB4";
  const std::string hebrew = "\xD7\x91\xD6\xBF";
  const std::string arabic = "\xD9\x84\xD9\xB0";
  const std::string face = "\xF0\x9F\xAB\xA0";
  const std::string path =
      makeModelFile("<FOUND NAME='" + thai + "'/><FOUND NAME='" + hebrew + "'/><FOUND NAME='" +
                    arabic + "'/><FOUND NAME='" + face + "'/>");

  const std::string out = run("show '" + path + "'").out;

  for (const std::string& name : {thai, hebrew, arabic})
    EXPECT_NE(out.find("  " + name + "          area  "), std::string::npos) << out;
  EXPECT_NE(out.find("  " + face + "         area  "), std::string::npos) << out;
}

}  // namespace
