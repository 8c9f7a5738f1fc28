#include "documents/document.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "support/temporary_files.h"

namespace {

using Documents::ByteRange;
using Documents::Document;
using Documents::Entries;
using Documents::Entry;
using Documents::Form;
using Fate = Entry::Fate;

Files::Content hold(const std::string& bytes) { return {"file", "", bytes}; }

std::unique_ptr<Document> open(const std::string& bytes,
                               const std::optional<std::string>& version = std::nullopt) {
  return std::make_unique<Document>(hold(bytes), Documents::ReadOptions{version, {}, {}});
}

/// The error of a document that cannot be opened or read; empty when there is none.
std::string tell(const std::string& bytes,
                 const std::optional<std::string>& version = std::nullopt) {
  try {
    open(bytes, version)->requireReadable();
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

const std::string declaration = "<?xml version=\"1.0\"?>\n";

std::string makeModel(const std::string& elements) {
  return declaration + "<SMOD>" + elements + "</SMOD>";
}

std::string cut(const Document& document, const Documents::Element& element) {
  const ByteRange range = document.locate(element);
  return document.getContent().bytes.substr(range.begin, range.end - range.begin);
}

// --- Forms

TEST(DocumentForm, IsToldByTheContent) {
  EXPECT_EQ(open(makeModel(""))->getForm(), Form::legacy);
  EXPECT_EQ(open("<X><CurveBedding/></X>")->getForm(), Form::exchange);
  EXPECT_EQ(open("<X><SurfaceBedding/></X>")->getForm(), Form::exchange);
  EXPECT_EQ(open("<Beddings/>")->getForm(), Form::exchange);
  EXPECT_EQ(open("<X><Bedding/></X>")->getForm(), Form::firstExchange);
  EXPECT_EQ(open("<Kvml><Beddings/></Kvml>")->getForm(), Form::kvml);
  EXPECT_EQ(open("<Kvml><X><Bedding/></X></Kvml>")->getForm(), Form::firstExchange);
}

TEST(DocumentForm, OfAnExchangeDocumentGoesByTheVersionThatIsGiven) {
  EXPECT_EQ(open("<X><Bedding/></X>", "2.0")->getForm(), Form::exchange);
  EXPECT_EQ(open("<X><CurveBedding/></X>", "1.0")->getForm(), Form::firstExchange);
  EXPECT_EQ(open(makeModel(""), "1.0")->getForm(), Form::legacy);
}

TEST(DocumentForm, IsThatOfAModelOnlyFromTheSecondLineOn) {
  for (const char* first :
       {"", "text", "<!-- a", "<?xml version='1.0'?><!-- a -->", "<?xml a='1' a='2'?>"})
    EXPECT_EQ(open(std::string(first) + "\n<!-- b --><SMOD/>")->getForm(), Form::legacy) << first;
  EXPECT_EQ(open("<X>\n<SMOD/><Bedding/></X>")->getForm(), Form::firstExchange);
}

// --- Errors

TEST(DocumentErrors, NameTheFileAndThePlace) {
  EXPECT_EQ(tell("<a>\n<b c='' c=''/></a>"), "file:2:9: the attribute \"c\" is given twice");
  EXPECT_EQ(tell(makeModel("<b c='' c=''/>")), "file:2:15: the attribute \"c\" is given twice");
  EXPECT_EQ(tell(""), "file:1:1: the document has no root element");
  EXPECT_EQ(tell(std::string("\0<a/>", 5)),
            "file:1:1: a NUL character; only 8-bit text such as UTF-8 can be read");
  EXPECT_EQ(tell(std::string("<a\0", 3)),
            "file:1:3: a NUL character; only 8-bit text such as UTF-8 can be read");
}

TEST(DocumentErrors, TellWhatIsNoXml) {
  EXPECT_EQ(tell("text"),
            "file: this is no XML document (a table or JSON needs the ending .csv or .json, or its "
            "form told)");
  EXPECT_EQ(tell(" \xEF\xBB\xBF text <a/>"),
            "file: this is no XML document (a table or JSON needs the ending .csv or .json, or its "
            "form told)");
  EXPECT_EQ(tell(std::string(Files::lengthOfStart, ' ')),
            "file: this is no XML document (a table or JSON needs the ending .csv or .json, or its "
            "form told)");
}

TEST(DocumentErrors, TellWhatHoldsNoBeddings) {
  const std::string end =
      ">; a legacy model or an exchange document can be read, a Kvml listing cannot";
  EXPECT_EQ(tell("<X/>"), "file: there are no beddings in <X" + end);
  EXPECT_EQ(tell("<Kvml><Beddings/></Kvml>"), "file: there are no beddings in <Kvml" + end);
}

TEST(DocumentErrors, AreNoneOfAnExchangeDocument) {
  EXPECT_EQ(tell("<X><Bedding/></X>"), "");
  EXPECT_EQ(tell("<Beddings/>"), "");
}

TEST(DocumentErrors, TellHowAModelMustStart) {
  EXPECT_EQ(tell("<SMOD/>"),
            "file: <SMOD> must start on a line of its own, behind the line of the XML declaration");
  EXPECT_EQ(tell("<!-- a -->\n<SMOD/>"),
            "file: the first line must be an XML declaration, <?xml version=\"1.0\"?>");
  EXPECT_EQ(tell("any XmL\n<SMOD/>"), "");
}

TEST(DocumentErrors, TellThatTheFirstLineOfAModelIsTooLong) {
  const auto makeFirst = [](std::size_t length) {
    return "<?xml " + std::string(length - 8, 'a') + "?>\n<SMOD/>";
  };
  EXPECT_EQ(tell(makeFirst(1023)), "");
  EXPECT_EQ(tell(makeFirst(1024)), "file:1:1024: the text cannot be read from here on");
}

TEST(DocumentErrors, TellWhatIsNoVersion) {
  for (const char* version : {"", "a", "1.", ".1", "1..0", "-1"})
    EXPECT_EQ(
        tell("<X><Bedding/></X>", version),
        "\"" + std::string(version) + "\" is no version; give 1.0, or a later one such as 2.0");
}

TEST(DocumentFile, IsReadNoFurtherThanItCanBeXml) {
  const std::string start(Files::lengthOfStart, 'a');
  const struct {
    std::string bytes;
    std::size_t read;
  } rows[] = {
      {start + "<a/>", Files::lengthOfStart},
      {"<" + start, Files::lengthOfStart + 1},
      {std::string("<\0", 2) + start, Files::lengthOfStart},
      {"text", 4},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Documents::readFile(TestSupport::TemporaryFile(row.bytes).get()).bytes.size(),
              row.read);
}

TEST(DocumentSelection, LeavesOnlyWhatIsSelected) {
  Document document({"file", "", "<B><Bedding Name='A'/><Bedding Name='B'/></B>"});
  Selection selection;
  selection.selectNumbers("2");
  document.keep(selection);

  ASSERT_EQ(document.getFoundations().getFoundations().size(), 1u);
  EXPECT_EQ(document.getFoundations().getFoundations()[0]->getName(), "B");
  EXPECT_EQ(document.getEntries()[0][0].foundation->getName(), "A");
}

TEST(DocumentSelection, OfAllLeavesAll) {
  Document document({"file", "", "<B><Bedding Name='A'/><Bedding Name='B'/></B>"});
  document.keep(Selection());

  EXPECT_EQ(document.getFoundations().getFoundations().size(), 2u);
}

TEST(DocumentSelection, OfNothingIsRefused) {
  const struct {
    const char* numbers;
    const char* error;
  } rows[] = {{"3", "file: there is no foundation number 3"},
              {"3-4", "file: no foundation is selected"}};
  for (const auto& row : rows) {
    Document document({"file", "", "<B><Bedding Name='A'/></B>"});
    Selection selection;
    selection.selectNumbers(row.numbers);
    try {
      document.keep(selection);
      ADD_FAILURE() << row.numbers;
    } catch (const UserError& error) {
      EXPECT_STREQ(error.what(), row.error);
    }
  }
}

// --- Elements

TEST(DocumentElement, StandsInTheBytes) {
  for (const std::string mark : {"", "\xEF\xBB\xBF"})
    for (const std::string end : {"\n", "\r\n"}) {
      const std::string found = "<FOUND NAME='>'" + end + " FZAREA='1'><x/></FOUND>";
      const auto document = open(mark + "<?xml version='1.0'?>" + end + "<SMOD>" + end +
                                 "<FOUNDATIONS><FOUND/>" + found + "</FOUNDATIONS></SMOD>");

      EXPECT_EQ(cut(*document, document->getEntries().front()[1].element), found);
    }
}

TEST(DocumentElement, OfAnExchangeDocumentStandsInTheBytes) {
  const auto document = open("\xEF\xBB\xBF<X>\r\n <Y>\r\n  <Bedding Name='A'></Bedding></Y></X>");

  EXPECT_EQ(cut(*document, document->getEntries().front()[0].element),
            "<Bedding Name='A'></Bedding>");
  EXPECT_EQ(document->locate(document->getRoot()).begin, 3u);
}

// --- Foundations

TEST(DocumentFoundations, OfAModelCameFromTheFirstList) {
  const auto document = open(
      makeModel("<A><FOUNDATIONS CURRENT='B'><FOUND NAME='A'/><GROUND/><FOUND NAME='B' NUMBER='7'/>"
                "</FOUNDATIONS></A><FOUNDATIONS><FOUND/></FOUNDATIONS>"));
  ASSERT_EQ(document->getEntries().size(), 2u);
  const Entries& entries = document->getEntries().front();
  ASSERT_EQ(entries.size(), 3u);

  EXPECT_EQ(document->getFoundations().getFoundations(),
            (std::vector<Found::Foundation*>{entries[0].foundation, entries[2].foundation}));
  EXPECT_EQ(document->getFoundations().getCurrentFoundation(), entries[2].foundation);
  EXPECT_EQ(entries[0].number, 1);
  EXPECT_EQ(entries[2].number, 7);
  EXPECT_EQ(entries[1].fate, Fate::unknown);
  EXPECT_EQ(entries[1].foundation, nullptr);
}

TEST(DocumentFoundations, OfAModelWithoutAListAreNone) {
  EXPECT_TRUE(open(makeModel(""))->getFoundations().getFoundations().empty());
}

// --- Units of a project

Units readUnits(const std::string& elements) { return open(makeModel(elements))->getLabels(); }

TEST(DocumentProject, NamesTheUnits) {
  EXPECT_EQ(readUnits("<NODES/><PROJECT UNITFORCE='kN' UNITLENGTH='m'/>"), (Units{"kN", "m"}));
}

TEST(DocumentProject, NamesNoUnitsUnlessBoth) {
  EXPECT_EQ(readUnits(""), Units{});
  EXPECT_EQ(readUnits("<PROJECT/>"), Units{});
  EXPECT_EQ(readUnits("<PROJECT UNITFORCE='kN'/>"), Units{});
  EXPECT_EQ(readUnits("<PROJECT UNITLENGTH='m'/>"), Units{});
  EXPECT_EQ(readUnits("<PROJECT UNITFORCE='kN' UNITLENGTH=''/>"), Units{});
}

TEST(DocumentProject, IsTheFirstThatNamesBothUnits) {
  EXPECT_EQ(readUnits("<PROJECT UNITFORCE='N'/><PROJECT UNITFORCE='kN' UNITLENGTH='m'/>"
                      "<PROJECT UNITFORCE='lbf' UNITLENGTH='ft'/>"),
            (Units{"kN", "m"}));
}

TEST(DocumentProject, IsAChildOfTheRoot) {
  EXPECT_EQ(readUnits("<A><PROJECT UNITFORCE='kN' UNITLENGTH='m'/></A>"), Units{});
}

TEST(DocumentProject, NamesUnitsInUtf8) {
  EXPECT_EQ(readUnits("<PROJECT UNITFORCE='k\xFCN' UNITLENGTH='m'/>"), (Units{"k\xC3\xBCN", "m"}));
}

TEST(DocumentProject, IsOneOfAModelOnly) {
  EXPECT_EQ(open("<X><PROJECT UNITFORCE='kN' UNITLENGTH='m'/><CurveBedding/></X>")->getLabels(),
            Units{});
  EXPECT_EQ(open("{\"foundations\": []}")->getLabels(), Units{});
}

// --- Beddings

/// What becomes of the beddings of a container.
std::vector<Fate> listFates(const std::string& beddings,
                            const std::optional<std::string>& version = std::nullopt) {
  const auto document = open("<Beddings>" + beddings + "</Beddings>", version);
  std::vector<Fate> fates;
  for (const Entry& entry : document->getEntries().front()) fates.push_back(entry.fate);
  return fates;
}

TEST(DocumentFate, OfABeddingIsToldByItsAttributes) {
  const struct {
    const char* attributes;
    Fate fate;
  } rows[] = {
      {"Number='1' Name='A'", Fate::read},
      {"Number=' +1a' Name=' '", Fate::read},
      {"Name='A'", Fate::numberMissing},
      {"Number='' Name='A'", Fate::numberMissing},
      {"Number='a1' Name='A'", Fate::numberMissing},
      {"Number='+-1' Name='A'", Fate::numberMissing},
      {"Number='2147483648' Name='A'", Fate::numberMissing},
      {"Number='2147483647' Name='A'", Fate::read},
      {"Number='0' Name='A'", Fate::numberTooSmall},
      {"Number='-5'", Fate::numberTooSmall},
      {"Number='1'", Fate::nameMissing},
      {"Number='1' Name=''", Fate::nameEmpty},
  };
  for (const auto& row : rows)
    for (const char* name : {"<CurveBedding ", "<SurfaceBedding "})
      EXPECT_EQ(listFates(std::string(name) + row.attributes + "/>"), std::vector<Fate>{row.fate})
          << row.attributes;
}

TEST(DocumentFate, OfAWholeBeddingNeedsANameAndTheFirstVersion) {
  EXPECT_EQ(listFates("<Bedding Name='A'/><Bedding/><Bedding Name=''/><Load/>"),
            (std::vector<Fate>{Fate::read, Fate::nameMissing, Fate::nameEmpty, Fate::unknown}));
  EXPECT_EQ(listFates("<Bedding Name='A'/>", "2.0"), std::vector<Fate>{Fate::ofFirstVersion});
}

TEST(DocumentFate, OfATakenNumberTellsTheOtherPartApart) {
  EXPECT_EQ(listFates("<CurveBedding Number='1' Name='A'/><CurveBedding Number='1' Name='A'/>"
                      "<SurfaceBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='B'/>"),
            (std::vector<Fate>{Fate::read, Fate::numberTaken, Fate::otherPart, Fate::numberTaken}));
}

TEST(DocumentFate, OfATakenNameIsAnotherName) {
  const auto document = open(
      "<X><A><CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A_1'/></A>"
      "<B><CurveBedding Number='3' Name='A'/></B></X>");
  const Entries& first = document->getEntries()[0];
  const Entry& renamed = document->getEntries()[1][0];

  EXPECT_EQ(renamed.fate, Fate::renamed);
  EXPECT_EQ(renamed.foundation->getName(), "A_2");
  EXPECT_EQ(renamed.nameHolder, &first[0]);
}

TEST(DocumentFate, OfAWholeBeddingMayBeANumberThatIsTaken) {
  const auto document = open(
      "<X><A><CurveBedding Number='2' Name='A'/><Bedding Name='B'/><Bedding Name='C'/></A></X>");
  const Entries& entries = document->getEntries().front();

  EXPECT_EQ(entries[1].number, 2);
  EXPECT_EQ(entries[1].numberHolder, &entries[0]);
  EXPECT_EQ(entries[1].foundation->getNumber(), 2);
  EXPECT_EQ(entries[2].number, 3);
  EXPECT_EQ(entries[2].numberHolder, nullptr);
}

TEST(DocumentFate, CountsWholeBeddingsContainerByContainer) {
  const auto document = open(
      "<X><A><Bedding Name='A'/><Bedding/><Bedding Name='B'/></A><B><Bedding Name='C'/></B></X>");

  EXPECT_EQ(document->getEntries()[0][2].number, 2);
  EXPECT_EQ(document->getEntries()[1][0].number, 1);
  EXPECT_EQ(document->getEntries()[1][0].numberHolder, &document->getEntries()[0][0]);
}

TEST(DocumentFate, OfBeddingsBesideAContainerThatIsNamedSoIsToBeOutside) {
  const auto document =
      open("<X><A><Bedding Name='A'/></A><Beddings><Bedding Name='B'/></Beddings></X>");

  ASSERT_EQ(document->getEntries().size(), 2u);
  EXPECT_EQ(document->getEntries()[0][0].element.readText("Name"), "B");
  ASSERT_EQ(document->getEntries()[1].size(), 1u);
  EXPECT_EQ(document->getEntries()[1][0].element.readText("Name"), "A");
  EXPECT_EQ(document->getEntries()[1][0].fate, Fate::outside);
}

}  // namespace
