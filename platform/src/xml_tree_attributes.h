#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "kv/xml_tree.h"
#include "xml_handles.h"
#include "xml_pool.h"

namespace KvXmlView {

template <class Element>
class AttributePool;

/// Some attributes of an element that follow one another. Those handed out must stay where they
/// are, so attributes that are set later get a block of their own.
struct AttributeBlock {
  void refer(const std::vector<AttributeHandle*>& handles) {
    for (std::uint32_t i = 0; i < size; ++i) attributes[i].refer(handles[i]);
  }

  void refer(pugi::xml_attribute first) {
    for (std::uint32_t i = 0; i < size; ++i) {
      attributes[i].refer(toHandle(first));
      first = first.next_attribute();
    }
  }

  /// Attributes are mostly asked for in the order in which they stand, so the search goes on from
  /// where the last one ended.
  KvXmlAttributeData* find(std::string_view name) {
    for (std::uint32_t step = 0; step < size; ++step) {
      const std::uint32_t i = next;
      next = i + 1 < size ? i + 1 : 0;
      if (get(i).name() == name) return &attributes[i];
    }
    return nullptr;
  }

  pugi::xml_attribute get(std::uint32_t i) const {
    return fromHandle(attributes[i].getAttribute());
  }

  KvXmlAttributeData* attributes = nullptr;
  AttributeBlock* older = nullptr;
  std::uint32_t start = 0;  // which attribute of the element is the first
  std::uint32_t size = 0;
  std::uint32_t next = 0;
};

/// Of an element one attribute of which was asked for, all are kept: they are small, and the others
/// will be asked for too.
template <>
class AttributePool<KvXmlData> {
 public:
  /// The attribute of this name of `element`, or null. `newest` is the element's newest block.
  KvXmlAttributeData* find(AttributeBlock*& newest, const pugi::xml_node& element,
                           std::string_view name) {
    for (AttributeBlock* block = newest; block != nullptr; block = block->older)
      if (KvXmlAttributeData* const known = block->find(name)) return known;
    return addBlock(newest, element) ? newest->find(name) : nullptr;
  }

  /// Lets all blocks of an element refer to `element`, where it stands now.
  static void rebind(AttributeBlock* newest, const pugi::xml_node& element) {
    for (AttributeBlock* block = newest; block != nullptr; block = block->older)
      block->refer(*std::next(element.attributes_begin(), block->start));
  }

 private:
  /// Adds a block of all attributes that are in none yet; false when there are no such.
  bool addBlock(AttributeBlock*& newest, const pugi::xml_node& element) {
    const AttributeBlock* const older = newest;
    handles.clear();
    for (pugi::xml_attribute a = older != nullptr ? older->get(older->size - 1).next_attribute()
                                                  : element.first_attribute();
         a; a = a.next_attribute())
      handles.push_back(toHandle(a));
    if (handles.empty()) return false;

    AttributeBlock* const block = blocks.make(1);
    block->attributes = attributes.make(handles.size());
    block->older = newest;
    block->start = older != nullptr ? older->start + older->size : 0;
    block->size = static_cast<std::uint32_t>(handles.size());
    block->refer(handles);
    newest = block;
    return true;
  }

  Pool<KvXmlAttributeData> attributes;
  Pool<AttributeBlock> blocks;
  std::vector<AttributeHandle*> handles;  // of addBlock(), kept for its memory
};

}  // namespace KvXmlView
