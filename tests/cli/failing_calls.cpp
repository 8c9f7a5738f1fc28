// Loaded into the program before the system's own library: of the calls that write a file, the one
// whose place KVFOUND_FAILING_CALL tells, counted from 1, fails.

#include <dlfcn.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

namespace {

bool failsNow() {
  static int calls = 0;
  static const char* const failing = std::getenv("KVFOUND_FAILING_CALL");
  if (failing == nullptr || ++calls != std::atoi(failing)) return false;
  errno = EIO;
  return true;
}

/// The output of the program is not what is tested.
bool failsNow(int file) { return file > STDERR_FILENO && failsNow(); }

template <class Function>
Function* findNext(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

#define KV_INTERPOSED extern "C" __attribute__((visibility("default")))

KV_INTERPOSED ssize_t write(int file, const void* bytes, size_t size) {
  return failsNow(file) ? -1 : findNext<decltype(write)>("write")(file, bytes, size);
}

KV_INTERPOSED ssize_t writev(int file, const iovec* parts, int count) {
  return failsNow(file) ? -1 : findNext<decltype(writev)>("writev")(file, parts, count);
}

KV_INTERPOSED int fsync(int file) {
  return failsNow() ? -1 : findNext<decltype(fsync)>("fsync")(file);
}

KV_INTERPOSED int rename(const char* from, const char* to) noexcept {
  return failsNow() ? -1 : findNext<int(const char*, const char*)>("rename")(from, to);
}
