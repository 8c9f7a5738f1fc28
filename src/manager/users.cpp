#include <algorithm>

#include "found/foundation_manager.h"
#include "found/foundation_user.h"

namespace Found {

FoundationUser::FoundationUser() = default;

FoundationUser::FoundationUser(const FoundationUser&) = default;

FoundationUser& FoundationUser::operator=(const FoundationUser&) = default;

FoundationUser::~FoundationUser() = default;

void FoundationManager::addUser(FoundationUser* user) { users.push_back(user); }

void FoundationManager::removeUser(FoundationUser* user) {
  const auto place = std::find(users.begin(), users.end(), user);
  if (place != users.end()) users.erase(place);
}

bool FoundationManager::checkUsed(const Foundation* foundation) const {
  return std::any_of(users.begin(), users.end(), [foundation](FoundationUser* user) {
    return user != nullptr && user->usesFoundation(foundation);
  });
}

std::size_t FoundationManager::getNumberOfUsedFoundations() const {
  const auto used =
      std::count_if(foundations.begin(), foundations.end(), [this](const Foundation* foundation) {
        return foundation != nullptr && checkUsed(foundation);
      });
  return static_cast<std::size_t>(used);
}

}  // namespace Found
