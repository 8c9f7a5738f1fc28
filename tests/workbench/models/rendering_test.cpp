#include "models/rendering.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/temporary_files.h"
#include "workbench/models/model.h"

namespace {

using Documents::Form;
using Models::Rendering;
using Texts = std::vector<std::string>;

const std::string model =
    "<?xml?>\n<SMOD a='b'><FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A' FZAREA='7' x='y'/>\n"
    "<FOUND NUMBER='2' NAME='B' FZAREA='8'/></FOUNDATIONS></SMOD>";
const std::string first =
    "<Beddings><Bedding Name='A' SurfaceStiffnessZ='1'/><Bedding Name='B'/></Beddings>";

std::string render(Models::Snapshot& snapshot) {
  return Rendering(snapshot, {snapshot.source->form, {}}).getDocument().getContent().bytes;
}

std::string tellError(Models::Snapshot& snapshot) {
  try {
    render(snapshot);
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

TEST(Rendering, IsWhatWasReadWhereNothingChanged) {
  EXPECT_EQ(render(*openModel("a.xml", model)), model);
}

TEST(Rendering, KeepsEveryByteOutsideOfWhatChanged) {
  const auto snapshot = openModel("a.xml", model);
  const KvVector3D stiffness(0.0, 0.0, 9.0);
  snapshot->items[0].copy->setDispArea(&stiffness);

  EXPECT_EQ(render(*snapshot),
            "<?xml?>\n<SMOD a='b'><FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A' FZAREA='9' "
            "x='y'/>\n<FOUND NUMBER='2' NAME='B' FZAREA='8'/></FOUNDATIONS></SMOD>");
}

TEST(Rendering, PutsANewOneInThePlaceOfOneWithItsNumber) {
  const auto snapshot = openModel("a.xml", model);
  removeFrom(*snapshot, 0);
  addTo(*snapshot, 1, "C");
  addTo(*snapshot, 3, "D");

  Rendering rendering(*snapshot, {Form::legacy, {}});

  const std::string& bytes = rendering.getDocument().getContent().bytes;
  EXPECT_NE(bytes.find("<FOUND NUMBER='1' NAME='C'"), bytes.npos) << bytes;
  EXPECT_NE(bytes.find("x='y'"), bytes.npos) << bytes;
  EXPECT_EQ(rendering.listItems(rendering.getDocument()), (std::vector<std::size_t>{1, 0, 2}));
}

TEST(Rendering, PutsNewOnesLastWhereTheOrderIsKept) {
  const auto snapshot = openModel("a.xml", model);
  removeFrom(*snapshot, 0);
  addTo(*snapshot, 1, "C");
  snapshot->keepsOrder = true;

  Rendering rendering(*snapshot, {Form::legacy, {}});

  const std::string& bytes = rendering.getDocument().getContent().bytes;
  EXPECT_LT(bytes.find("NAME='B'"), bytes.find("NAME='C'")) << bytes;
  EXPECT_EQ(bytes.find("x='y'"), bytes.npos) << bytes;
}

TEST(Rendering, RefusesANumberOrNameThatIsTaken) {
  const auto number = openModel("a.xml", model);
  addTo(*number, 2, "C");
  EXPECT_EQ(tellError(*number), "a.xml: number 2 is taken by number 2 \"B\"");

  const auto name = openModel("a.xml", model);
  name->items[0].copy->setName("B");
  EXPECT_EQ(tellError(*name), "a.xml: the name \"B\" is taken by number 2 \"B\"");
}

TEST(Rendering, LetsBeWhatADocumentHoldsTwice) {
  const auto snapshot = openModel(
      "a.xml",
      "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A'/><FOUND NUMBER='1' NAME='A'/>"
      "</FOUNDATIONS></SMOD>");
  snapshot->items[0].copy->setGenerated(true);

  EXPECT_EQ(tellError(*snapshot), "");
}

TEST(Rendering, LooksAtNoNumbersWhereThereAreNone) {
  const auto snapshot = openModel("a.xml", first);
  addTo(*snapshot, 1, "C");
  removeFrom(*snapshot, 0);

  Rendering rendering(*snapshot, {Form::firstExchange, {}});

  EXPECT_EQ(rendering.listItems(rendering.getDocument()), (std::vector<std::size_t>{0, 1}));
  rendering.requireAll();
}

TEST(Rendering, MakesANewDocumentOfAnotherForm) {
  const auto snapshot = openModel("a.xml", model);

  Rendering exchange(*snapshot, {Form::firstExchange, {}});
  EXPECT_EQ(exchange.getOptions().version, "1.0");
  EXPECT_EQ(exchange.readBack("b.xml")->getForm(), Form::firstExchange);

  Rendering table(*snapshot, {Form::csv, {}});
  EXPECT_EQ(table.getOptions().dialect.separator, ',');
  EXPECT_EQ(table.readBack("b")->getForm(), Form::csv);
}

TEST(Rendering, MakesATableAnewInAnotherDialect) {
  const auto snapshot = openModel("a.csv", "name,areaX\nA,1.5\n");
  snapshot->units = Units{"kN", "m"};

  Rendering rendering(*snapshot, {Form::csv, Spreadsheets::Dialect{std::nullopt, ','}});

  const std::string& bytes = rendering.getDocument().getContent().bytes;
  EXPECT_NE(bytes.find("#units;kN;m"), bytes.npos) << bytes;
  EXPECT_NE(bytes.find(";1,5;"), bytes.npos) << bytes;
}

TEST(Rendering, TellsWhatIsLost) {
  const auto snapshot =
      openModel("a.xml", "<Beddings><SurfaceBedding Number='1' Name='A'/>\n<Other/></Beddings>");
  Rendering rendering(*snapshot, {Form::json, {}});

  EXPECT_EQ(rendering.listLosses(),
            Texts{"a.xml:2:1: <Other> is no bedding of this version; it was skipped"});
}

TEST(Rendering, TellsRotationsThatNoDocumentStores) {
  const auto snapshot = openModel("a.xml", model);
  const KvVector3D rotation(0.0, 2.0, 3.0);
  snapshot->items[0].copy->setRotLine(&rotation);
  const Rendering rendering(*snapshot, {Form::legacy, {}});

  EXPECT_EQ(rendering.getLostRotations(), (Texts{"number 1 \"A\": lineRotationY 2 is lost",
                                                 "number 1 \"A\": lineRotationZ 3 is lost"}));
  EXPECT_EQ(rendering.getLostFields(), Texts());
  rendering.requireFields();
  try {
    rendering.requireAll();
    FAIL();
  } catch (const Models::LossFound& error) {
    EXPECT_STREQ(error.what(),
                 "something would be lost: number 1 \"A\": lineRotationY 2 is lost, and 1 more");
    EXPECT_EQ(error.getLosses(), rendering.listLosses());
  }
}

TEST(Rendering, RequiresThatTheFormHoldsAll) {
  const auto snapshot = openModel("a.csv", "name,areaX\nA,1.5\n");
  snapshot->items[0].copy->setGenerated(true);
  const Rendering rendering(*snapshot, {Form::csv, {}});

  EXPECT_THROW(rendering.requireFields(), Models::LossFound);
  EXPECT_EQ(rendering.listLosses(), Texts{"number 1 \"A\": generated yes becomes no"});
}

TEST(Rendering, RefusesWhatWouldBeReadAsSomethingElse) {
  const auto snapshot = openModel("a.xml", first);
  removeFrom(*snapshot, 0);
  removeFrom(*snapshot, 0);
  Rendering rendering(*snapshot, {Form::firstExchange, {}});

  EXPECT_THROW(rendering.readBack("a.xml"), DocumentError);
}

TEST(Rendering, FindsFoundationsAgainWhereSomeAreNotRead) {
  const auto snapshot = openModel("a.xml", model);
  snapshot->items[0].copy->setName("");
  Rendering exchange(*snapshot, {Form::exchange, {}});
  EXPECT_EQ(exchange.listItems(exchange.getDocument()), std::vector<std::size_t>{1});

  Rendering whole(*snapshot, {Form::firstExchange, {}});
  EXPECT_EQ(whole.listItems(whole.getDocument()), std::vector<std::size_t>{1});
}

TEST(Rendering, UpdatesTheDocumentInAFile) {
  const TestSupport::TemporaryFile file(
      "<Beddings><!-- stays --><SurfaceBedding Number='1' Name='A' StiffnessX='0' StiffnessY='0' "
      "StiffnessZ='1'/></Beddings>");
  const auto snapshot = openModel("a.csv", "name,areaZ\nA,7\n");
  snapshot->units = Units{"kN", "m"};

  Rendering(*snapshot, {Form::exchange, {}}, file.get()).commit();

  EXPECT_EQ(TestSupport::load(file.get()),
            "<Beddings><!-- stays --><SurfaceBedding Number='1' Name='A' StiffnessX='0' "
            "StiffnessY='0' StiffnessZ='7'/></Beddings>");
}

TEST(Rendering, WritesAFileThatIsNotThere) {
  const TestSupport::TemporaryPath path;
  const auto snapshot = openModel("a.xml", model);

  Rendering(*snapshot, {Form::csv, {}}, path.get()).commit();

  EXPECT_EQ(TestSupport::load(path.get()).substr(0, 11), "number,name");
}

TEST(WholeRendering, IsDataWhereTheFormCannotHoldAll) {
  const auto snapshot = openModel("a.csv", "name,areaX\nA,1.5\n");
  EXPECT_EQ(Models::renderWhole(*snapshot)->getDocument().getForm(), Form::csv);

  snapshot->items[0].copy->setGenerated(true);
  EXPECT_EQ(Models::renderWhole(*snapshot)->getDocument().getForm(), Form::json);
}

TEST(EmptyModel, IsOfEachForm) {
  EXPECT_EQ(Models::makeEmpty(Form::exchange),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Beddings />\n");
  const auto read = Models::read({"a.xml", "", Models::makeEmpty(Form::legacy)}, {});
  EXPECT_EQ(read->source->form, Form::legacy);
  EXPECT_TRUE(read->foundations.getFoundations().empty());
}

}  // namespace
