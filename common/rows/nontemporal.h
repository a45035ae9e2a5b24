// Non-temporal stores for memory that is not read again soon, and prefetching for memory that is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vistrel::core {

constexpr ptrdiff_t kCacheLine = 64;

// Prefetches a row that is read later, so that its lines arrive in the meantime. locality is the
// compiler's: 3 for the first-level cache, 2 for the second-level cache.
template <int locality = 3>
void prefetchRow(const void* row, size_t bytes) {
  for (size_t i = 0; i < bytes; i += size_t{kCacheLine})
    __builtin_prefetch(static_cast<const char*>(row) + i, 0, locality);
}

// Prefetches a row piece by piece while another row is made: requests for all of it at once would
// queue up. It goes to the second-level cache, because the first-level cache has no space for it.
class Prefetcher {
 public:
  Prefetcher() = default;  // fetches nothing
  Prefetcher(const void* row, size_t bytesAPixel)
      : row_(static_cast<const char*>(row)), bytesAPixel_(bytesAPixel) {}

  void fetch(size_t begin, size_t end) const {
    if (row_) prefetchRow<2>(row_ + begin * bytesAPixel_, (end - begin) * bytesAPixel_);
  }

 private:
  const char* row_ = nullptr;
  size_t bytesAPixel_ = 0;
};

// Copies a row with non-temporal stores while the row is made: each call copies what is complete.
class NonTemporalCopy {
 public:
  NonTemporalCopy() = default;  // copies nothing
  NonTemporalCopy(void* destination, const void* source)
      : d_(static_cast<char*>(destination)), s_(static_cast<const char*>(source)) {}

  // Copies whole cache lines of the destination, as far as the source bytes before `end` fill them.
  void upTo(const void* end) {
#if defined(__SSE2__)
    if (!d_) return;
    const char* const e = static_cast<const char*>(end);
    const ptrdiff_t head = -reinterpret_cast<intptr_t>(d_) & (kCacheLine - 1);
    if (e - s_ < head + kCacheLine) return;
    if (head > 0) copy(head);
    char* d = d_;  // copies in registers: as far as the compiler knows, a store may change members
    const char* s = s_;
    for (; e - s >= kCacheLine; d += kCacheLine, s += kCacheLine)
      for (ptrdiff_t i = 0; i < kCacheLine; i += ptrdiff_t{sizeof(__m128i)})
        _mm_stream_si128(reinterpret_cast<__m128i*>(d + i),
                         _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i)));
    d_ = d;
    s_ = s;
#else
    static_cast<void>(end);
#endif
  }

  // Copies all source bytes before `end`.
  void finish(const void* end) {
    if (!d_) return;
    upTo(end);
    copy(static_cast<const char*>(end) - s_);
  }

 private:
  void copy(ptrdiff_t n) {
    std::memcpy(d_, s_, static_cast<size_t>(n));
    d_ += n;
    s_ += n;
  }

  char* d_ = nullptr;
  const char* s_ = nullptr;
};

// Makes the non-temporal stores above visible to other threads.
inline void storeFence() {
#if defined(__SSE2__)
  _mm_sfence();
#endif
}

}  // namespace vistrel::core
