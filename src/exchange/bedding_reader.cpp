#include "found/bedding_reader.h"

#include <optional>
#include <string>
#include <utility>

#include "exchange/bedding_attributes.h"
#include "exchange/exchange_keys.h"
#include "found/foundation_manager.h"
#include "found/read_messenger.h"

namespace Found::Umo {

struct BeddingReaderData {
  FoundationManager* manager;
  const Tools::VersionText* version;
  ReadMessenger* messenger;

  using Result = std::unique_ptr<Foundation>;  // empty when the element was refused

  Result readElement(const KvXmlN::Data& element, std::size_t count) const;
  Result readBedding(const KvXmlN::Data& element, std::size_t count) const;
  template <class Keys, class Part>
  Result readNumbered(const KvXmlN::Data& element, Part readPart(const KvXmlN::Data&)) const;

  std::optional<int> readNumber(const KvXmlN::Data& element, const char* key) const;
  std::optional<std::string> readName(const KvXmlN::Data& element, const char* key,
                                      int number) const;
  std::optional<std::string> readBeddingName(const KvXmlN::Data& element) const;
  std::string giveUniqueName(const std::string& wanted) const;

  bool nameExists(const std::string& name) const;
  bool numberExists(int number) const;
  std::string makeUniqueName(const std::string& wanted) const;

  /// Sends a message when there is somebody to hear it.
  template <class... Parameters, class... Arguments>
  void send(void (ReadMessenger::*message)(Parameters...), const Arguments&... arguments) const {
    if (messenger != nullptr) (messenger->*message)(arguments...);
  }
};

namespace {

KvVector3D readVector(const KvXmlN::Data& element, const char* x, const char* y, const char* z) {
  return KvVector3D{element.getAttributeDouble(x), element.getAttributeDouble(y),
                    element.getAttributeDouble(z)};
}

struct AreaPart {
  KvVector3D disp;
  Foundation::Failure failZ;
  double factor;

  void store(Foundation& foundation) const {
    foundation.setDispArea(&disp);
    foundation.setFailAreaZ(failZ);
    foundation.setFactorArea(factor);
  }
};

struct LinePart {
  KvVector3D disp;
  KvVector3D rot;
  Foundation::Failure failY;
  Foundation::Failure failZ;
  double factor;

  void store(Foundation& foundation) const {
    foundation.setDispLine(&disp);
    foundation.setRotLine(&rot);
    foundation.setFailLineY(failY);
    foundation.setFailLineZ(failZ);
    foundation.setFactorLine(factor);
  }
};

/// Both kinds of element name the attributes of a part each in their own words. Braces keep the
/// order in which the attributes are asked for.
template <class Keys>
AreaPart readAreaPart(const KvXmlN::Data& element) {
  return AreaPart{readVector(element, Keys::areaX, Keys::areaY, Keys::areaZ),
                  readFailureAttribute(element, Keys::failAreaZ),
                  element.getAttributeDouble(Keys::factorArea)};
}

template <class Keys>
LinePart readLinePart(const KvXmlN::Data& element) {
  return LinePart{readVector(element, Keys::lineX, Keys::lineY, Keys::lineZ),
                  KvVector3D{element.getAttributeDouble(Keys::rotationX), 0.0, 0.0},
                  readFailureAttribute(element, Keys::failLineY),
                  readFailureAttribute(element, Keys::failLineZ),
                  element.getAttributeDouble(Keys::factorLine)};
}

std::unique_ptr<Foundation> makeFoundation(int number, const std::string& name) {
  auto foundation = std::make_unique<Foundation>();
  foundation->setNumber(number);
  foundation->setName(name);
  return foundation;
}

}  // namespace

BeddingReader::BeddingReader(FoundationManager& manager, const Tools::VersionText& version)
    : data(new BeddingReaderData{&manager, &version, nullptr}) {}

BeddingReader::~BeddingReader() = default;

void BeddingReader::setMessenger(ReadMessenger* messenger) { data->messenger = messenger; }

void BeddingReader::read(const KvXmlN::Data& container) {
  std::size_t count = 0;
  for (const KvXmlN::Data* element : container.getChildren()) {
    if (element == nullptr) continue;
    std::unique_ptr<Foundation> foundation = data->readElement(*element, count);
    if (foundation == nullptr) continue;
    data->manager->add(std::move(foundation));
    ++count;
  }
  data->send(&ReadMessenger::onReadFinished, count);
}

BeddingReaderData::Result BeddingReaderData::readElement(const KvXmlN::Data& element,
                                                         std::size_t count) const {
  const bool isFirstVersion = version->isEqualTo(firstVersion);
  const std::string& name = element.getName();
  if (isFirstVersion && name == BeddingKeys::element) return readBedding(element, count);
  if (name == CurveBeddingKeys::element)
    return readNumbered<CurveBeddingKeys>(element, readLinePart<CurveBeddingKeys>);
  if (name == SurfaceBeddingKeys::element)
    return readNumbered<SurfaceBeddingKeys>(element, readAreaPart<SurfaceBeddingKeys>);
  send(&ReadMessenger::onUnknownElement, name);
  return nullptr;
}

BeddingReaderData::Result BeddingReaderData::readBedding(const KvXmlN::Data& element,
                                                         std::size_t count) const {
  const std::optional<std::string> name = readBeddingName(element);
  if (!name) return nullptr;
  const AreaPart area = readAreaPart<BeddingKeys>(element);
  const LinePart line = readLinePart<BeddingKeys>(element);

  // Numbered by what this reading has added, on purpose also where the manager has that number:
  // the format has no numbers that could be kept.
  Result foundation = makeFoundation(static_cast<int>(count) + 1, *name);
  area.store(*foundation);
  line.store(*foundation);
  return foundation;
}

/// A "CurveBedding" or a "SurfaceBedding", which differ in their names and in the part they hold.
template <class Keys, class Part>
BeddingReaderData::Result BeddingReaderData::readNumbered(
    const KvXmlN::Data& element, Part readPart(const KvXmlN::Data&)) const {
  const std::optional<int> number = readNumber(element, Keys::number);
  if (!number) return nullptr;
  const std::optional<std::string> name = readName(element, Keys::name, *number);
  if (!name) return nullptr;
  const Part part = readPart(element);

  Result foundation = makeFoundation(*number, *name);
  part.store(*foundation);
  return foundation;
}

std::optional<int> BeddingReaderData::readNumber(const KvXmlN::Data& element,
                                                 const char* key) const {
  const std::optional<int> number = readNumberAttribute(element, key);
  if (!number) {
    send(&ReadMessenger::onMissingNumber, element.getName());
    return std::nullopt;
  }
  if (*number < 1 || numberExists(*number)) {
    send(&ReadMessenger::onInvalidNumber, element.getName(), *number);
    return std::nullopt;
  }
  return number;
}

std::optional<std::string> BeddingReaderData::readName(const KvXmlN::Data& element, const char* key,
                                                       int number) const {
  kvt::Nullable<std::string> name = KvXmlN::AttributeIn::readString(element, key);
  if (!name) {
    send(&ReadMessenger::onMissingName, number);
    return std::nullopt;
  }
  if (name->empty()) {
    send(&ReadMessenger::onEmptyName, number, *name);
    return std::nullopt;
  }
  return giveUniqueName(*name);
}

std::optional<std::string> BeddingReaderData::readBeddingName(const KvXmlN::Data& element) const {
  kvt::Nullable<std::string> name = KvXmlN::AttributeIn::readString(element, BeddingKeys::name);
  if (!name) {
    send(&ReadMessenger::onMissingBeddingName);
    return std::nullopt;
  }
  if (name->empty()) {
    send(&ReadMessenger::onEmptyBeddingName, *name);
    return std::nullopt;
  }
  return giveUniqueName(*name);
}

bool BeddingReaderData::nameExists(const std::string& name) const {
  return manager->findFoundation(name) != nullptr;
}

bool BeddingReaderData::numberExists(int number) const {
  return manager->findFoundation(number) != nullptr;
}

std::string BeddingReaderData::giveUniqueName(const std::string& wanted) const {
  return nameExists(wanted) ? makeUniqueName(wanted) : wanted;
}

std::string BeddingReaderData::makeUniqueName(const std::string& wanted) const {
  // Every candidate starts from the name wanted, so that suffixes never pile up.
  std::string candidate = wanted;
  for (int counter = 1; nameExists(candidate); ++counter)
    candidate = wanted + "_" + std::to_string(counter);
  send(&ReadMessenger::onNameChanged, wanted, candidate);
  return candidate;
}

}  // namespace Found::Umo
