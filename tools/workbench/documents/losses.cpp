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
#include "text/display_text.h"

namespace Losses {
namespace {

namespace Kvml = Documents::Kvml;
using Found::Foundation;
using Found::FoundationManager;

Loss makeLoss(const Foundation& foundation, const std::string& sentence) {
  return {Fields::describe(foundation), sentence, sentence};
}

void compare(Foundation& wanted, Foundation& readBack, std::vector<Loss>& losses) {
  for (const Fields::Difference& lost : Fields::compare(wanted, readBack))
    losses.push_back(describe(wanted, lost));
}

Loss describeLost(const Foundation& foundation, const std::string& reason) {
  return makeLoss(foundation, "is lost, since " + reason);
}

/// Why a form that stores only foundations with a stiffness does not keep this one.
std::string explainStiffness(const Foundation& foundation) {
  KvVector3D area;
  KvVector3D line;
  foundation.getDispArea(area);
  foundation.getDispLine(line);
  const bool isNumber = !std::isnan(area.length()) && !std::isnan(line.length());
  return isNumber ? "it has no stiffness" : "its stiffness is not a number";
}

/// Why a foundation is missing when the document is read again.
std::string explain(const Foundation& foundation, const std::map<int, int>& holders) {
  if (holders.at(foundation.getNumber()) > 1) return "its number is given twice";
  if (foundation.getNumber() < 1) return "its number is below 1";
  return explainStiffness(foundation);
}

Loss describeLostCurrent(const Foundation& foundation) {
  return makeLoss(foundation, "is no longer the current foundation");
}

double readNumber(const KvXmlN::Data& element, const char* attribute) {
  return element.getAttributeDouble(attribute);
}

/// A listing shows failure modes as texts; unknown modes have none.
Foundation::Failure keepFailure(Foundation::Failure failure) {
  return Failures::find(failure) != nullptr ? failure : Foundation::None;
}

/// Sets in `kept` what one element of a listing shows of `wanted`.
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

void listOfKvml(Foundation& wanted, std::vector<Loss>& losses) {
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

Loss describe(const Foundation& foundation, const Fields::Difference& lost) {
  const auto show = [](const Fields::Value& value) {
    const std::string text = Fields::show(value);
    return text.empty() ? R"("")" : text;
  };
  const bool isGone = std::holds_alternative<std::monostate>(lost.second);
  const char* const name = lost.field.name;
  const std::string value = show(lost.first);
  return {Fields::describe(foundation), fmt::format(isGone ? "{} is lost" : "{} changes", name),
          isGone ? fmt::format("{} {} is lost", name, value)
                 : fmt::format("{} {} becomes {}", name, value, show(lost.second))};
}

std::vector<Loss> list(const FoundationManager& wanted, const FoundationManager& readBack,
                       const std::vector<Matching::Key>& keys) {
  std::map<int, int> holders;  // of each number
  for (const Foundation* foundation : wanted.getFoundations()) ++holders[foundation->getNumber()];
  std::vector<Loss> losses;
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

std::vector<Loss> listOfKvml(const FoundationManager& wanted) {
  std::vector<Loss> losses;
  for (Foundation* foundation : wanted.getFoundations()) {
    listOfKvml(*foundation, losses);
    if (foundation == wanted.getCurrentFoundation())
      losses.push_back(describeLostCurrent(*foundation));
  }
  return losses;
}

std::vector<Loss> listReplaced(const FoundationManager& before, const FoundationManager& after,
                               Documents::Form source, const std::vector<Matching::Key>& keys) {
  std::vector<Loss> losses;
  for (const auto& [old, now] :
       Matching::match(before.getFoundations(), after.getFoundations(), keys)) {
    if (old == nullptr) continue;
    if (now == nullptr) {
      losses.push_back(makeLoss(*old, "goes from the document"));
      continue;
    }
    for (const Fields::Difference& lost : Fields::compare(*old, *now))
      if (!Documents::carries(source, lost.field.name)) losses.push_back(describe(*old, lost));
    const bool wasCurrent = old == before.getCurrentFoundation();
    if (wasCurrent && after.getCurrentFoundation() == nullptr)
      losses.push_back(describeLostCurrent(*old));
  }
  return losses;
}

std::vector<Loss> listHalved(Documents::Document& document) {
  std::vector<Loss> losses;
  for (const Documents::Entries& entries : document.getEntries())
    for (const Documents::Entry& entry : entries)
      if (entry.fate == Documents::Entry::Fate::otherPart) {
        const bool isArea = entry.element.getName() == Documents::Exchange::surface.name;
        losses.push_back(makeLoss(*entry.foundation,
                                  fmt::format("hosts that read the document keep only its {} part",
                                              isArea ? "line" : "area")));
      }
  return losses;
}

std::vector<Loss> listUnread(const std::vector<const Documents::Entry*>& entries) {
  const std::string kind = "goes without ever having been read";
  std::vector<Loss> losses;
  for (const Documents::Entry* entry : entries) {
    const std::string name = entry->element.readText(Documents::Exchange::name).value_or("");
    Loss& loss = losses.emplace_back();
    loss.foundation = fmt::format(R"(number {} "{}")", *entry->number, DisplayText::fromName(name));
    loss.kind = kind;
    loss.sentence = fmt::format("{} (line {})", kind, entry->element.getPosition().line);
  }
  return losses;
}

}  // namespace Losses
