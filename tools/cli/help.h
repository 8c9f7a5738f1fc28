#pragma once

#include <cstddef>
#include <string>

#include <CLI/CLI.hpp>

namespace CommandLine {

/// The help of the program and its commands, in lines that fit the terminal.
class Help : public CLI::Formatter {
 public:
  Help();

  std::string make_description(const CLI::App* app) const override;
  std::string make_option_desc(const CLI::Option* option) const override;
  /// Only the name of the value: the line of usage tells which arguments must be given.
  std::string make_option_opts(const CLI::Option* option) const override;
  std::string make_subcommand(const CLI::App* command) const override;

 private:
  std::size_t width;
};

}  // namespace CommandLine
