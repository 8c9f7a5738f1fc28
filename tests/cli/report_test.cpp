#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/folder.h"
#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

using Texts = std::vector<std::string>;

const std::string example = "'" KVFOUND_EXAMPLES_DIR "/model.xml'";

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != text.npos;
}

/// The path of a model whose project names these units.
std::string makeProject(const std::string& force, const std::string& length) {
  return makeFile("in.xml",
                  makeDocument("<PROJECT UNITFORCE='" + force + "' UNITLENGTH='" + length +
                               "'/>\n<FOUNDATIONS><FOUND FZAREA='7'/></FOUNDATIONS>"));
}

TEST(ReportUnits, AreMadeSafe) {
  EXPECT_NE(run("report " + example + " --unit-force 'k\x01N\xFF\n' --unit-length m")
                .out.find("<li>Units <strong>k\\x01N\xC3\xBF\\n, m</strong>"),
            std::string::npos);
}

TEST(ReportUnits, ThatAreBlankCountAsNone) {
  const std::string report = "report " + example;

  EXPECT_EQ(run(report + " --unit-force ' ' --unit-length '\xC2\xA0'").out, run(report).out);
  EXPECT_EQ(run(report + " --unit-force kN --unit-length ' '").status, 2);
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

TEST(ReportUnits, AreThoseThatATableNames) {
  const std::string table = makeFile("in.csv", "#units,lbf,ft\nareaZ\n7\n");

  EXPECT_TRUE(holds(run("report '" + table + "'").out,
                    "<li>Units <strong>lbf, ft</strong> <small>as the document says</small>"));
  EXPECT_EQ(run("report '" + table + "' --unit-force kN --unit-length m").status, 2);
}

TEST(ReportUnits, AreThoseOfTheProjectOfAModel) {
  EXPECT_TRUE(holds(run("report '" + makeProject("MN", "mm") + "'").out,
                    "<li>Units <strong>MN, mm</strong> <small>as the document says</small>"));
}

TEST(ReportUnits, OfAProjectGiveWayToThoseThatAreAskedFor) {
  EXPECT_TRUE(holds(
      run("report '" + makeProject("MN", "mm") + "' --unit-force kN --unit-length m").out,
      "<li>Units <strong>kN, m</strong> <small><span class=\"warn\">as the user says, but the "
      "document says MN, mm; nothing is converted</span></small>"));
}

TEST(ReportUnits, OfAProjectAreMadeSafe) {
  EXPECT_TRUE(holds(run("report '" + makeProject("&lt;b>&#10;", "m") + "'").out,
                    "<li>Units <strong>&lt;b&gt;\\n, m</strong>"));
}

TEST(ReportUnits, ThatAreBlankInAProjectCountAsNone) {
  for (const std::string blank : {" ", "&#160;"}) {
    EXPECT_TRUE(holds(run("report '" + makeProject(blank, "m") + "'").out,
                      "<li>Units <strong>not stated</strong>"));
    EXPECT_TRUE(holds(run("report '" + makeProject("kN", blank) + "'").out,
                      "<li>Units <strong>not stated</strong>"));
  }
}

TEST(ReportUnits, ThatAreLongAreCut) {
  const std::string model = makeProject(std::string(13, 'k'), std::string(12, 'm'));

  EXPECT_TRUE(holds(run("report '" + model + "'").out, "<li>Units <strong>" + std::string(11, 'k') +
                                                           "\xE2\x80\xA6, " + std::string(12, 'm') +
                                                           "</strong>"));
}

TEST(ReportPage, TellsWhenItsFileWasWritten) {
  const std::regex date("<li>Saved <strong>\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d</strong>");

  EXPECT_TRUE(std::regex_search(run("report " + example).out, date));
}

TEST(ReportPage, TellsWhenStandardInputWasRead) {
  const std::regex date("<li>Read <strong>\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d</strong>");

  EXPECT_TRUE(std::regex_search(run("report", KVFOUND_EXAMPLES_DIR "/model.xml").out, date));
}

TEST(ReportPage, IsNamedAfterWhatIsRead) {
  EXPECT_TRUE(holds(run("report " + example).out, "<h1>model.xml</h1>"));
  EXPECT_TRUE(
      holds(run("report", KVFOUND_EXAMPLES_DIR "/model.xml").out, "<h1>standard input</h1>"));
}

TEST(ReportPage, TellsTheVersionAsWhichADocumentWasRead) {
  const std::string in = makeFile("in.xml", "<X><CurveBedding Number='1' Name='A'/></X>");

  EXPECT_TRUE(holds(run("report '" + in + "' --version 1.0").out,
                    "Version <strong>not stated</strong> <small>read as 1.0<"));
  EXPECT_TRUE(holds(run("report '" + in + "'").out, "<small>read as the current one<"));
}

TEST(ReportPage, HasTheFindingsOfThoseThatAreSelected) {
  const std::string in = makeModelFile(
      "<FOUND NUMBER='1' NAME='A' FZAREA='1'/><FOUND NUMBER='2' NAME='B' FZAREA='-1'/>");
  const Result clean = run("report '" + in + "' 1");

  EXPECT_EQ(clean.status, 0) << clean.err;
  EXPECT_TRUE(holds(clean.out, "<strong>no findings</strong>"));
  EXPECT_TRUE(holds(run("report '" + in + "' 2").out, ">1 finding</a>"));
}

TEST(ReportPage, OfASelectionLacksNothingThatTheDocumentHas) {
  EXPECT_TRUE(holds(run("report " + example + " --part line").out, "<strong>no findings</strong>"));
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
                            ":1:39: <Load> is no bedding of this version; it was skipped\n"
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

TEST(ReportOutput, ReplacesNothingButSuchAPage) {
  for (const std::string& document :
       {makeDocument("<FOUNDATIONS><FOUND/></FOUNDATIONS>"),
        std::string("<X><CurveBedding Number='1' Name='A'/></X>"),
        std::string("<X><SurfaceBedding"), std::string("<X><Bedding Name='A'/></X>"),
        std::string("notes")}) {
    const std::string out = makeFile("out.xml", document);
    const Result result = run("report " + example + " -o '" + out + "'");

    EXPECT_EQ(result.err,
              "kvfound: " + out +
                  ": this is no page that kvfound made, and was not replaced; name another file\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(readFile(out), document);
  }
}

TEST(ReportOutput, TellsThatADeviceIsFull) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "there is no such device";
  EXPECT_EQ(run("report " + example + " -o /dev/full").err,
            "kvfound: /dev/full: cannot be written: No space left on device\n");
}

// --- Several documents

TEST(ReportFiles, WritesAPageForEachIntoAFolder) {
  const std::string folder = makeFolder("pages");
  const std::string a = makeFile("a.xml", makeDocument("<FOUNDATIONS/>"));
  const std::string b = makeFile("b.xml", makeDocument("<FOUNDATIONS/>"));
  const std::string suite = "ReportFiles.WritesAPageForEachIntoAFolder.";

  const Result result = run("report '" + a + "' '" + b + "' -o '" + folder + "'");

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(listFolder(folder), (std::vector<std::string>{suite + "a.html", suite + "b.html"}));
}

TEST(ReportFiles, WritesThePageOfOneIntoAFolderAsWell) {
  const std::string folder = makeFolder("pages");

  EXPECT_EQ(run("report - -o '" + folder + "'", KVFOUND_EXAMPLES_DIR "/model.xml").status, 0);
  EXPECT_EQ(listFolder(folder), std::vector<std::string>{"stdin.html"});
}

TEST(ReportFiles, WritesTheOthersBesideOneThatCannotBeRead) {
  const std::string folder = makeFolder("pages");

  const Result result =
      run("report /no/such/file.xml '" KVFOUND_EXAMPLES_DIR "/model.xml' -o '" + folder + "'");

  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(listFolder(folder), std::vector<std::string>{"model.html"});
}

TEST(ReportFiles, NeedsAFolderForSeveral) {
  const Result result = run("report a.xml b.xml -o page.html");

  EXPECT_EQ(result.err,
            "kvfound: the pages of several documents are written to a folder; name one that is "
            "there with -o\n");
  EXPECT_EQ(result.status, 2);
}

TEST(ReportFiles, RefusesTwoOfTheSameName) {
  const std::string folder = makeFolder("pages");

  const Result result = run("report x/a.xml y/a.kvml -o '" + folder + "'");

  EXPECT_NE(result.err.find("a.html: would be the page of two documents; nothing was written\n"),
            std::string::npos);
  EXPECT_EQ(listFolder(folder), std::vector<std::string>{});
}

}  // namespace
