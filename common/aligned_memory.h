// Allocated memory that begins at a multiple of a power of two.
#pragma once

#include <cstddef>
#include <cstdlib>

#ifdef _WIN32
#include <malloc.h>
#endif

namespace vistrel::core {

// Null if the allocation fails. `bytes` is a multiple of the alignment.
inline void* allocateAligned(size_t alignment, size_t bytes) {
#ifdef _WIN32
  return _aligned_malloc(bytes, alignment);
#else
  return std::aligned_alloc(alignment, bytes);
#endif
}

struct FreeAligned {
  void operator()(void* block) const {
#ifdef _WIN32
    _aligned_free(block);
#else
    std::free(block);
#endif
  }
};

}  // namespace vistrel::core
