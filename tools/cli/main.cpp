#include <cstdio>
#include <exception>
#include <iostream>

#include "command_line.h"
#include "files/user_error.h"
#include "terminal.h"
#include "text/display_text.h"

int main(int argc, char** argv) {
  Terminal::endOnClosedPipe();
  try {
    const Commands::Status status = CommandLine::run(argc, argv);
    if (!std::cout.flush()) throw UserError("standard output cannot be written");
    return static_cast<int>(status);
  } catch (const std::exception& error) {
    // Names and paths from outside may hold anything.
    std::cerr << Terminal::Painter(stderr).paint(Terminal::Style::red, "kvfound:") << " "
              << DisplayText::fromName(error.what()) << "\n";
    return static_cast<int>(Commands::Status::error);
  }
}
