#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/files.h"
#include "cli/process.h"
#include "cli/result.h"

#ifdef _WIN32
#define SKIP_WITHOUT_BASH() GTEST_SKIP() << "there is no bash"
#else
#define SKIP_WITHOUT_BASH() static_cast<void>(0)
#endif

/// Runs the program with the arguments of `line`. What it reads from standard input is the file at
/// the path `input`.
inline Result run(const std::string& line, const std::string& input = nothing) {
  std::vector<std::string> words = splitLine(line);
  words.insert(words.begin(), KVFOUND_PROGRAM);
  return runProcess(words, input);
}

/// Runs a script of bash.
inline Result runScript(const std::string& script) {
  return runProcess({"bash", makeFile("sh", script)}, nothing);
}
