#include "found/kvml_writer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "kv/text.h"
#include "kvml/kvml_keys.h"

namespace Found {
namespace {

constexpr const char* stiffnessFormat = "%.1f";
constexpr const char* factorFormat = "%.2f";

/// By ascending number: the sets are ordered by address, which must not show.
std::vector<Foundation*> sortByNumber(const std::set<Foundation*>& chosen) {
  std::vector<Foundation*> sorted;
  for (Foundation* foundation : chosen)
    if (foundation != nullptr) sorted.push_back(foundation);
  std::sort(sorted.begin(), sorted.end(), [](const Foundation* a, const Foundation* b) {
    return a->getNumber() < b->getNumber();
  });
  return sorted;
}

void writeStiffness(KvXmlN::Data& element, const std::string& key, double value) {
  element.setAttribute(key, value, stiffnessFormat);
}

/// Number, name and translation, which areas and beams have in common.
void writeHead(KvXmlN::Data& element, const Foundation& foundation, const KvVector3D& disp) {
  const KvmlKeys& keys = getKvmlKeys();
  element.setAttribute(keys.number, foundation.getNumber(), true);
  element.setAttribute(keys.name, foundation.getName(), true);
  writeStiffness(element, keys.stiffnessX, disp.x);
  writeStiffness(element, keys.stiffnessY, disp.y);
  writeStiffness(element, keys.stiffnessZ, disp.z);
}

void writeTail(KvXmlN::Data& element, const std::string& failureText, double factor) {
  const KvmlKeys& keys = getKvmlKeys();
  element.setAttribute(keys.failure, failureText, true);
  element.setAttribute(keys.factor, factor, factorFormat);
}

/// Which display text stands for which modes in y and z. An area fails in z only.
struct FailureText {
  Foundation::Failure y;
  Foundation::Failure z;
  unsigned id;
};

constexpr unsigned noFailureId = 7469;
constexpr FailureText failureTextIds[] = {
    {Foundation::Tension, Foundation::None, 7470},
    {Foundation::Compression, Foundation::None, 7471},
    {Foundation::None, Foundation::Tension, 7472},
    {Foundation::None, Foundation::Compression, 7473},
    {Foundation::Tension, Foundation::Tension, 7474},
    {Foundation::Compression, Foundation::Tension, 7475},
    {Foundation::Tension, Foundation::Compression, 7476},
    {Foundation::Compression, Foundation::Compression, 7477},
};

}  // namespace

struct KvmlWriter::Implementation {
  void writeAreas(KvXmlN::Data& list, const std::set<Foundation*>& areas) const;
  void writeBeams(KvXmlN::Data& list, const std::set<Foundation*>& beams) const;
  std::string loadFailureText(Foundation::Failure y, Foundation::Failure z) const;
};

void KvmlWriter::Implementation::writeAreas(KvXmlN::Data& list,
                                            const std::set<Foundation*>& areas) const {
  const KvmlKeys& keys = getKvmlKeys();
  for (Foundation* foundation : sortByNumber(areas)) {
    KvVector3D disp;
    if (!foundation->getDispArea(disp)) continue;
    KvXmlN::Data* const element = list.createChild(keys.area);
    if (element == nullptr) continue;
    writeHead(*element, *foundation, disp);
    writeTail(*element, loadFailureText(Foundation::None, foundation->getFailAreaZ()),
              foundation->getFactorArea());
  }
}

void KvmlWriter::Implementation::writeBeams(KvXmlN::Data& list,
                                            const std::set<Foundation*>& beams) const {
  const KvmlKeys& keys = getKvmlKeys();
  for (Foundation* foundation : sortByNumber(beams)) {
    KvVector3D disp;
    if (!foundation->getDispLine(disp)) continue;
    KvXmlN::Data* const element = list.createChild(keys.beam);
    if (element == nullptr) continue;
    writeHead(*element, *foundation, disp);
    writeStiffness(*element, keys.rotationX, foundation->getValueLine(3));
    writeTail(*element, loadFailureText(foundation->getFailLineY(), foundation->getFailLineZ()),
              foundation->getFactorLine());
  }
}

std::string KvmlWriter::Implementation::loadFailureText(Foundation::Failure y,
                                                        Foundation::Failure z) const {
  // Loaded first in any case: a host's own texts may rely on it.
  std::string text = KvText::Load(noFailureId);
  for (const FailureText& row : failureTextIds)
    if (row.y == y && row.z == z) text = KvText::Load(row.id);
  return text;
}

KvmlWriter::KvmlWriter() : implementation(std::make_unique<Implementation>()) {}

KvmlWriter::~KvmlWriter() = default;

void KvmlWriter::write(KvXmlN::Data& parent, const std::set<Foundation*>& areas,
                       const std::set<Foundation*>& beams) const {
  if (areas.empty() && beams.empty()) return;
  KvXmlN::Data* const list = parent.createChild(getKvmlKeys().beddings);
  if (list == nullptr) return;
  implementation->writeAreas(*list, areas);
  implementation->writeBeams(*list, beams);
}

}  // namespace Found
