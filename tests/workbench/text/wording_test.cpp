#include "text/wording.h"

#include <string>

#include <gtest/gtest.h>

#include "documents/document.h"
#include "files/user_error.h"
#include "spreadsheets/names.h"

namespace {

/// Words of a front end, until the end of the test.
class OwnWords {
 public:
  OwnWords() { Wording::use({"a form", "a mark", "the manual names them", "a command does"}); }
  ~OwnWords() { Wording::use({}); }
  OwnWords(const OwnWords&) = delete;
  OwnWords& operator=(const OwnWords&) = delete;
};

/// The error of a document that cannot be read.
std::string open(const std::string& path, const std::string& bytes) {
  try {
    const Documents::Document document({path, "", bytes});
    return "";
  } catch (const UserError& error) {
    return error.what();
  }
}

TEST(Wording, TellsHowAFormIsTold) {
  const OwnWords words;

  EXPECT_EQ(open("file", "number\n1\n"),
            "file: this is no XML document (a table or JSON needs the ending .csv or .json, or a "
            "form)");
}

TEST(Wording, TellsHowDecimalsAreTold) {
  const OwnWords words;

  EXPECT_EQ(open("file.csv", "name;areaX\nA;1.500\n"),
            "file.csv:2: areaX \"1.500\" can have decimals or thousands, and nothing in the table "
            "tells which; say a mark");
}

TEST(Wording, TellsWhereFieldsAreNamed) {
  const OwnWords words;

  EXPECT_EQ(Spreadsheets::describeUnknown("field", "colour"),
            "there is no field \"colour\"; the manual names them");
}

}  // namespace
