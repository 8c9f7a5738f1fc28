#include "documents/element.h"

namespace Documents {

const std::string& Element::getName() const {
  return std::visit([](auto* element) -> const std::string& { return element->getName(); }, data);
}

std::vector<Element> Element::listChildren() const {
  return std::visit(
      [this](auto* element) {
        std::vector<Element> children;
        children.reserve(element->getChildren().size());
        for (auto* child : element->getChildren()) children.emplace_back(child, charset);
        return children;
      },
      data);
}

std::vector<std::string> Element::listAttributeNames() const {
  return std::visit([](auto* element) { return element->getAttributeNames(); }, data);
}

std::optional<std::string> Element::readText(const std::string& attribute) const {
  return std::visit(
      [&attribute, this](auto* element) -> std::optional<std::string> {
        const auto* const found = element->findAttribute(attribute);
        if (found == nullptr) return std::nullopt;
        return charset != nullptr ? charset->toUtf8(found->getData()) : found->getData();
      },
      data);
}

std::size_t Element::measureText(const std::string& attribute) const {
  return std::visit(
      [&attribute](auto* element) { return element->findAttribute(attribute)->getData().size(); },
      data);
}

std::optional<int> Element::readInteger(const std::string& attribute) const {
  if (const auto* const element = std::get_if<const KvXmlN::Data*>(&data))
    return KvXmlN::AttributeIn::readInteger(**element, attribute);
  const KvXmlAttributeData* const found = std::get<KvXmlData*>(data)->findAttribute(attribute);
  if (found == nullptr || !found->checkValue(found->getInteger())) return std::nullopt;
  return found->getInteger();
}

std::optional<double> Element::readNumber(const std::string& attribute) const {
  if (const auto* const element = std::get_if<const KvXmlN::Data*>(&data))
    return KvXmlN::AttributeIn::readDouble(**element, attribute);
  const KvXmlAttributeData* const found = std::get<KvXmlData*>(data)->findAttribute(attribute);
  if (found == nullptr) return std::nullopt;
  const double number = found->getDouble();
  if (number != 0.0 || found->getData() == "0") return number;
  // A text that is no number reads as 0, too; only the newer library tells the two apart.
  KvXmlN::Data other("number");
  other.setAttribute(attribute, found->getData(), true);
  return KvXmlN::AttributeIn::readDouble(other, attribute);
}

KvXmlPosition Element::getPosition() const {
  return std::visit([](auto* element) { return element->getPosition(); }, data);
}

KvXmlPosition Element::locate(const std::string& attribute) const {
  const KvXmlPosition position = std::visit(
      [&attribute](auto* element) { return element->getAttributePosition(attribute); }, data);
  return position.line > 0 ? position : getPosition();
}

}  // namespace Documents
