#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "found/foundation.h"

/// Some of the foundations of a document. What is not asked for does not matter.
class Selection {
 public:
  enum class Part { area, line };

  /// Those with numbers such as "3,5-9". Throws std::invalid_argument, which tells what is
  /// expected.
  void selectNumbers(const std::string& text);
  /// Those whose name fits a pattern, in which * stands for any characters and ? for one.
  void selectName(const std::string& pattern) { namePattern = pattern; }
  void selectGenerated() { isGenerated = true; }
  void selectPart(Part wanted) { part = wanted; }

  /// True when nothing was asked for, so that all are selected.
  bool isOfAll() const;

  bool includes(Found::Foundation& foundation) const;

  /// The first number that was asked for by itself and that none of the foundations has.
  std::optional<int> findMissing(const std::vector<Found::Foundation*>& foundations) const;

 private:
  std::vector<std::pair<int, int>> ranges;  // of numbers, with both ends
  std::optional<std::string> namePattern;
  bool isGenerated = false;
  std::optional<Part> part;
};
