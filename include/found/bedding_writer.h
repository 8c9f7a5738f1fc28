#pragma once

#include <memory>

#include "found/export.h"
#include "kv/version_text.h"
#include "kv/xml_n.h"

namespace Found {
class FoundationManager;
}

namespace Found::Umo {

class ReadMessenger;
struct BeddingWriterData;

/// Writes the foundations of a manager as bedding elements of an exchange document.
class FOUND_API BeddingWriter {
 public:
  /// `manager` and `version` are not owned and must outlive the writer. Version "1.0" writes one
  /// "Bedding" a foundation; every other version writes a "CurveBedding" for one with line
  /// stiffness and a "SurfaceBedding" for one with area stiffness, curve before surface.
  BeddingWriter(const FoundationManager& manager, const Tools::VersionText& version);
  ~BeddingWriter();
  BeddingWriter(const BeddingWriter&) = delete;
  BeddingWriter& operator=(const BeddingWriter&) = delete;

  /// Stored and never used: there is nothing to report on writing. It is here for symmetry with
  /// the reader. Not owned.
  void setMessenger(ReadMessenger* messenger);

  /// Appends the elements to `container`; its other children stay. Lost are the failure mode of
  /// line x, line rotation about y and z, the flags, the sign of a factor of -0.0, in version "1.0"
  /// the number, and in every other version a foundation without stiffness (its length 0 or not a
  /// number). A vector that the vector library calls null is not written. What memory or the XML
  /// library throws passes through; elements written until then stay.
  void write(KvXmlN::Data& container) const;

 private:
  std::unique_ptr<BeddingWriterData> data;
};

}  // namespace Found::Umo
