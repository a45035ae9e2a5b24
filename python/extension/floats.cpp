#include "python/extension/floats.h"

#include <algorithm>
#include <cstring>

#include "common/rows/nontemporal.h"

namespace vistrel::python {
namespace {

constexpr size_t kChunk = 512;
constexpr size_t kRowsAhead = 2;  // by measurement

// The integers end where the row ends. From left to right, floats reach only integers that were
// read before. A later row arrives in the cache meanwhile.
template <class T>
void widenRow(char* row, const char* later, size_t count, float divisor) {
  const char* from = row + count * (sizeof(float) - sizeof(T));
  for (size_t i = 0; i < count; i += kChunk) {
    T samples[kChunk];
    float quotients[kChunk];
    const size_t n = std::min(kChunk, count - i);
    std::memcpy(samples, from + i * sizeof(T), n * sizeof(T));
    for (size_t k = 0; k < n; ++k) quotients[k] = static_cast<float>(samples[k]) / divisor;
    std::memcpy(row + i * sizeof(float), quotients, n * sizeof(float));
    core::prefetchRow<2>(later + i * sizeof(float), n * sizeof(float));
  }
}

}  // namespace

void widen(const Result& result, size_t bytes, float divisor, size_t first, size_t end) noexcept {
  const auto widenRowOf = bytes == 1 ? widenRow<uint8_t> : widenRow<uint16_t>;
  const ptrdiff_t stride = result.image.stride;
  char* const top = static_cast<char*>(result.image.pixels) -
                    static_cast<ptrdiff_t>(result.rowSamples * (sizeof(float) - bytes));
  for (size_t plane = 0; plane < result.planes; ++plane) {
    const auto row = [&](size_t y) {
      return top + stride * static_cast<ptrdiff_t>(plane * result.rows + y);
    };
    for (size_t y = first; y < end; ++y)
      widenRowOf(row(y), row(std::min(y + kRowsAhead, result.rows - 1)), result.rowSamples,
                 divisor);
  }
}

}  // namespace vistrel::python
