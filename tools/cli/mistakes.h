#pragma once

#include <optional>
#include <string>

#include <CLI/CLI.hpp>

/// What is wrong with a command line, in the words of the program.
namespace CommandLine {

/// Where the user finds out more.
std::string makeAdvice(const CLI::App& command, const std::optional<std::string>& near = {});

/// What the parser found, with the option, command or values that the user may mean.
std::string describe(CLI::App& program, const CLI::ParseError& error,
                     const std::string& lastArgument);

}  // namespace CommandLine
