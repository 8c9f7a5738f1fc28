#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "documents/element.h"
#include "documents/form.h"
#include "found/foundation_manager.h"

namespace Documents {

/// An element at a place for foundations, or a foundation's element elsewhere, and what the reader
/// makes of it.
struct Entry {
  enum class Fate {
    read,
    renamed,         // read under another name, since its own is taken
    unknown,         // an element that is not read
    ofFirstVersion,  // a bedding of the first version in a document of a later one
    numberMissing,   // or no number
    numberTooSmall,  // below 1
    numberTaken,
    otherPart,  // joined with the foundation that has the same number and name
    nameMissing,
    nameEmpty,
    outside  // at a place where nothing is read
  };

  explicit Entry(Element standing) : element(standing) {}

  Element element;
  Fate fate = Fate::read;
  std::optional<int> number;                // as it is given, or as the library assigns it
  Found::Foundation* foundation = nullptr;  // what it was read as; null when it is skipped
  const Entry* numberHolder = nullptr;      // the first one before it with the same number
  const Entry* nameHolder = nullptr;        // the one before it that was read under its name
};

/// In document order. Entries point to one another.
using Entries = std::deque<Entry>;

/// Reads the beddings of a document into `manager`, which must be empty. Returns the entries of
/// each container, and then those outside of all containers. In contrast to the library, joins the
/// two parts of a foundation and numbers the beddings of the first version consecutively through
/// all containers.
std::vector<Entries> readBeddings(KvXmlN::Data& root, const std::vector<KvXmlN::Data*>& containers,
                                  Form form, const Charset& charset,
                                  Found::FoundationManager& manager);

/// Reads the foundations of a model below `root` into `manager`. Returns the entries of `list`,
/// unless that is null, and then those outside of it.
std::vector<Entries> readModel(KvXmlData& root, KvXmlData* list, const Charset& charset,
                               Found::FoundationManager& manager);

}  // namespace Documents
