#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/folder.h"
#include "cli/make_document.h"
#include "cli/run_program.h"

namespace {

using Texts = std::vector<std::string>;

const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml'";
const std::string units = " --unit-force kN --unit-length m";

/// A model of these foundations.
std::string makeModel(const std::string& foundations, const std::string& attributes = "") {
  return makeDocument("<FOUNDATIONS" + attributes + ">\n" + foundations + "\n</FOUNDATIONS>");
}

/// The page of a document.
std::string report(const std::string& document, const std::string& options = "") {
  const Result result = run("report '" + makeFile("in.xml", document) + "'" + options);
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  return result.out;
}

std::string reportModel(const std::string& foundations, const std::string& options = "") {
  return report(makeModel(foundations), options);
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t number = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++number;
  return number;
}

bool holds(const std::string& text, const std::string& part) { return count(text, part) > 0; }

/// The texts between tags, with a stroke between those that tags part.
std::string stripTags(const std::string& html) {
  std::string text;
  bool isInTag = false;
  for (const char c : html) {
    if (c == '<') isInTag = true;
    if (!isInTag) text += c;
    if (c == '>') {
      isInTag = false;
      if (!text.empty() && text.back() != '|') text += '|';
    }
  }
  return text.substr(0, text.find_last_not_of('|') + 1);
}

/// What stands between two texts.
std::string cut(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start);
  const std::size_t to = text.find(end, from + start.size());
  if (from == text.npos || to == text.npos) {
    ADD_FAILURE() << "there is no " << start << " ... " << end;
    return "";
  }
  return text.substr(from + start.size(), to - from - start.size());
}

/// The section of a page, named by its heading.
std::string readSection(const std::string& page, const std::string& name) {
  return cut(page, "<h2 id=\"" + name + "\">", "</section>");
}

/// The lines of a section that start like this.
Texts listLines(const std::string& section, const std::string& start) {
  Texts lines;
  std::istringstream in(section);
  for (std::string line; std::getline(in, line);)
    if (line.compare(0, start.size(), start) == 0) lines.push_back(line);
  return lines;
}

Texts stripAll(const Texts& lines) {
  Texts texts;
  for (const std::string& line : lines) texts.push_back(stripTags(line));
  return texts;
}

/// The rows of the pictures of a part, "area" or "line"; the axes have a line of their own.
Texts listRows(const std::string& page, const std::string& part) {
  Texts rows;
  for (const std::string& line : listLines(readSection(page, part), "<g"))
    if (line.find("style=\"--i:") != line.npos) rows.push_back(line);
  return rows;
}

Texts listRowTexts(const std::string& page, const std::string& part) {
  return stripAll(listRows(page, part));
}

/// The rows of the table, each cell behind a stroke.
Texts listTableRows(const std::string& page) {
  Texts rows;
  for (std::string line :
       listLines(cut(readSection(page, "values"), "<tbody>", "</tbody>"), "<tr")) {
    std::string text;
    for (std::size_t at = line.find("<t", 1); at != line.npos;) {
      const std::size_t next = line.find("<t", at + 1);
      text += "|" + stripTags(line.substr(at, next - at));
      at = next;
    }
    rows.push_back(text);
  }
  return rows;
}

/// What a page tells at its top, as "Form|Legacy model" and so on.
Texts listFacts(const std::string& page) {
  return stripAll(listLines(cut(page, "<ul class=\"facts\">", "</ul>"), "<li>"));
}

// --- Pictures

TEST(ReportPictures, HaveARowForEachFoundationWithAValueForEachDirection) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='Raft' FXAREA='10' FYAREA='20' FZAREA='30.5'/>\n"
      "<FOUND NUMBER='2' NAME='Strip' FXLINE='1' FYLINE='2' FZLINE='3' FXX='4'/>");

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"1|Raft|10|20|30.5", "2|Strip|no area part"}));
  EXPECT_EQ(listRowTexts(page, "line"), (Texts{"1|Raft|no line part", "2|Strip|1|2|3|4"}));
}

TEST(ReportPictures, ShowADirectionThatIsLackingAsLacking) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>\n<FOUND NUMBER='2' NAME='B' FXX='4'/>");

  EXPECT_EQ(listRowTexts(page, "line"),
            (Texts{"1|A|0|0|3|\xE2\x80\x93", "2|B|\xE2\x80\x93|\xE2\x80\x93|\xE2\x80\x93|4"}));
}

TEST(ReportPictures, SayWhenNoFoundationHasThePart) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");

  EXPECT_TRUE(holds(readSection(page, "line"), "No foundation has a part for lines."));
  EXPECT_FALSE(holds(readSection(page, "line"), "<svg"));
}

TEST(ReportPictures, DrawBarsOnALogarithmicScale) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='10' FYAREA='100' FZAREA='1000'/>");

  EXPECT_EQ(listRows(page, "area"),  // from 1 to 1000
            Texts{"<g style=\"--i:0\"><text>1</text><g><text>A</text></g><line "
                  "x2=\"33.3%\"/><text>10</text><line x2=\"66.7%\"/><text>100</text><line "
                  "x2=\"100%\"/><text>1000</text></g>"});
  const std::string section = readSection(page, "area");
  EXPECT_EQ(count(section, "<text class=\"a\">10<tspan dy=\"-.45em\">0</tspan></text>"), 3U);
  EXPECT_EQ(count(section, "<text class=\"a e\">10<tspan dy=\"-.45em\">3</tspan></text>"), 3U);
  EXPECT_EQ(count(section,
                  "<rect x=\"0%\"/><rect x=\"33.3%\"/><rect x=\"66.7%\"/><rect "
                  "x=\"100%\"/></g>"),
            3U);
}

TEST(ReportPictures, HaveOneScaleForTranslationAndOneForRotation) {
  const std::string section = readSection(
      reportModel("<FOUND NUMBER='1' NAME='A' FXLINE='20' FZLINE='30' FXX='4e5'/>"), "line");

  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">1</tspan></text>"), 3U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">2</tspan></text>"), 3U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">5</tspan></text>"), 1U);
  EXPECT_EQ(count(section, ">10<tspan dy=\"-.45em\">6</tspan></text>"), 1U);
  EXPECT_TRUE(holds(section,
                    " Logarithmic scale of translation: 10^1 to 10^2. Logarithmic "
                    "scale of rotation: 10^5 to 10^6."));
}

TEST(ReportPictures, DrawAllThatANumberCanBe) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='5e-324' FYAREA='1' FZAREA='1.7976931348623157e308'/>");

  const std::string row = listRows(page, "area").front();
  EXPECT_TRUE(holds(row, "<line x2=\"1%\"/><text>5e-324</text>")) << row;
  EXPECT_TRUE(holds(row,
                    "<line x2=\"99.9%\"/><text>\xE2\x89\x88"
                    "1.8e+308</text>"))
      << row;
  EXPECT_LT(count(readSection(page, "area"), "<rect"), 30U);
}

TEST(ReportPictures, MarkValuesThatHaveNoPlaceOnTheScale) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='-5' FYAREA='inf' FZAREA='nan'/>\n"
      "<FOUND NUMBER='2' NAME='B' FXAREA='0' FYAREA='-inf' FZAREA='7'/>");

  const Texts rows = listRows(page, "area");
  EXPECT_EQ(stripAll(rows), (Texts{"1|A|3 findings|-5|inf|nan", "2|B|1 finding|0|-inf|7"}));
  EXPECT_EQ(count(rows[0], "<line class=\"x\""), 3U);
  EXPECT_EQ(count(rows[0], "<text class=\"w\">"), 3U);
  EXPECT_EQ(count(rows[1], "<line class=\"x\""), 1U);
  EXPECT_EQ(count(rows[1], "<line class=\"z\"/><text>0</text>"), 1U);
}

TEST(ReportPictures, HaveNoScaleWithoutAValueThatCouldStandOnIt) {
  const std::string section =
      readSection(reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='-5'/>"), "area");

  EXPECT_FALSE(holds(section, "<rect"));
  EXPECT_FALSE(holds(section, "class=\"a"));
  EXPECT_FALSE(holds(section, "Logarithmic scale"));
}

TEST(ReportPictures, RoundLongValues) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='12345.6789' FYAREA='123456.78' FZAREA='2000000000'/>");

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"1|A|\xE2\x89\x88"
                                              "12345.7|123456.78|\xE2\x89\x88"
                                              "2e+09"});
}

TEST(ReportPictures, MarkDirectionsThatFail) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='3' FAILZAREA='-1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZLINE='3' FAILXLINE='1' FAILYLINE='-1' "
      "FAILZLINE='7'/>");

  const std::string pull = " T \xE2\x86\x90\xE2\x86\x92";
  const std::string push = " C \xE2\x86\x92\xE2\x86\x90";
  EXPECT_EQ(listRowTexts(page, "area")[0], "1|A|0|0|3|" + pull);
  EXPECT_EQ(listRowTexts(page, "line")[1],
            "2|B|1 finding|0|" + push + "|0|" + pull + "|3| mode|\xE2\x80\x93");
}

TEST(ReportPictures, ExplainTheirMarksInALegend) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A'/>");

  EXPECT_EQ(stripAll(listLines(cut(page, "<ul class=\"legend\"", "</ul>"), "<li")),
            (Texts{"stiffness, on a logarithmic scale", "zero",
                   "beyond the scale: negative, infinite or not a number", "\xE2\x80\x93| no value",
                   "T \xE2\x86\x90\xE2\x86\x92| fails in tension",
                   "C \xE2\x86\x92\xE2\x86\x90| fails in compression",
                   "mode| fails in another mode, which the table tells",
                   "\xE2\x97\x8F current| the current foundation",
                   "\xE2\x89\x88| rounded; the table has all digits"}));
  for (const std::string kind : {"bar", "zero", "beyond"})
    EXPECT_TRUE(holds(page, "<li class=\"" + kind + "\">")) << kind;
}

TEST(ReportPictures, MarkTheCurrentFoundationAndGeneratedOnes) {
  const std::string page = report(makeModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='1' IsGenerated='1'/>\n"
      "<FOUND NUMBER='2' NAME='B' FZAREA='1' IsGenerated='1'/>\n<FOUND NUMBER='3' NAME='C'/>",
      " CURRENT='A'"));

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"1|A|\xE2\x97\x8F current, generated|0|0|1",
                                               "2|B|generated|0|0|1", "3|C|0|0|0"}));
}

TEST(ReportPictures, ShortenNamesThatHaveNoRoom) {
  const std::string name(28, 'x');
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='" + name + "' FZAREA='1'/>\n<FOUND NUMBER='2' NAME='" +
                  name + "y' FZAREA='1'/>");

  const Texts rows = listRowTexts(page, "area");
  EXPECT_EQ(rows[0], "1|" + name + "|0|0|1");
  EXPECT_EQ(rows[1], "2|" + std::string(27, 'x') + "\xE2\x80\xA6|0|0|1");
  EXPECT_EQ(listTableRows(page)[1].substr(0, 33), "|2|" + name + "y|");
}

TEST(ReportPictures, PutANumberThatHasNoRoomInFrontOfTheName) {
  const std::string page = reportModel(
      "<FOUND NUMBER='9999' NAME='A' FZAREA='1'/>\n"
      "<FOUND NUMBER='2147483647' NAME='B' FZAREA='1'/>");

  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"9999|A|0|0|1", "2147483647 B|0|0|1"}));
}

TEST(ReportPictures, HaveAsManyRowsAsFitThreeTimesOnASheet) {
  std::string foundations;
  for (int i = 1; i <= 13; ++i) foundations += "<FOUND FZAREA='1'/>\n";
  const std::string section = readSection(reportModel(foundations), "area");

  EXPECT_EQ(count(section, "style=\"--rows:12\""), 1U);
  EXPECT_EQ(count(section, "style=\"--rows:1\""), 1U);
  EXPECT_TRUE(holds(section, "<title>Area stiffness, rows 1 to 12</title>"));
  EXPECT_TRUE(holds(section, "<title>Area stiffness, row 13</title>"));
}

TEST(ReportPictures, StandInGroupsWhereThereAreMany) {
  std::string foundations;
  for (int i = 1; i <= 60; ++i)
    foundations += "<FOUND FZAREA='" + std::to_string(100 + i) + "'/>\n";
  const std::string few = readSection(reportModel(foundations), "area");
  const std::string many = readSection(reportModel(foundations + "<FOUND FZAREA='2'/>"), "area");

  EXPECT_EQ(count(few, "<details"), 0U);
  EXPECT_EQ(count(few, "<svg"), 5U);
  EXPECT_EQ(count(many, "<details><summary>Row 61 of 61 "), 1U);
  EXPECT_EQ(count(many, "<details open><summary>Rows 1 to 60 of 61 "), 1U);
  EXPECT_EQ(count(many, "<details"), 2U);
  EXPECT_EQ(count(many, "<svg"), 7U);
  EXPECT_EQ(listLines(many, "<g style").size(), 62U);
  EXPECT_EQ(stripTags(listLines(many, "<g style").front()), "All 61");
  EXPECT_TRUE(
      holds(many, "<title>Area stiffness, a tick for each value of all 61 foundations</title>"));
}

// --- Groups

/// The page of 60 foundations without anything odd, and one more, whose group is closed.
std::string reportClosed(const std::string& ordinary, const std::string& odd,
                         const std::string& options = "") {
  std::string foundations;
  for (int i = 1; i <= 60; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' " + ordinary + "/>\n";
  return reportModel(foundations + "<FOUND NUMBER='61' " + odd + "/>", options);
}

/// What the closed group of a part has in a direction, or beyond its directions.
std::string tellClosed(const std::string& page, const std::string& part, std::size_t place) {
  const std::string group = cut(readSection(page, part), "<details><summary>", "</summary>");
  std::size_t at = group.find("<span class");
  for (std::size_t i = 0; i <= place; ++i) at = group.find("<span>", at + 1);
  return stripTags(group.substr(at, group.find("</span>", at) - at));
}

TEST(ReportGroups, TellTheRangeOfEachDirection) {
  const std::string page = reportClosed("FXLINE='1' FYLINE='2' FZLINE='3' FXX='4'",
                                        "FXLINE='5' FYLINE='6' FZLINE='7' FXX='0.001'", units);

  EXPECT_EQ(tellClosed(page, "line", 0), "x| 5 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 1), "y| 6 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 2), "z| 7 kN/m\xC2\xB2");
  EXPECT_EQ(tellClosed(page, "line", 3), "rotation x| 0.001 kNm/m/rad");
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>z</b> 3 to 7 kN/m\xC2\xB2<"));
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>rotation x</b> 0.001 to 4 kNm/m/rad<"));
}

TEST(ReportGroups, CountZeros) {
  const std::string page =
      reportClosed("FXAREA='1' FYAREA='1' FZAREA='3'", "FXAREA='1' FYAREA='1'");

  EXPECT_EQ(tellClosed(page, "area", 1), "y| 1");
  EXPECT_EQ(tellClosed(page, "area", 2), "z| 1 zero");
  EXPECT_TRUE(holds(readSection(page, "area"), "<b>z</b> 3, 1 zero<"));
}

TEST(ReportGroups, CountFoundationsThatLackThePart) {
  const std::string page = reportClosed("FZAREA='3'", "FZLINE='3'");

  EXPECT_EQ(tellClosed(page, "area", 3), "1 without an area part");
  EXPECT_TRUE(holds(readSection(page, "line"), "<span>60 without a line part</span>"));
}

TEST(ReportGroups, CountValuesThatAreLacking) {
  EXPECT_EQ(tellClosed(reportClosed("FZLINE='3' FXX='1'", "FZLINE='3'"), "line", 3),
            "rotation x| 1 without a value");
}

TEST(ReportGroups, CountEachFailureMode) {
  const std::string page = reportClosed("FZAREA='3' FAILZAREA='-1' FZLINE='1' FAILZLINE='8'",
                                        "FZAREA='3' FAILZAREA='1' FZLINE='1' FAILXLINE='-1'");

  EXPECT_EQ(tellClosed(page, "area", 2), "z| 3, 1 fails in compression");
  EXPECT_EQ(tellClosed(page, "line", 0), "x| 1 zero, 1 fails in tension");
  EXPECT_TRUE(
      holds(readSection(page, "area"), "<b>z</b> 3, 60 fail in tension, 1 fails in compression<"));
  EXPECT_TRUE(holds(readSection(page, "line"), "<b>z</b> 1, 60 fail in mode 8<"));
}

TEST(ReportGroups, CountValuesBeyondTheScale) {
  const std::string page =
      reportClosed("FXAREA='3' FZAREA='3'", "FXAREA='-1' FYAREA='nan' FZAREA='4'");

  EXPECT_EQ(tellClosed(page, "area", 0), "x| |1 beyond the scale");
  EXPECT_EQ(tellClosed(page, "area", 1), "y| |1 beyond the scale");
  EXPECT_EQ(tellClosed(page, "area", 2), "z| 4");
}

TEST(ReportGroups, AreSummedUpInAPictureWithTheirZerosAndWhatIsBeyondTheScale) {
  const std::string section = readSection(
      reportClosed("FXAREA='1' FYAREA='1' FZAREA='10'", "FYAREA='-1' FZAREA='100'"), "area");
  const Texts axes = listLines(section, "<g class=\"d\"");

  const std::string zero = "<g><line class=\"z\"/>";
  const std::string beyond = "<g><line class=\"x\" x2=\"100%\"/>";
  ASSERT_EQ(count(axes[0], "<g><"), 3U) << axes[0];
  EXPECT_EQ(count(axes[0], zero), 1U) << axes[0];
  EXPECT_EQ(count(axes[0], beyond), 1U) << axes[0];
  EXPECT_TRUE(holds(axes[0], "<g><rect x=\"66.8%\"/><rect x=\"100%\"/></g>")) << axes[0];
  EXPECT_FALSE(holds(axes[1], "<g><")) << axes[1];
}

TEST(ReportGroups, HaveTheirUnitsAtTheAxesOnly) {
  const std::string page = reportClosed("FZAREA='3'", "FZAREA='3'", units);

  EXPECT_EQ(listRowTexts(page, "area").back(), "61|Found0061|0|0|3");
  EXPECT_TRUE(holds(page, "<text class=\"u\">kN/m\xC2\xB3</text>"));
}

TEST(ReportPictures, HaveTextAlternatives) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");

  EXPECT_TRUE(
      holds(page, "role=\"img\" aria-describedby=\"about-area\"><title>Area stiffness</title>"));
  EXPECT_TRUE(holds(page,
                    "<p class=\"lead\" id=\"about-area\">A row for each foundation, a bar for "
                    "each direction. Logarithmic scale of translation: 10^0 to 10^1. The table "
                    "below has all values.</p>"));
}

// --- Units

TEST(ReportUnits, AreNotClaimedWhenTheyAreNotTold) {
  const Result result = run("report " + example);

  EXPECT_TRUE(holds(result.out, "not stated"));
  EXPECT_FALSE(holds(result.out, "kN"));
  EXPECT_FALSE(holds(result.out, "/rad"));
}

TEST(ReportUnits, LabelAxesAndValues) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FXAREA='1' FYAREA='2' FZAREA='3' FXLINE='4' FYLINE='5' "
      "FZLINE='6' FXX='7'/>",
      units);

  EXPECT_EQ(listRowTexts(page, "area"),
            Texts{"1|A|1| kN/m\xC2\xB3|2| kN/m\xC2\xB3|3| kN/m\xC2\xB3"});
  EXPECT_EQ(listRowTexts(page, "line"),
            Texts{"1|A|4| kN/m\xC2\xB2|5| kN/m\xC2\xB2|6| kN/m\xC2\xB2|7| kNm/m/rad"});
  EXPECT_EQ(count(page, "<text class=\"u\">kN/m\xC2\xB3</text>"), 3U);
  EXPECT_EQ(count(page, "<text class=\"u\">kN/m\xC2\xB2</text>"), 3U);
  EXPECT_EQ(count(page, "<text class=\"u\">kNm/m/rad</text>"), 1U);
  EXPECT_TRUE(holds(page, ">Area <small>kN/m\xC2\xB3</small></th>"));
  EXPECT_TRUE(holds(page, ">Line <small>kN/m\xC2\xB2, rotation kNm/m/rad</small></th>"));
}

TEST(ReportUnits, OfSeveralLettersAreToldApart) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='A' FXX='7'/>", " --unit-force lbf --unit-length ft");

  EXPECT_TRUE(holds(page,
                    ">lbf\xC2\xB7"
                    "ft/ft/rad</text>"));
}

TEST(ReportUnits, AreMadeSafe) {
  SKIP_WITHOUT_BASH();
  const Result result = runScript("'" KVFOUND_PROGRAM "' report " + example +
                                  " --unit-force $'k\\x01N\\xff\\n' --unit-length m");

  EXPECT_EQ(listFacts(result.out)[5], "Units |k\\x01N\xC3\xBF\\n, m| |labels only");
}

TEST(ReportUnits, ThatAreBlankCountAsNone) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FXAREA='1'/>";

  EXPECT_EQ(reportModel(foundation, " --unit-force ' ' --unit-length '\xC2\xA0'"),
            reportModel(foundation));
  EXPECT_EQ(run("report " + example + " --unit-force kN --unit-length ' '").status, 2);
}

TEST(ReportUnits, ThatAreLongStandOnlyAtTheAxes) {
  const std::string page = reportModel("<FOUND NUMBER='1' NAME='A' FXAREA='1'/>",
                                       " --unit-force kilonewton --unit-length millimetre");

  EXPECT_EQ(listRowTexts(page, "area"), Texts{"1|A|1|0|0"});
  EXPECT_EQ(count(page, "<text class=\"u\">kilonewton/mi\xE2\x80\xA6</text>"), 3U);
  EXPECT_TRUE(holds(page, ">Area <small>kilonewton/millimetre\xC2\xB3</small></th>"));
}

TEST(ReportUnits, ConvertNothing) {
  const std::string foundation = "<FOUND NUMBER='1' NAME='A' FXAREA='0.1' FZLINE='6' FXX='7'/>";

  EXPECT_EQ(listTableRows(reportModel(foundation, units)), listTableRows(reportModel(foundation)));
}

TEST(ReportUnits, AreToldTogetherOrNotAtAll) {
  for (const std::string option : {"--unit-force kN", "--unit-length m"}) {
    const Result result = run("report " + example + " " + option);

    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err,
              "kvfound: --unit-force and --unit-length are given together or not at all; see "
              "kvfound report --help\n");
    EXPECT_EQ(result.status, 2);
  }
}

// --- The table

TEST(ReportTable, HoldsEveryValueExactly) {
  const std::string page = report(makeModel(
      "<FOUND NUMBER='4' NAME='A' FXAREA='0.1' FYAREA='-2' FZAREA='12345.678901234567' "
      "FAILZAREA='-1' FACAREA='0.30000000000000004' FXLINE='1' FYLINE='2' FZLINE='3' FXX='inf' "
      "FAILXLINE='1' FAILZLINE='9' FACLINE='0.5' IsGenerated='1'/>",
      " CURRENT='A'"));

  EXPECT_EQ(listTableRows(page),
            Texts{"|4|A|current, generated, |3 findings|0.1|-2|12345.678901234567|z tension|"
                  "0.30000000000000004|1|2|3|inf|x compression,|z mode 9|0.5"});
}

TEST(ReportTable, ShowsAPartThatIsLackingAsLacking) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='3'/>\n<FOUND NUMBER='2' NAME='B' FZLINE='4'/>");

  const std::string dash = "\xE2\x80\x93";
  EXPECT_EQ(listTableRows(page), (Texts{"|1|A||0|0|3|none|0|" + dash + "|" + dash + "|" + dash +
                                            "|" + dash + "|" + dash + "|" + dash,
                                        "|2|B||" + dash + "|" + dash + "|" + dash + "|" + dash +
                                            "|" + dash + "|0|0|4|" + dash + "|none|0"}));
}

TEST(ReportTable, HasNoColumnsOfAPartThatNoFoundationHas) {
  const std::string area = reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3'/>");
  const std::string line = reportModel("<FOUND NUMBER='1' NAME='A' FZLINE='3'/>");

  EXPECT_EQ(listTableRows(area), Texts{"|1|A||0|0|3|none|0"});
  EXPECT_EQ(listTableRows(line), Texts{"|1|A||0|0|3|\xE2\x80\x93|none|0"});
  EXPECT_TRUE(holds(area, "<table class=\"of area\">"));
  EXPECT_TRUE(holds(line, "<table class=\"of line\">"));
  EXPECT_FALSE(holds(area, ">Line</th>"));
  EXPECT_FALSE(holds(line, ">Area</th>"));
}

TEST(ReportTable, HasHeadersForItsRowsAndColumns) {
  const std::string table =
      readSection(reportModel("<FOUND NUMBER='1' NAME='A' FZAREA='3' FZLINE='3'/>"), "values");

  EXPECT_TRUE(holds(table, "<table class=\"of area line\">"));
  EXPECT_EQ(count(table, "<th scope=\"col\""), 14U);
  EXPECT_EQ(count(table, "<th scope=\"colgroup\""), 2U);
  EXPECT_EQ(count(table, "<th scope=\"row\""), 1U);
}

// --- Names

TEST(ReportNames, AreEscaped) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='&lt;script>alert(1)&lt;/script>' FZAREA='1'/>\n"
                       "<FOUND NUMBER='2' NAME='&quot;&apos;&amp;amp;' FZLINE='1' X='1'/>",
                       " CURRENT='&lt;script>alert(1)&lt;/script>'"),
             " --unit-force '<b>' --unit-length m");

  EXPECT_EQ(count(page, "<script>"), 1U);  // the page's own
  EXPECT_EQ(listRowTexts(page, "area")[0].substr(0, 51),
            "1|&lt;script&gt;alert(1)&lt;/script&gt;|\xE2\x97\x8F current");
  EXPECT_EQ(listRowTexts(page, "line")[1].substr(0, 26), "2|&quot;&#39;&amp;amp;|1 f");
  EXPECT_EQ(listTableRows(page)[0].substr(0, 44), "|1|&lt;script&gt;alert(1)&lt;/script&gt;|cur");
  EXPECT_TRUE(holds(page, "<strong><bdi>&lt;script&gt;alert(1)&lt;/script&gt;</bdi></strong>"));
  EXPECT_FALSE(holds(page, "<b>/"));
  EXPECT_TRUE(holds(page, "&lt;b&gt;/m\xC2\xB3"));
}

TEST(ReportNames, AreEscapedInFindings) {
  const std::string page =
      reportModel("<FOUND NUMBER='1' NAME='&lt;i>'/>\n<FOUND NUMBER='2' NAME='&lt;i>'/>");

  EXPECT_TRUE(
      holds(readSection(page, "findings"), "the name &quot;&lt;i&gt;&quot; was given before"));
}

TEST(ReportNames, ShowControlCharactersAndCodePages) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='a&#10;b&#x202E;c' FZAREA='1'/>\n"
      "<FOUND NUMBER='2' NAME='Stra\xDF"
      "e' FZAREA='1'/>");

  EXPECT_EQ(listTableRows(page)[0].substr(0, 18), "|1|a\\nb\\u202Ec||0|");
  EXPECT_EQ(listTableRows(page)[1].substr(0, 12),
            "|2|Stra\xC3\x9F"
            "e||");
}

TEST(ReportNames, AreSeenWhenTheyAreBlank) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='  ' FZAREA='1'/>\n"
      "<FOUND NUMBER='2' NAME=' &#x200B;&#x200C;&#x200D;' FZAREA='1'/>");

  EXPECT_EQ(listTableRows(page)[0].substr(0, 19), "|1|&quot;  &quot;||");
  EXPECT_EQ(listTableRows(page)[1].substr(0, 35), "|2|&quot; \\u200B\\u200C\\u200D&quot;|");
  EXPECT_EQ(listRowTexts(page, "area")[1], "2|&quot; \\u200B\\u200C\\u200D&quot;|0|0|1");
}

TEST(ReportNames, DoNotPileUpMarksOverALetter) {
  std::string marks;
  for (int i = 0; i < 3000; ++i) marks += "\xCC\x81";
  const std::string page = report(makeModel("<FOUND NUMBER='1' NAME='A" + marks + "' FZAREA='-1'/>",
                                            " CURRENT='A" + marks + "'"));

  EXPECT_FALSE(holds(page, marks.substr(0, 5 * 2)));
  EXPECT_TRUE(holds(listTableRows(page)[0], "A" + marks.substr(0, 4 * 2) + "\xE2\x80\xA6"));
}

// --- The document

TEST(ReportFacts, DescribeALegacyModel) {
  EXPECT_EQ(
      listFacts(run("report " + example + units).out),
      (Texts{"Form |Legacy model", "Version |12",
             "Foundations |12| |7 with area, 6 with line, 3 generated",
             "Largest stiffness |350730.6658962116| |length of the longest vector (x, y, z) of an "
             "area or a line, or of a rotation",
             "Current foundation |Raft on stiff clay| |number 3", "Units |kN, m| |labels only",
             "Check |no findings"}));
}

TEST(ReportFacts, DescribeAnExchangeDocument) {
  const std::string path = "'" KVFOUND_EXAMPLES_DIR "/beddings";
  const Texts facts = listFacts(run("report " + path + ".xml'").out);
  EXPECT_EQ(facts[0] + "; " + facts[1],
            "Form |Exchange document; Version |current| |the document states 2.0");
  EXPECT_EQ(facts[4], "Current foundation |none");
  EXPECT_EQ(facts[5], "Units |not stated| |values as in the document");
  EXPECT_EQ(facts[6], "Check |1 finding");
  EXPECT_EQ(listFacts(run("report " + path + "-1.0.xml'").out)[1],
            "Version |1.0| |the document states 1.0");
}

TEST(ReportFacts, TellTheVersionAsWhichADocumentWasRead) {
  const std::string document = "<X><CurveBedding Number='1' Name='A'/></X>";
  const std::string in = "'" + makeFile("in.xml", document) + "'";

  EXPECT_EQ(listFacts(run("report " + in + " --version 1.0").out)[1],
            "Version |1.0| |the document states none");
  EXPECT_EQ(listFacts(run("report " + in).out)[1], "Version |current| |the document states none");
}

TEST(ReportFacts, SayThatALegacyModelStatesNoVersion) {
  EXPECT_EQ(listFacts(reportModel(""))[1], "Version |not stated");
}

TEST(ReportPage, SaysThatThereAreNoFoundations) {
  const std::string page = reportModel("");

  EXPECT_TRUE(holds(page, "The document holds no foundations."));
  EXPECT_FALSE(holds(page, "<table"));
  EXPECT_FALSE(holds(page, "<svg"));
}

TEST(ReportPage, IsNamedAfterTheFileWithoutItsFolder) {
  const std::string page = run("report " + example).out;

  EXPECT_TRUE(holds(page, "<title>Beddings of model.xml</title>"));
  EXPECT_TRUE(holds(page, "<h1>model.xml</h1>"));
  EXPECT_FALSE(holds(page, "/model.xml"));
  EXPECT_TRUE(holds(run("report < " + example).out, "<h1>standard input</h1>"));
}

TEST(ReportPage, LoadsNothing) {
  const std::string page = run("report " + example).out;

  for (const std::string part : {"http:", "https:", "src=", "url(", "@import", "<link", "<img"})
    EXPECT_FALSE(holds(page, part)) << part;
  EXPECT_TRUE(holds(page, "default-src 'none'"));
}

TEST(ReportPage, AllowsNoScriptButItsOwn) {
  SKIP_WITHOUT_BASH();
  const std::string page = run("report " + example).out;
  const std::string script = makeFile("script", cut(page, "<script>", "</script>"));

  const Result hash = runScript("printf \"$(sha256sum <'" + script +
                                "' | cut -c 1-64 | sed 's/../\\\\x&/g')\" | base64");

  EXPECT_EQ(cut(page, "script-src 'sha256-", "'\"") + "\n", hash.out);
}

// --- Findings

TEST(ReportFindings, AreThoseOfTheCheckInTheOrderOfTheDocument) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='-5'/>\n<FOUND NUMBER='1' NAME='B' COLOUR='red'/>");

  EXPECT_EQ(stripAll(listLines(readSection(page, "findings"), "<li>")),
            (Texts{"line 4, column 28| |foundation 1, A| FZAREA=&quot;-5&quot; is negative; it "
                   "is read as it is",
                   "line 5, column 8| |foundation 1, B| the number 1 was given before, in line "
                   "4; both foundations will have it, and an update of a document merges them",
                   "line 5, column 28| |foundation 1, B| COLOUR is no attribute of "
                   "&lt;FOUND&gt;; it is not read"}));
  EXPECT_EQ(listFacts(page)[6], "Check |3 findings");
}

TEST(ReportFindings, LeadToTheRowsOfTheirFoundationsWhichAreMarked) {
  const std::string page = reportModel(
      "<FOUND NUMBER='1' NAME='A' FZAREA='5'/>\n<FOUND NUMBER='7' NAME='B' FZAREA='-5' X=''/>");

  EXPECT_EQ(count(readSection(page, "findings"), "<a href=\"#row-2\">foundation 7, B</a> "), 2U);
  EXPECT_TRUE(holds(page, "<tr id=\"row-2\"><td>7<"));
  EXPECT_EQ(count(page, "<tr id="), 1U);
  EXPECT_EQ(listTableRows(page)[1].substr(0, 17), "|7|B|2 findings|0");
  EXPECT_EQ(listRowTexts(page, "area"), (Texts{"1|A|0|0|5", "7|B|2 findings|0|0|-5"}));
}

TEST(ReportFindings, StandBesideTheOtherMarksOfARow) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='A' FZAREA='-5' IsGenerated='1'/>", " CURRENT='A'"));

  EXPECT_EQ(listTableRows(page)[0].substr(0, 35), "|1|A|current, generated, |1 finding");
  EXPECT_EQ(listRowTexts(page, "area"),
            Texts{"1|A|\xE2\x97\x8F current, generated, |1 finding|0|0|-5"});
}

TEST(ReportFindings, NameNoFoundationWhereNoneIsConcerned) {
  const std::string page =
      report(makeModel("<FOUND NUMBER='1' NAME='A'/>\n<WALL/>", " CURRENT='B' X='1'"));

  EXPECT_EQ(listFacts(page)[6], "Check |3 findings");
  EXPECT_FALSE(holds(readSection(page, "findings"), "foundation 1"));
  EXPECT_FALSE(holds(page, "<tr id="));
}

TEST(ReportFindings, NameTheFoundationsOfAnExchangeDocument) {
  const std::string in = makeFile("in.xml",
                                  "<X><CurveBedding Number='1' Name='A' StiffnessX='-1'/>\n"
                                  "<CurveBedding Number='1' Name='B' StiffnessX='-2'/>\n"
                                  "<SurfaceBedding Number='3' Name='A' StiffnessX='-3'/></X>");
  const Texts findings =
      stripAll(listLines(readSection(run("report '" + in + "'").out, "findings"), "<li>"));

  ASSERT_EQ(findings.size(), 5U);
  EXPECT_TRUE(holds(findings[0], "|foundation 1, A| StiffnessX=&quot;-1&quot;"));
  EXPECT_TRUE(holds(findings[1], "|foundation 1, A| the number 1 is taken")) << findings[1];
  EXPECT_FALSE(holds(findings[2], "|foundation"));
  EXPECT_TRUE(holds(findings[3], "|foundation 3, A_1| the name")) << findings[3];
  EXPECT_TRUE(holds(findings[4], "|foundation 3, A_1| StiffnessX=&quot;-3&quot;"));
}

TEST(ReportFindings, LeadToTheFoundationThatKeptABeddingFromBeingRead) {
  const std::string in = makeFile("in.xml",
                                  "<X><CurveBedding Number='1' Name='A' StiffnessX='1'/>\n"
                                  "<SurfaceBedding Number='1' Name='A' StiffnessX='2'/></X>");
  const std::string page = run("report '" + in + "'").out;

  EXPECT_TRUE(holds(readSection(page, "findings"), "<a href=\"#row-1\">foundation 1, A</a> the"));
  EXPECT_EQ(listTableRows(page).at(0).substr(0, 16), "|1|A|1 finding|1");
}

TEST(ReportFindings, NameTheFoundationsOfTheFirstVersion) {
  const std::string in = makeFile(
      "in.xml",
      "<X><Bedding SurfaceStiffnessX='-1'/>\n<Bedding Name='B' SurfaceStiffnessX='-2'/></X>");
  const Texts findings =
      stripAll(listLines(readSection(run("report '" + in + "'").out, "findings"), "<li>"));

  ASSERT_EQ(findings.size(), 3U);
  EXPECT_FALSE(holds(findings[0] + findings[1], "|foundation"));
  EXPECT_TRUE(holds(findings[2], "|foundation 1, B| SurfaceStiffnessX"));
}

TEST(ReportFindings, AreFoldedWhereThereAreMany) {
  std::string foundations;
  for (int i = 1; i <= 51; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' FZAREA='-1'/>\n";
  const std::string section = readSection(reportModel(foundations), "findings");

  EXPECT_EQ(count(section, "<details><summary>Finding 51</summary>"), 1U);
  EXPECT_EQ(count(section.substr(0, section.find("<details")), "<li>"), 50U);
  EXPECT_EQ(count(section, "<li>"), 51U);
}

TEST(ReportFindings, AreToldToBeNone) {
  EXPECT_TRUE(holds(readSection(reportModel("<FOUND NUMBER='1' NAME='A'/>"), "findings"),
                    "Nothing looks wrong."));
}

// --- Output

TEST(ReportOutput, GoesToTheFileThatIsNamed) {
  const std::string folder = makeFolder("folder");
  const std::string out = "'" + folder + "/out.html'";

  for (const std::string option : {"-o ", "--output "}) {
    const Result result = run("report " + example + " " + option + out);

    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(readFile(folder + "/out.html"), run("report " + example).out);
  }
  EXPECT_EQ(listFolder(folder), Texts{"out.html"});
}

TEST(ReportOutput, GoesToStandardOutputWhenAsked) {
  EXPECT_EQ(run("report " + example + " -o -").out, run("report " + example).out);
}

TEST(ReportOutput, TellsOfTheReadingOnStandardError) {
  const std::string in = makeFile("in.xml", "<X><CurveBedding Number='1' Name='A'/><Load/></X>");
  const Result result = run("report '" + in + "'");

  EXPECT_EQ(result.err, "kvfound: " + in +
                            ": <Load> is no bedding of this version; it was skipped\n"
                            "kvfound: " +
                            in + ": 1 bedding was read\n");
  EXPECT_EQ(result.status, 0);
}

TEST(ReportOutput, LeavesAFileAsItWasWhenTheDocumentCannotBeRead) {
  const std::string folder = makeFolder("folder");
  const std::string out = makeFileIn(folder, "out.html", "old");
  const std::string in = makeFile("in.xml", "<?xml version='1.0'?>\n<SMOD><FOUNDATIONS></SMOD>");

  EXPECT_EQ(run("report '" + in + "' -o '" + out + "'").status, 2);

  EXPECT_EQ(readFile(out), "old");
  EXPECT_EQ(listFolder(folder), Texts{"out.html"});
}

TEST(ReportOutput, ReplacesAnOldReport) {
  const std::string out = makeFile("out.html", run("report " + example).out);

  EXPECT_EQ(run("report '" KVFOUND_EXAMPLES_DIR "/beddings.xml' -o '" + out + "'").status, 0);

  EXPECT_TRUE(holds(readFile(out), "<h1>beddings.xml</h1>"));
}

TEST(ReportOutput, NeverReplacesADocument) {
  for (const std::string& document :
       {makeModel("<FOUND/>"), std::string("<X><CurveBedding Number='1' Name='A'/></X>"),
        std::string("<X><SurfaceBedding"), std::string("<X><Bedding Name='A'/></X>")}) {
    const std::string out = makeFile("out.xml", document);
    const Result result = run("report " + example + " -o '" + out + "'");

    EXPECT_EQ(result.err,
              "kvfound: " + out +
                  ": this is a document, which the page would destroy; name another file\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(readFile(out), document);
  }
}

TEST(ReportOutput, IsNoFolder) {
  const std::string folder = makeFolder("folder");
  const Result result = run("report " + example + " -o '" + folder + "'");

  EXPECT_EQ(result.err, "kvfound: " + folder + ": this is a folder, not a file\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ReportOutput, TellsThatADeviceIsFull) {
  SKIP_WITHOUT_BASH();
  EXPECT_EQ(run("report " + example + " -o /dev/full").err,
            "kvfound: /dev/full: cannot be written: No space left on device\n");
  EXPECT_EQ(run("report " + example + " >/dev/full").err,
            "kvfound: standard output cannot be written\n");
}

}  // namespace
