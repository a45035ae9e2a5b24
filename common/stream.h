// Copies past the caches, for memory that nobody reads soon.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vistrel {

// Other threads see the bytes after streamFence only.
inline void streamCopy(void* destination, const void* source, size_t n) {
  char* d = static_cast<char*>(destination);
  const char* s = static_cast<const char*>(source);
#if defined(__SSE2__)
  constexpr size_t line = 64;
  const size_t head = -reinterpret_cast<uintptr_t>(d) % line;
  if (n >= head + line) {
    std::memcpy(d, s, head);
    d += head, s += head, n -= head;
    for (; n >= line; d += line, s += line, n -= line)
      for (size_t i = 0; i < line; i += sizeof(__m128i))
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i)));
  }
#endif
  std::memcpy(d, s, n);
}

inline void streamFence() {
#if defined(__SSE2__)
  _mm_sfence();
#endif
}

}  // namespace vistrel
