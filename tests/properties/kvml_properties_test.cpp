#include <map>
#include <memory>

#include "found/kvml_writer.h"
#include "properties/generators.h"
#include "support/newer_documents.h"

namespace PropertyTest {
namespace {

/// Attributes by their names; the element's own stands under "element".
using Shown = std::map<std::string, std::string>;

/// Chosen foundations and the elements of the listing that is written of them.
struct Listing {
  Listing(const Records& areaRecords, const Records& beamRecords) {
    choose(areaRecords, areas);
    choose(beamRecords, beams);
    KvXmlN::Document document("Kvml");
    Found::KvmlWriter().write(document.getRoot(), areas, beams);
    // Printed and parsed, as a reader of the listing gets it.
    const auto read = TestSupport::parse(TestSupport::print(document));
    for (const KvXmlN::Data* list : read->getRoot().getChildren())
      for (const KvXmlN::Data* element : list->getChildren()) elements.push_back(show(*element));
  }

  void choose(const Records& records, std::set<Foundation*>& chosen) {
    for (const Record& record : records) {
      foundations.push_back(make(record));
      chosen.insert(foundations.back().get());
    }
  }

  static Shown show(const KvXmlN::Data& element) {
    Shown shown{{"element", element.getName()}};
    for (const char* name : {"Number", "Name", "ksx", "ksy", "ksz", "ksxx", "Tangential"})
      if (const KvXmlN::AttributeData* attribute = element.findAttribute(name))
        shown[name] = attribute->getData();
    return shown;
  }

  std::vector<std::unique_ptr<Foundation>> foundations;
  std::set<Foundation*> areas;
  std::set<Foundation*> beams;
  std::vector<Shown> elements;
};

std::string format(const char* how, double value) {
  char text[400];  // the largest double has 309 digits before the point
  std::snprintf(text, sizeof text, how, value);
  return text;
}

Shown describeHead(const std::string& element, const Record& record, const KvVector3D& v,
                   double factor) {
  return {{"element", element},
          {"Number", std::to_string(record.number)},
          {"Name", record.name},
          {"ksx", format("%.1f", v.x)},
          {"ksy", format("%.1f", v.y)},
          {"ksz", format("%.1f", v.z)},
          {"Tangential", format("%.2f", factor)}};
}

Records sortByNumber(Records records) {
  std::sort(records.begin(), records.end(),
            [](const Record& a, const Record& b) { return a.number < b.number; });
  return records;
}

RC_GTEST_PROP(KvmlProperty, ShowsNumberNameAndValuesOfAreasAndThenOfBeamsByNumber, ()) {
  const Records areas = *distinctRecords(anyNumber());
  const Records beams = *distinctRecords(anyNumber());

  const Listing listing(areas, beams);

  std::vector<Shown> expected;
  for (const Record& record : sortByNumber(areas))
    if (record.dispArea)
      expected.push_back(describeHead("BeddingArea", record, *record.dispArea, record.factorArea));
  for (const Record& record : sortByNumber(beams)) {
    if (!record.dispLine) continue;
    expected.push_back(describeHead("BeddingBeam", record, *record.dispLine, record.factorLine));
    expected.back()["ksxx"] = format("%.1f", record.rotLine ? record.rotLine->x : 0.0);
  }
  RC_ASSERT(listing.elements == expected);
}

RC_GTEST_PROP(KvmlProperty, ShowsEachOneOfThoseWithEqualNumbersAndNames, ()) {
  const Records areas = *anyRecords();
  const Records beams = *anyRecords();

  const Listing listing(areas, beams);

  const auto hasArea = [](const Record& record) { return record.dispArea.has_value(); };
  const auto hasLine = [](const Record& record) { return record.dispLine.has_value(); };
  const auto isArea = [](const Shown& shown) { return shown.at("element") == "BeddingArea"; };
  const auto& shown = listing.elements;
  const auto areaCount = std::count_if(areas.begin(), areas.end(), hasArea);
  const auto beamCount = std::count_if(beams.begin(), beams.end(), hasLine);
  RC_ASSERT(std::count_if(shown.begin(), shown.end(), isArea) == areaCount);
  RC_ASSERT(static_cast<long>(shown.size()) == areaCount + beamCount);
  RC_ASSERT(std::is_partitioned(shown.begin(), shown.end(), isArea));
}

RC_GTEST_PROP(KvmlProperty, ChangesNothingOfTheFoundations, ()) {
  const Records records = *anyRecords();

  const Listing listing(records, records);

  for (std::size_t i = 0; i < listing.foundations.size(); ++i)
    RC_ASSERT(describe(*listing.foundations[i]) == describe(records[i % records.size()]));
}

}  // namespace
}  // namespace PropertyTest
