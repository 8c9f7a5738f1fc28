#pragma once

#include <deque>
#include <optional>
#include <vector>

#include "documents/element.h"
#include "documents/form.h"
#include "found/foundation_manager.h"

namespace Documents {

/// An element that stands where foundations do, or tells of one elsewhere, and what becomes of it.
struct Entry {
  enum class Fate {
    read,
    renamed,         // read under another name, since its own is taken
    unknown,         // nothing that is read
    ofFirstVersion,  // a bedding of the first version in a document that is of another
    numberMissing,   // or no number
    numberTooSmall,  // below 1
    numberTaken,
    otherPart,  // of the foundation that has its number and name, with which it is joined
    nameMissing,
    nameEmpty,
    outside  // stands where nothing is read
  };

  explicit Entry(Element standing) : element(standing) {}

  Element element;
  Fate fate = Fate::read;
  std::optional<int> number;                // that it states, or the library gives it
  Found::Foundation* foundation = nullptr;  // that it became; null when it is skipped
  const Entry* numberHolder = nullptr;      // the first before it that has the same number
  const Entry* nameHolder = nullptr;        // likewise, of those read
};

/// In document order. Entries point to one another.
using Entries = std::deque<Entry>;

/// Reads the beddings of a document into `manager`, which is empty. The entries come container by
/// container, and then those outside of them. The two parts of a foundation are joined, which the
/// library does not do, and whole beddings of the first version are numbered on through all
/// containers.
std::vector<Entries> readBeddings(KvXmlN::Data& root, const std::vector<KvXmlN::Data*>& containers,
                                  Form form, const Charset& charset,
                                  Found::FoundationManager& manager);

/// Reads the foundations of a model below `root` into `manager`: the entries of its list, which may
/// be null, and those outside of it.
std::vector<Entries> readModel(KvXmlData& root, KvXmlData* list, const Charset& charset,
                               Found::FoundationManager& manager);

}  // namespace Documents
