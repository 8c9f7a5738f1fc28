#include "answers.h"
#include "forms.h"
#include "models/rendering.h"

/// Documents to be saved.
namespace Engine::Answers {
namespace {

using Documents::Form;
using Models::Rendering;

Form readForm(const Session& session, const Request& request) {
  const std::string form = request.getText("form");
  return form.empty() ? session.getSource().form : Forms::read(form);
}

/// The name without its ending.
std::string findStem(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  return dot == 0 || dot == name.npos ? name : name.substr(0, dot);
}

}  // namespace

Json losses(Session& session, const Request& request) {
  const auto snapshot = session.takeSnapshot();
  return Rendering(*snapshot, {readForm(session, request), {}}).listLosses();
}

std::string save(Session& session, const Request& request) {
  const Models::Target target = {readForm(session, request), Forms::readDialect(request.values)};
  const bool isOwn = target.form == session.getSource().form && !target.dialect;
  if (isOwn && session.isUnchanged()) return session.getSource().content.bytes;
  const auto snapshot = session.takeSnapshot();
  Rendering rendering(*snapshot, target);
  if (isOwn) rendering.requireAll();
  if (target.form != Form::kvml) rendering.readBack(session.getSource().content.shownPath);
  return rendering.getDocument().getContent().bytes;
}

Json suggestName(Session& session, const Request& request) {
  const std::string name = session.getSource().content.shownPath;
  const std::string stem = name.empty() ? "beddings" : findStem(name);
  if (request.getText("form") == "report") return stem + ".html";
  const Form own = session.getSource().form;
  const Form form = readForm(session, request);
  const std::string ending = Forms::getEnding(form);
  if (form == own) return stem == name || name.empty() ? stem + ending : name;
  // Beside the document that was read.
  const bool isTaken = ending == Forms::getEnding(own);
  return isTaken ? stem + "-" + Forms::getName(form) + ending : stem + ending;
}

Json markSaved(Session& session) {
  session.getHistory().markSaved();
  return nullptr;
}

}  // namespace Engine::Answers
