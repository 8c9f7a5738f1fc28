#pragma once

#include "commands.h"
#include "notes.h"

/// What the user wrote on the command line, and how it is answered.
namespace CommandLine {

/// Runs the command that is named, or prints the help or the version when asked. Throws UserError
/// for what it does not understand; the error names the option or command that the user may mean,
/// or the values that an option takes.
Commands::Status run(int argc, const char* const* argv, Commands::Notes& notes);

}  // namespace CommandLine
