#include <optional>

#include "found/bedding_reader.h"
#include "found/bedding_writer.h"
#include "properties/generators.h"
#include "support/newer_documents.h"

namespace PropertyTest {
namespace {

/// Writes the one into a document that is printed and parsed, and lets the other read that.
void pass(const FoundationManager& before, FoundationManager& after, const std::string& version) {
  const Tools::VersionText versionText(version);
  KvXmlN::Document document("Exchange");
  Found::Umo::BeddingWriter(before, versionText).write(document.getRoot());
  const auto read = TestSupport::parse(TestSupport::print(document));
  Found::Umo::BeddingReader(after, versionText).read(read->getRoot());
}

Vector loseWhatIsNull(const Vector& v) { return v && !v->isNull() ? *v : KvVector3D(); }

Foundation::Failure loseUnknown(Foundation::Failure failure) {
  const bool isKnown = failure == Foundation::Tension || failure == Foundation::Compression;
  return isKnown ? failure : Foundation::None;
}

/// Read into a foundation that has 0.0 already, -0.0 is the same.
double loseSignOfZero(double factor) { return factor == 0.0 ? 0.0 : factor; }

void takeLine(Record& result, const Record& record) {
  result.dispLine = loseWhatIsNull(record.dispLine);
  result.rotLine = KvVector3D(loseWhatIsNull(record.rotLine)->x, 0.0, 0.0);
  result.failLineY = loseUnknown(record.failLineY);
  result.failLineZ = loseUnknown(record.failLineZ);
  result.factorLine = loseSignOfZero(record.factorLine);
}

void takeArea(Record& result, const Record& record) {
  result.dispArea = loseWhatIsNull(record.dispArea);
  result.failAreaZ = loseUnknown(record.failAreaZ);
  result.factorArea = loseSignOfZero(record.factorArea);
}

/// What is left of foundations that went through a document of the current version: of two parts
/// the first, which is the line.
Records loseInCurrentVersion(const Records& records) {
  Records results;
  for (const Record& record : records) {
    const bool hasLine = hasLength(record.dispLine) || hasLength(record.rotLine);
    if (!hasLine && !hasLength(record.dispArea)) continue;
    Record result;
    result.name = record.name;
    result.number = record.number;
    if (hasLine)
      takeLine(result, record);
    else
      takeArea(result, record);
    results.push_back(result);
  }
  return results;
}

Records loseInVersion10(const Records& records) {
  Records results;
  for (const Record& record : records) {
    Record result;
    result.name = record.name;
    result.number = static_cast<int>(results.size()) + 1;
    takeLine(result, record);
    takeArea(result, record);
    results.push_back(result);
  }
  return results;
}

std::string anyVersion() { return *rc::gen::element<std::string>("1.0", "2.0"); }

RC_GTEST_PROP(ExchangeProperty, OfTheCurrentVersionLosesOnlyWhatItCannotHold, ()) {
  const Records records = *distinctRecords(positiveNumber());
  FoundationManager before;
  add(before, records);

  FoundationManager after;
  pass(before, after, "2.0");

  RC_ASSERT(describeUnmarked(after) == describeUnmarked(loseInCurrentVersion(records)));
}

RC_GTEST_PROP(ExchangeProperty, OfVersion10LosesOnlyWhatItCannotHold, ()) {
  const Records records = *distinctRecords(anyNumber());
  FoundationManager before;
  add(before, records);

  FoundationManager after;
  pass(before, after, "1.0");

  RC_ASSERT(describeUnmarked(after) == describeUnmarked(loseInVersion10(records)));
}

// Below the tolerance more is lost each time: a rotation about y and z first, and then what is
// left.
RC_GTEST_PROP(ExchangeProperty, OfStiffnessAboveTheToleranceLosesNothingMoreTheSecondTime, ()) {
  const std::string version = anyVersion();
  FoundationManager first;
  add(first, *anyRecords(anyNumber(), roundDouble()));
  FoundationManager second;
  FoundationManager third;

  pass(first, second, version);
  pass(second, third, version);

  // A rotation about y and z alone is read as none.
  Records expected;
  for (Foundation* foundation : second.getFoundations())
    if (version == "1.0" || foundation->hasValues()) expected.push_back(recordOf(*foundation));
  RC_ASSERT(describeUnmarked(third) == describeUnmarked(expected));
}

RC_GTEST_PROP(ExchangeProperty, KeepsNamesUniqueThatWereUnique, ()) {
  FoundationManager document;
  add(document, *anyRecords());
  FoundationManager manager;
  add(manager, *distinctRecords(anyNumber()));

  pass(document, manager, anyVersion());

  std::set<std::string> names;
  for (const Foundation* foundation : manager.getFoundations()) names.insert(foundation->getName());
  RC_ASSERT(names.size() == manager.getFoundations().size());
}

RC_GTEST_PROP(ExchangeProperty, OfTheCurrentVersionKeepsNumbersUniqueThatWereUnique, ()) {
  FoundationManager document;
  add(document, *anyRecords());
  FoundationManager manager;
  add(manager, *distinctRecords(anyNumber()));

  pass(document, manager, "2.0");

  std::set<int> numbers;
  for (const Foundation* foundation : manager.getFoundations())
    numbers.insert(foundation->getNumber());
  RC_ASSERT(numbers.size() == manager.getFoundations().size());
}

RC_GTEST_PROP(ExchangeProperty, ChangesNothingOfWhatTheManagerHolds, ()) {
  const Records records = *anyRecords();
  FoundationManager document;
  add(document, *anyRecords());
  FoundationManager manager;
  add(manager, records);

  pass(document, manager, anyVersion());

  RC_ASSERT(manager.getFoundations().size() >= records.size());
  for (std::size_t i = 0; i < records.size(); ++i)
    RC_ASSERT(describe(*manager.getFoundations()[i]) == describe(records[i]));
}

}  // namespace
}  // namespace PropertyTest
