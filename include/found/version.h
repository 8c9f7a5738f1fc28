#pragma once

#include "found/export.h"

/// @file
/// The version: of the headers as macros, so that a host may ask in `#if`, and of the library that
/// runs as functions, which a shared library may answer otherwise.

/// Higher when hosts have to be built again, and perhaps to be changed.
#define KVFOUND_VERSION_MAJOR 1
/// Higher when something came in.
#define KVFOUND_VERSION_MINOR 0
/// Higher when something was mended.
#define KVFOUND_VERSION_PATCH 0

/// All three in one number that can be compared, 10000 for 1.0.0.
#define KVFOUND_VERSION_NUMBER \
  (KVFOUND_VERSION_MAJOR * 10000 + KVFOUND_VERSION_MINOR * 100 + KVFOUND_VERSION_PATCH)
/// As people write it.
#define KVFOUND_VERSION_STRING "1.0.0"

namespace Found {

/// The version of the library that runs, as KVFOUND_VERSION_STRING has that of the headers. The
/// text lasts as long as the library is loaded.
FOUND_API const char* getVersion() noexcept;

/// The same as KVFOUND_VERSION_NUMBER. A host that was built with a newer release 1.x than the one
/// that runs does not start, or lacks functions: it may compare before it uses what is new.
FOUND_API int getVersionNumber() noexcept;

}  // namespace Found
