#pragma once

#include <functional>
#include <string>
#include <vector>

#include "kv/short_path.h"
#include "kv/xml_tree.h"
#include "recording.h"

/// What a test controls the recording legacy XML library and the short path by. Nothing of this is
/// recorded, and nothing of it fails.
namespace Recording {

/// The elements in document order, one line each in the form that KvXmlTree parses.
std::vector<std::string> describe(const KvXmlTree& tree);

/// The name of the element the cursor stands on; "none" when there is none.
std::string describeCursor(const KvXmlTree& tree);

/// While it lives, KvXmlTree::open() gives null for elements of this name and leaves no cursor.
class OpenRefusal {
 public:
  explicit OpenRefusal(const std::string& name);
  ~OpenRefusal();
  OpenRefusal(const OpenRefusal&) = delete;
  OpenRefusal& operator=(const OpenRefusal&) = delete;
};

/// While it lives, GetShortPathNameA() answers what `answer` makes of the long path. An empty text
/// means that there is no short path, as at all other times.
class ShortPathAnswer {
 public:
  using Answer = std::function<std::string(const std::string& longPath)>;

  explicit ShortPathAnswer(const Answer& answer);
  ~ShortPathAnswer();
  ShortPathAnswer(const ShortPathAnswer&) = delete;
  ShortPathAnswer& operator=(const ShortPathAnswer&) = delete;
};

}  // namespace Recording
