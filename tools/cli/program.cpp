#include "program.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <new>
#include <string>

#include "command_line.h"
#include "files/user_error.h"
#include "terminal.h"
#include "text/display_text.h"

namespace {

/// Names and paths from outside may hold anything.
int tellError(const std::string& error) {
  std::cerr << Terminal::Painter(stderr).paint(Terminal::Style::red, "kvfound:") << " "
            << DisplayText::fromName(error) << "\n";
  return static_cast<int>(Commands::Status::error);
}

}  // namespace

int Program::run(int argc, const char* const* argv) {
  try {
    const Commands::Status status = CommandLine::run(argc, argv);
    if (!std::cout.flush()) throw UserError("standard output cannot be written");
    return static_cast<int>(status);
  } catch (const std::bad_alloc&) {
    return tellError("the memory of this machine is too small for this");
  } catch (const std::exception& error) {
    return tellError(error.what());
  }
}
