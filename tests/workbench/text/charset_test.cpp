#include "text/charset.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(Charset, IsUtf8WhereNothingElseIsSaidAndTheBytesAllowIt) {
  for (const char* encoding : {"", "UTF-8", "utf8", "UTF_8", "US-ASCII", "ascii"})
    for (const char* bytes : {"", "a", "\xC3\xBC"})
      EXPECT_TRUE(Charset::recognise(encoding, bytes).isUtf8()) << encoding << bytes;
  EXPECT_FALSE(Charset::recognise("ISO-8859-1", "a").isUtf8());
  EXPECT_FALSE(Charset::recognise("", "\xFC").isUtf8());
  EXPECT_FALSE(Charset::recognise("Shift_JIS", "\x83").isUtf8());
}

TEST(CharsetText, IsReadAsTheDocumentDeclares) {
  const struct {
    const char* encoding;
    const char* bytes;
    const char* text;
  } rows[] = {
      {"UTF-8", "\xE2\x82\xAC", "\xE2\x82\xAC"},
      {"ISO-8859-1", "M\xFC\xE4", "M\xC3\xBC\xC3\xA4"},
      {"ISO-8859-2", "\xF5", "\xC5\x91"},
      {"ISO-8859-15", "\xA4", "\xE2\x82\xAC"},
      {"windows-1252", "\x80", "\xE2\x82\xAC"},
      {"", "\x80\xFC", "\xE2\x82\xAC\xC3\xBC"},       // not UTF-8 although nothing is declared
      {"UTF-8", "\x80\xFC", "\xE2\x82\xAC\xC3\xBC"},  // nor where it is
      {"windows-1252", "\x81", "\xC2\x81"},           // what is no character there
  };
  for (const auto& row : rows)
    EXPECT_EQ(Charset::recognise(row.encoding, row.bytes).toUtf8(row.bytes), row.text)
        << row.encoding;
}

TEST(CharsetText, MayBeUtf8InADocumentWhoseEncodingIsGuessed) {
  EXPECT_EQ(Charset::recognise("", "\xFC").toUtf8("\xC3\xBC"), "\xC3\xBC");
  EXPECT_EQ(Charset::recognise("windows-1252", "\xFC").toUtf8("\xC3\xBC"), "\xC3\x83\xC2\xBC");
}

TEST(CharsetValue, HasItsReferencesResolvedAndBlanksForWhiteSpace) {
  const Charset charset = Charset::recognise("ISO-8859-1", "");
  const struct {
    const char* written;
    const char* text;
  } rows[] = {
      {"", ""},
      {"a\xFC", "a\xC3\xBC"},
      {"&lt;&gt;&amp;&quot;&apos;", "<>&\"'"},
      {"&#8364;&#x20AC;&#xfc;", "\xE2\x82\xAC\xE2\x82\xAC\xC3\xBC"},
      {"a\tb\nc\rd\r\ne", "a b c d e"},
      {"a&#9;&#10;&#13;b", "a\t\n\rb"},
      {"&none;&;&#x;&#55296;&a", "&none;&;&#x;&#55296;&a"},
  };
  for (const auto& row : rows) EXPECT_EQ(charset.readValue(row.written), row.text) << row.written;
}

TEST(CharsetValue, RefersToWhatCannotStandInIt) {
  const struct {
    const char* encoding;
    const char* bytes;
    const char* text;
    char quote;
    const char* written;
  } rows[] = {
      {"UTF-8", "", "a<&\"'>\xE2\x82\xAC", '"', "a&lt;&amp;&quot;'>\xE2\x82\xAC"},
      {"UTF-8", "", "\"'", '\'', "\"&apos;"},
      {"UTF-8", "", "a\tb\nc\r", '"', "a&#9;b&#10;c&#13;"},
      {"ISO-8859-1", "", "\xC3\xBC\xE2\x82\xAC", '"', "\xFC&#8364;"},
      {"ISO-8859-15", "", "\xC3\xBC\xE2\x82\xAC", '"', "\xFC\xA4"},
      {"ISO-8859-2", "", "\xC5\x91\xC3\xBC\xC3\xB1", '"', "\xF5\xFC&#241;"},
      {"windows-1252", "", "\xF0\x9F\x8F\x97", '"', "&#127959;"},
      {"", "\xFC", "\xC3\xBC\xE2\x82\xAC\xE2\x89\xA5", '"', "\xFC\x80&#8805;"},
      {"Shift_JIS", "\x83", "a\xC3\xBC", '"', "a&#252;"},
  };
  for (const auto& row : rows) {
    const Charset charset = Charset::recognise(row.encoding, row.bytes);
    EXPECT_EQ(charset.writeValue(row.text, row.quote), row.written) << row.encoding;
    EXPECT_EQ(charset.readValue(row.written), row.text) << row.encoding;
  }
}

TEST(CharsetValue, OfADocumentThatIsNotTheUtf8ItDeclaresIsWrittenInReferences) {
  const Charset charset = Charset::recognise("UTF-8", "\xFC");

  EXPECT_EQ(charset.writeValue("R\xC3\xBC", '"'), "R&#252;");
}

}  // namespace
