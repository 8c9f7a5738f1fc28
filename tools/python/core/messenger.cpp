#include "messenger.h"

#include <algorithm>
#include <iterator>

#include "errors.h"
#include "text.h"
#include "threads.h"

namespace Python {
namespace {

struct ToPython {
  py::object operator()(long long number) const { return py::int_(number); }
  py::object operator()(const std::string& text) const { return decode(text); }
};

constexpr const char* methods[] = {
    "on_read_finished",  "on_unknown_element",      "on_missing_name",
    "on_empty_name",     "on_missing_bedding_name", "on_empty_bedding_name",
    "on_missing_number", "on_invalid_number",       "on_name_changed"};

}  // namespace

void requireMessenger(const py::object& messenger) {
  const bool hasOne = std::any_of(std::begin(methods), std::end(methods), [&](const char* method) {
    return py::hasattr(messenger, method);
  });
  if (!hasOne)
    throwTypeError("messenger: an object with methods of ReadMessenger is wanted, not " +
                   nameType(messenger));
}

void Recorder::replay(const py::object& messenger) const {
  for (const Message& message : messages) {
    if (PyErr_CheckSignals() != 0) throw py::error_already_set();
    const py::object method = py::getattr(messenger, message.method, py::none());
    if (method.is_none()) continue;
    py::tuple arguments(message.arguments.size());
    for (std::size_t i = 0; i < message.arguments.size(); ++i)
      arguments[i] = std::visit(ToPython(), message.arguments[i]);
    runCode([&] { return py::object(method(*arguments)); });
  }
}

void Recorder::onReadFinished(std::size_t count) {
  messages.push_back({"on_read_finished", {static_cast<long long>(count)}});
}

void Recorder::onUnknownElement(const std::string& elementName) {
  messages.push_back({"on_unknown_element", {elementName}});
}

void Recorder::onMissingName(int number) { messages.push_back({"on_missing_name", {number}}); }

void Recorder::onMissingBeddingName() { messages.push_back({"on_missing_bedding_name", {}}); }

void Recorder::onEmptyName(int number, const std::string& name) {
  messages.push_back({"on_empty_name", {number, name}});
}

void Recorder::onEmptyBeddingName(const std::string& name) {
  messages.push_back({"on_empty_bedding_name", {name}});
}

void Recorder::onMissingNumber(const std::string& elementName) {
  messages.push_back({"on_missing_number", {elementName}});
}

void Recorder::onInvalidNumber(const std::string& elementName, int number) {
  messages.push_back({"on_invalid_number", {elementName, number}});
}

void Recorder::onNameChanged(const std::string& oldName, const std::string& newName) {
  messages.push_back({"on_name_changed", {oldName, newName}});
}

}  // namespace Python
