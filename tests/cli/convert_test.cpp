#include <string>

#include <gtest/gtest.h>

#include "cli/make_document.h"
#include "cli/run_command.h"

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// Converts to standard output.
Result convert(const std::string& in, const std::string& form) {
  return run("convert '" + in + "' - --to " + form);
}

/// What is told of a model with these foundations when it is converted, without the start that all
/// lines have.
std::string listLosses(const std::string& foundations, const std::string& form) {
  const std::string prefix = "kvfound: standard output: ";
  std::string losses = convert(makeModelFile(foundations), form).err;
  for (std::size_t at = losses.find(prefix); at != losses.npos; at = losses.find(prefix, at))
    losses.erase(at, prefix.size());
  return losses;
}

// --- Forms

const char* const exchangeOut =
    "<Beddings>\n"
    "  <CurveBedding Number=\"1\" Name=\"A\" StiffnessX=\"1\" StiffnessY=\"2\" StiffnessZ=\"3.5\" "
    "StiffnessXX=\"4\" StiffnessYFailure=\"tension\" StiffnessZFailure=\"compression\" "
    "TangentialStiffnessXFactor=\"0.5\" />\n"
    "</Beddings>\n";

const char* const firstOut =
    "<Beddings>\n"
    "  <Bedding Name=\"A\" SurfaceStiffnessZFailure=\"none\" "
    "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessX=\"1\" CurveStiffnessY=\"2\" "
    "CurveStiffnessZ=\"3.5\" CurveStiffnessXX=\"4\" CurveStiffnessYFailure=\"tension\" "
    "CurveStiffnessZFailure=\"compression\" TangentialCurveStiffnessX=\"0.5\" />\n"
    "</Beddings>\n";

const char* const kvmlOut =
    "<Kvml>\n"
    "  <Beddings>\n"
    "    <BeddingBeam Number=\"1\" Name=\"A\" ksx=\"1.0\" ksy=\"2.0\" ksz=\"3.5\" ksxx=\"4.0\" "
    "Failure=\"Fails in y under tension, in z under compression\" Tangential=\"0.50\" />\n"
    "  </Beddings>\n"
    "</Kvml>\n";

/// What a legacy model has of the same foundation; the area is there when the source has it.
std::string makeLegacyOut(const std::string& area) {
  return "<SMOD>\n"
         "  <FOUNDATIONS>\n"
         "    <FOUND NUMBER=\"1\" NAME=\"A\" " +
         area +
         "FXLINE=\"1\" FYLINE=\"2\" FZLINE=\"3.5\" FXX=\"4\" FAILYLINE=\"-1\" FAILZLINE=\"1\" "
         "FACAREA=\"0\" FACLINE=\"0.5\" IsGenerated=\"0\" />\n"
         "  </FOUNDATIONS>\n"
         "</SMOD>\n";
}

TEST(Convert, WritesEveryFormFromALegacyModel) {
  const std::string path = makeModelFile(
      "<FOUND NUMBER='1' NAME='A' FXLINE='1' FYLINE='2' FZLINE='3.5' FXX='4' FAILYLINE='-1' "
      "FAILZLINE='1' FACLINE='0.5'/>");
  const struct {
    const char* form;
    std::string out;
  } rows[] = {{"legacy", makeLegacyOut("FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"0\" ")},
              {"exchange", exchangeOut},
              {"exchange-1.0", firstOut},
              {"kvml", kvmlOut}};
  for (const auto& row : rows) {
    const Result result = convert(path, row.form);
    EXPECT_EQ(result.out, declaration + row.out) << row.form;
    EXPECT_EQ(result.err, "") << row.form;
    EXPECT_EQ(result.status, 0) << row.form;
  }
}

TEST(Convert, WritesEveryFormFromExchangeDocumentsOfBothVersions) {
  const struct {
    std::string path;
    std::string area;
  } sources[] = {{makeFile("exchange.xml", exchangeOut), ""},
                 {makeFile("first.xml", firstOut), "FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"0\" "}};
  for (const auto& source : sources) {
    const std::string note = "kvfound: " + source.path + ": 1 bedding was read\n";
    const struct {
      const char* form;
      std::string out;
    } rows[] = {{"legacy", makeLegacyOut(source.area)},
                {"exchange", exchangeOut},
                {"exchange-1.0", firstOut},
                {"kvml", kvmlOut}};
    for (const auto& row : rows) {
      const Result result = convert(source.path, row.form);
      EXPECT_EQ(result.out, declaration + row.out) << source.path << row.form;
      EXPECT_EQ(result.err, note) << source.path << row.form;
      EXPECT_EQ(result.status, 0) << source.path << row.form;
    }
  }
}

TEST(Convert, ReadsStandardInput) {
  const std::string path = makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='7'/>");

  const Result result = run("convert - - --to kvml", path);

  EXPECT_EQ(result.out, declaration +
                            "<Kvml>\n"
                            "  <Beddings>\n"
                            "    <BeddingArea Number=\"3\" Name=\"A\" ksx=\"0.0\" ksy=\"0.0\" "
                            "ksz=\"7.0\" Failure=\"No failure\" Tangential=\"0.00\" />\n"
                            "  </Beddings>\n"
                            "</Kvml>\n");
  EXPECT_EQ(result.err, "");
}

TEST(Convert, TakesTheVersionThatIsGivenForWhatItReads) {
  const std::string path =
      makeFile("in.xml",
               "<X><Bedding Name='A' CurveStiffnessX='1'/><CurveBedding Number='9' Name='B'/></X>");

  EXPECT_EQ(run("convert '" + path + "' - --to legacy --version 2.0").err,
            "kvfound: " + path + ":1:4: <Bedding> is no bedding of this version; it was skipped\n" +
                "kvfound: " + path + ": 1 bedding was read\n");
}

TEST(Convert, WritesADocumentWithoutFoundations) {
  const std::string path = makeModelFile("");

  EXPECT_EQ(convert(path, "legacy").out, declaration + "<SMOD>\n  <FOUNDATIONS />\n</SMOD>\n");
  EXPECT_EQ(convert(path, "exchange").out, declaration + "<Beddings />\n");
  EXPECT_EQ(convert(path, "exchange-1.0").out, declaration + "<Beddings />\n");
  EXPECT_EQ(convert(path, "kvml").out, declaration + "<Kvml />\n");
}

TEST(Convert, KeepsNumbersToTheLastDigit) {
  const std::string path =
      makeModelFile("<FOUND NAME='A' FZAREA='0.1' FYAREA='1e300' FXAREA='-inf'/>");

  EXPECT_NE(convert(path, "exchange")
                .out.find("StiffnessX=\"-inf\" StiffnessY=\"1e+300\" StiffnessZ=\"0.1\""),
            std::string::npos);
}

TEST(Convert, WritesNamesOfACodePageInUtf8) {
  const std::string path = makeModelFile(
      "<FOUND NAME='Stra\xDF"
      "e' FZAREA='1'/>");

  const Result result = convert(path, "exchange");

  EXPECT_EQ(result.out,
            declaration +
                "<Beddings>\n"
                "  <SurfaceBedding Number=\"1\" Name=\"Stra\xC3\x9F"
                "e\" StiffnessX=\"0\" StiffnessY=\"0\" StiffnessZ=\"1\" StiffnessZFailure=\"none\" "
                "TangentialStiffnessXYFactor=\"0\" />\n"
                "</Beddings>\n");
  EXPECT_EQ(result.err, "");
}

TEST(Convert, KeepsNamesThatXmlMustEscape) {
  const std::string path = makeModelFile("<FOUND NAME='&lt;a&amp;&quot;b&#10;c' FZAREA='1'/>");
  const std::string out = makePath("out.xml");

  EXPECT_EQ(run("convert '" + path + "' '" + out + "' --to exchange-1.0 --strict").err, "");
  EXPECT_NE(readFile(out).find("Name=\"&lt;a&amp;&quot;b&#10;c\""), std::string::npos);
}

TEST(Convert, WritesAndReplacesAFileWithBlanksAndUmlautsInItsPath) {
  const std::string out = makePath("aus der M\xFChle.kvml");
  for (int i = 0; i < 2; ++i) {
    const Result result = run("convert '" + makeModelFile("") + "' '" + out + "' --to kvml");

    EXPECT_EQ(result.err, "");
    EXPECT_EQ(readFile(out).substr(0, declaration.size() + 5), declaration + "<Kvml");
  }
}

// --- Losses

TEST(ConvertLosses, NamesFoundationsThatWereGenerated) {
  for (const char* form : {"exchange", "exchange-1.0", "kvml"})
    EXPECT_EQ(listLosses("<FOUND NAME='A' FZAREA='1' IsGenerated='1'/>", form),
              "number 1 \"A\": generated yes becomes no\n")
        << form;
}

TEST(ConvertLosses, NamesTheCurrentFoundation) {
  const std::string path =
      makeFile("in.xml", makeDocument("<FOUNDATIONS CURRENT='B'><FOUND NAME='A' FZAREA='1'/>"
                                      "<FOUND NAME='B' FZAREA='1'/></FOUNDATIONS>"));

  for (const char* form : {"exchange", "exchange-1.0", "kvml"})
    EXPECT_EQ(convert(path, form).err,
              "kvfound: standard output: number 2 \"B\": is no longer the current foundation\n")
        << form;
  EXPECT_EQ(convert(path, "legacy").err, "");
}

TEST(ConvertLosses, NamesFailureOfALineInX) {
  for (const char* form : {"exchange", "exchange-1.0", "kvml"})
    EXPECT_EQ(listLosses("<FOUND NAME='A' FZLINE='1' FAILXLINE='-1'/>", form),
              "number 1 \"A\": lineFailureX tension becomes none\n")
        << form;
}

TEST(ConvertLosses, NamesFailureModesThatThereAreNot) {
  const char* const found = "<FOUND NAME='A' FZAREA='1' FZLINE='1' FAILZAREA='7' FAILYLINE='-2'/>";

  for (const char* form : {"exchange-1.0", "kvml"})
    EXPECT_EQ(listLosses(found, form),
              "number 1 \"A\": areaFailureZ 7 becomes none\n"
              "number 1 \"A\": lineFailureY -2 becomes none\n")
        << form;
  EXPECT_EQ(listLosses(found, "legacy"), "");
}

TEST(ConvertLosses, NamesTheOtherFailureModeThatAListingDoesNotShow) {
  EXPECT_EQ(listLosses("<FOUND NAME='A' FZLINE='1' FAILYLINE='1' FAILZLINE='9'/>", "kvml"),
            "number 1 \"A\": lineFailureY compression becomes none\n"
            "number 1 \"A\": lineFailureZ 9 becomes none\n");
}

TEST(ConvertLosses, NamesFoundationsWithTwoPartsOfWhichHostsKeepOne) {
  const char* const found =
      "<FOUND NAME='A' FXAREA='1' FYAREA='2' FZAREA='3' FAILZAREA='1' FACAREA='0.25' FZLINE='4'/>";

  EXPECT_EQ(listLosses(found, "exchange"),
            "number 1 \"A\": hosts that read the document keep only its line part\n");
  EXPECT_EQ(listLosses(found, "exchange-1.0"), "");
  EXPECT_EQ(listLosses(found, "kvml"), "");
}

TEST(ConvertLosses, NamesAFoundationWithoutStiffness) {
  const char* const found = "<FOUND NUMBER='4' NAME='A' FACAREA='1'/>";

  for (const char* form : {"exchange", "kvml"})
    EXPECT_EQ(listLosses(found, form), "number 4 \"A\": is lost, since it has no stiffness\n")
        << form;
  EXPECT_EQ(listLosses(found, "exchange-1.0"), "number 4 \"A\": number 4 becomes 1\n");
}

TEST(ConvertLosses, NamesAFoundationWhoseStiffnessIsNotANumber) {
  for (const char* form : {"exchange", "kvml"})
    EXPECT_EQ(listLosses("<FOUND NAME='A' FZAREA='nan'/>", form),
              "number 1 \"A\": is lost, since its stiffness is not a number\n")
        << form;
  EXPECT_EQ(listLosses("<FOUND NAME='A' FZAREA='nan'/>", "legacy"), "");
}

TEST(ConvertLosses, NamesStiffnessThatIsTooSmallToBeWritten) {
  EXPECT_EQ(listLosses("<FOUND NAME='A' FZAREA='1e-11'/>", "exchange"),
            "number 1 \"A\": areaZ 1e-11 becomes 0\n");
}

TEST(ConvertLosses, NamesNumbersBelowOne) {
  EXPECT_EQ(listLosses("<FOUND NUMBER='0' NAME='A' FZAREA='1'/>", "exchange"),
            "number 0 \"A\": is lost, since its number is below 1\n");
  EXPECT_EQ(listLosses("<FOUND NUMBER='-7' NAME='A' FZAREA='1'/>", "exchange-1.0"),
            "number -7 \"A\": number -7 becomes 1\n");
  EXPECT_EQ(listLosses("<FOUND NUMBER='-7' NAME='A' FZAREA='1'/>", "kvml"), "");
}

TEST(ConvertLosses, NamesNumbersGivenTwice) {
  const char* const founds =
      "<FOUND NUMBER='2' NAME='A' FZAREA='1'/><FOUND NUMBER='2' NAME='B' FZAREA='1'/>";

  EXPECT_EQ(listLosses(founds, "exchange"),
            "number 2 \"B\": is lost, since its number is given twice\n");
  EXPECT_EQ(listLosses(founds, "legacy"),
            "number 2 \"A\": is lost, since its number is given twice\n");
  EXPECT_EQ(listLosses(founds, "exchange-1.0"), "number 2 \"A\": number 2 becomes 1\n");
  EXPECT_EQ(listLosses(founds, "kvml"), "");
}

TEST(ConvertLosses, NamesWhatOneOfTwoWithTheSameNumberTakesOver) {
  EXPECT_EQ(listLosses("<FOUND NUMBER='2' NAME='A' FZLINE='5' FAILXLINE='1'/>"
                       "<FOUND NUMBER='2' NAME='B' FZAREA='1'/>",
                       "legacy"),
            "number 2 \"A\": is lost, since its number is given twice\n"
            "number 2 \"B\": lineZ - becomes 5\n"
            "number 2 \"B\": lineFailureX none becomes compression\n");
}

TEST(ConvertLosses, NamesEqualNames) {
  const char* const founds = "<FOUND NAME='A' FZAREA='1'/><FOUND NAME='A' FZAREA='2'/>";

  for (const char* form : {"exchange", "exchange-1.0"})
    EXPECT_EQ(listLosses(founds, form), "number 2 \"A\": name A becomes A_1\n") << form;
  EXPECT_EQ(listLosses(founds, "kvml"), "");
}

TEST(ConvertLosses, NamesWhatAListingRounds) {
  EXPECT_EQ(listLosses("<FOUND NAME='A' FXAREA='0.04' FZAREA='1234.56' FACAREA='0.125' FZLINE='2' "
                       "FXX='0.25' FACLINE='0.5'/>",
                       "kvml"),
            "number 1 \"A\": areaX 0.04 becomes 0\n"
            "number 1 \"A\": areaZ 1234.56 becomes 1234.6\n"
            "number 1 \"A\": areaFactor 0.125 becomes 0.12\n"
            "number 1 \"A\": lineRotationX 0.25 becomes 0.2\n");
}

TEST(ConvertLosses, NamesALineThatAListingLeavesOut) {
  EXPECT_EQ(listLosses("<FOUND NAME='A' FXX='5'/>", "kvml"),
            "number 1 \"A\": is lost, since its only stiffness is one against rotation\n");
  EXPECT_EQ(listLosses("<FOUND NAME='A' FXX='5' FZAREA='1'/>", "kvml"),
            "number 1 \"A\": lineRotationX 5 is lost\n");
  EXPECT_EQ(listLosses("<FOUND NAME='A' FXX='5'/>", "exchange"), "");
}

TEST(ConvertLosses, NamesFactorsAndFailureOfAPartWithoutStiffness) {
  const char* const found = "<FOUND NAME='A' FZAREA='1' FACLINE='0.5' FAILZLINE='1'/>";

  for (const char* form : {"exchange", "kvml"})
    EXPECT_EQ(listLosses(found, form),
              "number 1 \"A\": lineFailureZ compression becomes none\n"
              "number 1 \"A\": lineFactor 0.5 becomes 0\n")
        << form;
  EXPECT_EQ(listLosses(found, "exchange-1.0"), "");
}

TEST(ConvertLosses, CountsWhatIsMoreThanTenOfAKind) {
  std::string foundations;
  std::string losses;
  for (int i = 1; i <= 12; ++i) {
    const std::string number = std::to_string(i);
    const std::string name = "N" + number;
    foundations +=
        "<FOUND NUMBER='" + number + "' NAME='" + name + "' FZAREA='1' IsGenerated='1'/>";
    if (i <= 10) losses += "number " + number + " \"" + name + "\": generated yes becomes no\n";
  }

  EXPECT_EQ(listLosses(foundations, "exchange"),
            losses + "2 more: generated changes; --all shows every one\n");
  EXPECT_EQ(listLosses(foundations, "exchange --all"),
            losses +
                "number 11 \"N11\": generated yes becomes no\n"
                "number 12 \"N12\": generated yes becomes no\n");
}

TEST(ConvertLosses, ShowsNamesWithoutControlCharactersOnOneLine) {
  EXPECT_EQ(listLosses("<FOUND NAME='a&#10;b\xDF' FZAREA='1' IsGenerated='1'/>", "exchange"),
            "number 1 \"a\\nb\xC3\x9F\": generated yes becomes no\n");
}

// --- Strict

TEST(ConvertStrict, WritesNothingWhenSomethingWouldBeLost) {
  const std::string path = makeModelFile("<FOUND NAME='A' FZAREA='1' IsGenerated='1'/>");
  const std::string out = makeFile("out.xml", "<Kvml/>");

  const Result result = run("convert --strict '" + path + "' '" + out + "' --to exchange");

  EXPECT_EQ(result.err, "kvfound: " + out + ": number 1 \"A\": generated yes becomes no\n" +
                            "kvfound: " + out +
                            ": was not written, since something would be lost\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(readFile(out), "<Kvml/>");
}

TEST(ConvertStrict, PrintsNothingWhenSomethingWouldBeLost) {
  const std::string path = makeModelFile("<FOUND NAME='A' FZAREA='1' IsGenerated='1'/>");

  const Result result = run("convert --strict '" + path + "' - --to exchange");

  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.status, 1);
}

TEST(ConvertStrict, WritesNothingWhenNotEverythingCouldBeRead) {
  const std::string path =
      makeFile("in.xml",
               "<B><CurveBedding Name='A'/><SurfaceBedding Number='2' Name='B' "
               "StiffnessZ='1'/></B>");
  const std::string out = makePath("out.xml");

  const Result result = run("convert --strict '" + path + "' '" + out + "' --to legacy");

  EXPECT_EQ(result.err,
            "kvfound: " + path +
                ":1:4: a <CurveBedding> has no number, or one that cannot be read; it was "
                "skipped\n"
                "kvfound: " +
                path + ": 1 bedding was read\n" + "kvfound: " + out +
                ": was not written, since something would be lost\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_FALSE(std::ifstream(out).good());
}

TEST(ConvertStrict, WritesWhenNothingIsLost) {
  const std::string path = makeModelFile("<FOUND NAME='A' FZAREA='1'/>");
  const std::string out = makePath("out.xml");

  const Result result = run("convert --strict '" + path + "' '" + out + "' --to exchange");

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(readFile(out).find("<SurfaceBedding"), std::string::npos);
}

// --- Updates of a legacy model

/// Converts an exchange document with these beddings to a model, and returns what becomes of it.
std::string update(const std::string& beddings, const std::string& model) {
  const std::string in = makeFile("in.xml", "<B>" + beddings + "</B>");
  const std::string out = makeFile("out.xml", model);
  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to legacy").status, 0);
  return readFile(out);
}

const char* const oneBedding = "<SurfaceBedding Number='2' Name='N' StiffnessZ='7'/>";

/// The same as an element of a model that has been there, or is new.
const char* const oneFound =
    "<FOUND NUMBER=\"2\" NAME=\"N\" FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" "
    "FACLINE=\"0\" IsGenerated=\"0\" />";

TEST(ConvertUpdate, KeepsTheRestOfAModel) {
  EXPECT_EQ(update(oneBedding,
                   "<?xml version=\"1.0\" standalone=\"yes\"?><!-- first -->\n"
                   "<!DOCTYPE SMOD SYSTEM \"smod.dtd\">\n"
                   "<?made by hand?>\n"
                   "<SMOD VERSION=\"12\">\n"
                   "  <NODES>\n"
                   "    <NODE ID=\"1\" X=\"&lt;2\" />\n"
                   "  </NODES>\n"
                   "  <!-- before -->\n"
                   "  <FOUNDATIONS UNIT=\"kN\">\n"
                   "    <!-- inside -->\n"
                   "    <FOUND NUMBER=\"1\" NAME=\"gone\" />\n"
                   "    <GROUND CLASS=\"B\" />\n"
                   "    <FOUND NUMBER=\"2\" COLOUR=\"red\" NAME=\"old\" />\n"
                   "  </FOUNDATIONS>\n"
                   "  <LOADS />\n"
                   "</SMOD>\n"
                   "<!-- last -->\n"),
            "<?xml version=\"1.0\" standalone=\"yes\"?><!-- first -->\n"
            "<!DOCTYPE SMOD SYSTEM \"smod.dtd\">\n"
            "<?made by hand?>\n"
            "<SMOD VERSION=\"12\">\n"
            "  <NODES>\n"
            "    <NODE ID=\"1\" X=\"&lt;2\" />\n"
            "  </NODES>\n"
            "  <!-- before -->\n"
            "  <FOUNDATIONS UNIT=\"kN\">\n"
            "    <!-- inside -->\n"
            "    <GROUND CLASS=\"B\" />\n"
            "    <FOUND NUMBER=\"2\" COLOUR=\"red\" NAME=\"N\" FZAREA=\"7\" />\n"
            "  </FOUNDATIONS>\n"
            "  <LOADS />\n"
            "</SMOD>\n"
            "<!-- last -->\n");
}

TEST(ConvertUpdate, KeepsTextAndElementsInsideOfFoundations) {
  const std::string text =
      update(oneBedding,
             "<?xml version=\"1.0\"?>\n"
             "<SMOD><T>a <b>c</b></T><![CDATA[x<y]]><FOUNDATIONS><FOUND NUMBER=\"2\"><NOTE>by "
             "hand</NOTE></FOUND></FOUNDATIONS></SMOD>\n");

  EXPECT_EQ(text,
            "<?xml version=\"1.0\"?>\n"
            "<SMOD><T>a <b>c</b></T><![CDATA[x<y]]><FOUNDATIONS><FOUND NUMBER=\"2\" NAME=\"N\" "
            "FZAREA=\"7\"><NOTE>by hand</NOTE></FOUND></FOUNDATIONS></SMOD>\n");
}

TEST(ConvertUpdate, AddsFoundationsToAModelThatHasNone) {
  EXPECT_EQ(update(oneBedding, "<?xml version=\"1.0\"?>\n<SMOD>\n  <NODES />\n</SMOD>\n"),
            "<?xml version=\"1.0\"?>\n<SMOD>\n  <NODES />\n  <FOUNDATIONS>\n    " +
                std::string(oneFound) + "\n  </FOUNDATIONS>\n</SMOD>\n");
}

TEST(ConvertUpdate, FindsFoundationsBelowOtherElements) {
  EXPECT_EQ(update(oneBedding,
                   "<?xml version=\"1.0\"?>\n<SMOD>\n  <GROUND>\n    <FOUNDATIONS />\n  </GROUND>\n"
                   "  <FOUNDATIONS />\n</SMOD>\n"),
            "<?xml version=\"1.0\"?>\n<SMOD>\n  <GROUND>\n    <FOUNDATIONS>\n      " +
                std::string(oneFound) +
                "\n    </FOUNDATIONS>\n  </GROUND>\n  <FOUNDATIONS />\n</SMOD>\n");
}

TEST(ConvertUpdate, LetsNothingOfTheOldFoundationBeReadAgain) {
  const std::string out = makePath("out.xml");
  update(oneBedding, makeDocument("<FOUNDATIONS CURRENT='N'>"
                                  "<FOUND NUMBER='2' NAME='N' FXAREA='1' FYAREA='1' FZAREA='1' "
                                  "FXLINE='1' FYLINE='1' FZLINE='1' FXX='1' FAILZAREA='1' "
                                  "FAILXLINE='1' FAILYLINE='1' FAILZLINE='1' FACAREA='1' "
                                  "FACLINE='1' IsGenerated='1'/></FOUNDATIONS>"));

  const Result result = run("show --format csv '" + out + "'");

  EXPECT_EQ(result.out.substr(result.out.find('\n') + 1),
            "2,N,false,0,0,7,none,0,,,,,none,none,none,0,false\n");
}

TEST(ConvertUpdate, FindsAFoundationWithoutNumberByTheOneItIsReadWith) {
  EXPECT_EQ(update(oneBedding, makeDocument("<FOUNDATIONS><FOUND COLOUR='red'/>"
                                            "<FOUND COLOUR='blue'/></FOUNDATIONS>")),
            makeDocument("<FOUNDATIONS><FOUND COLOUR='blue' NUMBER='2' NAME='N' FZAREA='7'/>"
                         "</FOUNDATIONS>"));
}

TEST(ConvertUpdate, LeavesOneOfSeveralFoundationsWithTheSameNumber) {
  EXPECT_EQ(update(oneBedding, makeDocument("<FOUNDATIONS><FOUND NUMBER='2' A='1'/>"
                                            "<FOUND NUMBER='2' A='2'/></FOUNDATIONS>")),
            makeDocument("<FOUNDATIONS><FOUND NUMBER='2' A='1' NAME='N' FZAREA='7'/>"
                         "</FOUNDATIONS>"));
}

TEST(ConvertUpdate, KeepsAModelWhoseFirstLineIsNoXml) {
  EXPECT_EQ(update(oneBedding, "an xml file\n<SMOD>\n  <NODES />\n  <FOUNDATIONS />\n</SMOD>\n"),
            "an xml file\n<SMOD>\n  <NODES />\n  <FOUNDATIONS>\n    " + std::string(oneFound) +
                "\n  </FOUNDATIONS>\n</SMOD>\n");
}

TEST(ConvertUpdate, TellsWhichFoundationIsNoLongerCurrent) {
  const std::string in =
      makeFile("in.xml", makeDocument("<FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A'/>"
                                      "<FOUND NUMBER='2' NAME='A'/></FOUNDATIONS>"));
  const std::string out =
      makeFile("out.xml", makeDocument("<FOUNDATIONS><FOUND NUMBER='2'/></FOUNDATIONS>"));

  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to legacy").err,
            "kvfound: " + out + ": number 1 \"A\": is no longer the current foundation\n");
}

TEST(ConvertUpdate, WritesNamesInTheCodePageOfTheModel) {
  const std::string in = makeFile("in.xml",
                                  "<B><SurfaceBedding Number='2' Name='R\xC3\xBC"
                                  "ck \xE2\x82\xAC' StiffnessZ='7'/></B>");
  const std::string out = makeFile("out.xml", makeDocument("<T NAME='Stra\xDF"
                                                           "e'/>"));

  EXPECT_EQ(run("convert --strict '" + in + "' '" + out + "' --to legacy").err,
            "kvfound: " + in + ": 1 bedding was read\n");
  EXPECT_EQ(readFile(out),
            "<?xml version=\"1.0\"?>\n"
            "<SMOD>\n<T NAME=\"Stra\xDF"
            "e\"/>\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"2\" "
            "NAME=\"R\xFC"
            "ck \x80\" FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" "
            "FACLINE=\"0\" IsGenerated=\"0\" />\n  </FOUNDATIONS>\n</SMOD>\n");
}

TEST(ConvertUpdate, RefersToCharactersThatTheCodePageOfTheModelLacks) {
  const std::string in = makeFile(
      "in.xml", "<B><SurfaceBedding Number='2' Name='\xE2\x89\xA5 5' StiffnessZ='7'/></B>");
  const std::string out = makeFile("out.xml", makeDocument("<T NAME='Stra\xDF"
                                                           "e'/>"));

  EXPECT_EQ(run("convert --strict '" + in + "' '" + out + "' --to legacy").err,
            "kvfound: " + in + ": 1 bedding was read\n");
  EXPECT_NE(readFile(out).find("<FOUND NUMBER=\"2\" NAME=\"&#8805; 5\" "), std::string::npos);
}

TEST(ConvertUpdate, WritesNamesInUtf8WhereTheModelIsInUtf8) {
  const std::string in = makeFile("in.xml",
                                  "<B><SurfaceBedding Number='2' Name='R\xFC"
                                  "ck' StiffnessZ='7'/></B>");
  const std::string out = makeFile("out.xml", makeDocument("<T NAME='\xE2\x89\xA5'/>"));

  run("convert '" + in + "' '" + out + "' --to legacy");

  EXPECT_EQ(readFile(out),
            "<?xml version=\"1.0\"?>\n"
            "<SMOD>\n<T NAME=\"\xE2\x89\xA5\"/>\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"2\" "
            "NAME=\"R\xC3\xBC"
            "ck\" FXAREA=\"0\" FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" "
            "FACLINE=\"0\" IsGenerated=\"0\" />\n  </FOUNDATIONS>\n</SMOD>\n");
}

// --- Updates of an exchange document

TEST(ConvertUpdate, KeepsTheRestOfAnExchangeDocument) {
  const std::string in = makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='1'/>");
  const struct {
    const char* form;
    const char* old;
    const char* first;  // in the first container, and in the second
    const char* second;
  } rows[] = {
      {"exchange", "    <SurfaceBedding Number=\"1\" Name=\"old\" />\n", "",
       "    <SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"0\" StiffnessY=\"0\" "
       "StiffnessZ=\"1\" StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"0\" />\n"},
      {"exchange-1.0", "    <Bedding Name=\"old\" />\n",
       "    <Bedding Name=\"A\" SurfaceStiffnessZ=\"1\" />\n", ""}};
  for (const auto& row : rows) {
    const std::string head =
        declaration + "<!-- head -->\n<X Version=\"1\">\n  <Load />\n  <B N=\"1\">\n";
    const std::string rest = "  </B>\n  <C>\n";
    const std::string end = "  </C>\n</X>\n";
    const std::string out = makeFile(
        "out.xml", head + "    <Other />\n" + row.old + rest + row.old + "    <Kept />\n" + end);

    run("convert '" + in + "' '" + out + "' --to " + row.form);

    EXPECT_EQ(readFile(out),
              head + "    <Other />\n" + row.first + rest + "    <Kept />\n" + row.second + end);
  }
}

TEST(ConvertUpdate, ChangesBeddingsInTheirContainersAndKeepsUnknownAttributes) {
  const std::string in = makeModelFile(
      "<FOUND NUMBER='1' NAME='A' FZAREA='5'/><FOUND NUMBER='2' NAME='B' FZAREA='6'/>");
  const std::string out = makeFile(
      "out.xml",
      "<X>\r\n\t<B><SurfaceBedding Number='1' Name='A' Guid='g1' StiffnessZ='5.0'/></B>\r\n"
      "\t<C><SurfaceBedding\r\n\t\tNumber='2' Name='B' StiffnessZ='1'><Note/>"
      "</SurfaceBedding></C>\r\n</X>");

  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to exchange").status, 0);

  EXPECT_EQ(readBytes(out),
            "<X>\r\n\t<B><SurfaceBedding Number='1' Name='A' Guid='g1' StiffnessZ='5.0'/></B>\r\n"
            "\t<C><SurfaceBedding\r\n\t\tNumber='2' Name='B' StiffnessZ='6'><Note/>"
            "</SurfaceBedding></C>\r\n</X>");
}

TEST(ConvertUpdate, TellsWhatGoesOfTheModelThatIsThere) {
  const std::string in = makeFile("in.xml", "<B>" + std::string(oneBedding) + "</B>");
  const std::string model = makeDocument(
      "<FOUNDATIONS CURRENT='C'><FOUND NUMBER='2' NAME='N' FZAREA='7' FAILXLINE='1' "
      "IsGenerated='1'/><FOUND NUMBER='3' NAME='C'/></FOUNDATIONS>");
  const std::string out = makeFile("out.xml", model);

  const Result result = run("convert '" + in + "' '" + out + "' --to legacy --strict");

  const std::string prefix = "kvfound: " + out + ": ";
  EXPECT_EQ(result.err, "kvfound: " + in + ": 1 bedding was read\n" +  //
                            prefix + "number 2 \"N\": generated yes becomes no\n" + prefix +
                            "number 2 \"N\": lineFailureX compression becomes none\n" + prefix +
                            "number 3 \"C\": goes from the document\n" + prefix +
                            "was not written, since something would be lost\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(readFile(out), model);
}

TEST(ConvertUpdate, FillsAnElementForBeddingsThatIsEmpty) {
  const std::string in = makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='1'/>");
  const std::string out = makeFile("out.xml", "<X><Load/><Beddings/></X>");

  run("convert '" + in + "' '" + out + "' --to exchange");

  EXPECT_EQ(readFile(out),
            "<X><Load/><Beddings>\n  <SurfaceBedding Number=\"3\" Name=\"A\" StiffnessX=\"0\" "
            "StiffnessY=\"0\" StiffnessZ=\"1\" StiffnessZFailure=\"none\" "
            "TangentialStiffnessXYFactor=\"0\" />\n</Beddings></X>");
}

// --- Documents that must not be replaced

/// Tries to convert a model to a file with this text, which must stay.
std::string tryToReplace(const std::string& text, const std::string& form) {
  const std::string in = makeModelFile("<FOUND NUMBER='3' NAME='A' FZAREA='1'/>");
  const std::string out = makeFile("out.xml", text);
  const Result result = run("convert '" + in + "' '" + out + "' --to " + form);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(readFile(out), text);
  const std::string start = "kvfound: " + out;
  EXPECT_EQ(result.err.substr(0, start.size()), start);
  return result.err.substr(start.size());
}

TEST(ConvertRefusal, ReplacesNoModelByADocumentOfAnotherForm) {
  for (const char* form : {"exchange", "exchange-1.0", "kvml"})
    EXPECT_EQ(tryToReplace(makeDocument("<NODES/>"), form),
              ": this is a legacy model, which a document of another form would destroy; name "
              "another file\n")
        << form;
}

const std::string notReplaced = "; it was not replaced: mend or remove it, or name another file\n";

TEST(ConvertRefusal, ReplacesNoModelThatCannotBeRead) {
  EXPECT_EQ(tryToReplace("<?xml version='1.0'?>\n<SMOD>\n  <NODES>\n</SMOD>\n", "legacy"),
            ":4:3: this end tag does not close the element that is open" + notReplaced);
  EXPECT_EQ(tryToReplace("<?xml version='1.0'?><SMOD>\n  <NODES/>\n</SMOD>\n", "legacy"),
            ": <SMOD> must start on a line of its own, behind the line of the XML declaration" +
                notReplaced);
}

TEST(ConvertRefusal, ReplacesNoFileThatHoldsSomethingElse) {
  EXPECT_EQ(
      tryToReplace("notes of mine", "kvml"),
      ": this is no XML document (a table or JSON needs the ending .csv or .json, or --from)" +
          notReplaced);
  EXPECT_EQ(tryToReplace("<Exchange><Slabs/></Exchange>", "exchange"),
            ": there are no beddings in <Exchange>; a legacy model or an exchange document can be "
            "read, a Kvml listing cannot" +
                notReplaced);
}

TEST(ConvertRefusal, LosesNothingOfTheDocumentThatIsRead) {
  const std::string path = makeFile("in.xml", "<Beddings><Bedding Name='A'/></Beddings>");
  const std::string before = readFile(path);

  const Result result = run("convert '" + path + "' '" + path + "' --to exchange");

  EXPECT_NE(result.err.find(path + ": was not written, since something would be lost; name another "
                                   "file than IN\n"),
            std::string::npos);
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(readFile(path), before);
}

TEST(Convert, LeavesElementsAloneThatHaveABeddingBesideThoseThatHoldThem) {
  const std::string in = makeModelFile("<FOUND NUMBER='3' NAME='A' FXX='1'/>");
  const std::string out =
      makeFile("out.xml",
               "<X><Beddings><Bedding Name='B'/></Beddings><Slab><Bedding Number='3'/></Slab></X>");

  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to exchange-1.0").status, 0);

  EXPECT_NE(readFile(out).find("<Slab><Bedding Number='3'/></Slab>"), std::string::npos);
  EXPECT_EQ(readFile(out).find("Name=\"B\""), std::string::npos);
}

TEST(ConvertRefusal, ReplacesNoExchangeDocumentThatHoldsMoreThanBeddings) {
  const char* const message =
      ": this holds more than beddings, which a document of another form would destroy; name "
      "another file\n";

  EXPECT_EQ(tryToReplace("<X><B><Bedding Name='A'/></B></X>", "exchange"), message);
  EXPECT_EQ(tryToReplace("<Beddings><Bedding Name='A'/><Load/></Beddings>", "exchange"), message);
  EXPECT_EQ(tryToReplace("<Beddings P='1'><Bedding Name='A'/></Beddings>", "exchange"), message);
  EXPECT_EQ(tryToReplace("<X><B><CurveBedding Name='A'/></B></X>", "exchange-1.0"), message);
  EXPECT_EQ(tryToReplace("<X><Beddings/></X>", "kvml"), message);
}

TEST(ConvertRefusal, TakesTheVersionThatIsGivenForWhatItReadsOnly) {
  const std::string in = makeFile("in.xml", "<B><SurfaceBedding Number='1' Name='A'/></B>");
  const std::string out = makeFile("out.xml", "<X><B><Bedding Name='A'/></B></X>");

  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to exchange --version 2.0").status, 2);
  EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to exchange-1.0 --version 2.0").status, 0);
}

TEST(Convert, ReplacesADocumentThatHoldsNothingElse) {
  const std::string in = makeModelFile("<FOUND NUMBER='3' NAME='A' FXX='1'/>");
  for (const char* text : {"<Beddings><Bedding Name='A'/></Beddings>", "<Beddings/>",
                           "<Kvml><Beddings/></Kvml>", ""}) {
    const std::string out = makeFile("out.xml", text);

    EXPECT_EQ(run("convert '" + in + "' '" + out + "' --to kvml").status, 0);
    EXPECT_EQ(readFile(out), declaration + "<Kvml>\n  <Beddings />\n</Kvml>\n") << text;
  }
}

// --- Errors

TEST(ConvertErrors, NamesAFormThatThereIsNot) { EXPECT_EQ(run("convert a b --to xml").status, 2); }

TEST(ConvertErrors, WritesNothingWhenTheDocumentCannotBeRead) {
  const std::string in = makeFile("in.xml", makeDocument("<FOUNDATIONS>"));
  const std::string out = makeFile("out.xml", "old");

  const Result result = run("convert '" + in + "' '" + out + "' --to exchange");

  EXPECT_EQ(result.err,
            "kvfound: " + in + ":4:3: this end tag does not close the element that is open\n");
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(readFile(out), "old");
}

TEST(ConvertErrors, AsksForNamesThatAreEmpty) {
  const std::string in = makeModelFile("");

  EXPECT_EQ(run("convert '' x --to legacy").err,
            "kvfound: the name of the file to read is empty\n");
  EXPECT_EQ(run("convert '" + in + "' '' --to legacy").err,
            "kvfound: the name of the file to write is empty\n");
}

TEST(ConvertErrors, ReadsNoListing) {
  const std::string in = makeFile("in.xml", "<Kvml><Beddings/></Kvml>");

  EXPECT_EQ(run("convert '" + in + "' - --to legacy").err,
            "kvfound: " + in +
                ": there are no beddings in <Kvml>; a legacy model or an exchange document can be "
                "read, a Kvml listing cannot\n");
}

// --- Units

const std::string scaledNote =
    "stiffness was scaled: areas by 0.000001, lines by 0.001, rotations by 1000\n";

const std::string supports =
    "<FOUND NUMBER='1' NAME='A' FXAREA='1' FYAREA='2' FZAREA='3' FXLINE='4' FYLINE='5' FZLINE='6' "
    "FXX='7' FACAREA='0.5'/>";
const std::string scaledSupports =
    "<FOUND NUMBER='1' NAME='A' FXAREA='0.000001' FYAREA='0.000002' FZAREA='0.000003' "
    "FXLINE='0.004' "
    "FYLINE='0.005' FZLINE='0.006' FXX='7000' FACAREA='0.5'/>";

TEST(ConvertUnits, ScalesEachKindInPlaceAndLeavesTheRest) {
  const std::string path = makeModelFile("<!-- kept -->" + supports);

  const Result result = run("convert '" + path + "' '" + path +
                            "' --to legacy --scale-force 1000 --scale-length 1000");

  EXPECT_EQ(result.err, "kvfound: " + path + ": " + scaledNote);
  EXPECT_EQ(readFile(path),
            makeDocument("<FOUNDATIONS><!-- kept -->" + scaledSupports + "</FOUNDATIONS>"));
}

TEST(ConvertUnits, NamesThoseOfTheResult) {
  const std::string path = makeFile("in.csv", "#units,kN,m\nareaZ\n15000\n");

  const Result result = run("convert '" + path + "' '" + path + "' --to csv --units kN,m:N,mm -q");

  EXPECT_EQ(result.err, "");
  EXPECT_EQ(readFile(path), "#units,N,mm\nareaZ\n0.015\n");
}

TEST(ConvertUnits, TakesLabelsAwayThatHoldNoLonger) {
  const std::string path = makeFile("in.csv", "#units,kN,m\nareaZ\n15000\n");

  run("convert '" + path + "' '" + path + "' --to csv --scale-force 1000 --scale-length 1000");

  EXPECT_EQ(readFile(path), "areaZ\n0.015\n");
}

TEST(ConvertUnits, KeepsLabelsFromTablesToJson) {
  const std::string path = makeFile("in.csv", "#units,kN,m\nareaZ\n15000\n");

  EXPECT_NE(convert(path, "json").out.find("\"force\": \"kN\""), std::string::npos);
}

TEST(ConvertUnits, AreToldWhereTheFormNamesNone) {
  const std::string path = makeFile("in.csv", "#units,kN,m\nareaZ\n15000\n");

  EXPECT_NE(convert(path, "legacy")
                .err.find("a document of this form names no units; those of IN are kN,m\n"),
            std::string::npos);
}

TEST(ConvertUnits, MustBeThoseThatADocumentNames) {
  const std::string path = makeFile("in.csv", "#units,kN,m\nareaZ\n15000\n");

  EXPECT_EQ(run("convert '" + path + "' - --to csv --units N,mm:kN,m -q").err,
            "kvfound: " + path + ": its units are kN,m, not N,mm; nothing was converted\n");
}

TEST(ConvertUnits, RefuseWhatIsNoFactor) {
  for (const char* factor : {"0", "-1", "inf", "nan", "x", "1e31"}) {
    const Result result = run("convert a.xml b.xml --to csv --scale-force=" + std::string(factor));

    EXPECT_EQ(
        result.err,
        "kvfound: --scale-force cannot be \"" + std::string(factor) +
            "\": it takes a number above 0 such as 1000 or 0.001, of at most 17 digits, from 1e-30 "
            "to 1e30; see kvfound convert --help\n");
    EXPECT_EQ(result.status, 2);
  }
}

TEST(ConvertUnits, NameTheUnitThatIsMeant) {
  EXPECT_EQ(run("convert a.xml b.xml --to csv --units kn,m:N,mm").err,
            "kvfound: --units cannot be \"kn,m:N,mm\": there is no unit of force \"kn\"; did you "
            "mean kN?; see kvfound convert --help\n");
}

TEST(ConvertUnits, RefuseFactorsBesideNames) {
  EXPECT_EQ(run("convert a.xml b.xml --to csv --units kN,m:N,mm --scale-force 2").err,
            "kvfound: --units tells the factors already; leave --scale-force and --scale-length "
            "out; see kvfound convert --help\n");
}

TEST(ConvertUnits, RefuseAValueThatBecomesTooLarge) {
  const std::string path = makeModelFile("<FOUND NUMBER='1' NAME='A' FXX='1e306'/>");

  EXPECT_EQ(run("convert '" + path + "' - --to legacy --scale-force 1000").err,
            "kvfound: " + path +
                ": number 1 \"A\": lineRotationX 1e+306 is too large to be scaled by 1000; "
                "nothing was written\n");
}

TEST(ConvertUnits, AreLabelledOnceOnly) {
  EXPECT_EQ(
      run("convert a.xml b.csv --to csv --units kN,m:N,mm --unit-force N --unit-length mm").err,
      "kvfound: --units names the units already; leave --unit-force and --unit-length out; "
      "see kvfound convert --help\n");
}

TEST(ConvertUnits, LabelNoXml) {
  const std::string path = makeModelFile(supports);

  for (const char* form : {"legacy", "exchange", "exchange-1.0", "kvml"}) {
    const Result result =
        run("convert '" + path + "' - --unit-force kN --unit-length m --to " + form);

    EXPECT_EQ(result.err,
              "kvfound: --unit-force and --unit-length label csv and json; other forms name no "
              "units\n");
    EXPECT_EQ(result.status, 2);
  }
}

TEST(ConvertUnits, LeaveADocumentAloneOfWhichNotAllCanBeRead) {
  const std::string document =
      "<X><SurfaceBedding Number='1' Name='A' StiffnessZ='1'/>"
      "<SurfaceBedding Number='0' Name='B' StiffnessZ='2'/></X>";
  const std::string path = makeFile("xml", document);

  const Result result =
      run("convert '" + path + "' '" + path + "' --to exchange --scale-force 1000");

  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.err.find("kvfound: " + path +
                            ": was not written, since what cannot be read would keep its units; "
                            "name another file than IN\n"),
            std::string::npos)
      << result.err;
  EXPECT_EQ(readFile(path), document);
}

TEST(ConvertUnits, OfATableThatIsThereAreThoseOfWhatIsWritten) {
  const std::string in = makeFile("in.csv", "number,areaZ\n1,2\n");
  const std::string out = makeFile("out.csv", "#units,N,mm\nnumber,areaZ\n1,1\n");

  run("convert '" + in + "' '" + out + "' --to csv");

  EXPECT_EQ(readFile(out), "number,areaZ\n1,2\n");
}

// --- Tables

TEST(ConvertTables, FromEnglishToGermanAndBack) {
  const std::string english = makeFile("in.csv", "number,areaZ\n1,2.5\n2,1.125\n");
  const std::string german = makeFile("out.csv", "");

  EXPECT_EQ(run("convert '" + english + "' '" + german + "' --to csv --decimal comma").err, "");
  EXPECT_NE(readFile(german).find("\n1;Found0001;false;0;0;2,5;"), std::string::npos)
      << readFile(german);
  EXPECT_NE(readFile(german).find("\n2;Found0002;false;0;0;1,1250;"), std::string::npos);
  const Result back = run("show '" + german + "' --format csv --decimal point --separator comma");
  EXPECT_EQ(back.err, "");
  EXPECT_NE(back.out.find("\n2,Found0002,false,0,0,1.125,"), std::string::npos) << back.out;
}

}  // namespace
