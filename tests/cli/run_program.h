#pragma once

#ifndef _WIN32
#include <sys/wait.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

/// What a run of the program printed and how it ended.
struct Result {
  int status;
  std::string out;
  std::string err;
};

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

/// Writes `text` to a file of the running test and returns its path.
inline std::string makeFile(const std::string& name, const std::string& text) {
  const std::string path = makePath(name);
  std::ofstream(path, std::ios::binary) << text;
  return path;
}

#ifdef _WIN32

#define SKIP_WITHOUT_BASH() GTEST_SKIP() << "there is no bash"

inline Result runScript(const std::string& /*script*/) {
  ADD_FAILURE() << "there is no bash";
  return {-1, "", ""};
}

/// Runs the program, its output going to the file `out`. Of what bash understands, `arguments` may
/// hold single quotes and "<".
inline int runTo(const std::string& out, const std::string& arguments) {
  std::string line =
      "'" KVFOUND_PROGRAM "' " + arguments + " >'" + out + "' 2>'" + makePath("err") + "'";
  // The command interpreter knows double quotes only, and drops the outer ones of all.
  std::replace(line.begin(), line.end(), '\'', '"');
  return std::system(('"' + line + '"').c_str());
}

#else

#define SKIP_WITHOUT_BASH() static_cast<void>(0)

/// Runs a script of bash, its output going to the file `out`.
inline int runScriptTo(const std::string& out, const std::string& script) {
  const std::string command =
      "bash '" + makeFile("sh", script) + "' >'" + out + "' 2>'" + makePath("err") + "'";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline Result runScript(const std::string& script) {
  const int status = runScriptTo(makePath("out"), script);
  return {status, readFile(makePath("out")), readFile(makePath("err"))};
}

/// Runs the program with `arguments`, written as for bash.
inline int runTo(const std::string& out, const std::string& arguments) {
  return runScriptTo(out, "'" KVFOUND_PROGRAM "' " + arguments + "\n");
}

#endif

inline Result run(const std::string& arguments) {
  const int status = runTo(makePath("out"), arguments);
  return {status, readFile(makePath("out")), readFile(makePath("err"))};
}
