#include <functional>
#include <new>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "checks/rules.h"
#include "comparing/differences.h"
#include "documents/document.h"
#include "documents/editing.h"
#include "documents/losses.h"
#include "documents/notes.h"
#include "documents/writing.h"
#include "files/user_error.h"
#include "foundations/keep_list.h"
#include "report/page.h"
#include "report/subject.h"
#include "support/allocation_faults.h"
#include "support/temporary_files.h"
#include "text/near_name.h"

// What the workbench leaves when memory runs out, at every single allocation.

namespace {

using Documents::Document;
using Found::Tests::countLiveBlocks;
using Found::Tests::FailingAllocation;
using TestSupport::TemporaryFile;
using TestSupport::TemporaryPath;

const std::string declaration = "<?xml version=\"1.0\"?>\n";

const std::string model =
    declaration +
    "<SMOD VERSION='1'>\n"
    "<FOUNDATIONS CURRENT='Raft on clay, axis A to D' COLOUR='red'>"
    "<FOUND NUMBER='x' NAME='Raft on clay, axis A to D' FZAREA='1.5' "
    "FXAREA='-1' FAILZAREA='1' IsGenerated='1'><LAYER/></FOUND><GROUND/>"
    "<FOUND NUMBER='123456' NAME='Strip footing &lt;under the silo>, W\xFCst' "
    "FXLINE='12345678.25' FXX='1e300' FAILYLINE='-1' FAILZLINE='7'/>"
    "<FOUND NUMBER='123456' FACAREA='0.5'/></FOUNDATIONS><FOUNDATIONS/>"
    "</SMOD>";

const std::string exchange =
    "<Exchange Version='2.0 of the exchange form'><Beddings>"
    "<CurveBedding Number='1' Name='Strip footing, axis A' StiffnessX='1'/>"
    "<SurfaceBedding Number='1' Name='Strip footing, axis A' StiffnessX='kN'/>"
    "<SurfaceBedding Number='2' Name='Strip footing, axis A' StiffnessZFailure='tensile'/>"
    "<CurveBedding Number='7.9'/><CurveBedding Name='B'/><SurfaceBedding Number='0' Name='C'/>"
    "<Bedding Name='D'/><Load/></Beddings></Exchange>";

const std::string first =
    "<Exchange><A><Bedding Name='Strip footing, axis A'/><Bedding/><Bedding Name=''/></A>"
    "<B><Bedding Name='Strip footing, axis A' CurveStiffnessX='1'/></B></Exchange>";

const std::string table =
    "# Soil report of the silo\r\n#units;kN;m\r\nnumber;name;areaX;areaFailureZ;current\r\n"
    "123456;\"Raft on clay, axis A to D\";12345678,25;tension;WAHR\r\n;;;;\r\n"
    "7;Strip footing under the silo, W\xFCst;;;\r\n";

const std::string data =
    "{\"foundations\": [{\"name\": \"Raft on clay, axis A to D\", \"areaX\": 1.5},"
    "{\"number\": 7, \"areaFailureZ\": \"tension\", \"current\": true}],"
    "\"units\": {\"force\": \"kilonewton of force\", \"length\": \"m\"}}";

// LLVM's standard library loses what a container has made when its constructor fails, up to
// version 14.
#if defined(_LIBCPP_VERSION) && _LIBCPP_VERSION < 15000
constexpr bool losesBlocks = true;
#else
constexpr bool losesBlocks = false;
#endif

/// Lets every allocation of `call` fail in turn. It must do without, or tell of that by
/// std::bad_alloc or as the user is told it, and keep nothing.
void failEverywhere(const std::function<void()>& call) {
  const std::string told = ": is too large for the memory of this machine";
  call();  // makes what is made once
  bool isDone = false;
  for (int n = 1; !isDone; ++n) {
    const long before = countLiveBlocks();
    try {
      const FailingAllocation failing(n);
      call();
      isDone = !failing.hasFailed();
    } catch (const std::bad_alloc&) {
    } catch (const UserError& error) {
      EXPECT_NE(std::string(error.what()).find(told), std::string::npos) << error.what();
    }
    EXPECT_TRUE(losesBlocks || countLiveBlocks() == before) << "allocation " << n;
  }
}

Files::Content hold(const std::string& bytes) { return {"file.xml", "", bytes}; }

TEST(WorkbenchFaults, OpeningADocumentKeepsNothing) {
  for (const std::string& bytes : {model, exchange, first, std::string("<Kvml><Beddings/></Kvml>")})
    failEverywhere([&bytes] {
      Document document(hold(bytes));
      document.getRoot().listChildren();
      document.getEntries();
    });
}

/// As tables and data are.
Documents::ReadOptions asTable() {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  return options;
}

TEST(WorkbenchFaults, OpeningTablesAndDataKeepsNothing) {
  for (const std::string& bytes : {table, data})
    failEverywhere([&bytes] {
      Document document(hold(bytes), asTable());
      document.getFoundations();
      Checks::find(document);
    });
}

TEST(WorkbenchFaults, FaultsOfTablesAndDataAreTold) {
  for (const std::string& bytes :
       {table + "8;Strip footing under the barn;12.345.678;;\r\n", table + "8;\"9\r\n",
        std::string("number;stiffness of the area\r\n"),
        std::string("{\"foundations\": [{\"stiffness of the area\": 1}]}"),
        std::string("{\"foundations\": [{\"number\": 01}]}")}) {
    std::string told;
    failEverywhere([&] {
      try {
        const Document document(hold(bytes), asTable());
      } catch (const UserError& error) {
        const std::string memory = ": is too large for the memory of this machine";
        told = error.what();
        if (told == "file.xml" + memory) throw;
      }
    });
    EXPECT_NE(told, "") << bytes;
  }
}

TEST(WorkbenchFaults, EditingTablesAndDataKeepsNothing) {
  for (const std::string& bytes : {table, data}) {
    std::string edited;
    failEverywhere([&] {
      Document document(hold(bytes), asTable());
      Editing::Draft draft(document);
      draft.remove(draft.getCopy(0));
      draft.getCopy(1).setName("Strip footing under the barn, W\xC3\xBCst");
      edited = Editing::edit(document, draft.makeWish())->getContent().bytes;
    });
    EXPECT_NE(edited.find("under the barn"), std::string::npos);
  }
}

TEST(WorkbenchFaults, ReadingAFileKeepsNothing) {
  const TemporaryFile file(model + std::string(3 * Files::lengthOfStart, ' '));
  failEverywhere([&file] { Documents::readFile(file.get()); });
}

TEST(WorkbenchFaults, CheckingADocumentKeepsNothing) {
  for (const std::string& bytes : {model, exchange, first})
    failEverywhere([&bytes] {
      Document document(hold(bytes));
      Documents::listNotes(document);
      Checks::find(document);
    });
}

TEST(WorkbenchFaults, ComparingDocumentsKeepsNothing) {
  failEverywhere([] {
    Document before(hold(model));
    Document after(hold(exchange));
    for (const Comparing::Difference& difference : Comparing::compare(before, after).foundations)
      for (const Fields::Difference& field : difference.fields) {
        Fields::show(field.first);
        Fields::show(field.second);
      }
  });
}

TEST(WorkbenchFaults, AReportIsWholeOrNone) {
  const Units units = {"kilonewton", "metre"};
  std::string page;
  const auto print = [&units](const std::string& bytes) {
    Document document(hold(bytes));
    const Report::Subject subject(document);
    return Report::makePage(
        subject.tell({units, Report::UnitsFrom::user, {}}, {"2026-03-01 09:30"}));
  };
  for (const std::string& bytes : {model, exchange}) {
    const std::string whole = print(bytes);
    failEverywhere([&] { EXPECT_EQ(print(bytes), whole); });
  }
}

TEST(WorkbenchFaults, WritingADocumentKeepsNothing) {
  for (const Documents::Form form :
       {Documents::Form::legacy, Documents::Form::exchange, Documents::Form::firstExchange,
        Documents::Form::kvml, Documents::Form::csv, Documents::Form::json}) {
    const TemporaryPath path;
    failEverywhere([&] {
      Document in(hold(model));
      in.getFoundations();
      OutputFile file(path.get());
      Writing::Output output(file, form, in);
      output.write(in.getFoundations());
      output.listLosses(in.getFoundations());
      output.commit();
    });
    EXPECT_GT(TestSupport::load(path.get()).size(), 0u);
  }
}

TEST(WorkbenchFaults, LookingForNamesKeepsNothing) {
  failEverywhere([] {
    std::istringstream in("7\nA name that is too long for a short string\n");
    in.exceptions(std::ios::badbit);
    KeepList list(in);
    Found::Foundation foundation;
    foundation.setNumber(7);
    foundation.setName("A name that is too long for a short string");
    list.usesFoundation(&foundation);
    list.listUnmatched();
    findNearName("a name that is too long", {"a name that is far too long", "another one"});
  });
}

}  // namespace
