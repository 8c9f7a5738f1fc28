#pragma once

#include <string>
#include <vector>

#include "documents/losses.h"
#include "notes.h"

namespace Commands {

/// Tells what a document does not keep, a line each; of many of a kind the first ten, and how many
/// more there are, unless `all` are wanted.
void tellLosses(const std::string& shownPath, const std::vector<Losses::Loss>& losses, bool all,
                Notes& notes);

}  // namespace Commands
