#include "host/excess.h"

#include <limits>

#include "demosaic/algorithms.h"
#include "host/significant.h"

namespace vistrel::host {
namespace {

template <class T>
const void* firstOf(const FramePart& part, const void* row) {
  return static_cast<const unsigned char*>(row) + size_t{part.left} * part.channels * sizeof(T);
}

template <class T>
void checkRow(const vistrel_frame& f, const FramePart& part, const void* row, uint32_t y) {
  Significant<T>(f).rejectExcess(firstOf<T>(part, row), part.samples(), y, [&](size_t i) {
    return part.left + static_cast<uint32_t>(i / part.channels);
  });
}

template <class T>
bool exceeds(const vistrel_frame& f, const FramePart& part, const void* row) {
  return Significant<T>(f).exceeded(firstOf<T>(part, row), part.samples());
}

void lower(std::atomic<uint32_t>& least, uint32_t value) {
  uint32_t present = least;
  while (value < present && !least.compare_exchange_weak(present, value)) continue;
}

}  // namespace

FramePart partOf(const Plan& p, const vistrel_frame& f, const vistrel_conversion& c,
                 ImageRows rows) {
  const int64_t top = p.y + (int64_t{rows.first} + p.pad) * c.binning - core::kLargestReach;
  const int64_t bottom = p.y + (int64_t{rows.end} + p.pad) * c.binning + core::kLargestReach;
  const auto clamped = [](int64_t i, int64_t from, int64_t size, uint32_t limit) {
    return static_cast<uint32_t>(
        std::clamp(i, std::max<int64_t>(from, 0), std::min<int64_t>(from + size, limit)));
  };
  return {clamped(p.x, p.x, p.width, f.width), clamped(p.x + p.width, p.x, p.width, f.width),
          clamped(top, p.y, p.height, f.height), clamped(bottom, p.y, p.height, f.height),
          channelsOf(f)};
}

void checkExcessSamples(const vistrel_frame& f, const FramePart& part, const void* row,
                        uint32_t y) {
  f.bytes_per_sample == 1 ? checkRow<uint8_t>(f, part, row, y)
                          : checkRow<uint16_t>(f, part, row, y);
}

void checkExcessSamples(const vistrel_frame& f, const FramePart& part, uint32_t threads,
                        const ThreadSource& threadSource) {
  constexpr uint32_t kNone = std::numeric_limits<uint32_t>::max();
  if (f.bits == 8 * f.bytes_per_sample || isTight(f.packing)) return;
  const auto rowAt = [&](uint32_t y) {
    return static_cast<const unsigned char*>(f.samples) + y * static_cast<size_t>(strideOf(f));
  };
  const Bands bands({part.top, part.bottom}, part.right - part.left, threads);
  std::atomic<uint32_t> first = kNone;
  threadSource.share(bands, [&](uint32_t, ImageRows band) {
    for (uint32_t y = band.first; y < band.end && y < first; ++y)
      if (exceeds<uint16_t>(f, part, rowAt(y))) return lower(first, y);
  });
  if (first != kNone) checkExcessSamples(f, part, rowAt(first), first);
}

}  // namespace vistrel::host
