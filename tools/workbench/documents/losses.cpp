#include "documents/losses.h"

#include <cmath>
#include <map>
#include <set>

#include <fmt/format.h>

#include "documents/vocabulary.h"
#include "found/kvml_writer.h"
#include "foundations/failures.h"
#include "foundations/fields.h"
#include "kv/xml_n.h"

namespace Losses {
namespace {

namespace Kvml = Documents::Kvml;
using Found::Foundation;
using Found::FoundationManager;

void compare(Foundation& wanted, Foundation& readBack, std::vector<std::string>& losses) {
  for (const Fields::Difference& lost : Fields::compare(wanted, readBack)) {
    const bool isGone = std::holds_alternative<std::monostate>(lost.second);
    losses.push_back(fmt::format(isGone ? "{}: {} {} is lost" : "{}: {} {} becomes {}",
                                 Fields::describe(wanted), lost.field.name,
                                 Fields::show(lost.first), Fields::show(lost.second)));
  }
}

std::string describeLost(const Foundation& foundation, const std::string& reason) {
  return fmt::format("{}: is lost, since {}", Fields::describe(foundation), reason);
}

/// Why a form that holds only foundations with a stiffness does not keep this one.
std::string explainStiffness(const Foundation& foundation) {
  KvVector3D area;
  KvVector3D line;
  foundation.getDispArea(area);
  foundation.getDispLine(line);
  const bool isNumber = !std::isnan(area.length()) && !std::isnan(line.length());
  return isNumber ? "it has no stiffness" : "its stiffness is not a number";
}

/// Why a document that is read again does not keep a foundation.
std::string explain(const Foundation& foundation, const std::map<int, int>& holders) {
  if (holders.at(foundation.getNumber()) > 1) return "its number is given twice";
  if (foundation.getNumber() < 1) return "its number is below 1";
  return explainStiffness(foundation);
}

std::string describeLostCurrent(const Foundation& foundation) {
  return Fields::describe(foundation) + ": is no longer the current foundation";
}

double readNumber(const KvXmlN::Data& element, const char* attribute) {
  return element.getAttributeDouble(attribute);
}

/// Failure modes have texts, but only those that there are.
Foundation::Failure keepFailure(Foundation::Failure failure) {
  return Failures::find(failure) != nullptr ? failure : Foundation::None;
}

/// Gives `kept` what one element of a listing tells of `wanted`.
void readElement(const KvXmlN::Data& element, Foundation& wanted, Foundation& kept) {
  const KvVector3D disp(readNumber(element, Kvml::x), readNumber(element, Kvml::y),
                        readNumber(element, Kvml::z));
  const double factor = readNumber(element, Kvml::factor);
  if (element.getName() == Kvml::area) {
    kept.setDispArea(&disp);
    kept.setFactorArea(factor);
    kept.setFailAreaZ(keepFailure(wanted.getFailAreaZ()));
    return;
  }
  const KvVector3D rotation(readNumber(element, Kvml::rotationX), 0.0, 0.0);
  kept.setDispLine(&disp);
  kept.setRotLine(&rotation);
  kept.setFactorLine(factor);
  const Foundation::Failure y = keepFailure(wanted.getFailLineY());
  const Foundation::Failure z = keepFailure(wanted.getFailLineZ());
  const bool isShown = y == wanted.getFailLineY() && z == wanted.getFailLineZ();
  kept.setFailLineY(isShown ? y : Foundation::None);
  kept.setFailLineZ(isShown ? z : Foundation::None);
}

void listOfKvml(Foundation& wanted, std::vector<std::string>& losses) {
  KvXmlN::Document listing(Kvml::root);
  std::set<Foundation*> area;
  std::set<Foundation*> line;
  if (wanted.hasAreaValues()) area.insert(&wanted);
  if (wanted.hasLineValues()) line.insert(&wanted);
  Found::KvmlWriter().write(listing.getRoot(), area, line);

  Foundation kept;
  kept.setNumber(wanted.getNumber());
  kept.setName(wanted.getName());
  std::size_t elements = 0;
  for (const KvXmlN::Data* beddings : listing.getRoot().getChildren())
    for (const KvXmlN::Data* element : beddings->getChildren()) {
      readElement(*element, wanted, kept);
      ++elements;
    }
  if (elements > 0) return compare(wanted, kept, losses);
  const std::string reason = wanted.hasLineValues() ? "its only stiffness is one against rotation"
                                                    : explainStiffness(wanted);
  losses.push_back(describeLost(wanted, reason));
}

}  // namespace

std::vector<std::string> list(const FoundationManager& wanted, const FoundationManager& readBack,
                              const std::vector<Matching::Key>& keys) {
  std::map<int, int> holders;  // of each number
  for (const Foundation* foundation : wanted.getFoundations()) ++holders[foundation->getNumber()];
  std::vector<std::string> losses;
  for (const auto& [before, after] :
       Matching::match(wanted.getFoundations(), readBack.getFoundations(), keys)) {
    if (before == nullptr) continue;
    if (after == nullptr) {
      losses.push_back(describeLost(*before, explain(*before, holders)));
      continue;
    }
    compare(*before, *after, losses);
    const bool wasCurrent = before == wanted.getCurrentFoundation();
    if (wasCurrent && after != readBack.getCurrentFoundation())
      losses.push_back(describeLostCurrent(*before));
  }
  return losses;
}

std::vector<std::string> listOfKvml(const FoundationManager& wanted) {
  std::vector<std::string> losses;
  for (Foundation* foundation : wanted.getFoundations()) {
    listOfKvml(*foundation, losses);
    if (foundation == wanted.getCurrentFoundation())
      losses.push_back(describeLostCurrent(*foundation));
  }
  return losses;
}

}  // namespace Losses
