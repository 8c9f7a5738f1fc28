#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

/// Attributes of FOUNDATIONS, and what stands in it.
std::string makeModel(const std::string& name, const std::string& attributes,
                      const std::string& foundations) {
  return makeFile(
      name, makeDocument("<FOUNDATIONS " + attributes + ">" + foundations + "</FOUNDATIONS>"));
}

Result diff(const std::string& before, const std::string& after) {
  return run("diff '" + makeModel("a.xml", "", before) + "' '" + makeModel("b.xml", "", after) +
             "'");
}

TEST(Diff, PrintsNothingWhenFoundationsAreAlike) {
  const Result result =
      run("diff '" KVFOUND_EXAMPLES_DIR "/model.xml' '" KVFOUND_EXAMPLES_DIR "/model.xml'");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Diff, PrintsWhatWasAddedRemovedAndChanged) {
  const Result result = diff(
      "<FOUND NUMBER='1' NAME='same' FZAREA='1'/>"
      "<FOUND NUMBER='2' NAME='changed' FZAREA='1'/><FOUND NUMBER='3' NAME='gone'/>",
      "<FOUND NUMBER='4' NAME='new'/><FOUND NUMBER='2' NAME='changed' FZAREA='1.5'/>"
      "<FOUND NUMBER='1' NAME='same' FZAREA='1'/>");

  EXPECT_EQ(result.out,
            "~ number 2 \"changed\"\n"
            "    areaZ: 1 -> 1.5\n"
            "- number 3 \"gone\"\n"
            "+ number 4 \"new\"\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 1);
}

TEST(Diff, NamesEveryFieldThatChanged) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A'/>",
                 "<FOUND NUMBER='1' NAME='B' FXAREA='1' FYAREA='2' FZAREA='3' FAILZAREA='1' "
                 "FACAREA='4' FXLINE='5' FYLINE='6' FZLINE='7' FXX='8' FAILXLINE='-1' "
                 "FAILYLINE='1' FAILZLINE='9' FACLINE='10' IsGenerated='1'/>")
                .out,
            "~ number 1 \"A\"\n"
            "    name: A -> B\n"
            "    generated: no -> yes\n"
            "    areaX: 0 -> 1\n"
            "    areaY: 0 -> 2\n"
            "    areaZ: 0 -> 3\n"
            "    areaFailureZ: none -> compression\n"
            "    areaFactor: 0 -> 4\n"
            "    lineX: - -> 5\n"
            "    lineY: - -> 6\n"
            "    lineZ: - -> 7\n"
            "    lineRotationX: - -> 8\n"
            "    lineFailureX: none -> tension\n"
            "    lineFailureY: none -> compression\n"
            "    lineFailureZ: none -> 9\n"
            "    lineFactor: 0 -> 10\n");
}

TEST(Diff, MatchesByNameBeforeNumber) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/>",
                 "<FOUND NUMBER='1' NAME='B'/><FOUND NUMBER='3' NAME='A'/>")
                .out,
            "~ number 1 \"A\"\n"
            "    number: 1 -> 3\n"
            "~ number 2 \"B\"\n"
            "    number: 2 -> 1\n");
}

TEST(Diff, MatchesByOneKeyOnlyWhereItIsAskedTo) {
  const std::string a = makeModel("a.xml", "", "<FOUND NUMBER='1' NAME='A'/>");
  const std::string b = makeModel("b.xml", "", "<FOUND NUMBER='1' NAME='B'/>");

  EXPECT_EQ(run("diff --by number '" + a + "' '" + b + "'").out,
            "~ number 1 \"A\"\n    name: A -> B\n");
  EXPECT_EQ(run("diff --by name '" + a + "' '" + b + "'").out,
            "- number 1 \"A\"\n+ number 1 \"B\"\n");
}

TEST(Diff, ShowsAnInsertionThatRenumbersAsOne) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/>",
                 "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='C'/>"
                 "<FOUND NUMBER='3' NAME='B'/>")
                .out,
            "~ number 2 \"B\"\n    number: 2 -> 3\n+ number 2 \"C\"\n");
}

TEST(Diff, LeavesOutWhatDiffersByNoMoreThanTheShareThatIsGiven) {
  const std::string a = makeModel("a.xml", "", "<FOUND NUMBER='1' NAME='A' FZAREA='100'/>");
  const std::string b = makeModel("b.xml", "", "<FOUND NUMBER='1' NAME='A' FZAREA='101'/>");

  EXPECT_EQ(run("diff --relative 0.01 '" + a + "' '" + b + "'").status, 0);
  EXPECT_EQ(run("diff --relative 0.009 '" + a + "' '" + b + "'").status, 1);
  for (const char* share : {"2", "-1", "nan"})
    EXPECT_EQ(run("diff '" + a + "' '" + b + "' --relative=" + share).err,
              "kvfound: --relative takes a share from 0 to 1, such as 1e-6; see kvfound diff "
              "--help\n");
}

TEST(Diff, MatchesByNameWhatHasAnotherNumber) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A'/>", "<FOUND NUMBER='3' NAME='A'/>").out,
            "~ number 1 \"A\"\n"
            "    number: 1 -> 3\n");
}

TEST(Diff, MatchesThoseOfTheSameNumberByName) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A' FZAREA='1'/><FOUND NUMBER='1' NAME='B' FZAREA='2'/>",
                 "<FOUND NUMBER='1' NAME='B' FZAREA='2'/><FOUND NUMBER='1' NAME='A' FZAREA='1'/>")
                .out,
            "");
}

TEST(Diff, MatchesThoseOfTheSameNumberAndNameInOrder) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A' FZAREA='1'/><FOUND NUMBER='1' NAME='A' FZAREA='2'/>",
                 "<FOUND NUMBER='1' NAME='A' FZAREA='1'/>")
                .out,
            "- number 1 \"A\"\n");
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='A' FZAREA='1'/>",
                 "<FOUND NUMBER='1' NAME='A' FZAREA='1'/><FOUND NUMBER='1' NAME='A' FZAREA='2'/>")
                .out,
            "+ number 1 \"A\"\n");
}

TEST(Diff, TellsWhichFoundationIsCurrent) {
  const char* const founds = "<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/>";
  const std::string none = makeModel("none.xml", "", founds);
  const std::string first = makeModel("first.xml", "CURRENT='A'", founds);
  const std::string second = makeModel("second.xml", "CURRENT='B'", founds);
  const struct {
    std::string before;
    std::string after;
    const char* out;
  } rows[] = {
      {none, none, ""},
      {first, first, ""},
      {none, first, "current foundation: none -> number 1 \"A\"\n"},
      {first, none, "current foundation: number 1 \"A\" -> none\n"},
      {first, second, "current foundation: number 1 \"A\" -> number 2 \"B\"\n"},
  };
  for (const auto& row : rows) {
    const Result result = run("diff '" + row.before + "' '" + row.after + "'");
    EXPECT_EQ(result.out, row.out);
    EXPECT_EQ(result.status, result.out.empty() ? 0 : 1);
  }
}

TEST(Diff, TellsThatTheCurrentFoundationWasRemoved) {
  const std::string before = makeModel("a.xml", "CURRENT='A'", "<FOUND NUMBER='1' NAME='A'/>");
  const std::string after = makeModel("b.xml", "", "");

  EXPECT_EQ(run("diff '" + before + "' '" + after + "'").out,
            "- number 1 \"A\"\n"
            "current foundation: number 1 \"A\" -> none\n");
}

TEST(Diff, TakesTheCurrentFoundationUnderAnotherNameAsTheSame) {
  const std::string before = makeModel("a.xml", "CURRENT='A'", "<FOUND NUMBER='1' NAME='A'/>");
  const std::string after = makeModel("b.xml", "CURRENT='B'", "<FOUND NUMBER='1' NAME='B'/>");

  EXPECT_EQ(run("diff '" + before + "' '" + after + "'").out,
            "~ number 1 \"A\"\n"
            "    name: A -> B\n");
}

TEST(Diff, TakesAbsentStiffnessAndZeroAsAlike) {
  const std::string model = makeModel("a.xml", "", "<FOUND NUMBER='1' NAME='A' FZLINE='5'/>");
  const std::string exchange =
      makeFile("b.xml", "<B><CurveBedding Number='1' Name='A' StiffnessZ='5'/></B>");

  const Result result = run("diff '" + model + "' '" + exchange + "'");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "kvfound: " + exchange + ": 1 bedding was read\n");
  EXPECT_EQ(result.status, 0);
}

TEST(Diff, TakesWhatIsNotANumberAsAlike) {
  EXPECT_EQ(diff("<FOUND NAME='A' FZAREA='nan'/>", "<FOUND NAME='A' FZAREA='-nan'/>").out, "");
  EXPECT_EQ(diff("<FOUND NAME='A' FZAREA='nan'/>", "<FOUND NAME='A' FZAREA='inf'/>").out,
            "~ number 1 \"A\"\n"
            "    areaZ: nan -> inf\n");
  EXPECT_EQ(diff("<FOUND NAME='A'/>", "<FOUND NAME='A' FZAREA='nan'/>").out,
            "~ number 1 \"A\"\n"
            "    areaZ: 0 -> nan\n");
}

TEST(Diff, TakesNamesInUtf8AndInACodePageAsAlike) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='Stra\xC3\x9F"
                 "e'/>",
                 "<FOUND NUMBER='1' NAME='Stra\xDF"
                 "e'/>")
                .out,
            "");
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='Stra\xC3\x9F"
                 "e'/>",
                 "<FOUND NUMBER='2' NAME='Stra\xDF"
                 "e'/>")
                .out,
            "~ number 1 \"Stra\xC3\x9F"
            "e\"\n"
            "    number: 1 -> 2\n");
}

TEST(Diff, ShowsControlCharactersInNamesAsEscapes) {
  EXPECT_EQ(diff("<FOUND NUMBER='1' NAME='a&#10;b'/>", "<FOUND NUMBER='1' NAME='a\x7F'/>").out,
            "~ number 1 \"a\\nb\"\n"
            "    name: a\\nb -> a\\x7F\n");
}

TEST(Diff, ReadsOneOfTheTwoFromStandardInput) {
  const std::string path = makeModel("a.xml", "", "<FOUND NUMBER='1' NAME='A'/>");
  const std::string other = makeModel("b.xml", "", "");

  EXPECT_EQ(run("diff - '" + other + "'", path).out, "- number 1 \"A\"\n");
  EXPECT_EQ(run("diff '" + other + "' -", path).out, "+ number 1 \"A\"\n");
}

TEST(Diff, TakesTheVersionThatIsGiven) {
  const std::string path = makeFile("a.xml", "<B><Bedding Name='A'/></B>");
  const std::string other = makeFile("b.xml", "<B><CurveBedding Number='1' Name='A'/></B>");

  EXPECT_EQ(run("diff '" + path + "' '" + other + "'").status, 0);
  EXPECT_EQ(run("diff --version 2.0 '" + path + "' '" + other + "'").out, "+ number 1 \"A\"\n");
}

TEST(DiffErrors, ReadsStandardInputOnlyOnce) {
  const Result result = run("diff - -", makeModel("a.xml", "", ""));

  EXPECT_EQ(result.err, "kvfound: A and B cannot both come from standard input\n");
  EXPECT_EQ(result.status, 2);
}

TEST(DiffErrors, NamesADocumentThatIsMissing) {
  const std::string path = makeModel("a.xml", "", "");

  for (const std::string& arguments : {"'" + path + "' /no/such", "/no/such '" + path + "'"}) {
    const Result result = run("diff " + arguments);
    EXPECT_EQ(result.err, "kvfound: /no/such: cannot be opened: No such file or directory\n");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.status, 2);
  }
}

TEST(Diff, FindsDocumentsDifferentOfWhichNotEverythingCouldBeRead) {
  const std::string first =
      makeFile("a.xml",
               "<Beddings><CurveBedding Number='1' Name='A' StiffnessX='1'/>"
               "<SurfaceBedding Number='1' Name='B' StiffnessX='2'/></Beddings>");
  const std::string second =
      makeFile("b.xml", "<Beddings><CurveBedding Number='1' Name='A' StiffnessX='1'/></Beddings>");

  const Result result = run("diff '" + first + "' '" + second + "'");

  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("kvfound: what was read is alike, but not everything could be read\n"),
            std::string::npos);
  EXPECT_EQ(result.status, 1);
}

TEST(Diff, ComparesBothPartsOfAFoundation) {
  const std::string first =
      makeFile("a.xml",
               "<Beddings><CurveBedding Number='1' Name='A' StiffnessX='1'/>"
               "<SurfaceBedding Number='1' Name='A' StiffnessX='2'/></Beddings>");
  const std::string second =
      makeFile("b.xml",
               "<Beddings><SurfaceBedding Number='1' Name='A' StiffnessX='3'/>"
               "<CurveBedding Number='1' Name='A' StiffnessX='1'/></Beddings>");

  const Result result = run("diff '" + first + "' '" + second + "'");

  EXPECT_EQ(result.out, "~ number 1 \"A\"\n    areaX: 2 -> 3\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(run("diff '" + first + "' '" + first + "'").status, 0);
}

TEST(Diff, AsksForAVersionThatIsOne) {
  const std::string path = makeFile("a.xml", "<Beddings><Bedding Name='A'/></Beddings>");

  EXPECT_EQ(run("diff --version 1,0 '" + path + "' '" + path + "'").err,
            "kvfound: \"1,0\" is no version; give 1.0, or a later one such as 2.0\n");
}

TEST(DiffFormat, JsonHoldsTheDifferences) {
  const std::string first = makeFile("1.xml", makeDocument("<FOUNDATIONS><FOUND NUMBER='1' "
                                                           "NAME='A' FXLINE='1'/></FOUNDATIONS>"));
  const std::string second = makeFile("2.xml", makeDocument("<FOUNDATIONS><FOUND NUMBER='1' "
                                                            "NAME='A' FXLINE='2'/></FOUNDATIONS>"));

  const Result result = run("diff --format json '" + first + "' '" + second + "'");

  EXPECT_EQ(result.out.substr(0, result.out.find("\n  \"current\"")),
            "{\n"
            "  \"format\": \"kvfound-diff\",\n"
            "  \"version\": 1,\n"
            "  \"before\": \"" +
                escapePath(first) +
                "\",\n"
                "  \"after\": \"" +
                escapePath(second) +
                "\",\n"
                "  \"alike\": false,\n"
                "  \"complete\": true,\n"
                "  \"differences\": [\n"
                "    {\n"
                "      \"change\": \"changed\",\n"
                "      \"before\": {\n"
                "        \"number\": 1,\n"
                "        \"name\": \"A\"\n"
                "      },\n"
                "      \"after\": {\n"
                "        \"number\": 1,\n"
                "        \"name\": \"A\"\n"
                "      },\n"
                "      \"fields\": [\n"
                "        {\n"
                "          \"field\": \"lineX\",\n"
                "          \"before\": 1.0,\n"
                "          \"after\": 2.0\n"
                "        }\n"
                "      ]\n"
                "    }\n"
                "  ],");
  EXPECT_EQ(result.status, 1);
}

TEST(Diff, RefusesTablesInDifferentUnits) {
  const std::string first = makeFile("first.csv", "#units,kN,m\nnumber,areaX\n1,2\n");
  const std::string second = makeFile("second.csv", "#units,N,mm\nnumber,areaX\n1,2\n");
  const Result result = run("diff '" + first + "' '" + second + "'");

  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.err, "kvfound: " + second +
                            ": its units are N and mm, not kN and m; labels convert nothing, "
                            "kvfound convert --units does\n");
}

// --- Pages and files

const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml'";

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

TEST(DiffFormat, HtmlIsAPage) {
  const std::string a = makeModel("a.xml", "", "<FOUND NUMBER='1' NAME='A' FZAREA='4'/>");
  const std::string b = makeModel("b.xml", "", "<FOUND NUMBER='1' NAME='A' FZAREA='5'/>");

  const Result result = run("diff '" + a + "' '" + b + "' --format html");

  EXPECT_TRUE(holds(result.out, "<p class=\"over\">Changes from</p>"));
  EXPECT_TRUE(holds(result.out,
                    "<td>4<td>5<td>\xC3\x97\xC2\xA0"
                    "1.25<td class=\"ratio\">"));
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 1);
}

TEST(DiffFormat, HtmlTellsThatFoundationsAreAlike) {
  const Result result = run("diff --format html " + example + " " + example);

  EXPECT_TRUE(holds(result.out, "The foundations are alike."));
  EXPECT_EQ(result.status, 0);
}

TEST(DiffFormat, HtmlTellsTheTolerance) {
  EXPECT_TRUE(
      holds(run("diff --format html --relative 0.25 " + example + " " + example).out, "0.25"));
}

TEST(DiffFormat, HtmlTellsThatNotEverythingCouldBeRead) {
  const std::string in = makeFile("a.xml", "<X><CurveBedding Number='1' Name='A'/><Load/></X>");
  const Result result = run("diff --format html '" + in + "' '" + in + "'");

  EXPECT_TRUE(holds(result.out, "What was read is alike, but not everything could be read."));
  EXPECT_TRUE(holds(result.err, "what was read is alike, but not everything could be read\n"));
  EXPECT_EQ(result.status, 1);
}

TEST(DiffFormat, HtmlHasTheUnitsOfModelsThatNameTheSame) {
  const auto make = [](const std::string& name, const std::string& units) {
    return makeFile(name, makeDocument("<PROJECT " + units + "/><FOUNDATIONS/>"));
  };
  const std::string a = make("a.xml", "UNITFORCE='kN' UNITLENGTH='m'");
  const std::string b = make("b.xml", "UNITFORCE='N' UNITLENGTH='mm'");
  const std::string c = make("c.xml", "");

  EXPECT_TRUE(holds(run("diff --format html '" + a + "' '" + a + "'").out, "<strong>kN, m<"));
  EXPECT_TRUE(
      holds(run("diff --format html '" + a + "' '" + b + "'").out, "before: kN, m; after: N, mm;"));
  EXPECT_TRUE(holds(run("diff --format html '" + c + "' '" + a + "'").out,
                    "<strong>kN, m</strong> <small>as <bdi>"));
  EXPECT_TRUE(holds(run("diff --format html '" + c + "' '" + c + "'").out, "<strong>not stated<"));
}

TEST(Diff, WarnsOfModelsThatNameOtherUnits) {
  const auto make = [](const std::string& name, const std::string& units) {
    return makeFile(name, makeDocument("<PROJECT " + units + "/><FOUNDATIONS/>"));
  };
  const std::string a = make("a.xml", "UNITFORCE='kN' UNITLENGTH='m'");
  const std::string b = make("b.xml", "UNITFORCE='N' UNITLENGTH='mm'");
  const std::string table = makeFile("a.csv", "#units,lbf,ft\nareaZ\n7\n");

  EXPECT_EQ(run("diff '" + a + "' '" + b + "'").err,
            "kvfound: " + b + ": its units are N and mm, but those of " + a +
                " are kN and m; nothing is converted\n");
  EXPECT_EQ(run("diff '" + table + "' '" + a + "'").err,
            "kvfound: " + a + ": its units are kN and m, but those of " + table +
                " are lbf and ft; nothing is converted\n");
  EXPECT_EQ(run("diff '" + a + "' '" + a + "'").err, "");
}

TEST(DiffFormat, HtmlTakesADocumentWithoutUnitsForTheSameAsATable) {
  const std::string table = makeFile("a.csv", "#units,lbf,ft\nareaZ\n7\n");
  const std::string model = makeModel("b.xml", "", "");

  EXPECT_TRUE(
      holds(run("diff --format html '" + table + "' '" + model + "'").out, "<strong>lbf, ft<"));
  EXPECT_TRUE(
      holds(run("diff --format html '" + model + "' '" + table + "'").out, "<strong>lbf, ft<"));
}

TEST(DiffOutput, GoesToTheFileThatIsNamed) {
  const std::string b = makeModel("b.xml", "", "<FOUND NUMBER='1' NAME='A'/>");
  for (const std::string format : {"text", "json", "html"})
    for (const std::string option : {" -o ", " --output "}) {
      const std::string command = "diff " + example + " '" + b + "' --format " + format;
      const std::string out = makeFile("out", "");

      const Result result = run(command + option + "'" + out + "'");

      EXPECT_EQ(result.out, "");
      EXPECT_EQ(result.err, "");
      EXPECT_EQ(result.status, 1);
      EXPECT_EQ(readFile(out), run(command).out);
      EXPECT_EQ(run(command + option + "-").out, run(command).out);
    }
}

TEST(DiffOutput, ReplacesAnOlderPageWithAPage) {
  const std::string out = makeFile("out.html", run("report " + example).out);

  EXPECT_EQ(run("diff --format html " + example + " " + example + " -o '" + out + "'").status, 0);

  EXPECT_TRUE(holds(readFile(out), "The foundations are alike."));
}

TEST(DiffOutput, ReplacesNothingButSuchAPage) {
  const std::string out = makeFile("out.html", "notes");
  const Result result = run("diff --format html " + example + " " + example + " -o '" + out + "'");

  EXPECT_EQ(result.err,
            "kvfound: " + out +
                ": this is no page that kvfound made, and was not replaced; name another file\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(readFile(out), "notes");
}

TEST(DiffOutput, ReplacesNothingWithTextOrJson) {
  const std::string page = run("report " + example).out;
  const std::string out = makeFile("out", page);
  for (const std::string format : {"text", "json"}) {
    const Result result =
        run("diff --format " + format + " " + example + " " + example + " -o '" + out + "'");

    EXPECT_EQ(result.err, "kvfound: " + out + ": is there already; name another file\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(readFile(out), page);
  }
}

TEST(DiffOutput, LeavesAPageAsItWasWhenADocumentCannotBeRead) {
  const std::string page = run("report " + example).out;
  const std::string out = makeFile("out.html", page);

  EXPECT_EQ(run("diff --format html " + example + " /no/such -o '" + out + "'").status, 2);

  EXPECT_EQ(readFile(out), page);
}

}  // namespace
