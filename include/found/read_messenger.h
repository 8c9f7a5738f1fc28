#pragma once

#include <cstddef>
#include <string>

#include "found/export.h"

namespace Found::Umo {

/// What Umo::BeddingReader tells the host while it reads. The host derives from it.
///
/// Every element that is refused is reported once, with the reason, and skipped. Called on the
/// caller's thread from inside BeddingReader::read(); what a message throws passes through to the
/// caller of read(). A message may change the manager, but not the elements that are being read.
class FOUND_API ReadMessenger {
 public:
  ReadMessenger();
  ReadMessenger(const ReadMessenger& other);             ///< copies nothing
  ReadMessenger& operator=(const ReadMessenger& other);  ///< copies nothing
  virtual ~ReadMessenger();

  /// The last message of every reading: `count` foundations were added to the manager.
  virtual void onReadFinished(std::size_t count) = 0;
  /// An element that is no bedding of this version.
  virtual void onUnknownElement(const std::string& elementName) = 0;
  /// The curve or surface bedding of this number has no name.
  virtual void onMissingName(int number) = 0;
  /// A bedding of version "1.0" has no name.
  virtual void onMissingBeddingName() = 0;
  /// The curve or surface bedding of this number has an empty name, which is `name`.
  virtual void onEmptyName(int number, const std::string& name) = 0;
  /// A bedding of version "1.0" has an empty name, which is `name`.
  virtual void onEmptyBeddingName(const std::string& name) = 0;
  /// A curve or surface bedding (`elementName` tells which) has no number that can be read.
  virtual void onMissingNumber(const std::string& elementName) = 0;
  /// The number of a curve or surface bedding is below 1 or already in the manager.
  virtual void onInvalidNumber(const std::string& elementName, int number) = 0;
  /// The name is already in the manager; the bedding is read under `newName` instead.
  virtual void onNameChanged(const std::string& oldName, const std::string& newName) = 0;
};

}  // namespace Found::Umo
