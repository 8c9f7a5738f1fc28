#pragma once

#include <iosfwd>
#include <string>

#include "found/read_messenger.h"

/// Tells what an exchange document holds but cannot be read, a sentence each.
class NoteMessenger : public Found::Umo::ReadMessenger {
 public:
  /// Every line starts with `prefix`.
  NoteMessenger(std::ostream& notes, const std::string& prefix);

  void onReadFinished(std::size_t count) override;
  void onUnknownElement(const std::string& elementName) override;
  void onMissingName(int number) override;
  void onMissingBeddingName() override;
  void onEmptyName(int number, const std::string& name) override;
  void onEmptyBeddingName(const std::string& name) override;
  void onMissingNumber(const std::string& elementName) override;
  void onInvalidNumber(const std::string& elementName, int number) override;
  void onNameChanged(const std::string& oldName, const std::string& newName) override;

  /// How many beddings were refused or changed.
  std::size_t getNumberOfNotes() const { return numberOfNotes; }

 private:
  void note(const std::string& sentence);

  std::ostream& out;
  std::string linePrefix;
  std::size_t numberOfNotes = 0;
};
