#pragma once

#if defined(_WIN32)
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include "kv/export.h"

/// Stand-in where file systems have no short path forms: always 0, which means that there is none.
KV_API unsigned long GetShortPathNameA(const char* longPath, char* shortPath, unsigned long size);
#endif
