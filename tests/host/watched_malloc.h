// What this thread allocates. malloc and the like of watched_malloc.cpp replace those of the C
// library, and fail on request.
#pragma once

#include <cerrno>

namespace vistrel {

// Allocations of this thread, while it watches. Failures set errno to failedErrno; all other
// allocations to succeededErrno.
struct Watch {
  bool on = false, fromThenOn = false;
  int failAt = 0, calls = 0, failed = 0;
  int failedErrno = ENOMEM, succeededErrno = 0;
  long bytes = 0, peak = 0;  // allocated since it began
};
inline thread_local constinit Watch g_watch;
inline thread_local constinit long g_live = 0;  // blocks that are allocated

}  // namespace vistrel
