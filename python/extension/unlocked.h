// Work without Python's lock.
#pragma once

#include <pybind11/pybind11.h>

#include <exception>

#include "python/extension/restore_thread.h"

namespace vistrel::python {

// Runs `work`, which touches no object of Python's and throws nothing, while other threads of
// Python run.
template <class Work>
void withoutLock(Work work) {
  PyThreadState* const state = PyEval_SaveThread();
  work();
  vistrel_restore_thread(state);
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
