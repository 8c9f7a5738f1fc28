#pragma once

#include <string>

#include "found/foundation_manager.h"

/// Files and foundations that the tests of the legacy model document share.
namespace LegacyTest {

/// A path in the temporary folder that no other test uses. Whatever is there is removed at the end.
class TemporaryPath {
 public:
  explicit TemporaryPath(const std::string& ending = ".xml");
  ~TemporaryPath();
  TemporaryPath(const TemporaryPath&) = delete;
  TemporaryPath& operator=(const TemporaryPath&) = delete;

  const std::string& get() const { return path; }

 private:
  std::string path;
};

/// Such a path with a file of these bytes.
class TemporaryFile : public TemporaryPath {
 public:
  explicit TemporaryFile(const std::string& bytes);
};

/// The bytes of a file.
std::string load(const std::string& path);
void store(const std::string& path, const std::string& bytes);

/// Lets the manager write a file, closes it and gives its bytes.
std::string write(const Found::FoundationManager& manager);
void write(const Found::FoundationManager& manager, const std::string& path);

/// Lets the manager read a file of these bytes; the result is that of readXml().
bool read(Found::FoundationManager& manager, const std::string& bytes);

/// A document on several lines with this inside "FOUNDATIONS", which starts on the third.
std::string makeDocument(const std::string& inside, const std::string& attributes = "");

/// Appends a foundation without values.
Found::Foundation& addFoundation(Found::FoundationManager& manager, int number,
                                 const std::string& name);

/// The live list as "1 A, 2 B", then "; current A" when there is one.
std::string describe(const Found::FoundationManager& manager);

/// All that a foundation holds but number, name and the flag that it changed. What is at its
/// default is left out: "area (1, 2, 3), fails line x -1, factor area 0.5, generated".
std::string describeValues(Found::Foundation& foundation);

}  // namespace LegacyTest
