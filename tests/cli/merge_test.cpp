#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

/// A model of these foundations, a line each.
std::string makeModel(const std::string& foundations) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS CURRENT=\"A\">\n" + foundations +
         "</FOUNDATIONS>\n<LOADS/>\n</SMOD>\n";
}

const std::string foundA =
    "\t<FOUND NUMBER=\"1\" NAME=\"A\" FZAREA=\"1.50\" FAILXLINE=\"1\" IsGenerated=\"1\" "
    "Guid=\"g\"/>\n";

struct Merged {
  Result result;
  std::string text;
};

/// Merges an exchange document of these beddings into the model.
Merged merge(const std::string& beddings, const std::string& model,
             const std::string& options = "") {
  const std::string in = makeFile("in.xml", "<Beddings>" + beddings + "</Beddings>");
  const std::string into = makeFile("into.xml", model);
  const Result result = run("merge '" + in + "' '" + into + "' " + options);
  return {result, readFile(into)};
}

std::string makeSurface(int number, const std::string& name, const std::string& z) {
  return "<SurfaceBedding Number='" + std::to_string(number) + "' Name='" + name +
         "' StiffnessZ='" + z + "'/>";
}

TEST(Merge, ChangesWhatTheOtherFormTellsAndKeepsTheRest) {
  const auto [result, text] = merge(makeSurface(1, "A", "2"), makeModel(foundA));

  EXPECT_EQ(text, makeModel("\t<FOUND NUMBER=\"1\" NAME=\"A\" FZAREA=\"2\" FAILXLINE=\"1\" "
                            "IsGenerated=\"1\" Guid=\"g\"/>\n"));
  EXPECT_EQ(result.out, "~ number 1 \"A\"\n    areaZ: 1.5 -> 2\n");
  EXPECT_EQ(result.status, 0);
}

TEST(Merge, WritesNothingWhereNothingChanges) {
  const auto [result, text] = merge(makeSurface(1, "A", "1.5"), makeModel(foundA));

  EXPECT_EQ(text, makeModel(foundA));
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("into.xml: nothing changes\n"), std::string::npos);
}

TEST(Merge, AddsWhatIsNewAtTheEnd) {
  const auto [result, text] = merge(makeSurface(7, "B", "2"), makeModel(foundA));

  EXPECT_EQ(text, makeModel(foundA + "\t<FOUND NUMBER=\"7\" NAME=\"B\" FXAREA=\"0\" FYAREA=\"0\" "
                                     "FZAREA=\"2\" FACAREA=\"0\" FACLINE=\"0\" "
                                     "IsGenerated=\"0\"/>\n"));
  EXPECT_EQ(result.out, "+ number 7 \"B\"\n");
}

TEST(Merge, KeepsThePartThatDoesNotCome) {
  const std::string line = "\t<FOUND NUMBER=\"1\" NAME=\"A\" FZAREA=\"1\" FZLINE=\"3\"/>\n";
  const auto [result, text] =
      merge("<CurveBedding Number='1' Name='A' StiffnessZ='4'/>", makeModel(line));

  EXPECT_EQ(text, makeModel("\t<FOUND NUMBER=\"1\" NAME=\"A\" FZAREA=\"1\" FZLINE=\"4\"/>\n"));
}

TEST(Merge, WritesNothingOnADryRun) {
  const auto [result, text] = merge(makeSurface(1, "A", "2"), makeModel(foundA), "--dry-run");

  EXPECT_EQ(text, makeModel(foundA));
  EXPECT_EQ(result.out, "~ number 1 \"A\"\n    areaZ: 1.5 -> 2\n");
}

TEST(Merge, WritesElsewhereWhenAsked) {
  const std::string out = makePath("out.xml");
  const auto [result, text] =
      merge(makeSurface(1, "A", "2"), makeModel(foundA), "-o '" + out + "'");

  EXPECT_EQ(text, makeModel(foundA));
  EXPECT_NE(readFile(out).find("FZAREA=\"2\""), std::string::npos);
}

TEST(Merge, WritesElsewhereOnlyWhereNothingIs) {
  const std::string out = makeFile("out.xml", makeModel(""));
  const auto [result, text] =
      merge(makeSurface(1, "A", "2"), makeModel(foundA), "-o '" + out + "'");

  EXPECT_EQ(readFile(out), makeModel(""));
  EXPECT_EQ(result.status, 2);
}

TEST(MergeClash, IsRefusedWithBothPlaces) {
  const std::string into = makeModel(foundA);
  const auto [result, text] =
      merge("\n" + makeSurface(1, "B", "2") + "\n" + makeSurface(2, "A", "2"), into);

  EXPECT_EQ(text, into);
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("in.xml:2:1: number 1 \"B\" clashes with number 1 \"A\" in "),
            std::string::npos);
  EXPECT_NE(result.err.find("in.xml:3:1: number 2 \"A\" clashes with number 1 \"A\" in "),
            std::string::npos);
  EXPECT_NE(result.err.find("into.xml:4:2\n"), std::string::npos);
}

TEST(MergeClash, IsToldToProgramsWithItsPlaceAndFoundation) {
  const Merged merged =
      merge("\n" + makeSurface(1, "B", "2"), makeModel(foundA), "--messages json");

  EXPECT_NE(
      merged.result.err.find("{\"level\":\"error\",\"kind\":\"clash\",\"file\":\"" +
                             escapePath(makePath("in.xml")) +
                             "\",\"line\":2,\"column\":1,\"foundation\":\"number 1 \\\"B\\\"\","
                             "\"sentence\":\"clashes with number 1 \\\"A\\\" in " +
                             escapePath(makePath("into.xml")) + ":4:2\"}\n"),
      std::string::npos)
      << merged.result.err;
}

TEST(MergeClash, IsToldWhereItLeavesAFoundationOut) {
  const std::string bedding = makeSurface(1, "B", "2");
  const Merged people = merge(bedding, makeModel(foundA), "--on-clash skip");
  const Merged programs = merge(bedding, makeModel(foundA), "--on-clash skip --messages json");

  const std::string in = makePath("in.xml");
  EXPECT_NE(people.result.err.find("kvfound: " + in + ":1:11: number 1 \"B\" is left out\n"),
            std::string::npos)
      << people.result.err;
  EXPECT_NE(programs.result.err.find(
                "{\"level\":\"warning\",\"kind\":\"left-out\",\"file\":\"" + escapePath(in) +
                "\",\"line\":1,\"column\":11,\"foundation\":\"number 1 \\\"B\\\"\","
                "\"sentence\":\"is left out\"}\n"),
            std::string::npos)
      << programs.result.err;
}

TEST(MergeClash, EndsAsTheRuleSays) {
  const struct {
    const char* rule;
    std::string bedding;
    const char* out;
  } rows[] = {
      {"rename", makeSurface(2, "A", "2"), "+ number 2 \"A_1\"\n"},
      {"renumber", makeSurface(1, "B", "2"), "+ number 2 \"B\"\n"},
      {"skip", makeSurface(1, "B", "2"), ""},
      {"replace", makeSurface(1, "B", "2"),
       "~ number 1 \"A\"\n    name: A -> B\n    areaZ: 1.5 -> 2\n"},
      {"replace", makeSurface(2, "A", "1.5"), "~ number 1 \"A\"\n    number: 1 -> 2\n"},
  };
  for (const auto& row : rows) {
    const auto [result, text] =
        merge(row.bedding, makeModel(foundA), std::string("--on-clash ") + row.rule);
    EXPECT_EQ(result.out, row.out) << row.rule;
    EXPECT_EQ(result.status, 0) << row.rule;
  }
}

TEST(MergeClash, IsRefusedWhereTheRuleDoesNotSettleIt) {
  const auto [renamed, ignored] =
      merge(makeSurface(1, "B", "2"), makeModel(foundA), "--on-clash rename");
  const auto [renumbered, alsoIgnored] =
      merge(makeSurface(2, "A", "2"), makeModel(foundA), "--on-clash renumber");

  EXPECT_EQ(renamed.status, 2);
  EXPECT_EQ(renumbered.status, 2);
}

TEST(MergeClash, OfTwoFoundationsCannotReplaceBoth) {
  const std::string into = makeModel(foundA + "\t<FOUND NUMBER=\"2\" NAME=\"B\"/>\n");
  const auto [result, text] = merge(makeSurface(1, "B", "2"), into, "--on-clash replace");

  EXPECT_EQ(text, into);
  EXPECT_EQ(result.status, 2);
}

TEST(Merge, TakesNamesAloneFromTheFirstVersion) {
  const auto [result, text] =
      merge("<Bedding Name='B' SurfaceStiffnessZ='2'/><Bedding Name='A' SurfaceStiffnessZ='3'/>",
            makeModel(foundA));

  EXPECT_EQ(result.out, "~ number 1 \"A\"\n    areaZ: 1.5 -> 3\n+ number 2 \"B\"\n");
}

TEST(Merge, TellsWhatTheOtherFormHasNoPlaceFor) {
  const std::string in = makeFile("in.xml", makeModel(foundA));
  const std::string into =
      makeFile("into.xml",
               "<Beddings>\n<SurfaceBedding Number=\"1\" Name=\"A\" StiffnessZ=\"1\"/>\n"
               "</Beddings>\n");
  const Result result = run("merge '" + in + "' '" + into + "'");

  EXPECT_EQ(readFile(into),
            "<Beddings>\n<SurfaceBedding Number=\"1\" Name=\"A\" StiffnessZ=\"1.5\"/>\n"
            "</Beddings>\n");
  EXPECT_NE(result.err.find("number 1 \"A\": generated yes becomes no\n"), std::string::npos);
  EXPECT_EQ(result.status, 1);
}

TEST(Merge, ReadsStandardInputForOneDocumentOnly) {
  EXPECT_EQ(run("merge - -").err,
            "kvfound: only one of the documents can come from standard input\n");
}

TEST(Merge, KeepsTheDocumentsThatComeApart) {
  const std::string first = makeFile("first.xml", "<B>" + makeSurface(1, "A", "2") + "</B>");
  const std::string second =
      makeFile("second.xml", "<B><CurveBedding Number='2' Name='B' StiffnessZ='4'/></B>");
  const std::string into =
      makeFile("into.xml", makeModel(foundA + "\t<FOUND NUMBER=\"2\" NAME=\"B\" FZAREA=\"3\"/>\n"));
  const Result result = run("merge '" + first + "' '" + second + "' '" + into + "'");

  EXPECT_EQ(result.out,
            "~ number 1 \"A\"\n    areaZ: 1.5 -> 2\n~ number 2 \"B\"\n    lineZ: - -> 4\n");
}

TEST(Merge, RefusesTablesInOtherUnits) {
  const std::string in = makeFile("in.csv", "#units,N,mm\nnumber,areaX\n1,2\n");
  const std::string into = makeFile("into.csv", "#units,kN,m\nnumber,areaX\n1,3\n");
  const Result result = run("merge '" + in + "' '" + into + "'");

  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(readFile(into), "#units,kN,m\nnumber,areaX\n1,3\n");
  EXPECT_NE(result.err.find("in.csv: its units are N and mm, not kN and m"), std::string::npos)
      << result.err;
}

TEST(Merge, TellsThatOnlyOneDocumentNamesUnits) {
  const std::string in = makeFile("in.csv", "#units,N,mm\nnumber,areaZ\n1,2\n");
  const std::string into = makeFile("into.xml", makeModel(foundA));

  for (const char* command : {"merge --dry-run", "diff"})
    EXPECT_EQ(run(std::string(command) + " '" + in + "' '" + into + "'").err,
              "kvfound: " + in + ": its units are N and mm; " + into +
                  " names none, and is taken for the same\n");
}

TEST(Merge, TellsWhatATableHasNoColumnsFor) {
  const std::string in =
      makeFile("in.xml", makeModel("\t<FOUND NUMBER='1' NAME='A' FXAREA='2' FZAREA='3'/>\n"
                                   "\t<FOUND NUMBER='2' NAME='B' FZAREA='4' FACAREA='0.5'/>\n"));
  const std::string into = makeFile("into.csv", "number,areaZ\n1,1\n");
  const Result result = run("merge '" + in + "' '" + into + "'");

  EXPECT_EQ(readFile(into), "number,areaZ\n1,3\n2,4\n");
  EXPECT_EQ(result.err, "kvfound: " + into + ": number 1 \"A\": areaX 2 becomes 0\nkvfound: " +
                            into + ": number 2 \"B\": areaFactor 0.5 becomes 0\n");
  EXPECT_EQ(result.status, 1);
}

}  // namespace
