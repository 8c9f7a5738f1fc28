#pragma once

#include <memory>

#include "documents/document.h"
#include "request.h"
#include "session.h"

namespace Engine {

/// A document of another instance that came with a request: see Answers::describe().
class Other {
 public:
  explicit Other(const Request& request);

  const Files::Content& getContent() const { return content; }
  const Documents::ReadOptions& getOptions() const { return options; }
  /// Whether all of it could be read there.
  bool isReadWhole() const { return isWhole; }
  /// The row there of the foundation at this place.
  std::size_t findRow(std::size_t place) const;

 private:
  Files::Content content;
  Documents::ReadOptions options;
  bool isWhole;
  std::vector<std::size_t> items;  // empty where rows and places are the same
};

/// Fields that differ, as the page shows them.
Json listFields(const std::vector<Fields::Difference>& fields, const Units& units);

}  // namespace Engine
