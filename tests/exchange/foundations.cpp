#include "exchange/foundations.h"

#include <charconv>
#include <memory>
#include <utility>
#include <vector>

using Found::Foundation;
using Found::FoundationManager;

namespace ExchangeTest {
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
  if (foundation.getFailPossible()) texts.push_back("can fail");
  if (foundation.isGenerated()) texts.push_back("generated");
  return join(texts);
}

}  // namespace ExchangeTest
