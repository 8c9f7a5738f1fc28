#include "documents/editing.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "workbench/documents/draft.h"

namespace {

using namespace DraftTest;

struct Row {
  const char* before;
  Change change;
  const char* after;
};

/// Of models, `before` and `after` are what stands in the root.
void expectModels(const std::vector<Row>& rows) {
  const std::string head = "<?xml version=\"1.0\"?>\n<SMOD>";
  for (const Row& row : rows)
    EXPECT_EQ(edit(head + row.before + "</SMOD>", row.change), head + row.after + "</SMOD>");
}

void expectExchange(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(edit(row.before, row.change), row.after);
}

const Change doNothing = [](Draft&) {};

TEST(Editing, WritesNothingWhenNothingChanges) {
  for (const char* bytes :
       {"<?xml version='1.0'?>\r\n<SMOD>\r\n<FOUNDATIONS CURRENT='B'>\r\n\t<FOUND/>\r\n"
        "<FOUND NAME='B' FZAREA=' 1.50 ' FAILZAREA='+1'/></FOUNDATIONS></SMOD>",
        "an xml file\n<SMOD/>", "\xEF\xBB\xBF<X><B><Bedding Name='A'/><Bedding Name='A'/></B></X>",
        "<B><CurveBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='A'/>"
        "<CurveBedding Number='1' Name='B'/></B>"})
    EXPECT_EQ(edit(bytes, doNothing), nothing) << bytes;
}

TEST(Editing, ChangesTheAttributesThatAreConcerned) {
  const auto change = [](const char* field, const char* value) {
    return [=](Draft& draft) { set(draft, 0, field, value); };
  };
  expectModels({
      {"<FOUNDATIONS><FOUND NAME='A' FZAREA='1.50' X='1'/></FOUNDATIONS>", change("areaZ", "2"),
       "<FOUNDATIONS><FOUND NAME='A' FZAREA='2' X='1'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A' FZAREA='1.50'/></FOUNDATIONS>", change("areaX", "2"),
       "<FOUNDATIONS><FOUND NAME='A' FZAREA='1.50' FXAREA='2'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND/></FOUNDATIONS>", change("areaX", "2"),
       "<FOUNDATIONS><FOUND FXAREA=\"2\"/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND\n  NUMBER = \"1\"\n  NAME = \"A\"\n></FOUND></FOUNDATIONS>",
       change("areaFailureZ", "tension"),
       "<FOUNDATIONS><FOUND\n  NUMBER = \"1\"\n  NAME = \"A\"\n  FAILZAREA=\"-1\"\n></FOUND>"
       "</FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A' FAILZAREA='1'/></FOUNDATIONS>", change("areaFailureZ", "none"),
       "<FOUNDATIONS><FOUND NAME='A' FAILZAREA='0'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>", change("generated", "true"),
       "<FOUNDATIONS><FOUND NAME='A' IsGenerated='1'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A' FZLINE='5' FXX='1'/></FOUNDATIONS>", change("lineZ", ""),
       "<FOUNDATIONS><FOUND NAME='A' FXX='1'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>",
       [](Draft& draft) { draft.getCopy(0).setName("<\"'\n"); },
       "<FOUNDATIONS><FOUND NAME='&lt;\"&apos;&#10;'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A' NUMBER='1'/></FOUNDATIONS>", change("number", "9"),
       "<FOUNDATIONS><FOUND NAME='A' NUMBER='9'/></FOUNDATIONS>"},
  });
  expectExchange({
      {"<B><CurveBedding Number='1a' Name='A' StiffnessYFailure='x'/></B>",
       change("lineFailureY", "compression"),
       "<B><CurveBedding Number='1a' Name='A' StiffnessYFailure='compression'/></B>"},
      {"<B><CurveBedding Number='1a' Name='A'/></B>", change("number", "2"),
       "<B><CurveBedding Number='2' Name='A'/></B>"},
      {"<B><Bedding Name='A'/></B>", change("lineFactor", "0.5"),
       "<B><Bedding Name='A' TangentialCurveStiffnessX='0.5'/></B>"},
  });
}

TEST(Editing, SpellsNamesInTheEncodingOfTheDocument) {
  const Change rename = [](Draft& draft) { set(draft, 0, "name", "\xC3\xBC\xE2\x82\xAC\xC5\x91"); };
  const struct {
    const char* start;
    const char* name;
  } rows[] = {
      {"<?xml version='1.0' encoding='ISO-8859-1'?>\n<SMOD A='\xFC&#8364;'>", "\xFC&#8364;&#337;"},
      {"<?xml version='1.0' encoding='ISO-8859-2'?>\n<SMOD>", "\xFC&#8364;\xF5"},
      {"<?xml version='1.0' encoding='UTF-8'?>\n<SMOD>", "\xC3\xBC\xE2\x82\xAC\xC5\x91"},
      {"\xEF\xBB\xBF<?xml version='1.0'?>\n<SMOD>", "\xC3\xBC\xE2\x82\xAC\xC5\x91"},
      {"<?xml version='1.0'?>\n<SMOD A='\xFC'>", "\xFC\x80&#337;"},
  };
  for (const auto& row : rows) {
    const std::string start = std::string(row.start) + "<FOUNDATIONS><FOUND NAME='";
    const std::string end = "'/></FOUNDATIONS></SMOD>";
    EXPECT_EQ(edit(start + "A" + end, rename), start + row.name + end);
  }
}

TEST(Editing, LeavesNamesThatHoldReferences) {
  expectModels({{"<FOUNDATIONS><FOUND NAME='&#65;&lt;' FZAREA='1'/></FOUNDATIONS>",
                 [](Draft& draft) { set(draft, 0, "areaZ", "2"); },
                 "<FOUNDATIONS><FOUND NAME='&#65;&lt;' FZAREA='2'/></FOUNDATIONS>"}});
}

TEST(Editing, RemovesElementsWithTheirLines) {
  const Change removeFirst = [](Draft& draft) { remove(draft, 0); };
  expectModels({
      {"<FOUNDATIONS>\n\t<FOUND NUMBER='1' NAME='A'>\n\t</FOUND>\n\t<FOUND NUMBER='2' NAME='B'/>"
       "\n</FOUNDATIONS>",
       removeFirst, "<FOUNDATIONS>\n\t<FOUND NUMBER='2' NAME='B'/>\n</FOUNDATIONS>"},
      {"<FOUNDATIONS>\r\n  <FOUND NUMBER='1' NAME='A'/> \r\n</FOUNDATIONS>", removeFirst,
       "<FOUNDATIONS>\r\n</FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='B'/></FOUNDATIONS>",
       removeFirst, "<FOUNDATIONS><FOUND NUMBER='2' NAME='B'/></FOUNDATIONS>"},
      {"<FOUNDATIONS>\n<!-- a --><FOUND NUMBER='1' NAME='A'/>\n<!-- b -->\n</FOUNDATIONS>",
       removeFirst, "<FOUNDATIONS>\n<!-- a -->\n<!-- b -->\n</FOUNDATIONS>"},
  });
}

TEST(Editing, AddsElementsThatLookLikeTheLast) {
  const Change addOne = [](Draft& draft) { set(add(draft, 2, "B"), "areaFactor", "0.5"); };
  const Change addTwo = [addOne](Draft& draft) {
    addOne(draft);
    set(add(draft, 3, "C"), "areaFactor", "0.25");
  };
  expectModels({
      {"<FOUNDATIONS>\r\n\t<FOUND\tNUMBER='1'\tNAME='A'/> <!-- a -->\r\n</FOUNDATIONS>", addTwo,
       "<FOUNDATIONS>\r\n\t<FOUND\tNUMBER='1'\tNAME='A'/> <!-- a -->\r\n"
       "\t<FOUND\tNUMBER='2'\tNAME='B'\tFACAREA='0.5'\tFACLINE='0'\tIsGenerated='0'/>\r\n"
       "\t<FOUND\tNUMBER='3'\tNAME='C'\tFACAREA='0.25'\tFACLINE='0'\tIsGenerated='0'/>"
       "\r\n</FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NUMBER='1' NAME='A'/></FOUNDATIONS>", addOne,
       "<FOUNDATIONS><FOUND NUMBER='1' NAME='A'/>"
       "<FOUND NUMBER='2' NAME='B' FACAREA='0.5' FACLINE='0' IsGenerated='0'/></FOUNDATIONS>"},
      {"\n  <FOUNDATIONS/>\n", addOne,
       "\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"2\" NAME=\"B\" FACAREA=\"0.5\" FACLINE=\"0\" "
       "IsGenerated=\"0\" />\n  </FOUNDATIONS>\n"},
      {"\n <FOUNDATIONS CURRENT='X'>\n </FOUNDATIONS>\n", addOne,
       "\n <FOUNDATIONS CURRENT='X'>\n  <FOUND NUMBER=\"2\" NAME=\"B\" FACAREA=\"0.5\" "
       "FACLINE=\"0\" IsGenerated=\"0\" />\n </FOUNDATIONS>\n"},
      {"\n <NODES/>\n", addOne,
       "\n <NODES/>\n <FOUNDATIONS>\n  <FOUND NUMBER=\"2\" NAME=\"B\" FACAREA=\"0.5\" "
       "FACLINE=\"0\" IsGenerated=\"0\" />\n </FOUNDATIONS>\n"},
  });
  EXPECT_EQ(edit("<?xml?>\n<SMOD/>", addOne),
            "<?xml?>\n<SMOD>\n  <FOUNDATIONS>\n    <FOUND NUMBER=\"2\" NAME=\"B\" "
            "FACAREA=\"0.5\" FACLINE=\"0\" IsGenerated=\"0\" />\n  </FOUNDATIONS>\n</SMOD>");
}

TEST(Editing, AddsToTheLastContainer) {
  expectExchange(
      {{"<X>\n <A>\n  <CurveBedding Number='1' Name='A'/>\n </A>\n <B>\n  <SurfaceBedding "
        "Number='2' Name='B'/>\n </B>\n</X>",
        [](Draft& draft) { set(add(draft, 3, "C"), "lineX", "1"); },
        "<X>\n <A>\n  <CurveBedding Number='1' Name='A'/>\n </A>\n <B>\n  <SurfaceBedding "
        "Number='2' Name='B'/>\n  <CurveBedding Number='3' Name='C' StiffnessX='1' "
        "StiffnessY='0' StiffnessZ='0' StiffnessYFailure='none' StiffnessZFailure='none' "
        "TangentialStiffnessXFactor='0'/>\n </B>\n</X>"},
       {"<X>\n  <Beddings/>\n</X>", [](Draft& draft) { set(add(draft, 3, "C"), "areaX", "1"); },
        "<X>\n  <Beddings>\n    <SurfaceBedding Number=\"3\" Name=\"C\" StiffnessX=\"1\" "
        "StiffnessY=\"0\" StiffnessZ=\"0\" StiffnessZFailure=\"none\" "
        "TangentialStiffnessXYFactor=\"0\" />\n  </Beddings>\n</X>"}});
}

TEST(Editing, PutsWhatIsAddedInPlaceOfTheLastThatGoes) {
  const Change change = [](Draft& draft) {
    remove(draft, 0);
    add(draft, 2, "B");
  };
  expectModels({{"<FOUNDATIONS>\n <FOUND NUMBER='1' NAME='A'/>\n</FOUNDATIONS>", change,
                 "<FOUNDATIONS>\n <FOUND NUMBER='2' NAME='B' FACAREA='0' FACLINE='0' "
                 "IsGenerated='0'/>\n</FOUNDATIONS>"}});
}

TEST(EditingPart, ComesBehindTheOneThatIsThere) {
  expectExchange({
      {"<B>\n\t<CurveBedding Number='1' Name='A' StiffnessX='1'/>\n</B>",
       [](Draft& draft) { set(draft, 0, "areaZ", "2"); },
       "<B>\n\t<CurveBedding Number='1' Name='A' StiffnessX='1'/>\n\t<SurfaceBedding Number='1' "
       "Name='A' StiffnessX='0' StiffnessY='0' StiffnessZ='2' StiffnessZFailure='none' "
       "TangentialStiffnessXYFactor='0'/>\n</B>"},
      {"<B><SurfaceBedding Number='1' Name='A' StiffnessX='1'/><SurfaceBedding Number='2' "
       "Name='B'/></B>",
       [](Draft& draft) {
         set(draft, 0, "lineX", "2");
         remove(draft, 1);
       },
       "<B><SurfaceBedding Number='1' Name='A' StiffnessX='1'/><CurveBedding Number='1' "
       "Name='A' StiffnessX='2' StiffnessY='0' StiffnessZ='0' StiffnessYFailure='none' "
       "StiffnessZFailure='none' TangentialStiffnessXFactor='0'/></B>"},
  });
}

TEST(EditingPart, StandsInTheSameLineWhereThatGoesOn) {
  expectExchange({{"<B>\n <CurveBedding Number='1' Name='A' StiffnessX='1'/><Load/>\n</B>",
                   [](Draft& draft) { set(draft, 0, "areaZ", "2"); },
                   "<B>\n <CurveBedding Number='1' Name='A' StiffnessX='1'/><SurfaceBedding "
                   "Number='1' Name='A' StiffnessX='0' StiffnessY='0' StiffnessZ='2' "
                   "StiffnessZFailure='none' TangentialStiffnessXYFactor='0'/><Load/>\n</B>"}});
}

TEST(EditingPart, HasTheNameThatTheFirstIsReadUnder) {
  expectExchange(
      {{"<B><CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A'/></B>",
        [](Draft& draft) { set(draft, 1, "areaZ", "2"); },
        "<B><CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A_1'/>"
        "<SurfaceBedding Number='2' Name='A_1' StiffnessX='0' StiffnessY='0' StiffnessZ='2' "
        "StiffnessZFailure='none' TangentialStiffnessXYFactor='0'/></B>"}});
}

TEST(EditingPart, GoesWhereTheFoundationLacksIt) {
  const char* const both =
      "<B>\n<CurveBedding Number='1' Name='A' StiffnessX='1'/>\n<SurfaceBedding Number='1' "
      "Name='A' StiffnessZ='2'/>\n</B>";
  expectExchange({
      {both, [](Draft& draft) { set(draft, 0, "lineX", ""); },
       "<B>\n<SurfaceBedding Number='1' Name='A' StiffnessZ='2'/>\n</B>"},
      {both, [](Draft& draft) { set(draft, 0, "areaZ", ""); },
       "<B>\n<CurveBedding Number='1' Name='A' StiffnessX='1'/>\n</B>"},
      {"<B><CurveBedding Number='1' Name='A' StiffnessX='1'/></B>",
       [](Draft& draft) {
         set(draft, 0, "lineX", "");
         set(draft, 0, "areaX", "3");
       },
       "<B><SurfaceBedding Number='1' Name='A' StiffnessX='3' StiffnessY='0' StiffnessZ='0' "
       "StiffnessZFailure='none' TangentialStiffnessXYFactor='0'/></B>"},
  });
}

TEST(EditingPart, ChangesWithTheOther) {
  expectExchange({
      {"<B><CurveBedding Number='1' Name='A' StiffnessX='1'/><SurfaceBedding Number='1' Name='A' "
       "StiffnessX='2'/></B>",
       [](Draft& draft) {
         set(draft, 0, "number", "3");
         set(draft, 0, "name", "C");
         set(draft, 0, "areaX", "5");
       },
       "<B><CurveBedding Number='3' Name='C' StiffnessX='1'/><SurfaceBedding Number='3' Name='C' "
       "StiffnessX='5'/></B>"},
      {"<B><CurveBedding Number='1' Name='A'/><SurfaceBedding Number='1' Name='A'/></B>",
       [](Draft& draft) { remove(draft, 0); }, "<B></B>"},
  });
}

TEST(EditingPins, NumbersAndNamesThatWouldBecomeOthers) {
  const Change removeFirst = [](Draft& draft) { remove(draft, 0); };
  expectModels({
      {"<FOUNDATIONS><FOUND/><FOUND/><FOUND NAME='C'/></FOUNDATIONS>", removeFirst,
       "<FOUNDATIONS><FOUND NUMBER=\"2\" NAME=\"Found0002\"/><FOUND NAME='C' NUMBER='3'/>"
       "</FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NUMBER='5'/><FOUND NUMBER='7'/></FOUNDATIONS>", removeFirst,
       "<FOUNDATIONS><FOUND NUMBER='7' NAME='Found0006'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NUMBER='5'/><FOUND NUMBER='7'/></FOUNDATIONS>",
       [](Draft& draft) { set(draft, 0, "number", "6"); },
       "<FOUNDATIONS><FOUND NUMBER='6'/><FOUND NUMBER='7' NAME='Found0006'/></FOUNDATIONS>"},
  });
  expectExchange({{"<B><CurveBedding Number='1' Name='A'/><CurveBedding Number='2' Name='A'/></B>",
                   removeFirst, "<B><CurveBedding Number='2' Name='A_1'/></B>"}});
}

TEST(EditingPins, ValuesThatKeepOthersFromBeingRead) {
  expectModels(
      {{"<FOUNDATIONS><FOUND NAME='A' FXLINE='nan' FZLINE=' 3 ' FACLINE='0.50'/>"
        "</FOUNDATIONS>",
        [](Draft& draft) { set(draft, 0, "lineY", "2"); },
        "<FOUNDATIONS><FOUND NAME='A' FXLINE='0' FZLINE='0' FACLINE='0.5' FYLINE='2'/>"
        "</FOUNDATIONS>"}});
}

TEST(EditingCurrent, IsRenamedSetAndCleared) {
  const char* const one = "<FOUNDATIONS CURRENT='A'><FOUND NAME='A'/></FOUNDATIONS>";
  expectModels({
      {one, [](Draft& draft) { set(draft, 0, "name", "B"); },
       "<FOUNDATIONS CURRENT='B'><FOUND NAME='B'/></FOUNDATIONS>"},
      {one, [](Draft& draft) { remove(draft, 0); }, "<FOUNDATIONS CURRENT=''></FOUNDATIONS>"},
      {one, [](Draft& draft) { draft.getFoundations().setCurrentFoundation(nullptr); },
       "<FOUNDATIONS CURRENT=''><FOUND NAME='A'/></FOUNDATIONS>"},
      {"<FOUNDATIONS><FOUND NAME='A'/></FOUNDATIONS>",
       [](Draft& draft) { draft.getFoundations().setCurrentFoundation(&draft.getCopy(0)); },
       "<FOUNDATIONS CURRENT=\"A\"><FOUND NAME='A'/></FOUNDATIONS>"},
      {"<FOUNDATIONS/>",
       [](Draft& draft) { draft.getFoundations().setCurrentFoundation(&add(draft, 1, "A")); },
       "<FOUNDATIONS CURRENT=\"A\">\n  <FOUND NUMBER=\"1\" NAME=\"A\" FACAREA=\"0\" FACLINE=\"0\" "
       "IsGenerated=\"0\" />\n</FOUNDATIONS>"},
      {"", [](Draft& draft) { draft.getFoundations().setCurrentFoundation(&add(draft, 1, "<")); },
       "\n  <FOUNDATIONS CURRENT=\"&lt;\">\n    <FOUND NUMBER=\"1\" NAME=\"&lt;\" FACAREA=\"0\" "
       "FACLINE=\"0\" IsGenerated=\"0\" />\n  </FOUNDATIONS>\n"},
  });
}

TEST(EditingCurrent, IsNoOtherFoundationThatGetsItsName) {
  expectModels({
      {"<FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='2' NAME='A'/>"
       "</FOUNDATIONS>",
       [](Draft& draft) { remove(draft, 0); },
       "<FOUNDATIONS CURRENT=''><FOUND NUMBER='2' NAME='A'/></FOUNDATIONS>"},
      {"<FOUNDATIONS CURRENT='B'><FOUND NAME='A'/></FOUNDATIONS>",
       [](Draft& draft) { set(draft, 0, "name", "B"); },
       "<FOUNDATIONS CURRENT=''><FOUND NAME='B'/></FOUNDATIONS>"},
  });
}

TEST(EditingCurrent, IsClearedInEveryEncoding) {
  const std::string start =
      "<?xml version='1.0' encoding='ISO-8859-1'?>\n<SMOD><FOUNDATIONS CURRENT='";
  EXPECT_EQ(edit(start + "&#8364;'><FOUND NAME='&#8364;'/><FOUND NAME='&#8364;' NUMBER='2'/>"
                         "</FOUNDATIONS></SMOD>",
                 [](Draft& draft) { remove(draft, 0); }),
            start + "'><FOUND NAME='&#8364;' NUMBER='2'/></FOUNDATIONS></SMOD>");
}

TEST(EditingCurrent, StaysWhenItsDefaultNameIsWritten) {
  expectModels({{"<FOUNDATIONS CURRENT='Found0002'><FOUND/><FOUND/></FOUNDATIONS>",
                 [](Draft& draft) { remove(draft, 0); },
                 "<FOUNDATIONS CURRENT='Found0002'><FOUND NUMBER=\"2\" NAME=\"Found0002\"/>"
                 "</FOUNDATIONS>"}});
}

TEST(EditingUnread, GoesOrIsRenumberedWithTheOneThatHasItsNumber) {
  const char* const before =
      "<B>\n<CurveBedding Number='1' Name='A'/>\n<CurveBedding Number='1' Name='B' X='1'/>\n"
      "<CurveBedding Name='C'/>\n</B>";
  expectExchange({
      {before, [](Draft& draft) { remove(draft, 0); }, "<B>\n<CurveBedding Name='C'/>\n</B>"},
      {before, [](Draft& draft) { set(draft, 0, "number", "2"); },
       "<B>\n<CurveBedding Number='2' Name='A'/>\n<CurveBedding Number='2' Name='B' X='1'/>\n"
       "<CurveBedding Name='C'/>\n</B>"},
  });

  Documents::Document base({"file", "", before});
  Draft draft(base);
  EXPECT_EQ(Editing::listUnreadThatGo(base, draft.makeWish()).size(), 0u);
  remove(draft, 0);
  const auto unread = Editing::listUnreadThatGo(base, draft.makeWish());
  ASSERT_EQ(unread.size(), 1u);
  EXPECT_EQ(unread.front()->element.readText("Name"), "B");
}

TEST(Editing, RefusesWhatWouldLetOtherBeddingsBeRead) {
  const std::string bytes =
      "<X><Beddings><Bedding Name='A'/></Beddings><Slab><Bedding Name='B'/></Slab></X>";
  try {
    edit(bytes, [](Draft& draft) { remove(draft, 0); });
    FAIL() << "nothing was thrown";
  } catch (const UserError& error) {
    EXPECT_STREQ(error.what(), "file: cannot be edited: other beddings in it would be read, too");
  }
}

TEST(Editing, RefusesNamesThatNoDocumentCanHold) {
  for (const char* bytes : {"<?xml version=\"1.0\"?>\n<SMOD><FOUNDATIONS><FOUND NAME='A'/>"
                            "</FOUNDATIONS></SMOD>",
                            "<B><CurveBedding Number='1' Name='A'/></B>"}) {
    Documents::Document document({"file", "", bytes});
    Draft draft(document);
    draft.getCopy(0).setName(std::string("A\0", 2));

    EXPECT_THROW(edit(document, draft.makeWish()), DocumentError);
  }
}

TEST(Editing, NumbersBeddingsOfTheFirstVersionOn) {
  const std::string before =
      "<X><A><Bedding Name='A'/><Bedding Name='B'/></A><C><Bedding Name='C'/></C></X>";
  Documents::Document base({"file", "", before});
  const auto& read = base.getFoundations().getFoundations();
  EXPECT_EQ(read.at(2)->getNumber(), 3);
  EXPECT_EQ(edit(before,
                 [](Draft& draft) {
                   remove(draft, 0);
                   set(draft, 2, "lineX", "5");
                   set(add(draft, 4, "D"), "areaFactor", "0.5");
                 }),
            "<X><A><Bedding Name='B'/></A><C><Bedding Name='C' CurveStiffnessX='5'/><Bedding "
            "Name='D' SurfaceStiffnessZFailure='none' TangentialSurfaceStiffnessXYFactor='0.5' "
            "CurveStiffnessYFailure='none' CurveStiffnessZFailure='none' "
            "TangentialCurveStiffnessX='0'/></C></X>");
}

TEST(Draft, DeletesWhatWasAddedAndIsRemoved) {
  Documents::Document base({"file", "", "<B><Bedding Name='A'/></B>"});
  Draft draft(base);

  draft.remove(add(draft, 3, "C"));

  EXPECT_EQ(draft.getFoundations().getFoundations().size(), 1u);
  EXPECT_EQ(draft.makeWish().pairs.size(), 1u);
}

TEST(Draft, OwnsItsCopiesWhetherTheyAreLeftOrNot) {
  Documents::Document base({"file", "", "<B><Bedding Name='A'/><Bedding Name='B'/></B>"});
  Draft draft(base);
  remove(draft, 0);
  add(draft, 3, "C");

  const Editing::Wish wish = draft.makeWish();

  ASSERT_EQ(wish.pairs.size(), 3u);
  EXPECT_EQ(wish.pairs[0].first->getName(), "A");
  EXPECT_EQ(wish.pairs[0].second, nullptr);
  EXPECT_EQ(wish.pairs[1].first->getName(), "B");
  EXPECT_EQ(wish.pairs[1].second, &draft.getCopy(1));
  EXPECT_EQ(wish.pairs[2].first, nullptr);
  EXPECT_EQ(wish.pairs[2].second->getName(), "C");
  EXPECT_EQ(wish.current, nullptr);
}

}  // namespace
