#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// Numbers, names and whether they were generated.
const char* const fourFoundations =
    "<FOUND NUMBER='2' NAME='A' FZAREA='1'/>"
    "<FOUND NUMBER='4' NAME='B' FZAREA='1' IsGenerated='1'/>"
    "<FOUND NUMBER='6' NAME='C' FZAREA='1'/>"
    "<FOUND NUMBER='8' NAME='D' FZAREA='1' IsGenerated='1'/>";

/// Number and name of each foundation of a document, a line each.
std::string listFoundations(const std::string& path) {
  std::istringstream lines(run("show --format csv '" + path + "'").out);
  std::string line;
  std::getline(lines, line);  // the names of the fields
  std::string list;
  while (std::getline(lines, line))
    list += line.substr(0, line.find(',', line.find(',') + 1)) + '\n';
  return list;
}

/// Prunes the four foundations with these options and a list of this text.
Result pruneFour(const std::string& options, const std::string& list) {
  return run("prune '" + makeModelFile(fourFoundations) + "' '" + makePath("out.xml") + "' " +
             options + " --used-by '" + makeFile("list", list) + "'");
}

TEST(Prune, RemovesGeneratedFoundationsAndRenumbers) {
  const std::string out = makePath("out.xml");

  const Result result =
      run("prune '" + makeModelFile(fourFoundations) + "' '" + out + "' --generated");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err,
            "removed: number 4 \"B\"\n"
            "removed: number 8 \"D\"\n"
            "renumbered: 2 -> number 1 \"A\"\n"
            "renumbered: 6 -> number 2 \"C\"\n"
            "2 removed, 2 kept\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(listFoundations(out), "1,A\n2,C\n");
}

TEST(Prune, RemovesWhatIsNotUsedAndKeepsTheNumbers) {
  const Result result = pruneFour("", "6\nB\n");

  EXPECT_EQ(result.err,
            "removed: number 2 \"A\"\n"
            "removed: number 8 \"D\"\n"
            "2 removed, 2 kept\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(listFoundations(makePath("out.xml")), "4,B\n6,C\n");
}

TEST(Prune, RemovesWhatWasGeneratedAndIsNotUsedAndRenumbers) {
  const Result result = pruneFour("--generated", "8\n");

  EXPECT_EQ(result.err,
            "removed: number 4 \"B\"\n"
            "renumbered: 2 -> number 1 \"A\"\n"
            "renumbered: 6 -> number 2 \"C\"\n"
            "renumbered: 8 -> number 3 \"D\"\n"
            "1 removed, 3 kept\n");
  EXPECT_EQ(listFoundations(makePath("out.xml")), "1,A\n2,C\n3,D\n");
}

TEST(Prune, RemovesAllThatMayGoWhenTheListIsEmpty) {
  pruneFour("", "");
  EXPECT_EQ(listFoundations(makePath("out.xml")), "");
  pruneFour("--generated", "\n\r\n");
  EXPECT_EQ(listFoundations(makePath("out.xml")), "1,A\n2,C\n");
}

TEST(Prune, RenumbersWhenNothingWasGenerated) {
  const std::string out = makePath("out.xml");

  const Result result =
      run("prune '" + makeModelFile("<FOUND NUMBER='5' NAME='A'/><FOUND NUMBER='1' NAME='B'/>") +
          "' '" + out + "' --generated");

  EXPECT_EQ(result.err,
            "renumbered: 5 -> number 1 \"A\"\n"
            "renumbered: 1 -> number 2 \"B\"\n"
            "0 removed, 2 kept\n");
  EXPECT_EQ(listFoundations(out), "1,A\n2,B\n");
}

TEST(Prune, KeepsTheNumbersWhenAsked) {
  const std::string out = makePath("out.xml");

  const Result result = run("prune '" + makeModelFile(fourFoundations) + "' '" + out +
                            "' --generated --keep-numbers");

  EXPECT_EQ(result.err,
            "removed: number 4 \"B\"\n"
            "removed: number 8 \"D\"\n"
            "2 removed, 2 kept\n");
  EXPECT_EQ(listFoundations(out), "2,A\n6,C\n");
}

// --- Lists

TEST(PruneList, WithLinesThatFitNoFoundationIsRefused) {
  const std::string list = makePath("list");

  const Result result = pruneFour("", "A\n99\na\n2\n");

  EXPECT_EQ(result.err,
            "kvfound: " + list + ": there is no foundation \"99\"\n" + "kvfound: " + list +
                ": there is no foundation \"a\"\n" + "kvfound: " + list +
                ": names foundations that the document lacks; nothing was written. Mend the list, "
                "or go on with --ignore-missing\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_FALSE(std::ifstream(makePath("out.xml")).good());
}

TEST(PruneList, MayHaveLinesThatFitNoFoundationWhenTheseAreIgnored) {
  const std::string list = makePath("list");

  const Result result = pruneFour("--ignore-missing", "A\n99\na\n");

  EXPECT_EQ(result.err, "kvfound: " + list + ": there is no foundation \"99\"\n" +
                            "kvfound: " + list + ": there is no foundation \"a\"\n" +
                            "removed: number 4 \"B\"\n"
                            "removed: number 6 \"C\"\n"
                            "removed: number 8 \"D\"\n"
                            "3 removed, 1 kept\n");
  EXPECT_EQ(result.status, 0);
}

TEST(PruneList, TakesNamesWithBlanksAround) {
  EXPECT_EQ(pruneFour("", " A\nB \n\tC\nD\r\n").err, "0 removed, 4 kept\n");
}

TEST(PruneList, RefusesOneThatNamesNoFoundationAtAll) {
  const std::string list = makePath("list");

  const Result result = pruneFour("", "99\nX\n");

  EXPECT_EQ(result.err, "kvfound: " + list + ": there is no foundation \"99\"\n" + "kvfound: " +
                            list + ": there is no foundation \"X\"\n" + "kvfound: " + list +
                            ": names none of the foundations; nothing was written\n");
  EXPECT_EQ(result.status, 2);
}

TEST(PruneList, TakesNumbersWithBlanksAndZerosAround) {
  EXPECT_EQ(pruneFour("", " 2\n004 \n6\t\n+8\n").err, "0 removed, 4 kept\n");
}

TEST(PruneList, TellsNothingOfLinesThatFitFoundationsThatStayAnyway) {
  EXPECT_EQ(pruneFour("--generated", "A\nB\nD\n").err.find("there is no"), std::string::npos);
}

TEST(PruneList, TakesLineEndsAndAByteOrderMarkOfOtherSystems) {
  EXPECT_EQ(pruneFour("",
                      "\xEF\xBB\xBF"
                      "A\r\n6\r\nD")
                .err,
            "removed: number 4 \"B\"\n"
            "1 removed, 3 kept\n");
}

TEST(PruneList, KeepsBothTheNumberAndTheNameThatALineFits) {
  const std::string out = makePath("out.xml");

  run("prune '" + makeModelFile("<FOUND NUMBER='2' NAME='A'/><FOUND NUMBER='3' NAME='2'/>") +
      "' '" + out + "' --used-by '" + makeFile("list", "2\n") + "'");

  EXPECT_EQ(listFoundations(out), "2,A\n3,2\n");
}

TEST(PruneList, FindsNamesInAnyEncodingAndAsTheyAreShown) {
  const std::string model = makeModelFile(
      "<FOUND NAME='Stra\xDF"
      "e'/><FOUND NAME='a&#10;b'/><FOUND NAME='other'/>");
  for (const std::string name : {"Stra\xC3\x9F"
                                 "e",
                                 "Stra\xDF"
                                 "e"}) {
    const Result result =
        run("prune '" + model + "' - --used-by '" + makeFile("list", name + "\na\\nb\n") + "'");
    EXPECT_EQ(result.err,
              "removed: number 3 \"other\"\n"
              "1 removed, 2 kept\n")
        << name;
  }
}

TEST(PruneList, IsReadFromStandardInput) {
  const std::string list = makeFile("list", "A\nx\n");
  const Result result =
      run("prune '" + makeModelFile(fourFoundations) + "' - --ignore-missing --used-by -", list);

  EXPECT_EQ(result.err,
            "kvfound: standard input: there is no foundation \"x\"\n"
            "removed: number 4 \"B\"\n"
            "removed: number 6 \"C\"\n"
            "removed: number 8 \"D\"\n"
            "3 removed, 1 kept\n");
}

// --- Legacy models

TEST(PruneModel, KeepsTheRestOfTheModel) {
  const std::string path = makeFile(
      "model.xml",
      "<?xml version=\"1.0\"?><!-- first -->\n"
      "<SMOD VERSION=\"12\">\n"
      "  <NODES />\n"
      "  <FOUNDATIONS CURRENT=\"C\">\n"
      "    <!-- inside -->\n"
      "    <FOUND NUMBER=\"4\" NAME=\"B\" IsGenerated=\"1\"><NOTE /></FOUND>\n"
      "    <FOUND NUMBER=\"6\" COLOUR=\"red\" NAME=\"C\" FZLINE=\"1.50\" FAILZLINE=\"-1\"><NOTE "
      "/></FOUND>\n"
      "    <GROUND />\n"
      "  </FOUNDATIONS>\n"
      "</SMOD>\n");
  const std::string pruned =
      "<?xml version=\"1.0\"?><!-- first -->\n"
      "<SMOD VERSION=\"12\">\n"
      "  <NODES />\n"
      "  <FOUNDATIONS CURRENT=\"C\">\n"
      "    <!-- inside -->\n"
      "    <FOUND NUMBER=\"1\" COLOUR=\"red\" NAME=\"C\" FZLINE=\"1.50\" FAILZLINE=\"-1\"><NOTE "
      "/></FOUND>\n"
      "    <GROUND />\n"
      "  </FOUNDATIONS>\n"
      "</SMOD>\n";

  EXPECT_EQ(run("prune '" + path + "' - --generated").out, pruned);
  EXPECT_EQ(run("prune - - --generated", path).out, pruned);
  EXPECT_EQ(run("prune '" + path + "' '" + path + "' --generated").status, 0);
  EXPECT_EQ(readFile(path), pruned);
}

TEST(PruneModel, LeavesNoFoundationCurrentWhenTheCurrentOneGoes) {
  const std::string path =
      makeFile("model.xml", makeDocument("<FOUNDATIONS CURRENT='B'><FOUND NAME='A'/>"
                                         "<FOUND NAME='B' IsGenerated='1'/></FOUNDATIONS>"));
  const std::string out = makePath("out.xml");

  EXPECT_EQ(run("prune '" + path + "' '" + out + "' --generated").status, 0);

  EXPECT_EQ(run("diff '" + path + "' '" + out + "'").out,
            "- number 2 \"B\"\n"
            "current foundation: number 2 \"B\" -> none\n");
}

TEST(PruneModel, WritesNumbersAndNamesWhereThereWereNone) {
  const std::string path =
      makeModelFile("<FOUND IsGenerated='1'/><FOUND FZAREA='1'/><FOUND FZAREA='2'/>");
  const std::string out = makePath("out.xml");

  EXPECT_EQ(run("prune '" + path + "' '" + out + "' --generated").err,
            "removed: number 1 \"Found0001\"\n"
            "renumbered: 2 -> number 1 \"Found0002\"\n"
            "renumbered: 3 -> number 2 \"Found0003\"\n"
            "1 removed, 2 kept\n");
  EXPECT_EQ(listFoundations(out), "1,Found0002\n2,Found0003\n");
}

TEST(PruneModel, RemovesOneOfTwoWithTheSameNumber) {
  const std::string out = makePath("out.xml");

  run("prune '" +
      makeModelFile("<FOUND NUMBER='2' NAME='A' FZLINE='1' COLOUR='red'/>"
                    "<FOUND NUMBER='2' NAME='B' FZAREA='1' COLOUR='blue'/>") +
      "' '" + out + "' --used-by '" + makeFile("list", "B\n") + "'");

  EXPECT_EQ(readFile(out),
            makeDocument("<FOUNDATIONS><FOUND NUMBER='2' NAME='B' FZAREA='1' COLOUR='blue'/>"
                         "</FOUNDATIONS>"));
}

TEST(PruneModel, RenumbersThoseWithTheSameNumber) {
  const std::string out = makePath("out.xml");

  run("prune '" +
      makeModelFile("<FOUND NUMBER='2' NAME='A'/><FOUND NUMBER='2' NAME='B'/>"
                    "<FOUND NUMBER='1' NAME='C'/>") +
      "' '" + out + "' --generated");

  EXPECT_EQ(listFoundations(out), "1,A\n2,B\n3,C\n");
}

TEST(PruneModel, KeepsTwoWithTheSameNumber) {
  const std::string path =
      makeModelFile("<FOUND NUMBER='2' NAME='A'/><FOUND NUMBER='2' NAME='B'/><FOUND NAME='C'/>");

  const Result result =
      run("prune '" + path + "' '" + path + "' --used-by '" + makeFile("list", "2\n") + "'");

  EXPECT_EQ(result.err, "removed: number 3 \"C\"\n1 removed, 2 kept\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(readFile(path), makeDocument("<FOUNDATIONS><FOUND NUMBER='2' NAME='A'/>"
                                         "<FOUND NUMBER='2' NAME='B'/></FOUNDATIONS>"));
}

TEST(PruneModel, TellsWhereOldNumbersStandInTheModel) {
  const std::string path = makeFile(
      "model.xml", makeDocument("<SLAB FOUND='3' FOUNDLINE='2'/>\n<WALL FOUND='1' NODE='3'/>\n"
                                "<FOUNDATIONS><FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' "
                                "NAME='B' IsGenerated='1'/><FOUND NUMBER='3' NAME='C'/>"
                                "</FOUNDATIONS>"));

  EXPECT_EQ(run("prune '" + path + "' - --generated").err,
            "removed: number 2 \"B\"\n"
            "renumbered: 3 -> number 2 \"C\"\n"
            "1 removed, 2 kept\n"
            "kvfound: " +
                path +
                ":3:7: FOUND=\"3\" stays, but the foundation of this number is number 2 now\n"
                "kvfound: " +
                path + ":3:17: FOUNDLINE=\"2\" stays, but the foundation of this number is gone\n");
}

TEST(PruneModel, PutsWhatIsLeftIntoAnotherModelThatIsThere) {
  const std::string other =
      makeFile("other.xml", makeDocument("<KEPT/><FOUNDATIONS><FOUND NUMBER='1' COLOUR='red'/>"
                                         "<FOUND NUMBER='7'/></FOUNDATIONS>"));

  run("prune '" + makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='1'/>") + "' '" + other +
      "' --generated");

  EXPECT_EQ(readFile(other),
            makeDocument("<KEPT/><FOUNDATIONS><FOUND NUMBER='1' COLOUR='red' NAME='A' FZAREA='1'/>"
                         "</FOUNDATIONS>"));
}

// --- Exchange documents

TEST(PruneExchange, KeepsWhatStaysAsItIs) {
  const std::string start =
      declaration + "<X Version=\"2\">\n  <Load />\n  <B N=\"1\">\n    <!-- inside -->\n";
  const std::string path = makeFile(
      "in.xml",
      start +
          "    <CurveBedding Number=\"3\" Name=\"A\" StiffnessZ=\"1\" />\n"
          "    <CurveBedding Number=\" 5\" Colour=\"red\" Name=\"B\" StiffnessZ=\"1.50\">\n"
          "      <Note />\n"
          "    </CurveBedding>\n"
          "    <Other />\n"
          "  </B>\n"
          "  <C>\n"
          "    <SurfaceBedding Number=\"7\" Name=\"C\" />\n"
          "    <SurfaceBedding Number=\"9\" Name=\"D\" />\n"
          "  </C>\n"
          "</X>\n");
  const std::string list = makeFile("list", "B\n9\n");

  const Result result = run("prune '" + path + "' '" + path + "' --used-by '" + list + "'");

  EXPECT_EQ(result.err, "kvfound: " + path +
                            ":10:5: <Other> is no bedding of this version; it was "
                            "skipped\n"
                            "kvfound: " +
                            path +
                            ": 4 beddings were read\n"
                            "removed: number 3 \"A\"\n"
                            "removed: number 7 \"C\"\n"
                            "2 removed, 2 kept\n");
  EXPECT_EQ(readFile(path),
            start +
                "    <CurveBedding Number=\" 5\" Colour=\"red\" Name=\"B\" StiffnessZ=\"1.50\">\n"
                "      <Note />\n"
                "    </CurveBedding>\n"
                "    <Other />\n"
                "  </B>\n"
                "  <C>\n"
                "    <SurfaceBedding Number=\"9\" Name=\"D\" />\n"
                "  </C>\n"
                "</X>\n");
}

TEST(PruneExchange, Renumbers) {
  const std::string path = makeXmlFile(
      "<B><CurveBedding Number='3' Name='A' Kind='x'/><SurfaceBedding Number='7a' Name='B'/></B>");

  const Result result = run("prune '" + path + "' - --generated");

  EXPECT_EQ(result.out, putQuotes("<B><CurveBedding Number='1' Name='A' Kind='x'/>"
                                  "<SurfaceBedding Number='2' Name='B'/></B>"));
  EXPECT_EQ(result.status, 0);
}

TEST(PruneExchange, TreatsBothPartsOfAFoundationAlike) {
  const std::string path = makeXmlFile(
      "<B><CurveBedding Number='3' Name='A'/><SurfaceBedding Number='3' Name='A'/>"
      "<CurveBedding Number='5' Name='B'/><SurfaceBedding Number='5' Name='B'/></B>");
  const std::string list = makeFile("list", "B\n");

  EXPECT_EQ(run("prune '" + path + "' - --used-by '" + list + "'").out,
            putQuotes("<B><CurveBedding Number='5' Name='B'/>"
                      "<SurfaceBedding Number='5' Name='B'/></B>"));
  EXPECT_EQ(
      run("prune '" + path + "' - --generated").out,
      putQuotes("<B><CurveBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='A'/>"
                "<CurveBedding Number='2' Name='B'/><SurfaceBedding Number='2' Name='B'/></B>"));
}

TEST(PruneExchange, NamesBeddingsThatGoAlthoughTheyWereNeverRead) {
  const std::string path = makeXmlFile(
      "<B><CurveBedding Number='1' Name='A'/>\n<CurveBedding Number='1' Name='B'/>\n"
      "<CurveBedding Number='2' Name='C'/></B>");

  const Result result = run("prune '" + path + "' - --used-by '" + makeFile("list", "C\n") + "'");

  EXPECT_EQ(result.out, putQuotes("<B>\n<CurveBedding Number='2' Name='C'/></B>"));
  EXPECT_EQ(result.err, "kvfound: " + path +
                            ":2:1: the number 1 of a <CurveBedding> is already taken; it was "
                            "skipped\n"
                            "kvfound: " +
                            path +
                            ": 2 beddings were read\n"
                            "removed: number 1 \"A\"\n"
                            "removed: number 1 \"B\", which goes without ever having been read "
                            "(line 2)\n"
                            "2 removed, 1 kept\n");
}

TEST(PruneExchange, KeepsBeddingsThatCannotBeRead) {
  const std::string path = makeXmlFile(
      "<B><CurveBedding Number='0' Name='A'/><CurveBedding Number='x' Name='B'/>"
      "<CurveBedding Name='C'/><CurveBedding Number='4'/><SurfaceBedding Number='9' "
      "Name='D'/></B>");

  EXPECT_EQ(run("prune '" + path + "' - --used-by '" + makeFile("list", "") + "'").out,
            putQuotes("<B><CurveBedding Number='0' Name='A'/><CurveBedding Number='x' Name='B'/>"
                      "<CurveBedding Name='C'/><CurveBedding Number='4'/></B>"));
}

TEST(PruneExchange, KeepsBeddingsOfTheFirstVersionInADocumentOfALaterOne) {
  const std::string path =
      makeXmlFile("<B><Bedding Number='3' Name='A'/><CurveBedding Number='3' Name='B'/></B>");

  EXPECT_EQ(
      run("prune '" + path + "' - --version 2.0 --used-by '" + makeFile("list", "") + "'").out,
      putQuotes("<B><Bedding Number='3' Name='A'/></B>"));
}

TEST(PruneExchange, RemovesBeddingsOfTheFirstVersionByNameAndPlace) {
  const std::string text =
      "<X><B><Bedding Name='A' Number='7'/><Bedding Name='B' Colour='red'/>"
      "<CurveBedding Number='9' Name='C'/></B>"
      "<B><Bedding Name='D'/></B></X>";
  const std::string path = makeXmlFile(text);
  const std::string list = makeFile("list", "B\nC\nD\n");

  const Result result = run("prune '" + path + "' '" + path + "' --used-by '" + list + "'");

  EXPECT_EQ(readFile(path),
            putQuotes("<X><B><Bedding Name='B' Colour='red'/>"
                      "<CurveBedding Number='2' Name='C'/></B><B><Bedding Name='D'/></B></X>"));
  EXPECT_EQ(result.status, 0);
}

TEST(PruneExchange, TakesTheVersionThatIsGiven) {
  const std::string path =
      makeFile("in.xml", "<X><B><CurveBedding Number='3' Name='A'/></B><Load/></X>");

  EXPECT_EQ(run("prune '" + path + "' '" + path + "' --generated --version 1.0").status, 0);
  EXPECT_EQ(readFile(path), "<X><B><CurveBedding Number='1' Name='A'/></B><Load/></X>");
}

TEST(PruneExchange, KeepsBeddingsOfTheFirstVersionThatCannotBeRead) {
  const std::string path =
      makeFile("in.xml", "<B><Bedding/><Bedding Name='A'/><Bedding Name='B'/></B>");

  const Result result = run("prune '" + path + "' - --used-by '" + makeFile("list", "B\n") + "'");

  EXPECT_EQ(result.out, "<B><Bedding/><Bedding Name='B'/></B>");
  EXPECT_EQ(result.err, "kvfound: " + path + ":1:4: a <Bedding> has no name; it was skipped\n" +
                            "kvfound: " + path + ": 2 beddings were read\n" +
                            "removed: number 1 \"A\"\n1 removed, 1 kept\n");
  EXPECT_EQ(result.status, 0);
}

TEST(PruneExchange, PutsWhatIsLeftIntoAnotherDocumentThatIsThere) {
  const std::string path =
      makeFile("in.xml", "<B><SurfaceBedding Number='3' Name='A' StiffnessZ='1'/></B>");
  const std::string other =
      makeFile("other.xml", "<X><Load/><B><CurveBedding Number='3' Name='B'/></B></X>");

  EXPECT_EQ(run("prune '" + path + "' '" + other + "' --generated").status, 0);

  EXPECT_EQ(readFile(other),
            "<X><Load/><B><SurfaceBedding Number='1' Name='A' StiffnessX='0' StiffnessY='0' "
            "StiffnessZ='1' StiffnessZFailure='none' TangentialStiffnessXYFactor='0'/></B></X>");
}

TEST(PruneExchange, RefusesAnotherDocumentWhenSomethingWouldBeLost) {
  const std::string other = makeFile("other.xml", "<B><CurveBedding Number='3' Name='B'/></B>");
  const std::string before = readFile(other);
  const std::string path = makeFile("in.xml", "<B><SurfaceBedding Number='3' Name='A'/></B>");
  const std::string bad = makeFile("bad.xml", "<B><SurfaceBedding Name='A'/></B>");

  EXPECT_EQ(run("prune '" + path + "' '" + other + "' --generated").err,
            "kvfound: " + path + ": 1 bedding was read\n" + "kvfound: " + other +
                ": was not written, since something would be lost: number 1 \"A\": is lost, since "
                "it has no stiffness\n");
  EXPECT_EQ(run("prune '" + bad + "' '" + other + "' --generated").status, 2);
  EXPECT_EQ(readFile(other), before);
}

// --- Errors

TEST(PruneErrors, AsksWhatToPrune) {
  const Result result = run("prune a b");

  EXPECT_EQ(result.err,
            "kvfound: tell what to prune: --generated, --used-by FILE or both; see kvfound prune "
            "--help\n");
  EXPECT_EQ(result.status, 2);
}

TEST(PruneErrors, NamesAListThatIsMissing) {
  const std::string path = makeModelFile(fourFoundations);
  const std::string before = readFile(path);

  EXPECT_EQ(run("prune '" + path + "' '" + path + "' --used-by /no/such").err,
            "kvfound: /no/such: cannot be opened: No such file or directory\n");
  EXPECT_EQ(run("prune '" + path + "' '" + path + "' --generated --used-by ''").err,
            "kvfound: the name of the file to read is empty\n");
  EXPECT_EQ(readFile(path), before);
}

TEST(PruneErrors, ReadsStandardInputOnlyOnce) {
  EXPECT_EQ(run("prune - - --used-by -", makeFile("list", "")).err,
            "kvfound: the document and the list cannot both come from standard input\n");
}

TEST(PruneErrors, ReplacesNoDocumentOfAnotherForm) {
  const std::string path = makeModelFile(fourFoundations);
  const std::string other = makeFile("other.xml", "<X><Load/><Beddings/></X>");

  EXPECT_EQ(run("prune '" + path + "' '" + other + "' --generated").err,
            "kvfound: " + other +
                ": this holds more than beddings, which a document of another form would destroy; "
                "name another file\n");
  EXPECT_EQ(readFile(other), "<X><Load/><Beddings/></X>");
}

}  // namespace
