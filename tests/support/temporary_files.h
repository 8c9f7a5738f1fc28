#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace TestSupport {

/// The text of a file, which was written in text mode.
inline std::string load(const std::string& path) {
  std::ifstream in(path);
  EXPECT_TRUE(in.is_open()) << path;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void store(const std::string& path, const std::string& bytes) {
  std::ofstream out(path, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(out.flush().good()) << path;
}

/// A path in the temporary folder that no other test uses. Whatever is there is removed at the end.
class TemporaryPath {
 public:
  explicit TemporaryPath(const std::string& ending = ".xml") : path(makePath(ending)) {
    std::filesystem::remove_all(path);
  }
  ~TemporaryPath() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  TemporaryPath(const TemporaryPath&) = delete;
  TemporaryPath& operator=(const TemporaryPath&) = delete;

  const std::string& get() const { return path; }

 private:
  static std::string makePath(const std::string& ending) {
    static int count = 0;
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string("kvfound_") + test.test_suite_name() + "_" + test.name();
    std::replace(name.begin(), name.end(), '/', '_');  // of tests with a parameter
    return testing::TempDir() + name + std::to_string(++count) + ending;
  }

  std::string path;
};

/// Such a path with a file of these bytes.
class TemporaryFile : public TemporaryPath {
 public:
  explicit TemporaryFile(const std::string& bytes) { store(get(), bytes); }
};

}  // namespace TestSupport
