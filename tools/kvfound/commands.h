#pragma once

#include <CLI/CLI.hpp>

/// The commands of the program, one file each. Each is added to the command line, and runs when it
/// is named there; `status` then tells how it ended. Errors are thrown as UserError.
namespace Commands {

enum class Status { done = 0, findings = 1, error = 2 };

void addShow(CLI::App& program, Status& status);
void addConvert(CLI::App& program, Status& status);
void addCheck(CLI::App& program, Status& status);
void addDiff(CLI::App& program, Status& status);
void addPrune(CLI::App& program, Status& status);
void addReport(CLI::App& program, Status& status);

}  // namespace Commands
