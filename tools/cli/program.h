#pragma once

/// The program without its entry point.
namespace Program {

/// Does what the command line asks for and returns the exit status. Errors are told on standard
/// error.
int run(int argc, const char* const* argv);

}  // namespace Program
