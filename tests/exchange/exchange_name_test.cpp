#include <vector>

#include "exchange/documents.h"

using Found::FoundationManager;

namespace ExchangeTest {
namespace {

/// Names that are hard on a document.
std::vector<std::string> listNames() {
  std::string everyByte;
  for (int byte = 1; byte < 256; ++byte)
    if (byte >= 0x20 || byte == '\t' || byte == '\n' || byte == '\r')
      everyByte += static_cast<char>(byte);
  return {"<CurveBedding Name=\"x\" & 'y'/>",
          "&amp;&#10;&lt;",
          "]]> <!-- --> <?x?>",
          "\ttab\tand\nline\rbreaks\r\n",
          " ",
          "  blanks at both ends  ",
          "Fundament Stra\xDF"
          "e",
          "Gr\xC3\xBCndung \xE2\x82\xAC",
          everyByte,
          std::string(100000, 'x'),
          std::string(100000, '&'),
          std::string(100000, '\xFC')};
}

/// A manager with a foundation of both parts for this name.
void addNamed(FoundationManager& manager, const std::string& name) {
  setDispArea(addFoundation(manager, 1, name), 1.0, 0.0, 0.0);
}

TEST(ExchangeName, OfAnyKindComesBackUnchanged) {
  for (const char* version : {"1.0", currentVersion})
    for (const std::string& name : listNames()) {
      FoundationManager before;
      addNamed(before, name);
      FoundationManager after;
      RecordingMessenger messenger;
      readText(after, write(before, version), version, &messenger);
      ASSERT_EQ(after.getFoundations().size(), 1u) << name.substr(0, 100);
      EXPECT_TRUE(after.getFoundations()[0]->getName() == name) << name.substr(0, 100);
      EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
    }
}

TEST(ExchangeName, OfAnyKindIsWrittenInAFormThatKeepsIt) {
  FoundationManager manager;
  setRotLine(addFoundation(manager, 1, "<a b=\"c\" & 'd'>\t\n\r\xC3\xBC"), 2.0, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            makePrinted({"<CurveBedding Number=\"1\" Name=\"&lt;a b=&quot;c&quot; &amp; "
                         "'d'>&#09;&#10;&#13;\xC3\xBC\" StiffnessXX=\"2\" "
                         "StiffnessYFailure=\"none\" StiffnessZFailure=\"none\" "
                         "TangentialStiffnessXFactor=\"0\" />"}));
}

TEST(ExchangeName, OfBytesThatAreNoUtf8IsWrittenInACodePage) {
  FoundationManager manager;
  setRotLine(addFoundation(manager, 1,
                           "Stra\xDF"
                           "e"),
             2.0, 0.0, 0.0);

  EXPECT_EQ(write(manager, currentVersion),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<Exchange>\n  <CurveBedding "
            "Number=\"1\" Name=\"Stra\xDF"
            "e\" StiffnessXX=\"2\" StiffnessYFailure=\"none\" StiffnessZFailure=\"none\" "
            "TangentialStiffnessXFactor=\"0\" />\n</Exchange>\n");
}

TEST(ExchangeName, OfAnyKindIsToldToTheMessengerUnchanged) {
  for (const std::string& name : listNames()) {
    FoundationManager before;
    addNamed(before, name);
    FoundationManager after;
    addFoundation(after, 9, name);
    RecordingMessenger messenger;
    readText(after, write(before, currentVersion), currentVersion, &messenger);
    ASSERT_EQ(messenger.messages.size(), 2u) << name.substr(0, 100);
    EXPECT_TRUE(messenger.messages[0] == "onNameChanged <" + name + "> <" + name + "_1>")
        << name.substr(0, 100);
    EXPECT_TRUE(describe(after) == "9 " + name + ", 1 " + name + "_1") << name.substr(0, 100);
  }
}

TEST(ExchangeName, OfAnElementMayBeLong) {
  const std::string name(100000, 'x');
  FoundationManager manager;
  RecordingMessenger messenger;

  readText(manager, makeDocument("<" + name + "/><CurveBedding Number='1' Name='A'/>"), "1.0",
           &messenger);

  ASSERT_EQ(messenger.messages.size(), 2u);
  EXPECT_TRUE(messenger.messages[0] == "onUnknownElement <" + name + ">");
  EXPECT_EQ(messenger.messages[1], "onReadFinished 1");
  EXPECT_EQ(describe(manager), "1 A");
}

TEST(ExchangeName, DiffersByItsBytes) {
  FoundationManager manager;
  addFoundation(manager, 9, "\xC3\xBC");
  RecordingMessenger messenger;

  readText(manager, makeDocument("<CurveBedding Number='1' Name='\xFC'/>"), currentVersion,
           &messenger);

  EXPECT_EQ(describe(manager), "9 \xC3\xBC, 1 \xFC");
  EXPECT_EQ(messenger.messages, (Messages{"onReadFinished 1"}));
}

}  // namespace
}  // namespace ExchangeTest
