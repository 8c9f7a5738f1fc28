#pragma once

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "bytes.h"

/// Elements in their plainest form, which the fuzz targets of the XML libraries keep beside the
/// real ones.
namespace Fuzz {

/// An element and the real one that stands for it, once that is known.
template <class Real>
struct Node {
  std::string name;
  std::vector<std::pair<std::string, std::string>> attributes;
  std::vector<std::unique_ptr<Node>> children;
  Node* parent = nullptr;
  Real* real = nullptr;

  const std::string* find(const std::string& key) const {
    for (const auto& attribute : attributes)
      if (attribute.first == key) return &attribute.second;
    return nullptr;
  }

  void set(const std::string& key, const std::string& value) {
    for (auto& attribute : attributes) {
      if (attribute.first != key) continue;
      attribute.second = value;
      return;
    }
    attributes.emplace_back(key, value);
  }

  Node* append(const std::string& childName) {
    children.push_back(std::make_unique<Node>());
    children.back()->name = childName;
    children.back()->parent = this;
    return children.back().get();
  }

  Node* findChild(const std::string& key) {
    for (const auto& child : children)
      if (child->name == key) return child.get();
    return nullptr;
  }

  Node* findBelow(const std::string& key) {
    for (const auto& child : children) {
      if (child->name == key) return child.get();
      if (Node* const found = child->findBelow(key)) return found;
    }
    return nullptr;
  }

  /// Itself and all below it, in document order.
  void list(std::vector<Node*>& nodes) {
    nodes.push_back(this);
    for (const auto& child : children) child->list(nodes);
  }
};

/// Names that XML allows, and then some that it does not.
inline const std::string& pickName(Bytes& bytes) {
  static const std::string names[] = {
      "a",   "b", "c", "NAME", "a:b", "_-.9", "\xC3\xBC", "\xFC",
      "a",   "b", "c", "d",    "e",   "",     "1a",       std::string("a\0b", 3),
      "a b", "<", "-a"};
  return bytes.pick(names);
}

inline bool isName(const std::string& name) {
  return !name.empty() && name[0] != '1' && name[0] != '-' &&
         name.find_first_of(std::string("\0 <", 3)) == name.npos;
}

/// A text as an attribute keeps it.
inline std::string clean(std::string text) {
  std::replace_if(
      text.begin(), text.end(),
      [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
      },
      '?');
  return text;
}

inline int pickInteger(Bytes& bytes) {
  constexpr int numbers[] = {0, 1, -1, 7, 12345, 2147483647, -2147483647 - 1};
  return bytes.pick(numbers);
}

/// A number and its shortest form.
inline const std::pair<double, std::string>& pickDouble(Bytes& bytes) {
  static const std::pair<double, std::string> numbers[] = {
      {0.0, "0"},        {-0.0, "-0"},       {0.1, "0.1"}, {-2.5, "-2.5"},
      {1e300, "1e+300"}, {5e-324, "5e-324"}, {7.0, "7"},   {-HUGE_VAL, "-inf"}};
  return bytes.pick(numbers);
}

/// Nothing for a text that is no integer, or none that fits.
inline std::optional<int> toInteger(std::string text) {
  constexpr const char* blanks = " \t\r\n";
  text.erase(0, text.find_first_not_of(blanks));
  text.erase(text.find_last_not_of(blanks) + 1);
  const std::size_t first = text.find_first_not_of("+-");
  const bool isPlain =
      first <= 1 && first < text.size() && text.find_first_not_of("0123456789", first) == text.npos;
  if (!isPlain) return std::nullopt;
  errno = 0;
  const long number = std::strtol(text.c_str(), nullptr, 10);
  const bool fits = errno == 0 && number >= std::numeric_limits<int>::min() &&
                    number <= std::numeric_limits<int>::max();
  return fits ? std::optional<int>(static_cast<int>(number)) : std::nullopt;
}

/// As a document may spell it, with things between elements that are none.
template <class Real>
void spell(const Node<Real>& node, Bytes& bytes, std::string& text) {
  static const char* const between[] = {"",  "\n", "<!--c-->", "t", "<?p i?>", "<![CDATA[<a/>]]>",
                                        "  "};
  text += "<" + node.name;
  for (const auto& [name, value] : node.attributes) {
    text += " " + name + "='";
    for (const char c : value) {
      if (c == '<' || c == '&' || c == '\'' || c == '\t' || c == '\n' || c == '\r')
        text += "&#" + std::to_string(static_cast<int>(c)) + ";";
      else
        text += c;
    }
    text += "'";
  }
  text += ">";
  for (const auto& child : node.children) {
    text += bytes.pick(between);
    spell(*child, bytes, text);
  }
  text += std::string(bytes.pick(between)) + "</" + node.name + ">";
}

/// A random element with some below it.
template <class Real>
void grow(Node<Real>& node, Bytes& bytes, int depth) {
  for (std::size_t left = bytes.below(5); left > 0; --left) {
    const std::string& name = pickName(bytes);
    if (isName(name)) node.set(name, clean(bytes.takeText(6)));
  }
  if (depth == 0) return;
  for (std::size_t left = bytes.below(4); left > 0; --left) {
    const std::string& name = pickName(bytes);
    if (isName(name)) grow(*node.append(name), bytes, depth - 1);
  }
}

}  // namespace Fuzz
