#include "found/bedding_reader.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "exchange/bedding_attributes.h"
#include "exchange/exchange_keys.h"
#include "exchange/known_foundations.h"
#include "found/foundation_manager.h"
#include "found/read_messenger.h"

namespace Found::Umo {

struct BeddingReaderData {
  FoundationManager* manager;
  const Tools::VersionText* version;
  ReadMessenger* messenger;
};

namespace {

KvVector3D readVector(const KvXmlN::Data& element, const std::string& x, const std::string& y,
                      const std::string& z) {
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

/// Each kind of element has its own names for the attributes of a part. Braces fix the order in
/// which the attributes are read.
template <class Keys>
AreaPart readAreaPart(const KvXmlN::Data& element, const Keys& keys) {
  return AreaPart{readVector(element, keys.areaX, keys.areaY, keys.areaZ),
                  readFailureAttribute(element, keys.failAreaZ),
                  element.getAttributeDouble(keys.factorArea)};
}

template <class Keys>
LinePart readLinePart(const KvXmlN::Data& element, const Keys& keys) {
  return LinePart{readVector(element, keys.lineX, keys.lineY, keys.lineZ),
                  KvVector3D{element.getAttributeDouble(keys.rotationX), 0.0, 0.0},
                  readFailureAttribute(element, keys.failLineY),
                  readFailureAttribute(element, keys.failLineZ),
                  element.getAttributeDouble(keys.factorLine)};
}

std::unique_ptr<Foundation> makeFoundation(int number, const std::string& name) {
  auto foundation = std::make_unique<Foundation>();
  foundation->setNumber(number);
  foundation->setName(name);
  return foundation;
}

/// One call of BeddingReader::read().
class Reading {
 public:
  Reading(const BeddingReaderData& reader, const std::vector<KvXmlN::Data*>& read)
      : data(reader),
        elements(read),
        known(reader.manager->getFoundations(), read.size(), reader.messenger != nullptr) {}

  void run();

 private:
  using Result = std::unique_ptr<Foundation>;  // empty when the element was refused

  Result readElement(const KvXmlN::Data& element);
  Result readBedding(const KvXmlN::Data& element);
  template <class Keys, class Part>
  Result readNumbered(const KvXmlN::Data& element, const Keys& own,
                      Part readPart(const KvXmlN::Data&, const Keys&));

  std::optional<int> readNumber(const KvXmlN::Data& element, const std::string& key);
  std::optional<std::string> readName(const KvXmlN::Data& element, const std::string& key,
                                      int number);
  std::optional<std::string> readBeddingName(const KvXmlN::Data& element);
  std::string makeUniqueName(std::string wanted);

  /// Sends a message to the messenger, if there is one. It may change the manager.
  template <auto Message, class... Arguments>
  void send(const Arguments&... arguments) {
    if (data.messenger == nullptr) return;
    (data.messenger->*Message)(arguments...);
    known.listMayHaveChanged();
  }

  const ExchangeKeys& keys = getExchangeKeys();
  const BeddingReaderData& data;
  const std::vector<KvXmlN::Data*>& elements;
  KnownFoundations known;
  std::size_t count = 0;
};

void Reading::run() {
  for (const KvXmlN::Data* element : elements) {
    if (element == nullptr) continue;
    Result foundation = readElement(*element);
    if (foundation == nullptr) continue;
    data.manager->add(std::move(foundation));
    known.recordLast();
    ++count;
  }
  send<&ReadMessenger::onReadFinished>(count);
}

Reading::Result Reading::readElement(const KvXmlN::Data& element) {
  const bool isFirstVersion = data.version->isEqualTo(keys.firstVersion);
  const std::string& name = element.getName();
  if (isFirstVersion && name == keys.bedding.element) return readBedding(element);
  if (name == keys.curve.element)
    return readNumbered(element, keys.curve, readLinePart<CurveBeddingKeys>);
  if (name == keys.surface.element)
    return readNumbered(element, keys.surface, readAreaPart<SurfaceBeddingKeys>);
  send<&ReadMessenger::onUnknownElement>(name);
  return nullptr;
}

Reading::Result Reading::readBedding(const KvXmlN::Data& element) {
  const std::optional<std::string> name = readBeddingName(element);
  if (!name) return nullptr;
  const AreaPart area = readAreaPart(element, keys.bedding);
  const LinePart line = readLinePart(element, keys.bedding);

  // The number counts what this reading has added, even where the manager has that number already:
  // the format has no numbers to keep.
  Result foundation = makeFoundation(static_cast<int>(count) + 1, *name);
  area.store(*foundation);
  line.store(*foundation);
  return foundation;
}

/// A "CurveBedding" or a "SurfaceBedding", which differ in their names and in the part they hold.
template <class Keys, class Part>
Reading::Result Reading::readNumbered(const KvXmlN::Data& element, const Keys& own,
                                      Part readPart(const KvXmlN::Data&, const Keys&)) {
  const std::optional<int> number = readNumber(element, own.number);
  if (!number) return nullptr;
  const std::optional<std::string> name = readName(element, own.name, *number);
  if (!name) return nullptr;
  const Part part = readPart(element, own);

  Result foundation = makeFoundation(*number, *name);
  part.store(*foundation);
  return foundation;
}

std::optional<int> Reading::readNumber(const KvXmlN::Data& element, const std::string& key) {
  const std::optional<int> number = readNumberAttribute(element, key);
  if (!number) {
    send<&ReadMessenger::onMissingNumber>(element.getName());
    return std::nullopt;
  }
  if (*number < 1 || known.hasNumber(*number)) {
    send<&ReadMessenger::onInvalidNumber>(element.getName(), *number);
    return std::nullopt;
  }
  return number;
}

std::optional<std::string> Reading::readName(const KvXmlN::Data& element, const std::string& key,
                                             int number) {
  kvt::Nullable<std::string> name = KvXmlN::AttributeIn::readString(element, key);
  if (!name) {
    send<&ReadMessenger::onMissingName>(number);
    return std::nullopt;
  }
  if (name->empty()) {
    send<&ReadMessenger::onEmptyName>(number, *name);
    return std::nullopt;
  }
  return makeUniqueName(*std::move(name));
}

std::optional<std::string> Reading::readBeddingName(const KvXmlN::Data& element) {
  kvt::Nullable<std::string> name = KvXmlN::AttributeIn::readString(element, keys.bedding.name);
  if (!name) {
    send<&ReadMessenger::onMissingBeddingName>();
    return std::nullopt;
  }
  if (name->empty()) {
    send<&ReadMessenger::onEmptyBeddingName>(*name);
    return std::nullopt;
  }
  return makeUniqueName(*std::move(name));
}

std::string Reading::makeUniqueName(std::string wanted) {
  if (!known.hasName(wanted)) return wanted;
  std::string changed = known.makeFreeName(wanted);
  send<&ReadMessenger::onNameChanged>(wanted, changed);
  return changed;
}

}  // namespace

BeddingReader::BeddingReader(FoundationManager& manager, const Tools::VersionText& version)
    : data(new BeddingReaderData{&manager, &version, nullptr}) {}

BeddingReader::~BeddingReader() = default;

void BeddingReader::setMessenger(ReadMessenger* messenger) { data->messenger = messenger; }

void BeddingReader::read(const KvXmlN::Data& container) {
  Reading(*data, container.getChildren()).run();
}

}  // namespace Found::Umo
