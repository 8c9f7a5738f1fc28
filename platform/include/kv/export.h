#pragma once

/// @file
/// Marks what the companion libraries export. KVPLATFORM_BUILDING is defined while they are
/// compiled, KVFOUND_STATIC when they are static.

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
