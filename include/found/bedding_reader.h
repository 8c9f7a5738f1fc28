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
struct BeddingReaderData;

/// Reads the bedding elements of an exchange document into a manager.
///
/// Adds to the manager and never changes a foundation that it already holds: an element with a
/// number in use is refused, one with a name in use is given another name. What is refused is
/// reported to the messenger, if there is one, and skipped.
class FOUND_API BeddingReader {
 public:
  /// `manager` and `version` are not owned and must outlive the reader. Version "1.0" reads
  /// "Bedding" elements too; every other version reads only "CurveBedding" and "SurfaceBedding".
  /// The version is looked at while reading, so a change of it takes effect.
  BeddingReader(FoundationManager& manager, const Tools::VersionText& version);
  ~BeddingReader();
  BeddingReader(const BeddingReader&) = delete;
  BeddingReader& operator=(const BeddingReader&) = delete;

  /// Null, the default, reports nothing. Not owned.
  void setMessenger(ReadMessenger* messenger);

  /// Reads all children of `container`, whatever its name. May be called again; every call adds
  /// and counts from 0 anew. In version "1.0" a "Bedding", which has no number, gets the number of
  /// foundations that this call has added, itself included, whether or not the manager has that
  /// number already. A "CurveBedding" or "SurfaceBedding" keeps its own in every version.
  ///
  /// Missing or misspelt stiffness reads as 0.0, misspelt failure texts as `None`, in silence. Of a
  /// curve and a surface bedding of the same number only the first is read. What memory, the XML
  /// library or the messenger throws passes through; foundations added until then stay.
  void read(const KvXmlN::Data& container);

 private:
  std::unique_ptr<BeddingReaderData> data;
};

}  // namespace Found::Umo
