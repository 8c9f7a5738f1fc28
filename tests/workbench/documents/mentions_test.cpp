#include "documents/mentions.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Documents::Document;

std::vector<std::string> listMentions(const std::string& bytes, const std::set<int>& numbers) {
  const Document document({"file", "", bytes});
  std::vector<std::string> shown;
  for (const Documents::Mention& mention : Documents::listMentions(document, numbers))
    shown.push_back(std::to_string(mention.position.line) + ":" +
                    std::to_string(mention.position.column) + " " + mention.attribute + " " +
                    std::to_string(mention.number));
  return shown;
}

TEST(Mentions, AreNumbersInAttributesOfOtherElements) {
  EXPECT_EQ(listMentions("<?xml?>\n<SMOD FOUND='1'>\n<A><B X='3' MYFOUNDS='3'/></A><FOUNDATIONS>"
                         "<FOUND FOUND='3' NUMBER='3'><A FOUND='3'/></FOUND></FOUNDATIONS></SMOD>",
                         {1, 3}),
            (std::vector<std::string>{"2:7 FOUND 1", "3:13 MYFOUNDS 3"}));
}

TEST(Mentions, AreNoOtherNumbersAndNoTexts) {
  EXPECT_EQ(listMentions("<?xml?>\n<SMOD><A FOUND='2' FOUNDX='3x' found='3'/></SMOD>", {3}),
            std::vector<std::string>{});
}

TEST(Mentions, AreNoneInAnExchangeDocument) {
  EXPECT_EQ(listMentions("<X><B><Bedding Name='A'/></B><C FOUND='1'/></X>", {1}),
            std::vector<std::string>{});
}

}  // namespace
