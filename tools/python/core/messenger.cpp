#include "messenger.h"

#include "text.h"
#include "threads.h"

namespace Python {
namespace {

struct ToPython {
  py::object operator()(long long number) const { return py::int_(number); }
  py::object operator()(const std::string& text) const { return decode(text); }
};

}  // namespace

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
