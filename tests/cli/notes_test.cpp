#include "notes.h"

#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

using Commands::Message;
using Commands::readError;

// --- Errors taken apart

TEST(Errors, AreAboutTheFileThatTheyBeginWith) {
  const Message message = readError("a.xml: this is no XML document", {"show", "a.xml"});

  EXPECT_EQ(message.file, "a.xml");
  EXPECT_EQ(message.position.line, 0U);
  EXPECT_EQ(message.sentence, "this is no XML document");
}

TEST(Errors, HaveAPlaceInTheFile) {
  const Message message = readError("a.xml:12:3: there is no end tag", {"a.xml"});

  EXPECT_EQ(message.position.line, 12U);
  EXPECT_EQ(message.position.column, 3U);
  EXPECT_EQ(message.sentence, "there is no end tag");
}

TEST(Errors, MayBeAboutAWholeLine) {
  const Message message = readError("a.csv:2: 7: there are 3 cells", {"a.csv"});

  EXPECT_EQ(message.position.line, 2U);
  EXPECT_EQ(message.position.column, 0U);
  EXPECT_EQ(message.sentence, "7: there are 3 cells");
}

TEST(Errors, AreAboutTheLongestNameThatFits) {
  const Message message = readError("a:1:2: is odd: no", {"a", "a:1:2", "a:1"});

  EXPECT_EQ(message.file, "a:1:2");
  EXPECT_EQ(message.position.line, 0U);
  EXPECT_EQ(message.sentence, "is odd: no");
}

TEST(Errors, AreAboutNoFileThatIsNotGiven) {
  const Message message = readError("tell what to set: 1:2: such", {"a.xml"});

  EXPECT_EQ(message.file, "");
  EXPECT_EQ(message.sentence, "tell what to set: 1:2: such");
}

TEST(Errors, MayEndWithTheirPlace) {
  EXPECT_EQ(readError("a:", {"a"}).sentence, "");
  EXPECT_EQ(readError("a:1", {"a"}).sentence, "1");
  EXPECT_EQ(readError("a:1:", {"a"}).position.line, 1U);
  EXPECT_EQ(readError("a:1:2", {"a"}).sentence, "2");
  EXPECT_EQ(readError("a:1:2:", {"a"}).position.column, 2U);
}

TEST(Errors, HoldNoControlCharacters) {
  const Message message = readError("a\x1B: is \x1B", {"a\x1B"});

  EXPECT_EQ(message.file, "a\\x1B");
  EXPECT_EQ(message.sentence, "is \\x1B");
}

// --- Messages for programs

TEST(JsonMessages, AreAnObjectALine) {
  const std::string path =
      makeModelFile("<FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B' FXAREA='1'/>");

  const Result result =
      run("convert '" + path + "' '" + makePath("out.kvml") + "' --to kvml --messages json");

  EXPECT_EQ(result.err,
            "{\"level\":\"warning\",\"kind\":\"loss\",\"file\":\"" +
                escapePath(makePath("out.kvml")) +
                "\",\"foundation\":\"number 1 \\\"A\\\"\",\"sentence\":\"is lost, since "
                "it has no stiffness\"}\n");
  EXPECT_EQ(result.status, 0);
}

TEST(JsonMessages, TellWhereSomethingIsSkippedOrRenamed) {
  const std::string path = makeFile("in.xml",
                                    "<A>\n<CurveBedding Number='0' Name='A'/>\n"
                                    "<CurveBedding Number='1' Name='A'/>\n"
                                    "<CurveBedding Number='2' Name='A'/></A>\n");

  EXPECT_EQ(
      run("show '" + path + "' --messages json").err,
      "{\"level\":\"warning\",\"kind\":\"skipped\",\"file\":\"" + escapePath(path) +
          "\",\"line\":2,\"column\":1,\"sentence\":\"the number 0 of a <CurveBedding> is "
          "below 1; it was skipped\"}\n"
          "{\"level\":\"warning\",\"kind\":\"renamed\",\"file\":\"" +
          escapePath(path) +
          "\",\"line\":4,\"column\":1,\"sentence\":\"the name \\\"A\\\" is already taken; the "
          "bedding was read as \\\"A_1\\\"\"}\n"
          "{\"level\":\"note\",\"kind\":\"read\",\"file\":\"" +
          escapePath(path) + "\",\"sentence\":\"2 beddings were read\"}\n");
}

TEST(JsonMessages, TellWhatBecomesOfFoundations) {
  const std::string path =
      makeModelFile("<FOUND NUMBER='1' NAME='A' IsGenerated='1'/><FOUND NUMBER='2' NAME='B'/>");
  const std::string start = "\"file\":\"" + escapePath(path) + "\",\"foundation\":";

  EXPECT_EQ(run("prune '" + path + "' - --generated --messages json").err,
            "{\"level\":\"note\",\"kind\":\"removed\"," + start +
                "\"number 1 \\\"A\\\"\",\"sentence\":\"is removed\"}\n"
                "{\"level\":\"note\",\"kind\":\"renumbered\"," +
                start +
                "\"number 1 \\\"B\\\"\",\"sentence\":\"had the number 2\"}\n"
                "{\"level\":\"note\",\"kind\":\"summary\",\"file\":\"" +
                escapePath(path) + "\",\"sentence\":\"1 removed, 1 kept\"}\n");
}

TEST(JsonMessages, TellChangesThatHaveNoOtherPlace) {
  const std::string path = makeModelFile("<FOUND NUMBER='1' NAME='A' FXLINE='1'/>");

  EXPECT_EQ(run("set - 1 lineX=2 lineY=3 --messages json", path).err,
            "{\"level\":\"note\",\"kind\":\"changed\",\"file\":\"standard input\",\"foundation\":"
            "\"number 1 \\\"A\\\"\",\"sentence\":\"lineX: 1 -> 2; lineY: 0 -> 3\"}\n");
  EXPECT_EQ(run("add - B --messages json", path).err,
            "{\"level\":\"note\",\"kind\":\"added\",\"file\":\"standard input\",\"foundation\":"
            "\"number 2 \\\"B\\\"\",\"sentence\":\"is added\"}\n");
  EXPECT_EQ(run("remove - 1 --messages json", path).err,
            "{\"level\":\"note\",\"kind\":\"removed\",\"file\":\"standard input\",\"foundation\":"
            "\"number 1 \\\"A\\\"\",\"sentence\":\"is removed\"}\n");
}

TEST(JsonMessages, TellErrorsWithTheirPlace) {
  const std::string path = makeFile("in.xml", "<A>\n<B></A>\n");

  const Result result = run("convert '" + path + "' - --to kvml --messages=json");

  EXPECT_EQ(result.err,
            "{\"level\":\"error\",\"kind\":\"error\",\"file\":\"" + escapePath(path) +
                "\",\"line\":2,\"column\":6,\"sentence\":\"this end tag does not close the element "
                "that is open\"}\n");
  EXPECT_EQ(result.status, 2);
}

TEST(JsonMessages, TellTheLineAloneOfErrorsAboutAWholeLine) {
  const std::string path = makeFile("in.csv", "number,name\n1\n");

  EXPECT_EQ(run("show '" + path + "' --messages json").err,
            "{\"level\":\"error\",\"kind\":\"error\",\"file\":\"" + escapePath(path) +
                "\",\"line\":2,\"sentence\":\"this row has too few cells: 1 instead of 2\"}\n");
}

TEST(JsonMessages, TellErrorsOfTheCommandLine) {
  const std::string error =
      "{\"level\":\"error\",\"kind\":\"error\",\"sentence\":\"there is no option \\\"--bogus\\\"; "
      "see kvfound show --help\"}\n";

  EXPECT_EQ(run("show --bogus --messages json").err, error);
  EXPECT_EQ(run("show --bogus --messages=json").err, error);
  EXPECT_EQ(run("show --bogus -- --messages json").err,
            "kvfound: there is no option \"--bogus\"; see kvfound show --help\n");
}

// --- No messages

TEST(Quiet, TellsNeitherNotesNorWarnings) {
  const std::string path =
      makeFile("in.xml", "<A><CurveBedding Name='A'/><CurveBedding Number='1' Name='B'/></A>");

  for (const char* option : {"-q", "--quiet", "--quiet --messages json"}) {
    const Result result = run("convert '" + path + "' - --to kvml " + option);
    EXPECT_NE(result.out, "");
    EXPECT_EQ(result.err, "") << option;
  }
}

TEST(Quiet, TellsErrors) {
  const std::string path = makeFile("in.xml", "<A>\n<B></A>\n");

  EXPECT_EQ(run("show -q '" + path + "'").err,
            "kvfound: " + path + ":2:6: this end tag does not close the element that is open\n");
  EXPECT_EQ(run("show -q --bogus").err,
            "kvfound: there is no option \"--bogus\"; see kvfound show --help\n");
}

TEST(Quiet, TellsErrorsAboutAWholeLine) {
  const std::string path = makeFile("in.csv", "number,name\n1,A,7\n");

  EXPECT_EQ(run("show -q '" + path + "'").err,
            "kvfound: " + path + ":2: this row has too many cells: 3 instead of 2\n");
}

TEST(Quiet, TellsWhyNothingIsWritten) {
  const std::string path = makeModelFile("<FOUND NUMBER='1' NAME='A'/>");

  const Result result = run("convert '" + path + "' out.kvml --to kvml --strict --quiet");

  EXPECT_EQ(result.err, "kvfound: out.kvml: was not written, since something would be lost\n");
  EXPECT_EQ(result.status, 1);
}

}  // namespace
