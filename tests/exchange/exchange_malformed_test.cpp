#include "exchange/documents.h"
#include "support/error_place.h"

using Found::FoundationManager;
using TestSupport::findErrorPlace;
using TestSupport::Place;

namespace ExchangeTest {
namespace {

class ExchangeMalformed : public testing::Test {
 protected:
  ExchangeMalformed() { addFoundation(manager, 1, "A"); }
  ~ExchangeMalformed() override {
    EXPECT_EQ(describe(manager), "1 A");
    EXPECT_EQ(messenger.messages, Messages{});
  }

  /// Where the error is that reading this document throws.
  Place findError(const std::string& text) {
    const std::optional<Place> place =
        findErrorPlace([&] { readText(manager, text, "1.0", &messenger); });
    EXPECT_TRUE(place) << "is read";
    return place.value_or(Place{0, 0});
  }

  FoundationManager manager;
  RecordingMessenger messenger;
};

const std::string head = "<?xml version=\"1.0\"?>\n<Exchange>\n<Bedding Name='B'/><Other/>\n";

TEST_F(ExchangeMalformed, EndTagOfAnotherElement) {
  EXPECT_EQ(findError(head + "  </Other>\n</Exchange>\n"), (Place{4, 5}));
}

TEST_F(ExchangeMalformed, AttributeGivenTwice) {
  EXPECT_EQ(findError(head + "<Bedding Name='C' Name='D'/>\n</Exchange>\n"), (Place{4, 19}));
}

TEST_F(ExchangeMalformed, SecondRoot) {
  EXPECT_EQ(findError(head + "</Exchange>\n  <Exchange/>\n"), (Place{5, 4}));
}

TEST_F(ExchangeMalformed, TextBehindTheRoot) {
  EXPECT_EQ(findError(head + "</Exchange>\n  stray\n"), (Place{5, 3}));
}

TEST_F(ExchangeMalformed, CutOffAnywhereBeforeItsEnd) {
  const std::string text = head + "<CurveBedding Number='3' Name='C'/>\n</Exchange>";
  for (std::size_t size = 0; size < text.size(); ++size) {
    const Place place = findError(text.substr(0, size));
    EXPECT_GE(place.line, 1u) << size;
    EXPECT_LE(place.line, 5u) << size;
    EXPECT_GE(place.column, 1u) << size;
  }
}

TEST_F(ExchangeMalformed, Empty) { EXPECT_EQ(findError("").line, 1u); }

TEST_F(ExchangeMalformed, WithoutARoot) {
  EXPECT_GE(findError("<?xml version=\"1.0\"?>\n<!-- nothing -->\n").line, 1u);
}

TEST_F(ExchangeMalformed, NestedPastAThousandLevels) {
  std::string text = "<?xml version=\"1.0\"?>\n<Exchange>\n<Bedding Name='B'/>";
  for (int level = 2; level <= 1001; ++level) text += "\n<x>";
  for (int level = 2; level <= 1001; ++level) text += "</x>";

  EXPECT_EQ(findError(text + "</Exchange>").line, 1003u);
}

}  // namespace
}  // namespace ExchangeTest
