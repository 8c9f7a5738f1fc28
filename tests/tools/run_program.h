#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

/// What a run of the program printed and how it ended.
struct Result {
  int status;
  std::string out;
  std::string err;
};

inline std::string makePath(const std::string& name) {
  const auto* const test = testing::UnitTest::GetInstance()->current_test_info();
  return testing::TempDir() + test->test_suite_name() + "." + test->name() + "." + name;
}

inline std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
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

/// Runs the program with `arguments`, written as for bash, its output going to the file `out`.
inline int runTo(const std::string& out, const std::string& arguments) {
  const std::string script = makeFile(
      "sh", "'" KVFOUND_PROGRAM "' " + arguments + " >'" + out + "' 2>'" + makePath("err") + "'\n");
  const std::string command = "bash '" + script + "'";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

inline Result run(const std::string& arguments) {
  const int status = runTo(makePath("out"), arguments);
  return {status, readFile(makePath("out")), readFile(makePath("err"))};
}
