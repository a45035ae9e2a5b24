// What must happen when a process forks, where processes fork.
#pragma once

#ifndef _WIN32
#include <pthread.h>
#endif

namespace vistrel::host {

using ForkHandler = void();

// Returns 0 if the handlers are registered.
inline int atFork([[maybe_unused]] ForkHandler* before, [[maybe_unused]] ForkHandler* inParent,
                  [[maybe_unused]] ForkHandler* inChild) {
#ifdef _WIN32
  return 0;
#else
  return pthread_atfork(before, inParent, inChild);
#endif
}

}  // namespace vistrel::host
