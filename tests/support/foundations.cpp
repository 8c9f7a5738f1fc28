#include "support/foundations.h"

#include <charconv>
#include <memory>
#include <utility>
#include <vector>

#include "support/double_bits.h"

using Found::Foundation;
using Found::FoundationManager;

namespace TestSupport {
namespace {

std::string print(double value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string print(const KvVector3D& v) {
  return "(" + print(v.x) + ", " + print(v.y) + ", " + print(v.z) + ")";
}

std::string join(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + text;
  return result;
}

}  // namespace

Foundation& addFoundation(FoundationManager& manager, int number, const std::string& name) {
  auto created = std::make_unique<Foundation>();
  created->setNumber(number);
  created->setName(name);
  manager.add(std::move(created));
  return *manager.getFoundations().back();
}

void setDispArea(Foundation& foundation, double x, double y, double z) {
  const KvVector3D v(x, y, z);
  foundation.setDispArea(&v);
}

void setDispLine(Foundation& foundation, double x, double y, double z) {
  const KvVector3D v(x, y, z);
  foundation.setDispLine(&v);
}

void setRotLine(Foundation& foundation, double x, double y, double z) {
  const KvVector3D v(x, y, z);
  foundation.setRotLine(&v);
}

std::string describe(const FoundationManager& manager) {
  std::vector<std::string> texts;
  for (const Foundation* foundation : manager.getFoundations())
    texts.push_back(foundation != nullptr
                        ? std::to_string(foundation->getNumber()) + " " + foundation->getName()
                        : "null");
  return join(texts);
}

std::string describeValues(Foundation& foundation) {
  std::vector<std::string> texts;
  KvVector3D v;
  if (foundation.getDispArea(v)) texts.push_back("area " + print(v));
  if (foundation.getDispLine(v)) texts.push_back("line " + print(v));
  if (foundation.getRotLine(v)) texts.push_back("rotation " + print(v));
  const auto addFailure = [&](const std::string& name, Foundation::Failure failure) {
    if (failure != Foundation::None)
      texts.push_back("fails " + name + " " + std::to_string(static_cast<int>(failure)));
  };
  addFailure("area z", foundation.getFailAreaZ());
  addFailure("line x", foundation.getFailLineX());
  addFailure("line y", foundation.getFailLineY());
  addFailure("line z", foundation.getFailLineZ());
  const auto addFactor = [&](const std::string& name, double factor) {
    if (factor != 0.0) texts.push_back("factor " + name + " " + print(factor));
  };
  addFactor("area", foundation.getFactorArea());
  addFactor("line", foundation.getFactorLine());
  if (foundation.getFailPossible()) texts.emplace_back("can fail");
  if (foundation.isGenerated()) texts.emplace_back("generated");
  return join(texts);
}

Differences compare(Foundation& a, Foundation& b, AbsentVector absent) {
  Differences differences;
  const auto note = [&](bool isSame, const std::string& field) {
    if (!isSame) differences.push_back(a.getName() + ": " + field);
  };
  const auto noteVector = [&](bool (Foundation::*get)(KvVector3D&) const,
                              const std::string& field) {
    KvVector3D u;
    KvVector3D v;
    const bool isInA = (a.*get)(u);
    const bool isInB = (b.*get)(v);
    note(!isInA || isInB, field + " was dropped");
    note(isInA || !isInB, field + " came up");
    if (isInA != isInB && absent == AbsentVector::HasNoComponents) return;
    note(bitsOf(u.x) == bitsOf(v.x), field + " x");
    note(bitsOf(u.y) == bitsOf(v.y), field + " y");
    note(bitsOf(u.z) == bitsOf(v.z), field + " z");
  };
  note(a.getName() == b.getName(), "name");
  note(a.getNumber() == b.getNumber(), "number");
  note(a.getChanged() == b.getChanged(), "changed");
  note(a.isGenerated() == b.isGenerated(), "generated");
  note(a.getFailPossible() == b.getFailPossible(), "failPossible");
  noteVector(&Foundation::getDispArea, "dispArea");
  noteVector(&Foundation::getDispLine, "dispLine");
  noteVector(&Foundation::getRotLine, "rotLine");
  note(a.getFailLineX() == b.getFailLineX(), "failLineX");
  note(a.getFailLineY() == b.getFailLineY(), "failLineY");
  note(a.getFailLineZ() == b.getFailLineZ(), "failLineZ");
  note(a.getFailAreaZ() == b.getFailAreaZ(), "failAreaZ");
  note(bitsOf(a.getFactorLine()) == bitsOf(b.getFactorLine()), "factorLine");
  note(bitsOf(a.getFactorArea()) == bitsOf(b.getFactorArea()), "factorArea");
  return differences;
}

}  // namespace TestSupport
