#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

/// The path of a file in which there is nothing to read.
#ifdef _WIN32
constexpr const char* const nothing = "NUL";
#else
constexpr const char* const nothing = "/dev/null";
#endif

/// A folder for the files of this test program, which goes with it. Others may run at the same
/// time.
class RunFolder {
 public:
  RunFolder() { std::filesystem::create_directories(path); }
  ~RunFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  RunFolder(const RunFolder&) = delete;
  RunFolder& operator=(const RunFolder&) = delete;

  const std::string path =
      testing::TempDir() + "kvfound-tests-" + std::to_string(std::random_device()());
};

inline std::string makePath(const std::string& name) {
  static const RunFolder folder;
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  return folder.path + "/" + test->test_suite_name() + "." + test->name() + "." + name;
}

inline std::string readFile(const std::string& path) {
  std::ifstream file(path);  // whatever line ends the program writes
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

/// The same with the line ends that there are.
inline std::string readBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

/// A path within JSON, which doubles the backslashes of Windows.
inline std::string escapePath(const std::string& path) {
  std::string escaped;
  for (const char c : path) escaped.append(c == '\\' ? 2 : 1, c);
  return escaped;
}

/// Writes `text` to a file of the running test and returns its path.
inline std::string makeFile(const std::string& name, const std::string& text) {
  std::string path = makePath(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}
