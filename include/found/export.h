#pragma once

/// @file
/// Marks the classes that the library exports.
///
/// KVFOUND_BUILDING is defined while the library itself is compiled, KVFOUND_STATIC when it is
/// built or used as a static library. A host that links the CMake targets needs neither.

#if defined(KVFOUND_STATIC)
#define FOUND_API
#elif defined(_WIN32)
#if defined(KVFOUND_BUILDING)
#define FOUND_API __declspec(dllexport)
#else
#define FOUND_API __declspec(dllimport)
#endif
#else
#define FOUND_API __attribute__((visibility("default")))
#endif
