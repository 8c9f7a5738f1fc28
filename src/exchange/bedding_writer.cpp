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
void writeAreaPart(KvXmlN::Data& element, Foundation& foundation) {
  KvVector3D disp;
  foundation.getDispArea(disp);
  writeVector(element, Keys::areaX, Keys::areaY, Keys::areaZ, disp);
  writeText(element, Keys::failAreaZ, failureToText(foundation.getFailAreaZ()));
  element.setAttribute(Keys::factorArea, foundation.getFactorArea());
}

template <class Keys>
void writeLinePart(KvXmlN::Data& element, Foundation& foundation) {
  KvVector3D disp;
  foundation.getDispLine(disp);
  writeVector(element, Keys::lineX, Keys::lineY, Keys::lineZ, disp);
  KvVector3D rot;
  foundation.getRotLine(rot);
  if (!rot.isNull()) element.setAttribute(Keys::rotationX, rot.x);
  writeText(element, Keys::failLineY, failureToText(foundation.getFailLineY()));
  writeText(element, Keys::failLineZ, failureToText(foundation.getFailLineZ()));
  element.setAttribute(Keys::factorLine, foundation.getFactorLine());
}

template <class Keys>
void writeNumberAndName(KvXmlN::Data& element, const Foundation& foundation) {
  element.setAttribute(Keys::number, foundation.getNumber(), true);
  writeText(element, Keys::name, foundation.getName());
}

void writeBedding(KvXmlN::Data& container, Foundation& foundation) {
  using Keys = BeddingKeys;
  KvXmlN::Data* const element = container.createChild(Keys::element);
  if (element == nullptr) return;
  writeText(*element, Keys::name, foundation.getName());
  writeAreaPart<Keys>(*element, foundation);
  writeLinePart<Keys>(*element, foundation);
}

void writeCurveBedding(KvXmlN::Data& container, Foundation& foundation) {
  using Keys = CurveBeddingKeys;
  KvXmlN::Data* const element = container.createChild(Keys::element);
  if (element == nullptr) return;
  writeNumberAndName<Keys>(*element, foundation);
  writeLinePart<Keys>(*element, foundation);
}

void writeSurfaceBedding(KvXmlN::Data& container, Foundation& foundation) {
  using Keys = SurfaceBeddingKeys;
  KvXmlN::Data* const element = container.createChild(Keys::element);
  if (element == nullptr) return;
  writeNumberAndName<Keys>(*element, foundation);
  writeAreaPart<Keys>(*element, foundation);
}

}  // namespace

BeddingWriter::BeddingWriter(const FoundationManager& manager, const Tools::VersionText& version)
    : data(new BeddingWriterData{&manager, &version, nullptr}) {}

BeddingWriter::~BeddingWriter() = default;

void BeddingWriter::setMessenger(ReadMessenger* messenger) { data->messenger = messenger; }

void BeddingWriter::write(KvXmlN::Data& container) const {
  const bool isFirstVersion = data->version->isEqualTo(firstVersion);
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
