#include <limits>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "documents/editing.h"
#include "files/user_error.h"
#include "workbench/documents/draft.h"

// What an edit makes of tables and data.

namespace {

using DraftTest::add;
using DraftTest::Change;
using DraftTest::remove;
using DraftTest::set;
using Editing::Draft;

constexpr const char* unchanged = "nothing to write";

/// The bytes of a table or of data after the change, or the error that it gives. Units stay as they
/// are where none are told.
std::string editSheet(const std::string& bytes, const Change& change,
                      const std::optional<Units>& units = {}) {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  Documents::Document base({"table", "", bytes}, options);
  Draft draft(base);
  change(draft);
  try {
    Editing::Wish wish = draft.makeWish();
    wish.units = units;
    const auto result = Editing::edit(base, wish);
    return result != nullptr ? result->getContent().bytes : unchanged;
  } catch (const UserError& error) {
    return error.what();
  }
}

const Change changeNothing = [](Draft&) {};

Change changeSecond(const char* field, const char* value) {
  return [=](Draft& draft) { set(draft, 1, field, value); };
}

const Change removeSecond = [](Draft& draft) { remove(draft, 1); };

const Change addNine = [](Draft& draft) { set(add(draft, 9, "I"), "areaX", "1.5"); };

TEST(EditingTables, WritesNothingWhenNothingChanges) {
  for (const char* bytes : {"number,name,areaX\n1,A, 1.50 \n\n+2,\"B\",nan\n,,\n",
                            "number;name\r\n1;W\xFCst\r\n", "name", "name,areaFactor\nA,\n"})
    EXPECT_EQ(editSheet(bytes, changeNothing), unchanged) << bytes;
}

TEST(EditingTables, ChangesOnlyTheRowThatIsConcerned) {
  EXPECT_EQ(editSheet("# from us\nname,areaX,number\n\"A\", 1.50 ,1\n\nB,+2,02\nC,3.0,3\n,,\n",
                      changeSecond("areaX", "2.5")),
            "# from us\nname,areaX,number\n\"A\", 1.50 ,1\n\nB,2.5,2\nC,3.0,3\n,,\n");
}

TEST(EditingTables, SpellsARowAsTheTableDoes) {
  EXPECT_EQ(editSheet("number;name;areaX;generated\r\n1;A;1,5;\r\n2;B;2,5;\r\n",
                      changeSecond("areaX", "1.125")),
            "number;name;areaX;generated\r\n1;A;1,5;\r\n2;B;1,1250;false\r\n");
  EXPECT_EQ(editSheet("number\tname\r1\tA\r2\tB\r3\tC", changeSecond("name", "=B")),
            "number\tname\r1\tA\r2\t'=B\r3\tC");
  EXPECT_EQ(editSheet("number,name\n1,A\n2,\"B\nC\"\n", changeSecond("name", "B,C")),
            "number,name\n1,A\n2,\"B,C\"\n");
}

TEST(EditingTables, KeepsAByteOrderMark) {
  EXPECT_EQ(editSheet("\xEF\xBB\xBFnumber,name\n1,A\n2,B\n", changeSecond("name", "W\xC3\xBCst")),
            "\xEF\xBB\xBFnumber,name\n1,A\n2,W\xC3\xBCst\n");
}

TEST(EditingTables, KeepsTheEncoding) {
  EXPECT_EQ(
      editSheet("number;name\n1;W\xFCst\n2;B\n", changeSecond("name", "\xC3\x9F\xE2\x82\xAC")),
      "number;name\n1;W\xFCst\n2;\xDF\x80\n");
}

TEST(EditingTables, RefusesACharacterThatTheEncodingLacks) {
  EXPECT_EQ(editSheet("number;name\n1;W\xFCst\n2;B\n", changeSecond("name", "\xCE\xB1")),
            "table: this table is in windows-1252, which has no \"\xCE\xB1\"; save it in UTF-8");
}

TEST(EditingTables, AddsNoEndToALastLineThatHasNone) {
  EXPECT_EQ(editSheet("number,name\n1,A\n2,B", changeSecond("name", "C")), "number,name\n1,A\n2,C");
  EXPECT_EQ(editSheet("number,name\r\n1,A\r\n2,B", changeSecond("name", "C")),
            "number,name\r\n1,A\r\n2,C");
  EXPECT_EQ(editSheet("number,name\n1,A\n2,B", addNine), "number,name\n1,A\n2,B\n9,I");
}

TEST(EditingTables, KeepsTheLineEndOfEachRow) {
  EXPECT_EQ(editSheet("number,name\n1,A\r\n2,B\r\n\r\n3,C\n", changeSecond("name", "D")),
            "number,name\n1,A\r\n2,D\r\n\r\n3,C\n");
}

TEST(EditingTables, AddsRowsBehindTheLastOne) {
  EXPECT_EQ(editSheet("number,name,areaX\r\n1,A,\r\n", addNine),
            "number,name,areaX\r\n1,A,\r\n9,I,1.5\r\n");
  EXPECT_EQ(editSheet("number;areaX;name", addNine), "number;areaX;name\n9;1,5;I");
  EXPECT_EQ(editSheet("number,name\n", addNine), "number,name\n9,I\n");
}

TEST(EditingTables, RemovesRows) {
  EXPECT_EQ(editSheet("number,name\n1,A\n2,B\n3,C\n", removeSecond), "number,name\n1,A\n3,C\n");
  EXPECT_EQ(editSheet("number,name\r\n1,A\r\n2,B", removeSecond), "number,name\r\n1,A");
  EXPECT_EQ(editSheet("number,name\r\n1,A\n2,B", removeSecond), "number,name\r\n1,A");
  EXPECT_EQ(editSheet("number,name\n1,A\n\n2,B\n", removeSecond), "number,name\n1,A\n\n");
}

TEST(EditingTables, KeepsTellingWhatStandsBeforeDecimals) {
  EXPECT_EQ(editSheet("# A\nname;areaX;areaY\nA; 2,500;12,250\nB;0,5;\nC;1;\n", removeSecond),
            "# A\nname;areaX;areaY\nA;2,5;12,25\nC;1;0\n");
  EXPECT_EQ(editSheet("name;areaX\nA;2,500\nB;0,5\n", changeSecond("areaX", "1")),
            "name;areaX\nA;2,5\nB;1\n");
}

TEST(EditingTables, LeavesOpenWhatWasOpen) {
  Documents::ReadOptions options;
  options.form = Documents::Form::csv;
  options.dialect.decimal = ',';
  Documents::Document base({"table", "", "name;areaX\nA;2,500\nB;3,500\n"}, options);
  Draft draft(base);
  remove(draft, 1);

  EXPECT_EQ(Editing::edit(base, draft.makeWish())->getContent().bytes, "name;areaX\nA;2,500\n");
}

TEST(EditingTables, ChangesWhichFoundationIsCurrent) {
  const Change makeSecondCurrent = [](Draft& draft) {
    draft.getFoundations().setCurrentFoundation(&draft.getCopy(1));
  };
  EXPECT_EQ(editSheet("name,current\nA,TRUE\nB,\nC,no\n", makeSecondCurrent),
            "name,current\nA,false\nB,true\nC,no\n");
  EXPECT_EQ(editSheet("number,name\n1,A\n2,B\n", makeSecondCurrent), unchanged);
}

TEST(EditingTables, TellsNaughtFromNothing) {
  const Change makeZero = [](Draft& draft) {
    const KvVector3D zero;
    draft.getCopy(0).setDispArea(&zero);
  };
  EXPECT_EQ(editSheet("name,areaX\nA,\n", makeZero), "name,areaX\nA,0\n");
}

TEST(EditingTables, NamesUnitsInTheRowThatNamedThem) {
  EXPECT_EQ(editSheet("#units;kN;m\r\nnumber;name\r\n1;A\r\n", changeNothing, Units{"N", "mm"}),
            "#units;N;mm\r\nnumber;name\r\n1;A\r\n");
  EXPECT_EQ(editSheet("#units,kN,m,,\nnumber,name\n1,A\n2,B\n", changeSecond("name", "C"),
                      Units{"a,b", "\xC2\xB5m"}),
            "#units,\"a,b\",\xC2\xB5m\nnumber,name\n1,A\n2,C\n");
  EXPECT_EQ(editSheet("#units,kN,m\nname\nA\n", changeNothing, Units{"kN", "m"}), unchanged);
}

TEST(EditingTables, NamesUnitsBeforeTheColumnsWhereNothingNamedThem) {
  EXPECT_EQ(editSheet("\xEF\xBB\xBF# from us\nname\nA\n", changeNothing, Units{"N", "mm"}),
            "\xEF\xBB\xBF# from us\n#units,N,mm\nname\nA\n");
}

TEST(EditingTables, NamesUnitsNoLonger) {
  EXPECT_EQ(editSheet("# from us\n#units,kN,m\nname\nA\n", changeNothing, Units{}),
            "# from us\nname\nA\n");
}

TEST(EditingTables, RefusesUnitsThatTheEncodingLacks) {
  EXPECT_EQ(editSheet("name\nW\xFCst\n", changeNothing, Units{"kN", "\xCE\xB1"}),
            "table: this table is in windows-1252, which has no \"\xCE\xB1\"; save it in UTF-8");
}

// --- Data

const std::string data =
    "{\"foundations\": [{\"name\": \"A\", \"areaX\": 1.50}, {\"name\": \"B\"}], "
    "\"units\": {\"length\": \"m\", \"force\": \"kN\"}}";

TEST(EditingData, WritesNothingWhenNothingChanges) {
  EXPECT_EQ(editSheet(data, changeNothing), unchanged);
}

TEST(EditingData, NamesOtherUnits) {
  const std::string edited = editSheet(data, changeNothing, Units{"N", "mm"});

  EXPECT_NE(edited.find("{\n    \"force\": \"N\",\n    \"length\": \"mm\"\n  }"), std::string::npos)
      << edited;
  EXPECT_EQ(editSheet(data, changeNothing, Units{"kN", "m"}), unchanged);
}

TEST(EditingData, NamesUnitsNoLonger) {
  const std::string edited = editSheet(data, changeNothing, Units{});

  EXPECT_EQ(edited.find("units"), std::string::npos) << edited;
}

TEST(EditingData, WritesItAnewWithItsUnits) {
  EXPECT_EQ(editSheet(data,
                      [](Draft& draft) {
                        remove(draft, 0);
                        set(draft, 1, "lineFactor", "2.5");
                        draft.getFoundations().setCurrentFoundation(&draft.getCopy(1));
                      }),
            R"({
  "format": "kvfound-foundations",
  "version": 1,
  "units": {
    "force": "kN",
    "length": "m"
  },
  "foundations": [
    {
      "number": 2,
      "name": "B",
      "generated": false,
      "areaX": null,
      "areaY": null,
      "areaZ": null,
      "areaFailureZ": "none",
      "areaFactor": 0.0,
      "lineX": null,
      "lineY": null,
      "lineZ": null,
      "lineRotationX": null,
      "lineFailureX": "none",
      "lineFailureY": "none",
      "lineFailureZ": "none",
      "lineFactor": 2.5,
      "current": true
    }
  ],
  "maximum": 0.0
}
)");
}

TEST(EditingData, ChangesWhichFoundationIsCurrent) {
  const std::string edited = editSheet(
      data, [](Draft& draft) { draft.getFoundations().setCurrentFoundation(&draft.getCopy(0)); });

  EXPECT_NE(edited.find("\"lineFactor\": 0.0,\n      \"current\": true\n    },"), std::string::npos)
      << edited;
}

}  // namespace
