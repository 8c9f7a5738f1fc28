#include "found/version.h"

namespace Found {

const char* getVersion() noexcept { return KVFOUND_VERSION_STRING; }

int getVersionNumber() noexcept { return KVFOUND_VERSION_NUMBER; }

}  // namespace Found
