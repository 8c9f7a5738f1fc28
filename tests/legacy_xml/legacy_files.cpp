#include "legacy_files.h"

#include <gtest/gtest.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

using Found::Foundation;
using Found::FoundationManager;

namespace LegacyTest {
namespace {

std::string makePath(const std::string& ending) {
  static int count = 0;
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  const std::string name = std::string("kvfound_") + test.test_suite_name() + "_" + test.name();
  return (std::filesystem::path(testing::TempDir()) / (name + std::to_string(++count) + ending))
      .string();
}

std::string print(double value) {
  char buffer[32];
  return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
}

std::string print(const KvVector3D& v) {
  return "(" + print(v.x) + ", " + print(v.y) + ", " + print(v.z) + ")";
}

std::string join(const std::vector<std::string>& texts) {
  std::string result;
  for (const std::string& text : texts) result += (result.empty() ? "" : ", ") + text;
  return result;
}

}  // namespace

TemporaryPath::TemporaryPath(const std::string& ending) : path(makePath(ending)) {
  std::filesystem::remove_all(path);
}

TemporaryPath::~TemporaryPath() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

TemporaryFile::TemporaryFile(const std::string& bytes) { store(get(), bytes); }

std::string load(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << path;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void store(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(out.flush().good()) << path;
}

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

Foundation& addFoundation(FoundationManager& manager, int number, const std::string& name) {
  auto created = std::make_unique<Foundation>();
  created->setNumber(number);
  created->setName(name);
  manager.add(std::move(created));
  return *manager.getFoundations().back();
}

std::string describe(const FoundationManager& manager) {
  std::vector<std::string> texts;
  for (const Foundation* foundation : manager.getFoundations())
    texts.push_back(std::to_string(foundation->getNumber()) + " " + foundation->getName());
  const Foundation* const current = manager.getCurrentFoundation();
  return join(texts) + (current != nullptr ? "; current " + current->getName() : "");
}

std::string describeValues(Foundation& foundation) {
  std::vector<std::string> texts;
  KvVector3D v;
  if (foundation.getDispArea(v)) texts.push_back("area " + print(v));
  if (foundation.getDispLine(v)) texts.push_back("line " + print(v));
  if (foundation.getRotLine(v)) texts.push_back("rotation " + print(v));
  const auto addFailure = [&](const std::string& name, Foundation::Failure failure) {
    if (failure != Foundation::None)
      texts.push_back("fails " + name + " " + std::to_string(static_cast<int>(failure)));
  };
  addFailure("area z", foundation.getFailAreaZ());
  addFailure("line x", foundation.getFailLineX());
  addFailure("line y", foundation.getFailLineY());
  addFailure("line z", foundation.getFailLineZ());
  const auto addFactor = [&](const std::string& name, double factor) {
    if (factor != 0.0) texts.push_back("factor " + name + " " + print(factor));
  };
  addFactor("area", foundation.getFactorArea());
  addFactor("line", foundation.getFactorLine());
  if (foundation.getFailPossible()) texts.push_back("can fail");
  if (foundation.isGenerated()) texts.push_back("generated");
  return join(texts);
}

}  // namespace LegacyTest
