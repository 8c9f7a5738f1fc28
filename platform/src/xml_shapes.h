#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KvXmlView {

/// A compact form of a name. Comparing two keys tells most names apart.
struct NameKey {
  static constexpr std::size_t longestWhole = 16;  // a key holds all of a name up to this length

  NameKey() = default;
  explicit NameKey(std::string_view name) : size(name.size()) {
    if (size >= sizeof start) {
      take<std::uint64_t>(name);
    } else if (size >= sizeof start / 2) {
      take<std::uint32_t>(name);
    } else {
      for (const char c : name) start = (start << 8) | static_cast<unsigned char>(c);
    }
  }

  bool isLike(const NameKey& other) const {
    return end == other.end && start == other.start && size == other.size;
  }

  /// One bit of 64; most pairs of names differ in it.
  std::uint64_t getBit() const {
    constexpr std::uint64_t odd = 0x9E3779B97F4A7C15u;  // spreads what differs to the upper bits
    return std::uint64_t{1} << ((((start * odd) ^ end ^ size) * odd) >> 58);
  }

  std::uint64_t start = 0;
  std::uint64_t end = 0;  // the last characters; 0 when `start` holds the whole name
  std::size_t size = 0;

 private:
  /// Takes as many characters as a word holds from each end of the name.
  template <class Word>
  void take(std::string_view name) {
    Word word{};
    std::memcpy(&word, name.data(), sizeof word);
    start = word;
    std::memcpy(&word, name.data() + name.size() - sizeof word, sizeof word);
    end = word;
  }
};

/// The name of an element and those of its attributes, in their order: all are XML names, and no
/// attribute is there twice.
///
/// A document has thousands of elements but few shapes. What is known about a shape holds for all
/// elements that have it.
class Shape {
 public:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  /// The index of the attribute of this name, or none. Searches from `from` on, which is an index
  /// or the end, then from the start: hosts mostly ask for attributes in document order.
  std::size_t find(std::string_view name, std::size_t from) const {
    const NameKey key(name);
    if ((bits & key.getBit()) == 0) return none;
    for (std::size_t i = from; i < attributes.size(); ++i)
      if (attributes[i].isNamed(name, key)) return i;
    for (std::size_t i = 0; i < from; ++i)
      if (attributes[i].isNamed(name, key)) return i;
    return none;
  }

  /// The shape with one more attribute, or null when it is not known. Tries first the one that was
  /// asked for last.
  Shape* follow(std::string_view name) {
    if (last != nullptr && last->isNamed(name)) return last;
    return followAnother(name);
  }

  /// Like follow(), but makes the shape when it is not known. `name` is an XML name that no
  /// attribute here has. Null when there are so many shapes that more would not help.
  Shape* extend(std::string_view name);

  /// Like extend(), but null also when an attribute has this name.
  Shape* extendByNew(std::string_view name) {
    Shape* const known = follow(name);
    if (known != nullptr || find(name, 0) != none) return known;
    return extend(name);
  }

  /// The shape that follow() tries first, or null.
  Shape* getLikely() const { return last; }
  /// The name of the last attribute, or of the element when there is none.
  const std::string& getLastName() const { return lastName; }

  /// A small number for the shape, from 1 on; 0 when all numbers are taken.
  unsigned char giveNumber();

 private:
  friend class Shapes;

  struct Attribute {
    bool isNamed(std::string_view name, const NameKey& nameKey) const {
      return key.isLike(nameKey) && (key.size <= NameKey::longestWhole || *text == name);
    }

    NameKey key;
    const std::string* text;
  };

  /// What all shapes of a document share.
  struct Common {
    std::size_t count = 0;  // of all shapes
    std::vector<Shape*> numbered;
  };

  bool isNamed(std::string_view name) const {
    return Attribute{lastKey, &lastName}.isNamed(name, NameKey(name));
  }

  Shape* followAnother(std::string_view name);

  std::string lastName;
  NameKey lastKey;
  std::vector<Attribute> attributes;
  std::uint64_t bits = 0;  // getBit() of all attributes, combined
  std::vector<std::unique_ptr<Shape>> longer;
  Shape* last = nullptr;  // of `longer`
  Common* common = nullptr;
  unsigned char number = 0;  // 0 while it has none
};

/// The shapes of one document.
class Shapes {
 public:
  /// The shape of an element of this name without attributes, or null when it is not known. Tries
  /// the last name first, since neighbours mostly have the same name.
  Shape* findEmpty(std::string_view element) {
    if (last != nullptr && last->isNamed(element)) return last;
    const auto found = empty.find(element);
    if (found == empty.end()) return nullptr;
    last = &found->second;
    return last;
  }

  /// Like findEmpty(), but makes the shape when it is not known, see Shape::extend(). `element` is
  /// an XML name.
  Shape* giveEmpty(std::string_view element);

  /// The shape with this number.
  Shape* getNumbered(unsigned char number) const { return common->numbered[number - 1]; }

 private:
  std::unique_ptr<Shape::Common> common = std::make_unique<Shape::Common>();
  std::map<std::string, Shape, std::less<>> empty;
  Shape* last = nullptr;  // of `empty`
};

}  // namespace KvXmlView
