#pragma once

/// @file
/// What the library exports. KVFOUND_BUILDING is defined while the library itself is
/// compiled, KVFOUND_STATIC when it is built or used as a static library. A host that links the
/// CMake targets needs neither.
///
/// The classes have members and bases of the standard library, so host and library are built with
/// the same compiler, standard library and runtime. MSVC reminds of that with its warnings C4251
/// and C4275.

/// @def FOUND_API
/// Marks the classes that the library exports.
/// @def FOUND_LOCAL
/// Marks what is nested in one of them and is not exported.

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
