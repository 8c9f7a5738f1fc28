#pragma once

#include <string>

#include <CLI/CLI.hpp>

namespace CommandLine {

enum class Shell { bash, zsh, fish };

/// The script that completes the command line of `program` in a shell: commands, options and their
/// values, as the program describes them itself.
std::string makeCompletion(CLI::App& program, Shell shell);

}  // namespace CommandLine
