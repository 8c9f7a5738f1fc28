#include "documents/containers.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Names = std::vector<std::string>;

/// The containers of a document, each by its attribute "id".
Names list(const std::string& text) {
  std::istringstream in(text);
  KvXmlN::Document document(in);
  Names ids;
  for (const KvXmlN::Data* container : Documents::listContainers(document.getRoot()))
    ids.push_back(KvXmlN::AttributeIn::readString(*container, "id").value_or(""));
  return ids;
}

TEST(Containers, AreElementsThatHaveABedding) {
  const struct {
    const char* text;
    Names ids;
  } rows[] = {
      {"<X id='1'><Bedding/></X>", {"1"}},
      {"<X id='1'><Y id='2'><CurveBedding/></Y><Y id='3'><Load/><SurfaceBedding/></Y></X>",
       {"2", "3"}},
      {"<X id='1'><Bedding/><Y id='2'><Bedding/></Y></X>", {"1"}},
      {"<X id='1'><Load/></X>", {}},
      {"<Bedding id='1'/>", {}},
  };
  for (const auto& row : rows) EXPECT_EQ(list(row.text), row.ids) << row.text;
}

TEST(Containers, AreOnlyThoseNamedSoWhereSomeAre) {
  EXPECT_EQ(list("<X><Y id='1'><Bedding/></Y><Beddings id='2'><Bedding/></Beddings>"
                 "<Y><Beddings id='3'><Bedding/></Beddings></Y></X>"),
            (Names{"2", "3"}));
}

TEST(Containers, AreThoseMadeForBeddingsWhereThereAreNone) {
  EXPECT_EQ(list("<X><Beddings id='1'/><Y><Beddings id='2'><Load/></Beddings></Y></X>"),
            (Names{"1", "2"}));
  EXPECT_EQ(list("<Beddings id='1'/>"), Names{"1"});
}

TEST(Containers, OfAListingAreThoseThatHaveABedding) {
  EXPECT_EQ(list("<Kvml><Beddings id='1'/></Kvml>"), Names{});
  EXPECT_EQ(list("<Kvml><X id='1'><Bedding/></X></Kvml>"), Names{"1"});
}

}  // namespace
