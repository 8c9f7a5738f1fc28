#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "documents/markup.h"

namespace Documents {

/// Replacements for byte ranges of a text. Everything else stays as it is.
class Edit {
 public:
  /// Ranges may touch but not overlap. Several insertions at the same place stay in the order of
  /// the calls, and come before the replacement of a range that starts there.
  void replace(Markup::Range range, std::string bytes);
  void insert(std::size_t place, std::string bytes) { replace({place, place}, std::move(bytes)); }
  void erase(Markup::Range range) { replace(range, ""); }

  bool isEmpty() const { return changes.empty(); }

  /// Returns `text`, which the ranges refer to, with all replacements made.
  std::string apply(std::string_view text) const;

 private:
  struct Change {
    Markup::Range range;
    std::string bytes;
  };

  std::vector<Change> changes;
};

}  // namespace Documents
