#include "documents/vocabulary.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "documents/form.h"

namespace {

using Documents::ElementWord;
using Documents::Form;
using Documents::Kind;

const ElementWord* const all[] = {&Documents::Legacy::list, &Documents::Legacy::foundation,
                                  &Documents::Exchange::curve, &Documents::Exchange::surface,
                                  &Documents::Exchange::whole};

TEST(Vocabulary, NamesEachAttributeOfAnElementOnce) {
  for (const ElementWord* word : all) {
    std::set<std::string> names;
    for (const Documents::AttributeWord& attribute : word->attributes)
      EXPECT_TRUE(names.insert(attribute.name).second) << word->name << " " << attribute.name;
  }
}

/// How many attributes of an element are of this kind.
std::size_t count(const ElementWord& word, Kind kind) {
  std::size_t number = 0;
  for (const Documents::AttributeWord& attribute : word.attributes)
    if (attribute.kind == kind) ++number;
  return number;
}

TEST(Vocabulary, HasAStiffnessForEachDirection) {
  EXPECT_EQ(count(Documents::Legacy::foundation, Kind::stiffness), 3u);
  EXPECT_EQ(count(Documents::Legacy::foundation, Kind::lineStiffness), 4u);
  EXPECT_EQ(count(Documents::Exchange::curve, Kind::stiffness), 4u);
  EXPECT_EQ(count(Documents::Exchange::surface, Kind::stiffness), 3u);
  EXPECT_EQ(count(Documents::Exchange::whole, Kind::stiffness), 7u);
}

TEST(Vocabulary, HasAFactorForEachPart) {
  EXPECT_EQ(count(Documents::Legacy::foundation, Kind::factor), 2u);
  EXPECT_EQ(count(Documents::Exchange::curve, Kind::factor), 1u);
  EXPECT_EQ(count(Documents::Exchange::surface, Kind::factor), 1u);
  EXPECT_EQ(count(Documents::Exchange::whole, Kind::factor), 2u);
}

TEST(DocumentForm, OfTheFirstVersionIsTheOnlyOneWithANumber) {
  EXPECT_STREQ(Documents::getVersion(Documents::Form::firstExchange), "1.0");
  EXPECT_STREQ(Documents::getVersion(Documents::Form::exchange), "current");
}

TEST(Vocabulary, TellsWhichFieldsAFormCarries) {
  using Documents::carries;
  const struct {
    Form form;
    const char* field;
    bool isCarried;
  } rows[] = {{Form::legacy, "generated", true},       {Form::legacy, "lineFailureX", true},
              {Form::exchange, "number", true},        {Form::exchange, "areaZ", true},
              {Form::exchange, "lineZ", true},         {Form::exchange, "generated", false},
              {Form::exchange, "lineFailureX", false}, {Form::firstExchange, "areaZ", true},
              {Form::firstExchange, "number", false},  {Form::kvml, "name", false}};
  for (const auto& row : rows) EXPECT_EQ(carries(row.form, row.field), row.isCarried) << row.field;
}

}  // namespace
