#pragma once

#include <optional>
#include <string>

#include "documents/document.h"
#include "documents/form.h"
#include "request.h"

/// The forms of documents as the page calls them.
namespace Engine::Forms {

const char* getName(Documents::Form form);
const char* getLabel(Documents::Form form);
/// Of file names, such as ".xml".
const char* getEnding(Documents::Form form);

/// Throws UserError for what is no form.
Documents::Form read(const std::string& name);

Json listAll();

/// The dialect of a table; none where neither separator nor decimal sign is told.
std::optional<Spreadsheets::Dialect> readDialect(const Json& values);
/// How a document is read: form, version, separator, decimal.
Documents::ReadOptions readOptions(const Json& values);
/// The reverse.
Json tellOptions(const Documents::ReadOptions& options);

}  // namespace Engine::Forms
