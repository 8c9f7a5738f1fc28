#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "found/read_messenger.h"

namespace ExchangeTest {

using Messages = std::vector<std::string>;

/// Keeps each message as a text: its name and its arguments, texts in angle brackets.
class RecordingMessenger : public Found::Umo::ReadMessenger {
 public:
  Messages messages;

  void onReadFinished(std::size_t count) override {
    receive("onReadFinished " + std::to_string(count));
  }
  void onUnknownElement(const std::string& elementName) override {
    receive("onUnknownElement <" + elementName + ">");
  }
  void onMissingName(int number) override { receive("onMissingName " + std::to_string(number)); }
  void onMissingBeddingName() override { receive("onMissingBeddingName"); }
  void onEmptyName(int number, const std::string& name) override {
    receive("onEmptyName " + std::to_string(number) + " <" + name + ">");
  }
  void onEmptyBeddingName(const std::string& name) override {
    receive("onEmptyBeddingName <" + name + ">");
  }
  void onMissingNumber(const std::string& elementName) override {
    receive("onMissingNumber <" + elementName + ">");
  }
  void onInvalidNumber(const std::string& elementName, int number) override {
    receive("onInvalidNumber <" + elementName + "> " + std::to_string(number));
  }
  void onNameChanged(const std::string& oldName, const std::string& newName) override {
    receive("onNameChanged <" + oldName + "> <" + newName + ">");
  }

 protected:
  virtual void receive(const std::string& message) { messages.push_back(message); }
};

/// A host that does something at a message, which is kept before.
class ActingMessenger : public RecordingMessenger {
 public:
  using Action = std::function<void(const std::string& message)>;

  explicit ActingMessenger(Action whatToDo) : action(std::move(whatToDo)) {}

 protected:
  void receive(const std::string& message) override {
    RecordingMessenger::receive(message);
    action(message);
  }

 private:
  Action action;
};

}  // namespace ExchangeTest
