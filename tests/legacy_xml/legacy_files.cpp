#include "legacy_files.h"

#include <gtest/gtest.h>

#include <fstream>

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {

std::string write(const FoundationManager& manager) {
  const TemporaryPath path;
  write(manager, path.get());
  return load(path.get());
}

void write(const FoundationManager& manager, const std::string& path) {
  std::ofstream out(path);
  manager.writeXml(out);
  out.close();
  EXPECT_TRUE(out.good()) << path;
}

bool read(FoundationManager& manager, const std::string& bytes) {
  return manager.readXml(TemporaryFile(bytes).get());
}

std::string makeDocument(const std::string& inside, const std::string& attributes) {
  return "<?xml version=\"1.0\"?>\n<SMOD>\n<FOUNDATIONS" + attributes + ">" + inside +
         "</FOUNDATIONS>\n</SMOD>\n";
}

std::string describe(const FoundationManager& manager) {
  const Foundation* const current = manager.getCurrentFoundation();
  return TestSupport::describe(manager) +
         (current != nullptr ? "; current " + current->getName() : "");
}

}  // namespace LegacyTest
