#pragma once

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "found/foundation.h"
#include "found/foundation_manager.h"

namespace PropertyTest {

using Found::Foundation;
using Found::FoundationManager;

using Vector = std::optional<KvVector3D>;

/// All that a foundation holds, to be generated, changed as a description says, and compared.
struct Record {
  std::string name;
  int number = -1;
  bool changed = false;
  bool generated = false;
  bool failPossible = false;
  Vector dispArea;
  Vector dispLine;
  Vector rotLine;
  Foundation::Failure failLineX = Foundation::None;
  Foundation::Failure failLineY = Foundation::None;
  Foundation::Failure failLineZ = Foundation::None;
  Foundation::Failure failAreaZ = Foundation::None;
  double factorLine = 0.0;
  double factorArea = 0.0;
};

using Records = std::vector<Record>;

inline const KvVector3D* addressOf(const Vector& v) { return v ? &*v : nullptr; }

/// What a vector is to a walk that needs a direction: no component is NaN and one is not 0.
inline bool hasLength(const Vector& v) {
  if (!v || std::isnan(v->x) || std::isnan(v->y) || std::isnan(v->z)) return false;
  return v->x != 0.0 || v->y != 0.0 || v->z != 0.0;
}

inline void store(Foundation& foundation, const Record& record) {
  foundation.setName(record.name);
  foundation.setNumber(record.number);
  foundation.setGenerated(record.generated);
  foundation.setFailPossible(record.failPossible);
  foundation.setDispArea(addressOf(record.dispArea));
  foundation.setDispLine(addressOf(record.dispLine));
  foundation.setRotLine(addressOf(record.rotLine));
  foundation.setFailLineX(record.failLineX);
  foundation.setFailLineY(record.failLineY);
  foundation.setFailLineZ(record.failLineZ);
  foundation.setFailAreaZ(record.failAreaZ);
  foundation.setFactorLine(1.0);  // -0.0 is not stored over 0.0
  foundation.setFactorLine(record.factorLine);
  foundation.setFactorArea(1.0);
  foundation.setFactorArea(record.factorArea);
  foundation.setChanged(record.changed);
}

inline std::unique_ptr<Foundation> make(const Record& record) {
  auto made = std::make_unique<Foundation>();
  store(*made, record);
  return made;
}

inline Record recordOf(Foundation& foundation) {
  const auto getVector = [&](bool (Foundation::*get)(KvVector3D&) const) {
    KvVector3D v;
    return (foundation.*get)(v) ? Vector(v) : Vector();
  };
  Record record;
  record.name = foundation.getName();
  record.number = foundation.getNumber();
  record.changed = foundation.getChanged();
  record.generated = foundation.isGenerated();
  record.failPossible = foundation.getFailPossible();
  record.dispArea = getVector(&Foundation::getDispArea);
  record.dispLine = getVector(&Foundation::getDispLine);
  record.rotLine = getVector(&Foundation::getRotLine);
  record.failLineX = foundation.getFailLineX();
  record.failLineY = foundation.getFailLineY();
  record.failLineZ = foundation.getFailLineZ();
  record.failAreaZ = foundation.getFailAreaZ();
  record.factorLine = foundation.getFactorLine();
  record.factorArea = foundation.getFactorArea();
  return record;
}

/// Exact, with the sign of zeros and of what is not a number, but without the other bits of that.
inline std::string describe(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%a", value);
  return text;
}

inline std::string describe(const Vector& v) {
  if (!v) return "absent";
  return "(" + describe(v->x) + " " + describe(v->y) + " " + describe(v->z) + ")";
}

/// Two records are the same when these texts are.
inline std::string describe(const Record& record) {
  std::string text = std::to_string(record.number) + " <" + record.name + ">";
  text += record.changed ? " changed" : "";
  text += record.generated ? " generated" : "";
  text += record.failPossible ? " can fail" : "";
  text += " area " + describe(record.dispArea);
  text += " line " + describe(record.dispLine);
  text += " rotation " + describe(record.rotLine);
  text += " fails";
  for (const int failure : {record.failLineX, record.failLineY, record.failLineZ, record.failAreaZ})
    text += " " + std::to_string(failure);
  return text + " factors " + describe(record.factorLine) + " " + describe(record.factorArea);
}

inline std::string describe(Foundation& foundation) { return describe(recordOf(foundation)); }

/// For what cannot tell whether a foundation changed.
inline std::string describeUnmarked(Record record) {
  record.changed = false;
  return describe(record);
}

inline std::vector<std::string> describeUnmarked(const Records& records) {
  std::vector<std::string> texts;
  for (const Record& record : records) texts.push_back(describeUnmarked(record));
  return texts;
}

inline std::vector<std::string> describeUnmarked(const FoundationManager& manager) {
  std::vector<std::string> texts;
  for (Foundation* foundation : manager.getFoundations())
    texts.push_back(foundation != nullptr ? describeUnmarked(recordOf(*foundation)) : "null");
  return texts;
}

inline void add(FoundationManager& manager, const Records& records) {
  for (const Record& record : records) manager.add(make(record));
}

/// For the output of a property that does not hold.
inline void showValue(const Record& record, std::ostream& out) { out << describe(record); }

}  // namespace PropertyTest
