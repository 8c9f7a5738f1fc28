#pragma once

#include <string>

#include "found/foundation_manager.h"
#include "support/foundations.h"
#include "support/temporary_files.h"

/// Files and foundations that the tests of the legacy model document share.
namespace LegacyTest {

using TestSupport::addFoundation;
using TestSupport::describeValues;
using TestSupport::load;
using TestSupport::store;
using TestSupport::TemporaryFile;
using TestSupport::TemporaryPath;

/// Lets the manager write a file, closes it and gives its bytes.
std::string write(const Found::FoundationManager& manager);
void write(const Found::FoundationManager& manager, const std::string& path);

/// Lets the manager read a file of these bytes; the result is that of readXml().
bool read(Found::FoundationManager& manager, const std::string& bytes);

/// A document on several lines with this inside "FOUNDATIONS", which starts on the third.
std::string makeDocument(const std::string& inside, const std::string& attributes = "");

/// The live list as "1 A, 2 B", then "; current A" when there is one.
std::string describe(const Found::FoundationManager& manager);

}  // namespace LegacyTest
