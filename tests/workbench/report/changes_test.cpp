#include "report/changes.h"

#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "comparing/differences.h"
#include "report/frame.h"

namespace {

using Texts = std::vector<std::string>;

const Units none;
const Units kiloNewton = {"kN", "m"};

std::string makeModel(const std::string& foundations) {
  return "<?xml version=\"1.0\"?>\n<SMOD><FOUNDATIONS CURRENT='C'>" + foundations +
         "</FOUNDATIONS></SMOD>\n";
}

/// The page of two models, with the units that each names.
std::string compare(const std::string& before, const std::string& after,
                    const Units& unitsBefore = {}, const Units& unitsAfter = {}) {
  Documents::Document first({"old/a.xml", "", makeModel(before)});
  Documents::Document second({"new/b.xml", "", makeModel(after)});
  const Comparing::Differences differences = Comparing::compare(first, second);
  return Report::makeChangesPage({{first, unitsBefore, {"2026-03-01 09:30"}},
                                  {second, unitsAfter, {"2026-03-02 10:00"}},
                                  differences});
}

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t number = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++number;
  return number;
}

/// What stands between two texts; empty where they do not.
std::string cut(const std::string& text, const std::string& start, const std::string& end) {
  const std::size_t from = text.find(start);
  const std::size_t to = text.find(end, from);
  return from == text.npos || to == text.npos
             ? ""
             : text.substr(from + start.size(), to - from - start.size());
}

std::string readSection(const std::string& page, const std::string& id) {
  return cut(page, "<h2 id=\"" + id + "\">", "</section>");
}

/// The texts of a line, with a stroke for each cell.
std::string readCells(const std::string& line) {
  std::string text;
  bool isInTag = false;
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '<') {
      isInTag = true;
      if (line.compare(at, 3, "<td") == 0 || line.compare(at, 3, "<th") == 0) text += '|';
    } else if (line[at] == '>') {
      isInTag = false;
    } else if (!isInTag) {
      text += line[at];
    }
  }
  return text;
}

/// The rows of all tables of a section, headings included.
Texts listRows(const std::string& page, const std::string& id) {
  Texts rows;
  std::istringstream lines(readSection(page, id));
  for (std::string line; std::getline(lines, line);)
    if (line.compare(0, 3, "<tr") == 0) rows.push_back(readCells(line));
  return rows;
}

/// The page of one foundation whose area stiffness in z changes.
std::string change(const std::string& before, const std::string& after) {
  const auto make = [](const std::string& value) {
    return "<FOUND NUMBER='1' NAME='A' FZAREA='" + value + "'/>";
  };
  return compare(make(before), make(after));
}

const std::string times = "\xC3\x97\xC2\xA0";
const std::string about = "\xE2\x89\x88\xC2\xA0";

// --- What the page tells

TEST(ReportChanges, AreThoseFromOneDocumentToAnother) {
  const std::string page = change("1", "2");

  EXPECT_TRUE(holds(page, "<title>Changes from a.xml to b.xml</title>"));
  EXPECT_TRUE(holds(page, "<h1>a.xml to b.xml</h1>"));
  EXPECT_TRUE(Report::isPage(page));
}

TEST(ReportChanges, NameBothDocumentsWithTheirDatesOnEachSheet) {
  EXPECT_TRUE(holds(change("1", "2"),
                    "content: \"a\\2e xml\\2c  2026\\2d 03\\2d 01 09\\3a 30 to b\\2e "
                    "xml\\2c  2026\\2d 03\\2d 02 10\\3a 00\"; }"));
}

TEST(ReportChanges, CutNamesThatAreLongOnASheet) {
  Documents::Document document({std::string(26, 'x'), "", makeModel("")});
  const Comparing::Differences differences = Comparing::compare(document, document);

  EXPECT_TRUE(
      holds(Report::makeChangesPage({{document, {}, {""}}, {document, {}, {""}}, differences}),
            "content: \"" + std::string(24, 'x') + "\\2026  to " + std::string(24, 'x') +
                "\\2026 \"; }"));
}

TEST(ReportChanges, HaveFactsOfBothDocuments) {
  const std::string page = change("1", "2");

  EXPECT_TRUE(holds(page,
                    "<li>Before <strong><bdi>a.xml</bdi></strong> "
                    "<small>Legacy model, 2026-03-01 09:30</small>"));
  EXPECT_TRUE(holds(page,
                    "<li>After <strong><bdi>b.xml</bdi></strong> "
                    "<small>Legacy model, 2026-03-02 10:00</small>"));
}

TEST(ReportChanges, TellDocumentsOfTheSameNameApartByTheirFolders) {
  Documents::Document first({"x/old/a.xml", "", makeModel("")});
  Documents::Document second({"a.xml", "", makeModel("")});
  const Comparing::Differences differences = Comparing::compare(first, second);

  EXPECT_TRUE(
      holds(Report::makeChangesPage({{first, none, {""}}, {second, none, {""}}, differences}),
            "<h1>old/a.xml to a.xml</h1>"));
}

TEST(ReportChanges, AreCounted) {
  const std::string page = compare(
      "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B' FXAREA='1' FYAREA='1'/>"
      "<FOUND NUMBER='3' NAME='C'/><FOUND NUMBER='4' NAME='D'/>",
      "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B' FXAREA='2' FYAREA='2'/>"
      "<FOUND NUMBER='9' NAME='X'/>");

  EXPECT_TRUE(holds(page, "<li>Changed <strong>1</strong> <small>2 fields</small>"));
  EXPECT_TRUE(holds(page, "<li>Came <strong>1</strong>"));
  EXPECT_TRUE(holds(page, "<li>Went <strong>2</strong>"));
  EXPECT_TRUE(
      holds(page, "<li>Alike <strong>1</strong> <small>4 foundations before, 3 after</small>"));
}

TEST(ReportChanges, TellThatFoundationsAreAlike) {
  const std::string page = compare("<FOUND NUMBER='1' NAME='C'/>", "<FOUND NUMBER='1' NAME='C'/>");

  EXPECT_TRUE(holds(page, "<main>\n<p class=\"sum\">The foundations are alike.</p>\n</main>"));
  EXPECT_FALSE(holds(page, "<nav"));
  EXPECT_TRUE(holds(page, "number 1, <bdi>C</bdi></strong> <small>as before</small>"));
}

TEST(ReportChanges, TellThatNotEverythingCouldBeRead) {
  Documents::Document first({"a.xml", "", makeModel("<FOUND NUMBER='1' NAME='C'/>")});
  Documents::Document second({"b.xml", "", makeModel("<FOUND NUMBER='1' NAME='C'/>")});
  Documents::Document third({"c.xml", "", makeModel("<FOUND NUMBER='2' NAME='C'/>")});
  const Comparing::Differences alike = Comparing::compare(first, second);
  const Comparing::Differences changed = Comparing::compare(first, third);

  const std::string pageAlike =
      Report::makeChangesPage({{first, none, {""}}, {second, none, {""}}, alike, 0.0, false});
  const std::string pageChanged =
      Report::makeChangesPage({{first, none, {""}}, {third, none, {""}}, changed, 0.0, false});

  EXPECT_TRUE(holds(pageAlike, ">What was read is alike, but not everything could be read.<"));
  EXPECT_FALSE(holds(pageAlike, "The foundations are alike"));
  EXPECT_TRUE(holds(pageChanged, ">Not everything could be read: there may be more changes.<"));
}

TEST(ReportChanges, TellTheToleranceOfTheComparison) {
  Documents::Document first({"a.xml", "", makeModel("")});
  const Comparing::Differences differences = Comparing::compare(first, first);

  EXPECT_TRUE(
      holds(Report::makeChangesPage({{first, none, {""}}, {first, none, {""}}, differences, 1e-6}),
            "<li>Tolerance <strong>0.000001</strong>"));
  EXPECT_FALSE(holds(change("1", "2"), "Tolerance"));
}

TEST(ReportChanges, TellThatAnotherFoundationIsTheCurrentOne) {
  const std::string page = compare("<FOUND NUMBER='1' NAME='C'/><FOUND NUMBER='2' NAME='D'/>",
                                   "<FOUND NUMBER='1' NAME='D2'/><FOUND NUMBER='2' NAME='C'/>");
  const std::string gone = compare("<FOUND NUMBER='1' NAME='C'/>", "");

  EXPECT_TRUE(holds(page, "number 2, <bdi>C</bdi></strong> <small>before: number 1, <bdi>C"));
  EXPECT_TRUE(holds(gone, "<li>Current foundation <strong>none</strong> <small>before: number 1"));
  EXPECT_TRUE(holds(gone, "<p class=\"sum\">The current foundation is another one.</p>"));
  EXPECT_FALSE(holds(change("1", "2"), "The current foundation is another one."));
}

TEST(ReportChanges, TellOfACurrentFoundationThatOnlyLooksTheSame) {
  const std::string page =
      compare("<FOUND NUMBER='1' NAME='C' FXAREA='1'/>", "<FOUND NUMBER='1' NAME='C' FXAREA='1'/>");
  Documents::Document first({"a.xml", "", makeModel("<FOUND NUMBER='1' NAME='C'/>")});
  const Comparing::Differences other = {{}, false};

  EXPECT_TRUE(holds(page, "<bdi>C</bdi></strong> <small>as before</small>"));
  EXPECT_TRUE(holds(Report::makeChangesPage({{first, none, {""}}, {first, none, {""}}, other}),
                    "<small>before: number 1, <bdi>C</bdi></small>"));
}

TEST(ReportChanges, NameUnitsWhereBothDocumentsNameTheSame) {
  const std::string a = "<FOUND NUMBER='1' NAME='A' FXLINE='1' FXX='1' FACLINE='1'/>";
  const std::string b = "<FOUND NUMBER='1' NAME='A' FXLINE='2' FXX='2' FACLINE='2'/>";
  const std::string same = compare(a, b, kiloNewton, kiloNewton);
  const std::string other = compare(a, b, kiloNewton, {"<N>", "mm"});

  EXPECT_TRUE(holds(same, "<li>Units <strong>kN, m</strong> <small>as both documents say<"));
  EXPECT_EQ(listRows(same, "changed").at(1).substr(0, 23), "|1|A|line x|kN/m\xC2\xB2|1|2|");
  EXPECT_TRUE(holds(listRows(same, "changed").at(2), "|line rotation x|kNm/m/rad|"));
  EXPECT_TRUE(holds(listRows(same, "changed").at(3), "|line factor||1|2|"));
  EXPECT_TRUE(holds(other, "before: kN, m; after: &lt;N&gt;, mm; values are compared as they are"));
  EXPECT_TRUE(holds(
      other, "<p class=\"sum warn\">Numbers are compared, although their units are not the same."));
  EXPECT_FALSE(holds(other, "kN/m"));
  EXPECT_TRUE(holds(change("1", "2"), "<li>Units <strong>not stated</strong>"));
}

TEST(ReportChanges, TakeADocumentWithoutUnitsForTheSame) {
  const std::string a = "<FOUND NUMBER='1' NAME='A' FXLINE='1'/>";
  const std::string b = "<FOUND NUMBER='1' NAME='A' FXLINE='2'/>";
  const std::string remark =
      "<strong>kN, m</strong> <small>as <bdi>a.xml</bdi> says; <bdi>b.xml</bdi> names none, and is "
      "taken for the same<";

  EXPECT_TRUE(holds(compare(a, b, kiloNewton, {}), remark));
  EXPECT_TRUE(holds(compare(a, b, {}, kiloNewton), "as <bdi>b.xml</bdi> says; <bdi>a.xml</bdi>"));
  EXPECT_TRUE(holds(listRows(compare(a, b, {}, kiloNewton), "changed").at(1), "|kN/m\xC2\xB2|"));
}

TEST(ReportChanges, AreNotNoneWhereUnitsAreNotTheSame) {
  const std::string a = "<FOUND NUMBER='1' NAME='A' FXLINE='1'/>";
  const std::string page = compare(a, a, kiloNewton, {"N", "mm"});

  EXPECT_TRUE(holds(
      page, "<p class=\"sum warn\">The numbers are alike, but their units are not the same."));
  EXPECT_FALSE(holds(page, "The foundations are alike."));
}

TEST(ReportChanges, NameTheUnitsOfEachSideWhereTheyAreNotTheSame) {
  const std::string page =
      compare("<FOUND NUMBER='1' NAME='A' FZLINE='1'/>", "<FOUND NUMBER='2' NAME='B' FZLINE='1'/>",
              kiloNewton, {"N", "mm"});

  EXPECT_TRUE(holds(listRows(page, "went").at(0), "Line z kN/m\xC2\xB2"));
  EXPECT_TRUE(holds(listRows(page, "came").at(0), "Line z N/mm\xC2\xB2"));
}

// --- What changed

TEST(ReportChanged, HasARowForEachField) {
  EXPECT_EQ(
      listRows(compare("<FOUND NUMBER='1' NAME='A'/>",
                       "<FOUND NUMBER='1' NAME='B' FXAREA='1' FYAREA='2' FZAREA='3' FAILZAREA='1' "
                       "FACAREA='4' FXLINE='5' FYLINE='6' FZLINE='7' FXX='8' FAILXLINE='-1' "
                       "FAILYLINE='1' FAILZLINE='9' FACLINE='10' IsGenerated='1'/>"),
               "changed"),
      (Texts{"|No|Name|Field|Before|After", "|1|A|name|A|B", "|generated|no|yes", "|area x|0|1",
             "|area y|0|2", "|area z|0|3", "|fails in area z|none|compression", "|area factor|0|4",
             "|line x|\xE2\x80\x93|5", "|line y|\xE2\x80\x93|6", "|line z|\xE2\x80\x93|7",
             "|line rotation x|\xE2\x80\x93|8", "|fails in line x|none|tension",
             "|fails in line y|none|compression", "|fails in line z|none|mode 9",
             "|line factor|0|10"}));
}

TEST(ReportChanged, HasValuesExactly) {
  EXPECT_EQ(listRows(change("13445080.768799001", "1e-300"), "changed").at(1),
            "|1|A|area z|13445080.768799001|1e-300|" + about + "7.44e-308|");
}

TEST(ReportChanged, NamesAFoundationOnceForAllItsRows) {
  const std::string page = compare(
      "<FOUND NUMBER='1' NAME='A' FXAREA='1' FYAREA='1'/><FOUND NUMBER='2' NAME='B' FXAREA='1'/>",
      "<FOUND NUMBER='1' NAME='A' FXAREA='2' FYAREA='2'/><FOUND NUMBER='2' NAME='B' FXAREA='2'/>");

  EXPECT_TRUE(holds(page, "<tr><td rowspan=\"2\">1<th scope=\"rowgroup\" rowspan=\"2\">A"));
  EXPECT_TRUE(holds(page, "</tbody>\n<tbody>\n<tr><td>2<th scope=\"row\">B"));
}

TEST(ReportChanged, NamesFoundationsAsTheyWereBefore) {
  EXPECT_EQ(
      listRows(compare("<FOUND NUMBER='1' NAME='A'/>", "<FOUND NUMBER='3' NAME='A'/>"), "changed")
          .at(1),
      "|1|A|number|1|3");
}

TEST(ReportChanged, MakesNamesSafe) {
  const std::string page = compare("<FOUND NUMBER='1' NAME='&lt;b&gt;&amp;&#10;&#9;'/>",
                                   "<FOUND NUMBER='1' NAME='&lt;/td&gt; \"'/>");

  EXPECT_EQ(listRows(page, "changed").at(1),
            "|1|&lt;b&gt;&amp;\\n\\t|name|&lt;b&gt;&amp;\\n\\t|&lt;/td&gt; &quot;");
}

// --- Ratios

TEST(ReportRatio, HasAtMostThreeDigits) {
  const struct {
    const char* before;
    const char* after;
    std::string ratio;
  } rows[] = {{"100", "125", times + "1.25|"}, {"3", "4", about + "1.33|"},
              {"4", "3", times + "0.75|"},     {"-4", "-3", times + "0.75|"},
              {"1", "-2", times + "-2|"},      {"5", "0", times + "0|"},
              {"-5", "0", times + "0|"},       {"1", "123456", about + "123000|"},
              {"1", "999.7", about + "1000|"}, {"1", "1500000000000", about + "1.5e+12|"},
              {"0.1", "0.3", times + "3|"},    {"100000", "100001", about + "1|"}};
  for (const auto& row : rows)
    EXPECT_EQ(listRows(change(row.before, row.after), "changed").at(1),
              std::string("|1|A|area z|") + row.before + "|" + row.after + "|" + row.ratio);
}

TEST(ReportRatio, IsLeftOutWhereItSaysNothing) {
  for (const char* const before : {"0", "inf", "nan"})
    EXPECT_FALSE(holds(readSection(change(before, "2"), "changed"), "Ratio")) << before;
  for (const char* const after : {"inf", "nan"})
    EXPECT_FALSE(holds(readSection(change("2", after), "changed"), "Ratio")) << after;
  EXPECT_FALSE(holds(readSection(change("1e-300", "1e300"), "changed"), "Ratio"));
  EXPECT_FALSE(holds(readSection(change("1e300", "1e-300"), "changed"), "Ratio"));
}

TEST(ReportRatio, HasABarFromTheMiddle) {
  const auto draw = [](const char* before, const char* after) {
    return cut(readSection(change(before, after), "changed"), "<svg aria-hidden=\"true\">",
               "</svg>");
  };
  const std::string start = "<line x1=\"50%\" x2=\"";
  const std::string end = "\" y1=\"50%\" y2=\"50%\"/>";

  EXPECT_EQ(draw("4", "5"), start + "62.5%" + end);
  EXPECT_EQ(draw("4", "2"), start + "25%" + end);
  EXPECT_EQ(draw("4", "0"), start + "0%" + end);
  EXPECT_EQ(draw("4", "8"), start + "100%" + end);
  EXPECT_EQ(draw("4", "9"), start + "100%" + end + "<path class=\"end\" d=\"M0 0l9 8-9 8z\"/>");
  EXPECT_EQ(draw("4", "-1"), start + "0%" + end + "<path d=\"M0 0l-9 8 9 8z\"/>");
}

TEST(ReportRatio, HasAnEmptyPlaceInOtherRows) {
  EXPECT_EQ(listRows(compare("<FOUND NUMBER='1' NAME='A' FACAREA='2'/>",
                             "<FOUND NUMBER='1' NAME='B' FACAREA='3'/>"),
                     "changed"),
            (Texts{"|No|Name|Field|Before|After|Ratio|Ratio on a scale 0 1 2", "|1|A|name|A|B||",
                   "|area factor|2|3|" + times + "1.5|"}));
}

// --- What came and went

TEST(ReportCame, HasOnlyTheColumnsThatSomeRowNeeds) {
  const std::string page =
      compare("", "<FOUND NUMBER='1' NAME='A' FXAREA='1.5' FZAREA='-3'/>", kiloNewton, kiloNewton);

  EXPECT_EQ(listRows(page, "came"),
            (Texts{"|No|Name|Area x kN/m\xC2\xB3|Area y kN/m\xC2\xB3|Area z kN/m\xC2\xB3",
                   "|1|A|1.5|0|-3"}));
  EXPECT_FALSE(holds(page, "id=\"went\""));
  EXPECT_FALSE(holds(page, "id=\"changed\""));
  EXPECT_TRUE(holds(page, "<p class=\"lead\">Only in <bdi>b.xml</bdi>.</p>"));
}

TEST(ReportWent, HasAllThatAFoundationHad) {
  const std::string dash = "\xE2\x80\x93";
  const std::string page = compare(
      "<FOUND NUMBER='1' NAME='C' FZAREA='3' FAILZAREA='1' FACAREA='0.5'/>"
      "<FOUND NUMBER='2' NAME='B' FXLINE='1' FYLINE='2' FZLINE='3' FXX='4' FAILXLINE='-1' "
      "FAILZLINE='9' FACLINE='0.25' IsGenerated='1'/>",
      "");

  EXPECT_EQ(listRows(page, "went"),
            (Texts{"|No|Name|Marks|Area x|Area y|Area z|Area fails|Area factor|Line x|Line y|Line "
                   "z|Line rotation x|Line fails|Line factor",
                   "|1|C|current|0|0|3|z compression|0.5|" + dash + "|" + dash + "|" + dash + "|" +
                       dash + "|" + dash + "|" + dash,
                   "|2|B|generated|" + dash + "|" + dash + "|" + dash + "|" + dash + "|" + dash +
                       "|1|2|3|4|x tension, z mode 9|0.25"}));
  EXPECT_TRUE(holds(page, "<p class=\"lead\">Only in <bdi>a.xml</bdi>.</p>"));
}

TEST(ReportWent, HasTablesForAreasAndLinesWhereOneIsTooBroadForPaper) {
  const std::string values =
      "XAREA='1234567.8901234567' FYAREA='1234567.8901234567' FZAREA='1234567.8901234567' F";
  const std::string page = compare(
      "<FOUND NUMBER='1' NAME='A' F" + values +
          "XLINE='1234567.8901234567' FYLINE='1234567.8901234567' FZLINE='1234567.8901234567' "
          "FXX='1234567.8901234567'/>"
          "<FOUND NUMBER='2' NAME='B' FXLINE='1'/><FOUND NUMBER='3' NAME='C'/>",
      "");
  const Texts rows = listRows(page, "went");

  ASSERT_EQ(rows.size(), 6);
  EXPECT_EQ(rows.at(0), "|No|Name|Marks|Area x|Area y|Area z");
  EXPECT_EQ(rows.at(1).substr(0, 5), "|1|A|");
  EXPECT_EQ(rows.at(2), "|3|C|current|0|0|0");
  EXPECT_EQ(rows.at(3), "|No|Name|Line x|Line y|Line z|Line rotation x");
  EXPECT_EQ(rows.at(4).substr(0, 5), "|1|A|");
  EXPECT_EQ(rows.at(5).substr(0, 7), "|2|B|1|");
}

TEST(ReportWent, HasFoundationsWithoutAnyPartAmongTheAreas) {
  const std::string longest = ",-1.2345678901234567e-300";
  std::string values;
  for (int i = 0; i < 7; ++i) values += longest;
  Documents::Document first({"a.csv", "",
                             "number,name,areaX,areaY,areaZ,lineX,lineY,lineZ,lineRotationX\n1,A" +
                                 values + "\n2,B,,,,,,,\n"},
                            Documents::Form::csv);
  Documents::Document second({"b.xml", "", makeModel("")});
  const Comparing::Differences differences = Comparing::compare(first, second);

  const Texts rows = listRows(
      Report::makeChangesPage({{first, none, {""}}, {second, none, {""}}, differences}), "went");

  ASSERT_EQ(rows.size(), 5);
  EXPECT_EQ(rows.at(2), "|2|B|\xE2\x80\x93|\xE2\x80\x93|\xE2\x80\x93");
}

// --- Paper and large documents

TEST(ReportChangesSheet, IsBroadWhereNumbersAreLong) {
  EXPECT_TRUE(holds(change("1", "2"), "<table class=\"listing\">"));
  EXPECT_TRUE(holds(change("1.2345678901234567e-30", "1.2345678901234567e-31"),
                    "<table class=\"listing broad\">"));
}

std::string makeMany(int number, const std::string& value) {
  std::string foundations;
  for (int i = 1; i <= number; ++i)
    foundations += "<FOUND NUMBER='" + std::to_string(i) + "' NAME='F&lt;" + std::to_string(i) +
                   "' FZAREA='" + value + "'/>";
  return foundations;
}

TEST(ReportChangesLarge, HasAThousandRows) {
  const std::string page = compare(makeMany(1000, "1"), makeMany(1000, "2"));

  EXPECT_EQ(count(readSection(page, "changed"), "<tr>"), 1001);
  EXPECT_FALSE(holds(page, "<details"));
}

TEST(ReportChangesLarge, HasMoreAsText) {
  const std::string page = compare(makeMany(1002, "1"), makeMany(1002, "2"));
  const std::string section = readSection(page, "changed");

  EXPECT_EQ(count(section, "<tr>"), 1001);
  EXPECT_TRUE(holds(section, "<summary>2 more foundations as text, with tabs between values<"));
  EXPECT_EQ(cut(section, "as text\">\n", "</pre>"),
            "No\tName\tField\tBefore\tAfter\tRatio\n"
            "1001\tF&lt;1001\tarea z\t1\t2\t" +
                times +
                "2\n"
                "1002\tF&lt;1002\tarea z\t1\t2\t" +
                times + "2\n");
}

TEST(ReportChangesLarge, KeepsTheRowsOfAFoundationTogether) {
  const std::string page =
      compare(makeMany(999, "1") + "<FOUND NUMBER='2000' NAME='Z' FXAREA='1' FYAREA='1'/>",
              makeMany(999, "2") + "<FOUND NUMBER='2000' NAME='Z' FXAREA='2' FYAREA='2'/>");

  EXPECT_EQ(count(readSection(page, "changed"), "<tr>"), 1000);
  EXPECT_TRUE(holds(page, "2000\tZ\tarea x\t1\t2\t" + times + "2\n2000\tZ\tarea y\t1\t2\t"));
}

}  // namespace
