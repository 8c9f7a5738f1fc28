#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "answers.h"
#include "documents/document.h"
#include "excerpt.h"
#include "models/rendering.h"
#include "text/display_text.h"
#include "text/wording.h"

/// How requests come into the memory of the engine, and answers out of it.
namespace Engine {
namespace {

constexpr Wording::Words words = {"its form told", "which one", nullptr, "converting does",
                                  "nothing was changed"};

// The page lets go of an engine as a whole: nothing is destroyed before.
std::unique_ptr<Session>& session = *new std::unique_ptr<Session>;
Request& request = *new Request;
std::string& answer = *new std::string;

Session& getSession() {
  if (session == nullptr) throw UserError("no document is open");
  return *session;
}

using Plain = Json (*)(Session&);
using Asking = Json (*)(Session&, const Request&);
using PlainBytes = std::string (*)(Session&);
using AskingBytes = std::string (*)(Session&, const Request&);

/// A request by its name, and what answers it; all but one are null.
struct Known {
  std::string_view name;
  Plain plain = nullptr;
  Asking asking = nullptr;
  PlainBytes plainBytes = nullptr;
  AskingBytes askingBytes = nullptr;

  constexpr Known(std::string_view called, Plain with) : name(called), plain(with) {}
  constexpr Known(std::string_view called, Asking with) : name(called), asking(with) {}
  constexpr Known(std::string_view called, PlainBytes with) : name(called), plainBytes(with) {}
  constexpr Known(std::string_view called, AskingBytes with) : name(called), askingBytes(with) {}

  std::string answer(Session& asked, const Request& given) const {
    if (plain != nullptr) return print(plain(asked));
    if (asking != nullptr) return print(asking(asked, given));
    return plainBytes != nullptr ? plainBytes(asked) : askingBytes(asked, given);
  }

  /// Bytes that are no UTF-8 are replaced.
  static std::string print(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
  }
};

constexpr Known known[] = {{"info", Answers::info},
                           {"state", Answers::state},
                           {"columns", Answers::columns},
                           {"rows", Answers::rows},
                           {"cell", Answers::cell},
                           {"texts", Answers::texts},
                           {"values", Answers::values},
                           {"find", Answers::find},
                           {"select", Answers::select},
                           {"sort", Answers::sort},
                           {"set", Answers::set},
                           {"fill", Answers::fill},
                           {"add", Answers::add},
                           {"remove", Answers::remove},
                           {"undo", Answers::undo},
                           {"redo", Answers::redo},
                           {"previewPrune", Answers::previewPrune},
                           {"prune", Answers::prune},
                           {"check", Answers::check},
                           {"lines", Answers::lines},
                           {"report", Answers::report},
                           {"describe", Answers::describe},
                           {"export", Answers::exportAll},
                           {"compare", Answers::compare},
                           {"comparePage", Answers::comparePage},
                           {"previewMerge", Answers::previewMerge},
                           {"merge", Answers::merge},
                           {"losses", Answers::losses},
                           {"save", Answers::save},
                           {"suggestName", Answers::suggestName},
                           {"markSaved", Answers::markSaved}};

std::string give() {
  if (request.name == "about") return Known::print(Answers::about());
  if (request.name == "example") return Answers::example();
  if (request.name == "open") return Known::print(Answers::open(request, session));
  for (const Known& candidate : known)
    if (candidate.name == request.name) return candidate.answer(getSession(), request);
  throw UserError("the engine knows no " + request.name);
}

// --- Errors

Json makeError(const std::string& message) { return {{"message", DisplayText::fromName(message)}}; }

/// A page tells the name of the document elsewhere.
std::string withoutName(std::string message) {
  const std::string name =
      session != nullptr ? session->getSource().content.shownPath : request.getText("name");
  const std::string start = name + ": ";
  if (!name.empty() && message.compare(0, start.size(), start) == 0) message.erase(0, start.size());
  return message;
}

Json tell(const DocumentError& error) {
  Json told = makeError(error.getSentence());
  const KvXmlPosition position = error.getPosition();
  const bool isOfRequest = error.getPath() == request.getText("name");
  if (position.line == 0 || !isOfRequest) return told;
  const Lines lines(request.bytes);
  told["line"] = position.line;
  told["column"] = lines.countColumn(position);
  told["excerpt"] = lines.cut(position);
  return told;
}

Json tell(const std::string& message, const std::vector<std::string>& details) {
  Json told = makeError(withoutName(message));
  told["details"] = details;
  return told;
}

std::string tellError() {
  try {
    throw;
  } catch (const DocumentError& error) {
    return Known::print(tell(error));
  } catch (const DetailedError& error) {
    return Known::print(tell(error.what(), error.getDetails()));
  } catch (const Models::LossFound& error) {
    return Known::print(tell(error.what(), error.getLosses()));
  } catch (const std::bad_alloc&) {
    return Known::print(makeError("is too large for the memory of this page"));
  } catch (const std::exception& error) {
    return Known::print(makeError(withoutName(error.what())));
  }
}

}  // namespace
}  // namespace Engine

// What is told to be used can be called from outside.
extern "C" {

/// Where the values of a request are to be written, as JSON; null where there is no room.
[[gnu::used]] char* makeRoomForValues(std::size_t size) {
  try {
    Engine::answer.resize(size);
    return Engine::answer.data();
  } catch (const std::exception&) {
    return nullptr;
  }
}

/// The same for the bytes of a document that come with it.
[[gnu::used]] char* makeRoomForBytes(std::size_t size) {
  try {
    Engine::request.bytes.resize(size);
    return Engine::request.bytes.data();
  } catch (const std::exception&) {
    return nullptr;
  }
}

/// Whether the request was answered; if not, the answer tells the error.
[[gnu::used]] bool ask() {
  using namespace Engine;
  bool isDone = true;
  try {
    Wording::use(words);
    request.values = Json::parse(answer);
    request.name = request.getText("request");
    answer = give();
  } catch (...) {
    answer = tellError();
    isDone = false;
  }
  request = {};
  return isDone;
}

[[gnu::used]] const char* getAnswer() { return Engine::answer.data(); }
[[gnu::used]] std::size_t getAnswerSize() { return Engine::answer.size(); }

/// Frees the answer.
[[gnu::used]] void forgetAnswer() { Engine::answer = std::string(); }
}
