#include <fstream>

#include "kv/xml_tree.h"
#include "properties/generators.h"
#include "support/temporary_files.h"

namespace PropertyTest {
namespace {

using TestSupport::TemporaryPath;

/// What is left of a foundation that went through a legacy document.
Record lose(Record record) {
  record.failPossible = false;
  if (!record.dispArea) record.dispArea = KvVector3D();
  if (!hasLength(record.dispLine)) record.dispLine.reset();
  if (record.rotLine) record.rotLine = KvVector3D(record.rotLine->x, 0.0, 0.0);
  if (!hasLength(record.rotLine)) record.rotLine.reset();
  // Read into a foundation that has 0.0 already, -0.0 is the same.
  if (record.factorArea == 0.0) record.factorArea = 0.0;
  if (record.factorLine == 0.0) record.factorLine = 0.0;
  return record;
}

Records lose(Records records) {
  for (Record& record : records) record = lose(record);
  return records;
}

void write(const FoundationManager& manager, const std::string& path) {
  std::ofstream out(path);
  manager.writeXml(out);
  out.close();
  RC_ASSERT(out.good());
}

/// All numbers but -1, which no foundation brings.
rc::Gen<int> writtenNumber() {
  return rc::gen::suchThat(anyNumber(), [](int number) { return number != -1; });
}

RC_GTEST_PROP(LegacyDocumentProperty, LosesOnlyWhatTheFormatCannotHold, ()) {
  const Records records = *distinctRecords(writtenNumber());
  FoundationManager before;
  add(before, records);
  const TemporaryPath path;

  write(before, path.get());
  FoundationManager after;
  RC_ASSERT(after.readXml(path.get()));

  RC_ASSERT(describeUnmarked(after) == describeUnmarked(lose(records)));
}

RC_GTEST_PROP(LegacyDocumentProperty, KeepsWhichFoundationIsCurrent, ()) {
  const Records records = *distinctRecords(writtenNumber());
  RC_PRE(!records.empty());
  const auto place = *rc::gen::inRange<std::size_t>(0, records.size());
  FoundationManager before;
  add(before, records);
  before.setCurrentFoundation(before.getFoundations()[place]);
  const TemporaryPath path;

  write(before, path.get());
  FoundationManager after;
  RC_ASSERT(after.readXml(path.get()));

  RC_ASSERT(after.getCurrentFoundation() == after.getFoundations()[place]);
}

RC_GTEST_PROP(LegacyDocumentProperty, IsTheSameTextFromTheSecondWritingOn, ()) {
  FoundationManager before;
  add(before, *distinctRecords(writtenNumber()));
  const TemporaryPath paths[3];

  write(before, paths[0].get());
  for (const std::size_t i : {0u, 1u}) {
    FoundationManager after;
    RC_ASSERT(after.readXml(paths[i].get()));
    write(after, paths[i + 1].get());
  }

  RC_ASSERT(TestSupport::load(paths[2].get()) == TestSupport::load(paths[1].get()));
}

RC_GTEST_PROP(LegacyDocumentProperty, HoldsOneElementForEachNumberAndTheLastOfThem, ()) {
  const Records records = *anyRecords(writtenNumber());
  FoundationManager before;
  add(before, records);
  std::set<int> numbers;
  for (const Record& record : records) numbers.insert(record.number);
  const TemporaryPath path;

  write(before, path.get());
  FoundationManager after;
  RC_ASSERT(after.readXml(path.get()));

  RC_ASSERT(after.getFoundations().size() == numbers.size());
  for (const Foundation* read : after.getFoundations()) {
    const auto last = std::find_if(records.rbegin(), records.rend(), [&](const Record& record) {
      return record.number == read->getNumber();
    });
    RC_ASSERT(last != records.rend());
    if (!last->name.empty()) RC_ASSERT(read->getName() == last->name);
  }
}

RC_GTEST_PROP(LegacyDocumentProperty, GivesEachFoundationAName, ()) {
  FoundationManager before;
  add(before, *anyRecords());
  const TemporaryPath path;

  write(before, path.get());
  FoundationManager after;
  RC_ASSERT(after.readXml(path.get()));

  for (const Foundation* read : after.getFoundations()) RC_ASSERT(!read->getName().empty());
}

RC_GTEST_PROP(LegacyDocumentProperty, UpdatedTwiceIsAsUpdatedOnce, ()) {
  FoundationManager manager;
  add(manager, *distinctRecords(anyNumber()));
  KvXmlTree tree;
  tree.open("SMOD", false);
  const auto print = [&tree] {
    std::ostringstream out;
    tree.putToStream(out);
    return out.str();
  };

  manager.updateXml(&tree);
  const std::string once = print();
  manager.updateXml(&tree);

  RC_ASSERT(print() == once);
}

}  // namespace
}  // namespace PropertyTest
