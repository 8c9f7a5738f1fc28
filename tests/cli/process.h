#pragma once

#include <string>
#include <vector>

#include "cli/result.h"

/// Starts a program, without a shell in between, and waits for its end. The first of `words` is its
/// path or a name to be searched for, the others are its arguments. Its standard input is the file
/// at the path `input`. A status above 128 tells the signal that has ended it. Throws
/// std::system_error when it cannot be started.
Result runProcess(const std::vector<std::string>& words, const std::string& input);
