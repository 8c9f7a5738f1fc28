#pragma once

#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/files.h"
#include "cli/result.h"
#include "program.h"

/// Lets standard input be the file at `path`.
inline void readFrom(const std::string& path) {
  if (std::freopen(path.c_str(), "rb", stdin) == nullptr)
    ADD_FAILURE() << path << " cannot be read";
}

/// Does what the program does with the arguments of `line`, without starting it. What is read from
/// standard input is the file at the path `input`.
inline Result run(const std::string& line, const std::string& input = nothing) {
  std::vector<std::string> words = splitLine("kvfound " + line);
  std::vector<const char*> arguments;
  for (const std::string& word : words) arguments.push_back(word.c_str());
  readFrom(input);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  Result result{};
  result.status = Program::run(static_cast<int>(arguments.size()), arguments.data());
  result.out = testing::internal::GetCapturedStdout();
  result.err = testing::internal::GetCapturedStderr();
  readFrom(nothing);  // so that a file that was read can be removed on every system
  return result;
}
