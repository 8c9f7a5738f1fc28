#pragma once

#include <CLI/CLI.hpp>

#include "commands.h"

/// The commands as the user sees them. Each runs when it is named; `status` then tells how it
/// ended.
namespace CommandLine {

void addShow(CLI::App& program, Commands::Status& status);
void addConvert(CLI::App& program, Commands::Status& status);
void addCheck(CLI::App& program, Commands::Status& status);
void addDiff(CLI::App& program, Commands::Status& status);
void addMerge(CLI::App& program, Commands::Status& status);
void addSet(CLI::App& program, Commands::Status& status);
void addAdd(CLI::App& program, Commands::Status& status);
void addRemove(CLI::App& program, Commands::Status& status);
void addPrune(CLI::App& program, Commands::Status& status);
void addReport(CLI::App& program, Commands::Status& status);

}  // namespace CommandLine
