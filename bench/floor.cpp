#include "bench/floor.h"

#include <cstring>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vistrel::core::bench {

namespace {

constexpr size_t kBlock = 16;

void oneToThree(const uint8_t* source, uint8_t* result, size_t pixels) {
  for (size_t i = 0; i + kBlock <= pixels; i += kBlock, result += 3 * kBlock)
    for (unsigned n = 0; n < 3; ++n) std::memcpy(result + n * kBlock, source + i, kBlock);
}

#if defined(__SSE2__)
void oneToThreeNonTemporal(const uint8_t* source, uint8_t* result, size_t pixels) {
  auto* to = reinterpret_cast<__m128i*>(result);
  for (size_t i = 0; i + kBlock <= pixels; i += kBlock, to += 3) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(source + i));
    for (unsigned n = 0; n < 3; ++n) _mm_stream_si128(to + n, block);
  }
  _mm_sfence();
}
#endif

}  // namespace

std::vector<Job> floorJobs(const Frame& frame) {
  const auto source = frame.samples8;
  const size_t pixels = frame.size.pixels();
  const auto result = allocate<uint8_t>(3 * pixels);
  return {
    {"1 byte to 3", [=] { oneToThree(source.get(), result.get(), pixels); }},
#if defined(__SSE2__)
        {"1 byte to 3, non-temporal",
         [=] { oneToThreeNonTemporal(source.get(), result.get(), pixels); }},
#endif
        {"memcpy", [=] { std::memcpy(result.get(), source.get(), pixels); }},
  };
}

}  // namespace vistrel::core::bench
