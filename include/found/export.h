#pragma once

/// @file
/// FOUND_API marks the classes that the library exports, FOUND_LOCAL what is nested in one and is
/// not.
///
/// KVFOUND_BUILDING is defined while the library itself is compiled, KVFOUND_STATIC when it is
/// built or used as a static library. A host that links the CMake targets needs neither.

#if defined(KVFOUND_STATIC)
#define FOUND_API
#define FOUND_LOCAL
#elif defined(_WIN32)
#define FOUND_LOCAL
#if defined(KVFOUND_BUILDING)
#define FOUND_API __declspec(dllexport)
#else
#define FOUND_API __declspec(dllimport)
#endif
#else
#define FOUND_API __attribute__((visibility("default")))
#define FOUND_LOCAL __attribute__((visibility("hidden")))
#endif
