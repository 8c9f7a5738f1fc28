#pragma once

#include <pybind11/pybind11.h>

#include <string>
#include <variant>
#include <vector>

#include "found/read_messenger.h"

namespace Python {

namespace py = pybind11;

/// Throws TypeError for what has none of the methods of ReadMessenger.
void requireMessenger(const py::object& messenger);

/// Keeps what the reader tells, since no code of Python runs while it reads.
class Recorder final : public Found::Umo::ReadMessenger {
 public:
  /// Calls the methods of `messenger` in this order; those that it lacks are left out. What it
  /// raises passes through.
  void replay(const py::object& messenger) const;

  void onReadFinished(std::size_t count) override;
  void onUnknownElement(const std::string& elementName) override;
  void onMissingName(int number) override;
  void onMissingBeddingName() override;
  void onEmptyName(int number, const std::string& name) override;
  void onEmptyBeddingName(const std::string& name) override;
  void onMissingNumber(const std::string& elementName) override;
  void onInvalidNumber(const std::string& elementName, int number) override;
  void onNameChanged(const std::string& oldName, const std::string& newName) override;

 private:
  using Argument = std::variant<long long, std::string>;
  struct Message {
    const char* method;
    std::vector<Argument> arguments;
  };

  std::vector<Message> messages;
};

}  // namespace Python
