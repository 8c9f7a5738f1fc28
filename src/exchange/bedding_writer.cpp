#include "found/bedding_writer.h"

#include "exchange/exchange_keys.h"
#include "exchange/failure_texts.h"
#include "found/foundation_manager.h"

namespace Found::Umo {

struct BeddingWriterData {
  const FoundationManager* manager;
  const Tools::VersionText* version;
  ReadMessenger* messenger;
};

namespace {

void writeText(KvXmlN::Data& element, const std::string& key, const std::string& text) {
  element.setAttribute(key, text, true);
}

/// An absent vector comes as (0, 0, 0) and so, like a zero one, is not written.
void writeVector(KvXmlN::Data& element, const std::string& x, const std::string& y,
                 const std::string& z, const KvVector3D& v) {
  if (v.isNull()) return;
  element.setAttribute(x, v.x);
  element.setAttribute(y, v.y);
  element.setAttribute(z, v.z);
}

template <class Keys>
void writeAreaPart(KvXmlN::Data& element, const Keys& keys, Foundation& foundation) {
  KvVector3D disp;
  foundation.getDispArea(disp);
  writeVector(element, keys.areaX, keys.areaY, keys.areaZ, disp);
  writeText(element, keys.failAreaZ, failureToText(foundation.getFailAreaZ()));
  element.setAttribute(keys.factorArea, foundation.getFactorArea());
}

template <class Keys>
void writeLinePart(KvXmlN::Data& element, const Keys& keys, Foundation& foundation) {
  KvVector3D disp;
  foundation.getDispLine(disp);
  writeVector(element, keys.lineX, keys.lineY, keys.lineZ, disp);
  KvVector3D rot;
  foundation.getRotLine(rot);
  if (!rot.isNull()) element.setAttribute(keys.rotationX, rot.x);
  writeText(element, keys.failLineY, failureToText(foundation.getFailLineY()));
  writeText(element, keys.failLineZ, failureToText(foundation.getFailLineZ()));
  element.setAttribute(keys.factorLine, foundation.getFactorLine());
}

template <class Keys>
void writeNumberAndName(KvXmlN::Data& element, const Keys& keys, const Foundation& foundation) {
  element.setAttribute(keys.number, foundation.getNumber(), true);
  writeText(element, keys.name, foundation.getName());
}

void writeBedding(KvXmlN::Data& container, Foundation& foundation) {
  const BeddingKeys& keys = getExchangeKeys().bedding;
  KvXmlN::Data* const element = container.createChild(keys.element);
  if (element == nullptr) return;
  writeText(*element, keys.name, foundation.getName());
  writeAreaPart(*element, keys, foundation);
  writeLinePart(*element, keys, foundation);
}

void writeCurveBedding(KvXmlN::Data& container, Foundation& foundation) {
  const CurveBeddingKeys& keys = getExchangeKeys().curve;
  KvXmlN::Data* const element = container.createChild(keys.element);
  if (element == nullptr) return;
  writeNumberAndName(*element, keys, foundation);
  writeLinePart(*element, keys, foundation);
}

void writeSurfaceBedding(KvXmlN::Data& container, Foundation& foundation) {
  const SurfaceBeddingKeys& keys = getExchangeKeys().surface;
  KvXmlN::Data* const element = container.createChild(keys.element);
  if (element == nullptr) return;
  writeNumberAndName(*element, keys, foundation);
  writeAreaPart(*element, keys, foundation);
}

}  // namespace

BeddingWriter::BeddingWriter(const FoundationManager& manager, const Tools::VersionText& version)
    : data(new BeddingWriterData{&manager, &version, nullptr}) {}

BeddingWriter::~BeddingWriter() = default;

void BeddingWriter::setMessenger(ReadMessenger* messenger) { data->messenger = messenger; }

void BeddingWriter::write(KvXmlN::Data& container) const {
  const bool isFirstVersion = data->version->isEqualTo(getExchangeKeys().firstVersion);
  for (Foundation* foundation : data->manager->getFoundations()) {
    if (foundation == nullptr) continue;
    if (isFirstVersion) {
      writeBedding(container, *foundation);
      continue;
    }
    if (foundation->hasLineValues()) writeCurveBedding(container, *foundation);
    if (foundation->hasAreaValues()) writeSurfaceBedding(container, *foundation);
  }
}

}  // namespace Found::Umo
