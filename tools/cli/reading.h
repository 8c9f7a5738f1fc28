#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "commands.h"
#include "documents/document.h"
#include "notes.h"

/// What the commands report about the documents that they read.
namespace Commands {

/// Tells what reading the foundations of a document skips or renames, and how many beddings it
/// reads of an exchange document. Returns how many it skips or renames. Throws UserError when
/// nothing can be read.
std::size_t tellReading(Documents::Document& document, Notes& notes);

/// Refuses documents that name different units; tells where only one of them names any.
void compareUnits(const Documents::Document& document, const Documents::Document& other,
                  Notes& notes);

/// What is done from here on with the document at `path`, for people who wait.
void tellPhase(const char* work, const std::string& path, Notes& notes);

/// Does the work for one path after the other. Errors are told, and do not keep the others from
/// being done.
Status readEach(const std::vector<std::string>& paths, Notes& notes,
                const std::function<void(const std::string&)>& work);

}  // namespace Commands
