#pragma once

#include <string>
#include <vector>

#include "request.h"
#include "session.h"

/// What the engine answers, one file a concern: JSON, or bytes. Errors are thrown as UserError.
namespace Engine::Answers {

// --- About the engine and documents

Json about();
std::string example();
Json open(const Request& request, std::unique_ptr<Session>& session);
Json info(Session& session);
/// How many rows there are, and what can be undone.
Json state(Session& session);

// --- The table

Json columns(Session& session);
Json rows(Session& session, const Request& request);
Json cell(Session& session, const Request& request);
Json texts(Session& session, const Request& request);
std::string values(Session& session, const Request& request);
std::string find(Session& session, const Request& request);
std::string select(Session& session, const Request& request);
std::string sort(Session& session, const Request& request);

// --- Changes

Json set(Session& session, const Request& request);
Json fill(Session& session, const Request& request);
Json add(Session& session, const Request& request);
Json remove(Session& session, const Request& request);
Json undo(Session& session);
Json redo(Session& session);
Json previewPrune(Session& session, const Request& request);
Json prune(Session& session, const Request& request);

// --- The whole document

Json check(Session& session);
Json lines(Session& session, const Request& request);
std::string report(Session& session);

// --- With another document

Json describe(Session& session);
std::string exportAll(Session& session);
Json compare(Session& session, const Request& request);
std::string comparePage(Session& session, const Request& request);
Json previewMerge(Session& session, const Request& request);
Json merge(Session& session, const Request& request);

// --- Saving

Json losses(Session& session, const Request& request);
std::string save(Session& session, const Request& request);
Json suggestName(Session& session, const Request& request);
Json markSaved(Session& session);

}  // namespace Engine::Answers
