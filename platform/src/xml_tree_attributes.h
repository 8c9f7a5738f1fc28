#pragma once

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "kv/xml_tree.h"
#include "xml_handles.h"
#include "xml_pool.h"
#include "xml_value.h"

/// What an attribute means, as a string.
struct KvXmlAttributeData::Text {
  KvXmlView::AttributeHandle* attribute = nullptr;
  const CodePages::CodePage* page = nullptr;
  std::string data;
};

namespace KvXmlView {

template <class Element>
class AttributePool;

/// Consecutive attributes of an element. Hosts hold pointers to them, so they never move, and
/// attributes that are set later get a block of their own.
struct AttributeBlock {
  /// Points the attributes to `handles`, from index `start` on.
  void refer(const std::vector<AttributeHandle*>& handles) {
    for (std::uint32_t i = 0; i < size; ++i) attributes[i].refer(handles[start + i]);
  }

  void refer(pugi::xml_attribute first) {
    for (std::uint32_t i = 0; i < size; ++i) {
      attributes[i].refer(toHandle(first));
      first = first.next_attribute();
    }
  }

  KvXmlAttributeData* attributes = nullptr;
  AttributeBlock* older = nullptr;
  std::uint32_t start = 0;  // index of the first one in the element
  std::uint32_t size = 0;
};

/// When one attribute of an element is asked for, keeps all of them: they are small, and a host
/// will probably ask for the others, too.
template <>
class AttributePool<KvXmlData> {
 public:
  /// The attribute at `index` of the element with the attributes `handles`. `newest` is the
  /// element's newest block.
  KvXmlAttributeData* give(AttributeBlock*& newest, const std::vector<AttributeHandle*>& handles,
                           std::size_t index) {
    if (newest == nullptr || index >= newest->start + newest->size) addBlock(newest, handles);
    AttributeBlock* block = newest;
    while (index < block->start) block = block->older;
    return &block->attributes[index - block->start];
  }

  /// Keeps what `attribute` means as a string in two cases: when the meaning depends on `page`,
  /// which is not known later, and when the string will probably be asked for, since the value does
  /// not start like a number.
  void keepText(KvXmlAttributeData& attribute, const CodePages::CodePage* page) {
    if (attribute.hasText()) return;
    const char* const value = attribute.getValue();
    const bool needsPage = page != nullptr && std::strchr(value, '&') != nullptr;
    if (!needsPage && static_cast<unsigned char>(*value) <= '9') return;
    KvXmlAttributeData::Text* const text = texts.make(1);
    *text = {attribute.getAttribute(), page, XmlValue::resolve(value, page)};
    attribute.word = reinterpret_cast<std::uintptr_t>(text) | KvXmlAttributeData::anyText;
  }

  /// Points all blocks of an element to the attributes of its current node, `element`.
  static void rebind(AttributeBlock* newest, const pugi::xml_node& element) {
    for (AttributeBlock* block = newest; block != nullptr; block = block->older)
      block->refer(
          *std::next(element.attributes_begin(), static_cast<std::ptrdiff_t>(block->start)));
  }

 private:
  /// Adds a block for all attributes that are in no block yet.
  void addBlock(AttributeBlock*& newest, const std::vector<AttributeHandle*>& handles) {
    const std::uint32_t start = newest != nullptr ? newest->start + newest->size : 0;
    const std::size_t size = handles.size() - start;
    AttributeBlock* const block = blocks.make(1);
    block->attributes = attributes.make(size);
    block->older = newest;
    block->start = start;
    block->size = static_cast<std::uint32_t>(size);
    block->refer(handles);
    newest = block;
  }

  Pool<KvXmlAttributeData> attributes;
  Pool<KvXmlAttributeData::Text> texts;
  Pool<AttributeBlock> blocks;
};

}  // namespace KvXmlView
