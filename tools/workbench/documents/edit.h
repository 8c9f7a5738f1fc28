#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/markup.h"

namespace Documents {

/// Ranges of the bytes of a text and what stands there instead. Everything else stays as it is.
class Edit {
 public:
  /// Ranges may touch but not overlap. What is inserted at the same place stands there in the order
  /// of the calls, and before what replaces bytes from there on.
  void replace(Markup::Range range, std::string bytes);
  void insert(std::size_t place, std::string bytes) { replace({place, place}, std::move(bytes)); }
  void erase(Markup::Range range) { replace(range, ""); }

  bool isEmpty() const { return changes.empty(); }

  /// `text`, for whose bytes the ranges were given, with all that was replaced.
  std::string apply(std::string_view text) const;

 private:
  struct Change {
    Markup::Range range;
    std::string bytes;
  };

  std::vector<Change> changes;
};

}  // namespace Documents
