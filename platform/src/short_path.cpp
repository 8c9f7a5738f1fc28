#include "kv/short_path.h"

#if !defined(_WIN32)
unsigned long GetShortPathNameA(const char* /*longPath*/, char* /*shortPath*/,
                                unsigned long /*size*/) {
  return 0;
}
#endif
