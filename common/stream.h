// Copies past the caches, for memory that nobody reads soon.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vistrel {

// Copies a row past the caches while it is being made: each call takes what has become complete.
class StreamCopy {
 public:
  StreamCopy() = default;  // copies nothing
  StreamCopy(void* destination, const void* source)
      : m_d(static_cast<char*>(destination)), m_s(static_cast<const char*>(source)) {}

  // Whole lines of the destination, from source bytes before end.
  void upTo(const void* end) {
#if defined(__SSE2__)
    if (!m_d) return;
    const char* const e = static_cast<const char*>(end);
    const ptrdiff_t head = -reinterpret_cast<intptr_t>(m_d) & (kLine - 1);
    if (e - m_s < head + kLine) return;
    copy(head);
    for (; e - m_s >= kLine; m_d += kLine, m_s += kLine)
      for (ptrdiff_t i = 0; i < kLine; i += ptrdiff_t{sizeof(__m128i)})
        _mm_stream_si128(reinterpret_cast<__m128i*>(m_d + i),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(m_s + i)));
#else
    static_cast<void>(end);
#endif
  }

  // All source bytes before end.
  void finish(const void* end) {
    if (!m_d) return;
    upTo(end);
    copy(static_cast<const char*>(end) - m_s);
  }

 private:
  static constexpr ptrdiff_t kLine = 64;

  void copy(ptrdiff_t n) {
    std::memcpy(m_d, m_s, static_cast<size_t>(n));
    m_d += n;
    m_s += n;
  }

  char* m_d = nullptr;
  const char* m_s = nullptr;
};

// Until then other threads need not see the bytes.
inline void streamFence() {
#if defined(__SSE2__)
  _mm_sfence();
#endif
}

}  // namespace vistrel
