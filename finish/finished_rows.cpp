#include "finish/finished_rows.h"

#include <algorithm>

namespace vistrel::core {

void FinishedRows::append(const void* pixels, size_t n) {
  const auto* const from = static_cast<const uint16_t*>(pixels);
  for (size_t done = 0; done < n; done += kChunk) {
    const size_t count = std::min(n - done, kChunk);
    void* const place = rows_.next();
    void* const to = place ? place : chunk_;
    finishRow(from + finish_.channels * done, count, finish_, to);
    rows_.append(to, count);
  }
}

}  // namespace vistrel::core
