#pragma once

#include "found/export.h"

namespace Found {

class Foundation;

/// An object of the host that refers to foundations. The host derives from it and registers its
/// objects with FoundationManager::addUser(), so that the manager can tell which foundations are
/// in use.
///
/// The destructor does not unregister: call FoundationManager::removeUser() before a user goes
/// away. Copying a user does not register the copy.
class FOUND_API FoundationUser {
 public:
  FoundationUser();
  FoundationUser(const FoundationUser& other);             ///< copies no registration
  FoundationUser& operator=(const FoundationUser& other);  ///< copies no registration
  virtual ~FoundationUser();

  /// True when this user refers to `foundation`, which is the pointer that the manager holds (or
  /// the one passed to FoundationManager::checkUsed()). The manager asks in the midst of a walk, on
  /// the thread that called it: do not add or remove users or foundations here. What it throws
  /// passes through to the caller of the manager.
  virtual bool usesFoundation(const Foundation* foundation) = 0;
};

}  // namespace Found
