#include "documents/writing.h"

#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "files/user_error.h"
#include "support/temporary_files.h"

namespace {

using Documents::Document;
using Documents::Form;
using TestSupport::load;
using TestSupport::TemporaryFile;
using TestSupport::TemporaryPath;
using Writing::Output;

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
const std::string model =
    "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A' FZAREA='7' "
    "IsGenerated='1'/></FOUNDATIONS></SMOD>";

/// With their foundations, a line each.
std::vector<std::string> show(const std::vector<Losses::Loss>& losses) {
  std::vector<std::string> shown;
  for (const Losses::Loss& loss : losses) shown.push_back(loss.foundation + ": " + loss.sentence);
  return shown;
}

/// The error of an output; empty when there is none.
std::string tell(const std::string& path, Form form) {
  Document in({"in", "", model});
  try {
    OutputFile to(path);
    const Output output(to, form, in);
  } catch (const UserError& error) {
    return error.what();
  }
  return "";
}

TEST(Writing, MakesADocumentOfEachForm) {
  const struct {
    Form form;
    const char* text;
  } rows[] = {
      {Form::legacy,
       "<SMOD>\n  <FOUNDATIONS CURRENT=\"A\">\n    <FOUND NUMBER=\"1\" NAME=\"A\" FXAREA=\"0\" "
       "FYAREA=\"0\" FZAREA=\"7\" FACAREA=\"0\" FACLINE=\"0\" IsGenerated=\"1\" />\n"
       "  </FOUNDATIONS>\n</SMOD>\n"},
      {Form::exchange,
       "<Beddings>\n  <SurfaceBedding Number=\"1\" Name=\"A\" StiffnessX=\"0\" StiffnessY=\"0\" "
       "StiffnessZ=\"7\" StiffnessZFailure=\"none\" TangentialStiffnessXYFactor=\"0\" />\n"
       "</Beddings>\n"},
      {Form::firstExchange,
       "<Beddings>\n  <Bedding Name=\"A\" SurfaceStiffnessX=\"0\" SurfaceStiffnessY=\"0\" "
       "SurfaceStiffnessZ=\"7\" SurfaceStiffnessZFailure=\"none\" "
       "TangentialSurfaceStiffnessXYFactor=\"0\" CurveStiffnessYFailure=\"none\" "
       "CurveStiffnessZFailure=\"none\" TangentialCurveStiffnessX=\"0\" />\n</Beddings>\n"},
      {Form::kvml,
       "<Kvml>\n  <Beddings>\n    <BeddingArea Number=\"1\" Name=\"A\" ksx=\"0.0\" ksy=\"0.0\" "
       "ksz=\"7.0\" Failure=\"No failure\" Tangential=\"0.00\" />\n  </Beddings>\n</Kvml>\n"},
  };
  for (const auto& row : rows) {
    Document in({"in", "", model});
    const TemporaryPath out;
    OutputFile to(out.get());
    Output output(to, row.form, in);

    output.write(in.getFoundations());
    output.commit();

    EXPECT_EQ(load(out.get()), declaration + row.text);
  }
}

TEST(Writing, TouchesNothingBeforeItIsCommitted) {
  const TemporaryFile out("<Kvml/>");
  Document in({"in", "", model});
  {
    OutputFile to(out.get());
    Output output(to, Form::exchange, in);
    output.write(in.getFoundations());
  }
  EXPECT_EQ(load(out.get()), "<Kvml/>");
}

TEST(Writing, UpdatesADocumentOfTheSameForm) {
  Document in({"in", "", model});
  const TemporaryFile other("<?xml?>\n<SMOD><NODES/></SMOD>");
  const TemporaryFile listing("<Kvml/>");
  const TemporaryPath missing;

  OutputFile toOther(other.get());
  OutputFile toListing(listing.get());
  OutputFile toMissing(missing.get());
  EXPECT_TRUE(Output(toOther, Form::legacy, in).isUpdate());
  EXPECT_FALSE(Output(toOther, Form::legacy, in).isSameFile());
  EXPECT_FALSE(Output(toListing, Form::legacy, in).isUpdate());
  EXPECT_FALSE(Output(toMissing, Form::legacy, in).isUpdate());
}

TEST(Writing, KnowsTheDocumentThatWasRead) {
  const TemporaryFile file(model);
  Document in(Documents::readFile(file.get()));

  OutputFile to(file.get());
  EXPECT_TRUE(Output(to, Form::legacy, in).isSameFile());
}

TEST(Writing, LeavesTheRestOfADocumentThatIsUpdated) {
  Document in({"in", "", model});
  const TemporaryFile out("<X><Load/><Beddings/></X>");
  OutputFile to(out.get());
  Output output(to, Form::exchange, in);

  output.update(in.getFoundations());
  output.commit();

  EXPECT_EQ(load(out.get()),
            "<X><Load/><Beddings>\n  <SurfaceBedding Number=\"1\" Name=\"A\" StiffnessX=\"0\" "
            "StiffnessY=\"0\" StiffnessZ=\"7\" StiffnessZFailure=\"none\" "
            "TangentialStiffnessXYFactor=\"0\" />\n</Beddings></X>");
}

TEST(Writing, LeavesOfAnEditedDocumentWhatStays) {
  const TemporaryFile file(
      "<B><CurveBedding Number=\"1\" Name=\"A\"/><CurveBedding Number=\"2\" Name=\"B\"/></B>");
  Document in(Documents::readFile(file.get()));
  OutputFile to(file.get());
  Output output(to, Form::exchange, in);

  Editing::Draft draft(in);
  draft.remove(draft.getCopy(0));
  output.edit(in, draft.makeWish());
  output.commit();

  EXPECT_EQ(load(file.get()), "<B><CurveBedding Number=\"2\" Name=\"B\"/></B>");
}

TEST(Writing, LeavesAFileAloneInWhichNothingChanges) {
  const TemporaryFile file(model);
  const auto before = std::filesystem::last_write_time(file.get());
  Document in(Documents::readFile(file.get()));
  OutputFile to(file.get());
  Output output(to, Form::legacy, in);

  output.update(in.getFoundations());
  output.commit();

  EXPECT_EQ(load(file.get()), model);
  EXPECT_EQ(std::filesystem::last_write_time(file.get()), before);
  EXPECT_EQ(output.getMade().getContent().bytes, model);
}

TEST(Writing, RefusesToReplaceWhatChangedMeanwhile) {
  const TemporaryFile file("<B>\n<Bedding Name='A'/>\n</B>");
  Document in(Documents::readFile(file.get()));
  OutputFile to(file.get());
  Output output(to, Form::firstExchange, in);
  Editing::Draft draft(in);
  draft.remove(draft.getCopy(0));
  output.edit(in, draft.makeWish());
  std::ofstream(file.get()) << "<B/>";

  try {
    output.commit();
    ADD_FAILURE() << "what another program wrote is replaced";
  } catch (const UserError& error) {
    EXPECT_EQ(error.what(), file.get() +
                                ": was changed by another program meanwhile; nothing was "
                                "written, try again");
  }
  EXPECT_EQ(load(file.get()), "<B/>");
}

TEST(Writing, DestroysNoDocument) {
  const struct {
    const char* there;
    Form form;
    const char* error;
  } rows[] = {
      {"<?xml?>\n<SMOD/>", Form::kvml,
       ": this is a legacy model, which a document of another form would destroy; name another "
       "file"},
      {"<X><Beddings/></X>", Form::legacy,
       ": this holds more than beddings, which a document of another form would destroy; name "
       "another "
       "file"},
      {"<Beddings><Bedding/><Load/></Beddings>", Form::exchange,
       ": this holds more than beddings, which a document of another form would destroy; name "
       "another "
       "file"},
      {"text", Form::kvml,
       ": this is no XML document (a table or JSON needs the ending .csv or .json, or its form "
       "told); it "
       "was not replaced: mend or remove it, or name another file"},
  };
  for (const auto& row : rows) {
    const TemporaryFile there(row.there);
    EXPECT_EQ(tell(there.get(), row.form), there.get() + row.error);
  }
}

TEST(Writing, ReplacesWhatHoldsNothingElse) {
  for (const char* text : {"", "<Kvml/>", "<Beddings/>", "<Beddings><Bedding/></Beddings>"})
    EXPECT_EQ(tell(TemporaryFile(text).get(), Form::kvml), "") << text;
}

TEST(Losses, AreWhatTheFormDoesNotKeep) {
  const struct {
    Form form;
    std::vector<std::string> losses;
  } rows[] = {
      {Form::legacy, {}},
      {Form::exchange,
       {"number 1 \"A\": generated yes becomes no",
        "number 1 \"A\": is no longer the current foundation"}},
      {Form::firstExchange,
       {"number 1 \"A\": generated yes becomes no",
        "number 1 \"A\": is no longer the current foundation"}},
      {Form::kvml,
       {"number 1 \"A\": generated yes becomes no",
        "number 1 \"A\": is no longer the current foundation"}},
  };
  for (const auto& row : rows) {
    Document in({"in", "", model});
    const TemporaryPath out;
    OutputFile to(out.get());
    Output output(to, row.form, in);
    output.write(in.getFoundations());
    EXPECT_EQ(show(output.listLosses(in.getFoundations())), row.losses);
  }
}

TEST(Losses, AreFoundationsThatTheFormHasNoPlaceFor) {
  const struct {
    const char* found;
    const char* reason;
  } rows[] = {
      {"<FOUND NUMBER='1' NAME='A'/>", "it has no stiffness"},
      {"<FOUND NUMBER='0' NAME='A' FZAREA='1'/>", "its number is below 1"},
      {"<FOUND NUMBER='1' NAME='A' FZAREA='nan'/>", "its stiffness is not a number"},
  };
  for (const auto& row : rows) {
    Document in(
        {"in", "",
         "<?xml?>\n<SMOD><FOUNDATIONS>" + std::string(row.found) + "</FOUNDATIONS></SMOD>"});
    const TemporaryPath out;
    OutputFile to(out.get());
    Output output(to, Form::exchange, in);
    output.write(in.getFoundations());
    const std::vector<std::string> losses = show(output.listLosses(in.getFoundations()));
    ASSERT_EQ(losses.size(), 1u) << row.found;
    EXPECT_EQ(losses[0].substr(losses[0].find("\"A\"")),
              std::string("\"A\": is lost, since ") + row.reason);
  }
}

TEST(Losses, OfTheDocumentThatIsThereAreWhatTheOtherOneDoesNotTell) {
  Document in({"in", "", "<B><SurfaceBedding Number='1' Name='A' StiffnessZ='5'/></B>"});
  const TemporaryFile out(
      "<?xml?>\n<SMOD><FOUNDATIONS CURRENT='A'><FOUND NUMBER='1' NAME='A' FZAREA='7' "
      "IsGenerated='1'/><FOUND NUMBER='2' NAME='B'/></FOUNDATIONS></SMOD>");
  OutputFile to(out.get());
  Output output(to, Form::legacy, in);
  output.update(in.getFoundations());

  EXPECT_EQ(show(output.listReplaced()),
            (std::vector<std::string>{"number 1 \"A\": generated yes becomes no",
                                      "number 1 \"A\": is no longer the current foundation",
                                      "number 2 \"B\": goes from the document"}));
}

TEST(Writing, RequiresThatAllIsKept) {
  const struct {
    const char* bytes;
    const char* field;
    const char* value;
    const char* error;
  } rows[] = {
      {"<B><Bedding Name='A'/></B>", "number", "7", ""},
      {"<B><Bedding Name='A'/></B>", "areaZ", "7", ""},
      {"<B><Bedding Name='A'/></B>", "generated", "yes",
       ": was not written, since something would be lost: number 1 \"A\": generated yes becomes "
       "no"},
      {"<B><CurveBedding Number='1' Name='A'/></B>", "lineFailureX", "tension",
       ": was not written, since something would be lost: number 1 \"A\": lineFailureX tension "
       "becomes none"},
  };
  for (const auto& row : rows) {
    const TemporaryFile file(row.bytes);
    Document in(Documents::readFile(file.get()));
    OutputFile to(file.get());
    Output output(to, in.getForm(), in);
    Editing::Draft draft(in);
    const Fields::Field& field = *Fields::find(row.field);
    field.set(draft.getCopy(0), Fields::parse(field, row.value));
    output.edit(in, draft.makeWish());
    std::string error;
    try {
      output.requireAll(draft.getFoundations());
    } catch (const UserError& thrown) {
      error = std::string(thrown.what()).substr(file.get().size());
    }
    EXPECT_EQ(error, row.error) << row.field;
  }
}

TEST(Writing, ListsWhatIsLostAndWhatGoesTogether) {
  const TemporaryFile there(
      "<Beddings><SurfaceBedding Number='2' Name='B' StiffnessZ='1'/></Beddings>");
  Document in({"in", "", model});
  OutputFile to(there.get());
  Output output(to, Form::exchange, in);
  output.update(in.getFoundations());

  EXPECT_EQ(show(output.listAllLosses(in.getFoundations())),
            (std::vector<std::string>{"number 1 \"A\": generated yes becomes no",
                                      "number 1 \"A\": is no longer the current foundation",
                                      "number 2 \"B\": goes from the document"}));
}

TEST(Writing, ListsTheHalvesThatHostsDoNotRead) {
  Document in({"in", "",
               "<?xml?>\n<SMOD><FOUNDATIONS><FOUND NUMBER='1' NAME='A' FZAREA='7' FZLINE='1'/>"
               "</FOUNDATIONS></SMOD>"});
  const TemporaryPath path;
  OutputFile to(path.get());
  Output output(to, Form::exchange, in);
  output.write(in.getFoundations());

  EXPECT_EQ(show(output.listAllLosses(in.getFoundations())),
            (std::vector<std::string>{
                "number 1 \"A\": hosts that read the document keep only its line part"}));
}

}  // namespace
