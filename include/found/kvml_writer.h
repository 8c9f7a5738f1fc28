#pragma once

#include <memory>
#include <set>

#include "found/export.h"
#include "found/foundation.h"
#include "kv/xml_n.h"

namespace Found {

/// Writes chosen foundations as a Kvml listing, which is made to be read by people: stiffness with
/// one decimal, factors with two, failure modes as display texts. It cannot be read back.
class FOUND_API KvmlWriter {
 public:
  KvmlWriter();
  ~KvmlWriter();
  KvmlWriter(const KvmlWriter&) = delete;
  KvmlWriter& operator=(const KvmlWriter&) = delete;

  /// Appends a "Beddings" element to `parent`, with one "BeddingArea" for each of `areas` that has
  /// area translation and one "BeddingBeam" for each of `beams` that has line translation, each
  /// group by ascending number. Others are passed over, null too. Appends nothing when both sets
  /// are empty. The failure mode of line x is deliberately not shown. What memory or the XML
  /// library throws passes through; elements written until then stay.
  void write(KvXmlN::Data& parent, const std::set<Foundation*>& areas,
             const std::set<Foundation*>& beams) const;

 private:
  struct FOUND_LOCAL Implementation;
  std::unique_ptr<Implementation> implementation;
};

}  // namespace Found
