#pragma once

/// @file
/// What the companion libraries export. KVPLATFORM_BUILDING is defined while they are compiled,
/// KVFOUND_STATIC when they are static. Warnings C4251 and C4275 of MSVC: see found/export.h.

/// @def KV_API
/// Marks what the companion libraries export.

#if defined(KVFOUND_STATIC)
#define KV_API
#elif defined(_WIN32)
#if defined(KVPLATFORM_BUILDING)
#define KV_API __declspec(dllexport)
#else
#define KV_API __declspec(dllimport)
#endif
#else
#define KV_API __attribute__((visibility("default")))
#endif
