#pragma once

#if defined(_WIN32)
/// Declared as in <windows.h>, whose macros stay out this way.
extern "C" __declspec(dllimport) unsigned long __stdcall GetShortPathNameA(const char* longPath,
                                                                           char* shortPath,
                                                                           unsigned long size);
#else
#include "kv/export.h"

/// Stand-in where file systems have no short path forms: always 0, which means that there is none.
KV_API unsigned long GetShortPathNameA(const char* longPath, char* shortPath, unsigned long size);
#endif
