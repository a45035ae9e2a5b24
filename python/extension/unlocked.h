// Work without Python's lock.
#pragma once

#include <cxxabi.h>
#include <pybind11/pybind11.h>
#include <unistd.h>

#include <exception>

namespace vistrel::python {

// Runs `work`, which touches no object of Python's and throws nothing, while other threads of
// Python run. When the interpreter ends meanwhile, it would unwind this thread through destructors
// that need the lock; the thread then sleeps until the process ends.
template <class Work>
void withoutLock(Work work) {
  PyThreadState* const state = PyEval_SaveThread();
  work();
  try {
    PyEval_RestoreThread(state);
  } catch (abi::__forced_unwind&) {
    for (;;) pause();
  }
}

// The same for work that may throw.
template <class Work>
void withoutLockOrThrow(Work work) {
  std::exception_ptr thrown;
  withoutLock([&] {
    try {
      work();
    } catch (...) {
      thrown = std::current_exception();
    }
  });
  if (thrown) std::rethrow_exception(thrown);
}

}  // namespace vistrel::python
