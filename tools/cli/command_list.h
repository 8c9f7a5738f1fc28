#pragma once

#include <CLI/CLI.hpp>

#include "commands.h"
#include "notes.h"

/// The commands as the user sees them.
namespace CommandLine {

/// What the command that is named works with, and how it ended.
struct Run {
  Commands::Status status;
  Commands::Notes& notes;
};

void addShow(CLI::App& program, Run& run);
void addConvert(CLI::App& program, Run& run);
void addCheck(CLI::App& program, Run& run);
void addDiff(CLI::App& program, Run& run);
void addMerge(CLI::App& program, Run& run);
void addSet(CLI::App& program, Run& run);
void addAdd(CLI::App& program, Run& run);
void addRemove(CLI::App& program, Run& run);
void addPrune(CLI::App& program, Run& run);
void addReport(CLI::App& program, Run& run);

/// Of all commands that are there already.
void addHelp(CLI::App& program, Run& run);
/// Which is not listed, since only the installation needs it.
void addCompletion(CLI::App& program, Run& run);

}  // namespace CommandLine
