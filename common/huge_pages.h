// Huge pages for large buffers.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace vistrel::core {

// Requests huge pages, where the system grants them on request. In a buffer larger than the caches,
// address translation with small pages costs a tenth of a conversion's time. The contents stay
// unchanged.
inline void adviseHugePages(void* memory, size_t bytes) {
#if defined(__linux__)
  constexpr uintptr_t kHugePage = uintptr_t{2} << 20;
  if (!memory || bytes < 2 * kHugePage) return;
  const uintptr_t begin = reinterpret_cast<uintptr_t>(memory), end = begin + bytes;
  const uintptr_t first = (begin + kHugePage - 1) & ~(kHugePage - 1);
  madvise(reinterpret_cast<void*>(first), (end & ~(kHugePage - 1)) - first, MADV_HUGEPAGE);
#else
  static_cast<void>(memory);
  static_cast<void>(bytes);
#endif
}

}  // namespace vistrel::core
