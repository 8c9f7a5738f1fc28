#include "help.h"

#include <cstdio>
#include <sstream>

#include "terminal.h"
#include "text/display_text.h"

namespace CommandLine {
namespace {

std::string wrap(const std::string& text, std::size_t places) {
  return DisplayText::wrap(CLI::detail::split(text, ' '), " ", places);
}

}  // namespace

Help::Help() : width(Terminal::getWidth(stdout)) {
  column_width(24);
  label("SUBCOMMAND", "COMMAND");
}

std::string Help::make_description(const CLI::App* app) const {
  return wrap(app->get_description(), width) + "\n";
}

std::string Help::make_option_desc(const CLI::Option* option) const {
  return wrap(option->get_description(), width - get_column_width());
}

std::string Help::make_option_opts(const CLI::Option* option) const {
  if (option->get_positional() || option->get_type_size() == 0) return "";
  const std::string type = option->get_type_name();
  return " " + type.substr(type.find(':') + 1) + (option->get_required() ? " (required)" : "");
}

std::string Help::make_subcommand(const CLI::App* command) const {
  std::ostringstream out;
  CLI::detail::format_help(out, command->get_name(),
                           wrap(command->get_description(), width - get_column_width()),
                           get_column_width());
  return out.str();
}

}  // namespace CommandLine
