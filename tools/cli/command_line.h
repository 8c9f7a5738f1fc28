#pragma once

#include "commands.h"

/// What the user wrote on the command line, and how it is answered.
namespace CommandLine {

/// Runs the command that is named, or prints the help or the version when asked. Throws UserError
/// when something cannot be understood; it names the option or command that may be meant, or tells
/// with the help text of an option which values this takes.
Commands::Status run(int argc, const char* const* argv);

}  // namespace CommandLine
