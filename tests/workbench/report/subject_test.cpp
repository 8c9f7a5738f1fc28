#include "report/subject.h"

#include <string>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "report/frame.h"
#include "support/temporary_files.h"

namespace {

using Documents::Document;
using Report::chooseLabels;
using Report::Subject;
using Report::UnitsFrom;
using TestSupport::TemporaryFile;

constexpr const char* table =
    "#units,kN,m\nnumber,name,areaZ,generated,current\n1,A,-1,,true\n2,B,2,true,\n";

Document makeTable() { return Document({"a.csv", "", table}); }

TEST(ReportSubject, TellsAllOfADocument) {
  Document document = makeTable();
  const Subject subject(document);

  const Report::Content content = subject.tell({}, {"today"});

  EXPECT_EQ(content.total, 2U);
  EXPECT_FALSE(content.isSelection());
  EXPECT_EQ(content.findings.list().size(), 1U);
  EXPECT_EQ(content.current, document.getFoundations().getFoundations().front());
  EXPECT_EQ(content.date.text, "today");
}

TEST(ReportSubject, KeepsWhatIsFoundInThoseThatAreLeftOut) {
  Document document = makeTable();
  Selection generated;
  generated.selectGenerated();

  const Subject subject(document, generated);

  const Report::Content content = subject.tell({}, {});
  EXPECT_TRUE(content.isSelection());
  EXPECT_EQ(content.total, 2U);
  EXPECT_EQ(content.findings.list().size(), 1U);
  EXPECT_EQ(content.current->getName(), "A");
}

TEST(ReportSubject, NeedsFoundations) {
  Document document = makeTable();
  Selection missing;
  missing.selectName("C");

  EXPECT_THROW(Subject(document, missing), UserError);
}

TEST(ReportLabels, AreThoseOfTheDocumentUnlessOthersAreGiven) {
  const Report::Labels own = chooseLabels(makeTable(), {});
  EXPECT_EQ(own.units, (Units{"kN", "m"}));
  EXPECT_EQ(own.from, UnitsFrom::document);
  EXPECT_THROW(chooseLabels(makeTable(), {"N", "m"}), UserError);

  const Document silent({"a.csv", "", "name\nA\n"});
  const Report::Labels given = chooseLabels(silent, {"N", "m"});
  EXPECT_EQ(given.units, (Units{"N", "m"}));
  EXPECT_EQ(given.from, UnitsFrom::user);
  EXPECT_EQ(given.ofDocument, Units{});
}

TEST(ReportDate, IsThatOfAFileWhereThereIsOne) {
  const TemporaryFile file(table);

  Documents::ReadOptions asTable;
  asTable.form = Documents::Form::csv;

  const Document saved(Documents::readFile(file.get(), asTable.form), asTable);

  EXPECT_TRUE(Report::findDate(saved).isOfFile);
  EXPECT_FALSE(Report::findDate(makeTable()).isOfFile);
}

/// The error where a page would take the place of a file that holds this.
std::string replace(const std::string& text) {
  const TemporaryFile file(text);
  try {
    Report::requireReplaceable(OutputFile(file.get()));
    return "";
  } catch (const FileError& error) {
    return error.getSentence();
  }
}

TEST(ReportPage, TakesThePlaceOfAnOlderOneOnly) {
  EXPECT_EQ(replace("<!DOCTYPE html><meta name=\"generator\" content=\"kvfound\">"), "");
  EXPECT_EQ(replace(""), "");
  EXPECT_EQ(replace("text"),
            "this is no page that kvfound made, and was not replaced; name another file");
}

}  // namespace
