#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

std::string show(const std::string& format, const std::string& foundations) {
  const std::string path = makeFile(
      "in.xml", makeDocument("<FOUNDATIONS CURRENT='raft'>" + foundations + "</FOUNDATIONS>"));
  return run("show '" + path + "' --format " + format).out;
}

const std::string header =
    "number,name,generated,areaX,areaY,areaZ,areaFailureZ,areaFactor,lineX,lineY,lineZ,"
    "lineRotationX,lineFailureX,lineFailureY,lineFailureZ,lineFactor,current\n";

TEST(ShowJson, HoldsEveryFieldUnderItsName) {
  EXPECT_EQ(show("json",
                 "<FOUND NUMBER='4' NAME='raft' FXAREA='0.1' FYAREA='871.25' FZAREA='1e300' "
                 "FAILZAREA='-1' FACAREA='0.30000000000000004' IsGenerated='1'/>"
                 "<FOUND NUMBER='5' NAME='beam' FXLINE='1' FYLINE='2' FZLINE='3' FXX='4' "
                 "FAILXLINE='1' FAILYLINE='7' FACLINE='-0.5'/>"),
            R"({
  "format": "kvfound-foundations",
  "version": 1,
  "foundations": [
    {
      "number": 4,
      "name": "raft",
      "generated": true,
      "areaX": 0.1,
      "areaY": 871.25,
      "areaZ": 1e+300,
      "areaFailureZ": "tension",
      "areaFactor": 0.30000000000000004,
      "lineX": null,
      "lineY": null,
      "lineZ": null,
      "lineRotationX": null,
      "lineFailureX": "none",
      "lineFailureY": "none",
      "lineFailureZ": "none",
      "lineFactor": 0.0,
      "current": true
    },
    {
      "number": 5,
      "name": "beam",
      "generated": false,
      "areaX": 0.0,
      "areaY": 0.0,
      "areaZ": 0.0,
      "areaFailureZ": "none",
      "areaFactor": 0.0,
      "lineX": 1.0,
      "lineY": 2.0,
      "lineZ": 3.0,
      "lineRotationX": 4.0,
      "lineFailureX": "compression",
      "lineFailureY": "7",
      "lineFailureZ": "none",
      "lineFactor": -0.5,
      "current": false
    }
  ],
  "maximum": 1e+300
}
)");
}

TEST(ShowJson, HoldsAnEmptyArrayWhenThereAreNoFoundations) {
  EXPECT_EQ(show("json", ""),
            "{\n  \"format\": \"kvfound-foundations\",\n  \"version\": 1,\n  \"foundations\": [],\n"
            "  \"maximum\": 0.0\n}\n");
}

TEST(ShowJson, WritesWhatIsNoFiniteNumberAsText) {
  const std::string out =
      show("json", "<FOUND FXAREA='inf' FYAREA='-inf' FZAREA='-nan' FACAREA='1e999'/>");

  EXPECT_NE(
      out.find("\"areaX\": \"inf\",\n      \"areaY\": \"-inf\",\n      \"areaZ\": \"nan\",\n"),
      std::string::npos)
      << out;
  EXPECT_NE(out.find("\"areaFactor\": \"inf\""), std::string::npos) << out;
}

TEST(ShowJson, EscapesOnlyWhatJsonMust) {
  EXPECT_NE(show("json", "<FOUND NAME='a&quot;b\\c&#10;d\xE2\x80\xAE&lt;/'/>")
                .find("\"name\": \"a\\\"b\\\\c\\nd\xE2\x80\xAE</\",\n"),
            std::string::npos);
}

TEST(ShowJson, WritesNamesOfAnEightBitCodePageInUtf8) {
  EXPECT_NE(show("json",
                 "<FOUND NAME='Stra\xDF"
                 "e \x80\x81'/>")
                .find("\"name\": \"Stra\xC3\x9F"
                      "e \xE2\x82\xAC\xC2\x81\""),
            std::string::npos);
}

TEST(ShowCsv, HoldsEveryFieldInAColumn) {
  EXPECT_EQ(show("csv",
                 "<FOUND NUMBER='4' NAME='raft' FXAREA='0.1' FYAREA='871.25' FZAREA='1e300' "
                 "FAILZAREA='-1' FACAREA='0.30000000000000004' IsGenerated='1'/>"
                 "<FOUND NUMBER='5' NAME='beam' FXLINE='1' FYLINE='2' FZLINE='3' FXX='4' "
                 "FAILXLINE='1' FAILYLINE='7' FACLINE='-0.5'/>"),
            header +
                "4,raft,true,0.1,871.25,1e+300,tension,0.30000000000000004,,,,,none,none,none,0,"
                "true\n"
                "5,beam,false,0,0,0,none,0,1,2,3,4,compression,7,none,-0.5,false\n");
}

TEST(ShowCsv, HoldsOnlyTheHeaderWhenThereAreNoFoundations) { EXPECT_EQ(show("csv", ""), header); }

TEST(ShowCsv, QuotesACellOnlyWhereItMust) {
  const std::string rest = ",false,0,0,0,none,0,,,,,none,none,none,0,false\n";

  EXPECT_EQ(show("csv",
                 "<FOUND NAME='a, b'/><FOUND NAME='&quot;c&quot;'/><FOUND NAME='d&#10;e'/>"
                 "<FOUND NAME='f&#13;g'/><FOUND NAME=' h; &#9;'/>"),
            header + "1,\"a, b\"" + rest + "2,\"\"\"c\"\"\"" + rest + "3,\"d\ne\"" + rest +
                "4,\"f\rg\"" + rest + "5, h; \t" + rest);
}

TEST(ShowCsv, LeavesNamesAsTheyAreButInUtf8) {
  const std::string rest = ",false,0,0,0,none,0,,,,,none,none,none,0,false\n";

  EXPECT_EQ(show("csv", "<FOUND NAME='\xDF\x7F'/>"), header + "1,\xC3\x9F\x7F" + rest);
}

TEST(ShowCsv, KeepsNamesFromRunningAsFormulas) {
  const std::string rest = ",false,0,0,0,none,0,,,,,none,none,none,0,false\n";

  EXPECT_EQ(show("csv", "<FOUND NAME='=1+1'/><FOUND NAME='&apos;-A'/><FOUND NAME='A=1'/>"),
            header + "1,'=1+1" + rest + "2,''-A" + rest + "3,A=1" + rest);
}

TEST(ShowCsv, WritesForASpreadsheetWithADecimalComma) {
  const std::string out =
      show("csv --decimal comma", "<FOUND NAME='A;B' FXAREA='0.5' FYAREA='1.125'/>");

  EXPECT_EQ(out.substr(0, 10), "\xEF\xBB\xBFnumber;");
  EXPECT_EQ(out.substr(out.find('\n') + 1),
            "1;\"A;B\";false;0,5;1,1250;0;none;0;;;;;none;none;none;0;false\n");
}

TEST(ShowCsv, WritesWhatIsNoFiniteNumberAsText) {
  EXPECT_EQ(show("csv", "<FOUND NAME='x' FXAREA='inf' FYAREA='-inf' FZAREA='-nan'/>"),
            header + "1,x,false,inf,-inf,nan,none,0,,,,,none,none,none,0,false\n");
}

// --- Units

TEST(ShowUnits, AreARowOfATableAndAMemberOfJson) {
  const std::string show = "show '" + makeModelFile("") + "' --unit-force kN --unit-length m";

  EXPECT_EQ(run(show + " --format csv").out, "#units,kN,m\n" + header);
  EXPECT_NE(run(show + " --format json")
                .out.find("  \"units\": {\n"
                          "    \"force\": \"kN\",\n"
                          "    \"length\": \"m\"\n"
                          "  },\n"),
            std::string::npos);
}

TEST(ShowUnits, AreToldTogetherOrNotAtAll) {
  EXPECT_EQ(run("show '" + makeModelFile("") + "' --unit-force kN").err,
            "kvfound: --unit-force and --unit-length are given together or not at all; see "
            "kvfound show --help\n");
}

TEST(ShowUnits, CannotBeOthersThanTheDocumentNames) {
  const std::string table = makeFile("in.csv", "#units,kN,m\nareaZ\n7\n");
  const std::string show = "show '" + table + "' --format csv --unit-length m --unit-force ";

  const Result result = run(show + "N");
  EXPECT_EQ(result.err, "kvfound: " + table +
                            ": its units are kN and m, not N and m; labels convert nothing, "
                            "kvfound convert --units does\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(run(show + "kN").status, 0);
}

}  // namespace
