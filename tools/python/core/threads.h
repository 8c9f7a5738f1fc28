#pragma once

#include <Python.h>

#ifdef __GLIBCXX__
#include <cxxabi.h>
#endif

namespace Python {

/// Stops this thread for good, while the interpreter ends in another one.
[[noreturn]] void stopThread();

/// Releases the interpreter's lock for as long as it lives. Nothing of Python may be touched
/// meanwhile.
///
/// When the interpreter has ended by then, Python ends the thread by unwinding it, which no
/// destructor survives; so the thread stops instead.
class Unlocked {
 public:
  Unlocked() : state(PyEval_SaveThread()) {}
  ~Unlocked() {
    try {
      PyEval_RestoreThread(state);
    } catch (...) {
      stopThread();
    }
  }
  Unlocked(const Unlocked&) = delete;
  Unlocked& operator=(const Unlocked&) = delete;

 private:
  PyThreadState* state;
};

/// Runs code of the user. When the interpreter ends meanwhile the thread stops: unwinding would let
/// go of objects without the lock.
template <class Code>
auto runCode(const Code& code) {
#ifdef __GLIBCXX__
  try {
    return code();
  } catch (abi::__forced_unwind&) {
    stopThread();
  }
#else
  return code();
#endif
}

}  // namespace Python
