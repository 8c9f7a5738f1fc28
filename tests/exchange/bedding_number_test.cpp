#include "exchange/documents.h"

using Found::FoundationManager;

namespace ExchangeTest {
namespace {

/// What comes of elements with this text as number: what the manager then holds, or the messages
/// of the refusal.
std::string readNumber(const std::string& text) {
  FoundationManager manager;
  RecordingMessenger messenger;
  readText(manager,
           makeDocument("<CurveBedding Number='" + text + "' Name='A'/><SurfaceBedding Number='" +
                        text + "' Name='A'/>"),
           currentVersion, &messenger);
  std::string result = describe(manager);
  for (const std::string& message : messenger.messages)
    result += (result.empty() ? "" : ", ") + message;
  return result;
}

void expectNumber(const std::string& text, const std::string& number) {
  EXPECT_EQ(readNumber(text),
            number + " A, onInvalidNumber <SurfaceBedding> " + number + ", onReadFinished 1")
      << text.substr(0, 100);
}

void expectInvalid(const std::string& text, const std::string& number) {
  EXPECT_EQ(readNumber(text), "onInvalidNumber <CurveBedding> " + number +
                                  ", onInvalidNumber <SurfaceBedding> " + number +
                                  ", onReadFinished 0")
      << text.substr(0, 100);
}

void expectMissing(const std::string& text) {
  EXPECT_EQ(readNumber(text),
            "onMissingNumber <CurveBedding>, onMissingNumber <SurfaceBedding>, onReadFinished 0")
      << text.substr(0, 100);
}

TEST(BeddingNumber, IsAnInteger) {
  expectNumber("1", "1");
  expectNumber("7", "7");
  expectNumber("1234567", "1234567");
}

TEST(BeddingNumber, MayStandBehindWhiteSpace) {
  expectNumber(" 7", "7");
  expectNumber("   7", "7");
  expectNumber("&#9;7", "7");
  expectNumber("&#10;7", "7");
  expectNumber("&#13;7", "7");
  expectNumber("\n\t 7", "7");
  expectNumber("&#13;&#10;&#9; 7", "7");
}

TEST(BeddingNumber, MayHaveASign) {
  expectNumber("+5", "5");
  expectNumber(" +5", "5");
  expectInvalid("-4", "-4");
  expectInvalid(" -4", "-4");
}

TEST(BeddingNumber, EndsAtTheFirstCharacterThatIsNoDigit) {
  expectNumber("7.9", "7");
  expectNumber("7x", "7");
  expectNumber("7 ", "7");
  expectNumber("7 8", "7");
  expectNumber("7,5", "7");
  expectNumber("1e3", "1");
  expectNumber("7-", "7");
  expectNumber("7+1", "7");
  expectNumber("7&#10;", "7");
  expectNumber("7\xB2", "7");
  expectInvalid("-4x", "-4");
  expectInvalid("0x10", "0");
  expectInvalid("0.9", "0");
}

TEST(BeddingNumber, IsDecimalWithLeadingZeros) {
  expectNumber("007", "7");
  expectNumber("010", "10");
  expectNumber(std::string(100000, '0') + "9", "9");
  expectInvalid("000", "0");
}

TEST(BeddingNumber, OfZeroIsInvalidAndNotMissing) {
  expectInvalid("0", "0");
  expectInvalid("-0", "0");
  expectInvalid("+0", "0");
}

TEST(BeddingNumber, IsMissingWithoutADigit) {
  expectMissing("");
  expectMissing(" ");
  expectMissing("&#9;&#10;");
  expectMissing(std::string(100000, ' '));
  expectMissing("x");
  expectMissing("x7");
  expectMissing("X7");
  expectMissing(".5");
  expectMissing("seven");
  expectMissing(
      "\xA0"
      "7");
}

TEST(BeddingNumber, IsMissingWhenTheSignIsNotRightBeforeADigit) {
  expectMissing("+");
  expectMissing("-");
  expectMissing("+-5");
  expectMissing("-+5");
  expectMissing("++5");
  expectMissing("--5");
  expectMissing("+ 5");
  expectMissing("- 5");
  expectMissing(" +");
}

TEST(BeddingNumber, ReachesFromTheSmallestToTheLargestInt) {
  expectNumber("2147483647", "2147483647");
  expectNumber("+2147483647", "2147483647");
  expectNumber("2147483647.5", "2147483647");
  expectInvalid("-2147483648", "-2147483648");
}

TEST(BeddingNumber, IsMissingBeyondTheRangeOfInt) {
  expectMissing("2147483648");
  expectMissing("+2147483648");
  expectMissing("-2147483649");
  expectMissing("99999999999");
  expectMissing("99999999999x");
  expectMissing("18446744073709551617");
  expectMissing(std::string(100000, '9'));
}

TEST(BeddingNumber, IsReadAlikeInVersion10) {
  FoundationManager manager;
  RecordingMessenger messenger;
  readText(manager,
           makeDocument("<CurveBedding Number=' 7x' Name='A'/><SurfaceBedding Number='x' "
                        "Name='B'/><SurfaceBedding Number='7.9' Name='C'/>"),
           "1.0", &messenger);

  EXPECT_EQ(describe(manager), "7 A");
  EXPECT_EQ(messenger.messages,
            (Messages{"onMissingNumber <SurfaceBedding>", "onInvalidNumber <SurfaceBedding> 7",
                      "onReadFinished 1"}));
}

}  // namespace
}  // namespace ExchangeTest
