#include "xml_suite/leniency.h"

#include <gtest/gtest.h>

using XmlSuite::EmptyDocument;
using XmlSuite::makeWellFormed;
using XmlSuite::Mended;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

/// The text and, behind it, what let it pass.
std::string mend(const std::string& text, EmptyDocument empty = EmptyDocument::refused) {
  const Mended mended = makeWellFormed(text, empty);
  std::string all = mended.text;
  for (const std::string& leniency : mended.leniencies) all += " " + leniency;
  return all;
}

}  // namespace

TEST(Leniency, LeavesAWellFormedDocumentAsItIs) {
  const std::string text =
      "<!--]]>--><!DOCTYPE r [<!ENTITY e ']]>'>]><r a=']]>'>x<![CDATA[]]><?p ]]>?></r>\n<?p "
      "&#32;?>";

  EXPECT_EQ(mend(text), declaration + text);
}

TEST(Leniency, LetsASectionEndStandInAText) {
  EXPECT_EQ(mend("<r>a]]>b</r>"), declaration + "<r>a]]&gt;b</r> section-end");
}

TEST(Leniency, LetsReferencesToWhiteSpaceStandOutsideTheRoot) {
  EXPECT_EQ(mend("&#x0A;<r>&#32;</r>&#32;&#65;"),
            declaration + " <r>&#32;</r> &#65; reference-outside");
}

TEST(Leniency, LetsDeclarationsBeOdd) {
  for (const char* text :
       {" <?xml version='1.0'?><r/>", "<?XML version='1.0'?><r/>", "<?xml?><r/>",
        "<?xml version='2' x='1'?><r/>", "<?xml encoding='UTF-8' version='1.0'?><r/>"})
    EXPECT_EQ(mend(text), declaration + "<r/> declaration") << text;
}

TEST(Leniency, LeavesADeclarationThatIsNoneAsItIs) {
  for (const char* text : {"<?xml version=1?><r/>", "<?xml version='&#49;'?><r/>",
                           "<?xml a='<'?><r/>", "<?xml a='1'b='2'?><r/>", "<?xmlx?><r/>"})
    EXPECT_EQ(mend(text), declaration + text) << text;
}

TEST(Leniency, KeepsWhatADeclarationSays) {
  EXPECT_EQ(mend("<?xml version='1.0' encoding='ISO-8859-2' standalone='yes'?><r/>"),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-2\" standalone=\"yes\"?><r/>");
}

TEST(Leniency, LetsBytesBelieTheEncoding) {
  EXPECT_EQ(mend("<r>\xE4</r>"),
            "<?xml version=\"1.0\" encoding=\"windows-1252\"?><r>\xE4</r> encoding");
  EXPECT_EQ(mend("<r>\x81</r>"),
            "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><r>\x81</r> encoding");
  EXPECT_EQ(mend("<?xml version='1.0' encoding='unheard-of'?><r/>"), declaration + "<r/> encoding");
}

TEST(Leniency, LooksForTheEncodingNeitherInValuesNorInBytesOfTheDeclaration) {
  EXPECT_EQ(mend("<?xml a=\" encoding='ISO-8859-2'\"?><r b='\xC3\x9C'/>"),
            declaration + "<r b='\xC3\x9C'/> declaration");
  EXPECT_EQ(mend("<?xml \xF4='1'?><r b='\xC3\x9C'/>"),
            declaration + "<r b='\xC3\x9C'/> declaration");
}

TEST(Leniency, LetsNamesBeUtf8InADocumentThatIsNot) {
  const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  const std::string latinDeclaration = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";

  EXPECT_EQ(
      mend(latin + "<\xC3\x9Cr \xC3\x9C='\xC3\x9C' a=\"'\"></\xC3\x9Cr><?\xC3\x9C \xC3\x9C?>"),
      latinDeclaration +
          "<_195_156r _195_156='\xC3\x9C' a=\"'\"></_195_156r><?_195_156 \xC3\x9C?> name");
  EXPECT_EQ(mend(latin + "<!DOCTYPE \xC3\x9Cr><\xC3\x9Cr/>"),
            latinDeclaration + "<!DOCTYPE _195_156r><_195_156r/> name");
}

TEST(Leniency, LeavesNamesThatAreNoneAsTheyAre) {
  const std::string latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
  for (const char* text : {"<\xC3\x97/>", "<r \xC3='1'/>", "<r 1\xC3\x9C='1'/>", "<?\xC3\x97?>"})
    EXPECT_EQ(mend(latin + text), latin + text);
}

TEST(Leniency, DoesNotLookIntoWhatADocumentTypeDeclares) {
  EXPECT_EQ(mend("<!DOCTYPE r SYSTEM 's' [ <!FOO ']>'> <!-- ]> --> <?p ]> ?> %x; ] ><r/>"),
            declaration + "<!DOCTYPE r SYSTEM 's' ><r/> document-type");
}

TEST(Leniency, LooksIntoTheRestOfADocumentType) {
  for (const char* text :
       {"<!DOCTYPE r [ x ]><r/>", "<!DOCTYPE r [ > <r/>", "<!DOCTYPE r x [<!FOO>]><r/>",
        "<!DOCTYPE r [<!FOO '>]><r/>", "<!DOCTYPE r [<!-- -- -->]><r/>", "<!DOCTYPE [<!FOO>]><r/>",
        "<!DOCTYPE r [<!FOO>] x><r/>", "<!DOCTYPE r [<?1?>]><r/>", "<!DOCTYPE r [<? p?>]><r/>",
        "<!DOCTYPE r [<![INCLUDE[]]>]><r/>", "<!DOCTYPE r [&x;]><r/>", "<!DOCTYPE r [<FOO>]><r/>"})
    EXPECT_EQ(mend(text), declaration + text) << text;
}

TEST(Leniency, GivesARootOnlyToWhatHoldsNothing) {
  EXPECT_EQ(mend("<!-- a --> <?p?>", EmptyDocument::allowed),
            declaration + "<!-- a --> <?p?><none/> no-root");
  EXPECT_EQ(mend("<!-- a -->", EmptyDocument::refused), declaration + "<!-- a -->");
  EXPECT_EQ(mend("<!DOCTYPE r>", EmptyDocument::allowed), declaration + "<!DOCTYPE r>");
}
