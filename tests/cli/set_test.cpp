#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

const std::string start = "<?xml version=\"1.0\"?>\r\n<SMOD>\r\n<FOUNDATIONS CURRENT='A'>\r\n";
const std::string foundA = "\t<FOUND NUMBER='1' NAME='A' FZAREA='1.50'/> <!-- raft -->\r\n";
const std::string foundB = "\t<FOUND NUMBER='2' NAME='B' FZLINE='2' IsGenerated='1'/>\r\n";
const std::string end = "</FOUNDATIONS>\r\n</SMOD>\r\n";
const std::string model = start + foundA + foundB + end;

struct Changed {
  Result result;
  std::string text;
};

/// Runs a command, whose arguments behind the file are `arguments`, on a file that holds `bytes`.
Changed change(const std::string& command, const std::string& arguments,
               const std::string& bytes = model) {
  const std::string path = makeFile("model.xml", bytes);
  const Result result = run(command + " '" + path + "' " + arguments);
  return {result, readBytes(path)};
}

TEST(Set, ReplacesTheValueAndNothingElse) {
  const auto [result, text] = change("set", "1 areaZ=16000");

  EXPECT_EQ(text, start + "\t<FOUND NUMBER='1' NAME='A' FZAREA='16000'/> <!-- raft -->\r\n" +
                      foundB + end);
  EXPECT_EQ(result.out, "~ number 1 \"A\"\n    areaZ: 1.5 -> 16000\n");
  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
}

TEST(Set, AddsAttributesBehindThoseThatAreThere) {
  EXPECT_EQ(change("set", "1 areaFailureZ=tension areaFactor=0.1").text,
            start +
                "\t<FOUND NUMBER='1' NAME='A' FZAREA='1.50' FAILZAREA='-1' FACAREA='0.1'/> "
                "<!-- raft -->\r\n" +
                foundB + end);
}

TEST(Set, WritesNothingWhenNothingChanges) {
  const auto [result, text] = change("set", "1 areaZ=1.5");

  EXPECT_EQ(text, model);
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("nothing changes\n"), std::string::npos);
}

TEST(Set, SelectsByNumberNameOriginAndPart) {
  const struct {
    const char* selection;
    const char* out;
  } rows[] = {
      {"1-2 areaFactor=1",
       "~ number 1 \"A\"\n    areaFactor: 0 -> 1\n"
       "~ number 2 \"B\"\n    areaFactor: 0 -> 1\n"},
      {"--name 'B*' areaFactor=1", "~ number 2 \"B\"\n    areaFactor: 0 -> 1\n"},
      {"--generated areaFactor=1", "~ number 2 \"B\"\n    areaFactor: 0 -> 1\n"},
      {"--part area areaFactor=1", "~ number 1 \"A\"\n    areaFactor: 0 -> 1\n"},
  };
  for (const auto& row : rows) EXPECT_EQ(change("set", row.selection).result.out, row.out);
}

TEST(Set, RenamesTheCurrentFoundationInItsListToo) {
  EXPECT_EQ(change("set", "1 name=C").text,
            "<?xml version=\"1.0\"?>\r\n<SMOD>\r\n<FOUNDATIONS CURRENT='C'>\r\n"
            "\t<FOUND NUMBER='1' NAME='C' FZAREA='1.50'/> <!-- raft -->\r\n" +
                foundB + end);
}

TEST(Set, RefusesWhatItCannotDo) {
  const struct {
    const char* arguments;
    const char* error;
  } rows[] = {
      {"1 areaQ=3", "there is no field \"areaQ\"; did you mean areaX?"},
      {"1 colour=red", "there is no field \"colour\"; kvfound show --format csv names them"},
      {"1 areaZ=1,5", "areaZ cannot be \"1,5\", only a number such as 1500 or 2.5e4, or nothing"},
      {"1 areaZ=inf", "areaZ cannot be \"inf\", only a number such as 1500 or 2.5e4, or nothing"},
      {"1 lineFailureX=shear",
       "lineFailureX cannot be \"shear\", only tension, compression or none"},
      {"1 generated=maybe", "generated cannot be \"maybe\", only yes or no"},
      {"1 number=0", "number cannot be \"0\", only a whole number from 1 on"},
      {"1 name=", "name cannot be \"\", only a text in UTF-8, without control characters"},
      {"1 number=2", "number 2 is taken by \"B\"; nothing was written"},
      {"1 name=B", "the name \"B\" is taken by number 2; nothing was written"},
      {"1-2 number=5", "number 5 is taken by \"A\"; nothing was written"},
      {"areaZ=1",
       "tell which foundations: numbers such as 3,5-9, --name PATTERN, --generated or --part; "
       "--name '*' is all of them"},
      {"3- areaZ=1", "\"3-\" is no list of numbers such as 3,5-9; see kvfound set --help"},
      {"1", "tell what to set, such as areaZ=16000"},
  };
  for (const auto& row : rows) {
    const auto [result, text] = change("set", row.arguments);
    EXPECT_EQ(result.err, std::string("kvfound: ") + row.error + "\n");
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(text, model);
  }
}

TEST(Set, RefusesNumbersAndPatternsThatFitNothing) {
  EXPECT_NE(
      change("set", "1,9 areaZ=1").result.err.find("there is no foundation number 9; nothing"),
      std::string::npos);
  EXPECT_NE(
      change("set", "--name 'X*' areaZ=1").result.err.find("no foundation is selected; nothing"),
      std::string::npos);
}

TEST(Set, RefusesFieldsThatTheFormDoesNotHold) {
  const auto [result, text] = change("set", "1 generated=yes",
                                     "<B><SurfaceBedding Number='1' Name='A' StiffnessZ='1'/></B>");

  EXPECT_NE(result.err.find("was not written, since something would be lost: number 1 \"A\": "
                            "generated yes becomes no\n"),
            std::string::npos);
  EXPECT_EQ(result.status, 2);
}

TEST(Add, TakesTheNextNumberAndLooksLikeItsNeighbours) {
  const auto [result, text] = change("add", "'New one' areaX=1 areaY=1 areaZ=20");

  EXPECT_EQ(text, start + foundA + foundB +
                      "\t<FOUND NUMBER='3' NAME='New one' FXAREA='1' FYAREA='1' FZAREA='20' "
                      "FACAREA='0' FACLINE='0' IsGenerated='0'/>\r\n" +
                      end);
  EXPECT_EQ(result.out, "+ number 3 \"New one\"\n");
}

TEST(Add, RefusesANameAndANumberThatAreTaken) {
  EXPECT_EQ(change("add", "A areaZ=1").result.err,
            "kvfound: the name \"A\" is taken by number 1; nothing was written\n");
  EXPECT_EQ(change("add", "C number=2").result.err,
            "kvfound: number 2 is taken by \"B\"; nothing was written\n");
}

TEST(Remove, TakesTheLineAwayAndLeavesNoCurrentFoundation) {
  const auto [result, text] = change("remove", "1");

  EXPECT_EQ(text,
            "<?xml version=\"1.0\"?>\r\n<SMOD>\r\n<FOUNDATIONS CURRENT=''>\r\n\t "
            "<!-- raft -->\r\n" +
                foundB + end);
  EXPECT_EQ(result.out, "- number 1 \"A\"\n");
}

TEST(Remove, GivesNamesThatWouldChangeToTheOthers) {
  const auto [result, text] = change("remove", "1", start + "<FOUND/>\r\n<FOUND/>\r\n" + end);

  EXPECT_EQ(text, start + "<FOUND NUMBER=\"2\" NAME=\"Found0002\"/>\r\n" + end);
}

TEST(Remove, NeedsASelection) {
  EXPECT_EQ(change("remove", "").result.status, 2);
  EXPECT_EQ(change("remove", "").text, model);
}

TEST(Remove, LetsPlacesFollowInTheFirstVersion) {
  EXPECT_EQ(change("remove", "1", "<B>\n<Bedding Name='A'/>\n<Bedding Name='B'/>\n</B>").text,
            "<B>\n<Bedding Name='B'/>\n</B>");
}

TEST(Set, SetsNoNumbersInTheFirstVersion) {
  EXPECT_NE(change("set", "1 number=7", "<B><Bedding Name='A'/></B>")
                .result.err.find("documents of version 1.0 have no numbers that could be set\n"),
            std::string::npos);
}

TEST(Set, JudgesOnlyWhatItSets) {
  const std::string twice =
      start + "<FOUND NUMBER='7' NAME='A'/>\r\n<FOUND NUMBER='7' NAME='B'/>\r\n" + end;
  EXPECT_EQ(change("set", "--name B areaZ=3 name=C", twice).result.status, 0);
}

TEST(Set, LeavesTheElementOfAPartWithoutStiffness) {
  EXPECT_EQ(change("set", "1 areaZ=0",
                   "<B><CurveBedding Number='1' Name='A' StiffnessZ='2'/>"
                   "<SurfaceBedding Number='1' Name='A' StiffnessZ='5' Guid='g'/></B>")
                .text,
            "<B><CurveBedding Number='1' Name='A' StiffnessZ='2'/>"
            "<SurfaceBedding Number='1' Name='A' StiffnessZ='0' Guid='g'/></B>");
}

TEST(Set, DoesNotMakeAFoundationCurrent) {
  EXPECT_EQ(change("set", "1 current=true").result.err,
            "kvfound: which foundation is current cannot be set\n");
}

TEST(Add, TakesAFreeNumberBelowTheHighestThatThereCanBe) {
  EXPECT_EQ(
      change("add", "B", start + "<FOUND NUMBER='2147483647' NAME='A'/>\r\n" + end).result.out,
      "+ number 2147483646 \"B\"\n");
}

#ifndef _WIN32
TEST(Set, WritesNothingToALinkToStandardInput) {
  EXPECT_EQ(run("set /dev/stdin 1 areaZ=1", makeFile("model.xml", model)).err,
            "kvfound: /dev/stdin: cannot be written; - is standard input and output\n");
}
#endif

}  // namespace
