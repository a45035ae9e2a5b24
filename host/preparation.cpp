#include "host/preparation.h"

#include <algorithm>

#include "host/plan.h"
#include "host/significant.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

using Sums = std::array<uint64_t, 3>;  // red, green, blue

// The sums of a row's even and odd columns.
template <class T>
core::ColumnPair<uint64_t> sumsOf(const vistrel_frame& f, const unsigned char* row,
                                  const core::Preparation& above) {
  const auto packing = packingOf(f);
  if (!packing) return core::sumsAboveBlack<T>(row, f.width, above);
  core::ColumnPair<uint64_t> sums{};
  T some[2048];
  for (size_t x = 0, end; x < f.width; x = end) {
    end = std::min<size_t>(x + std::size(some), f.width);
    core::unpackPart(*packing, row, f.width, x, end, some);
    const auto part = core::sumsAboveBlack<T>(some, end - x, above);
    sums.even += part.even;
    sums.odd += part.odd;
  }
  return sums;
}

template <class T>
Sums sumsAboveBlack(const vistrel_frame& f, const vistrel_conversion& c) {
  const Significant<T> significant(f);
  const auto* samples = static_cast<const unsigned char*>(f.samples);
  Sums sums{};
  for (uint32_t y = 0; y < f.height; ++y) {
    const auto* from = samples + y * strideOf(f);
    const core::Preparation above{f.bits, significant.below, 0, blackOf(c, 0, y), {}};
    if (c.excess == VISTREL_REJECT)
      significant.rejectExcess(from, f.width, y, [](size_t x) { return static_cast<uint32_t>(x); });
    const auto [even, odd] = sumsOf<T>(f, from, above);
    sums[vistrel_colour_at(f.phase, 0, y)] += even;
    sums[vistrel_colour_at(f.phase, 1, y)] += odd;
  }
  return sums;
}

Sums countsOf(const vistrel_frame& f) {
  Sums counts{};
  for (uint32_t y = 0; y < 2; ++y)
    for (uint32_t x = 0; x < 2; ++x)
      counts[vistrel_colour_at(f.phase, x, y)] +=
          ((uint64_t{f.width} + 1 - x) / 2) * ((uint64_t{f.height} + 1 - y) / 2);
  return counts;
}

// The mean in 1/256, rounded. Computed in two parts, since 256 times a sum may exceed 64 bits.
uint64_t meanOf(uint64_t sum, uint64_t count) {
  if (!count) return 0;
  return sum / count * 256 + (sum % count * 256 + count / 2) / count;
}

}  // namespace

Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  const Sums sums = frame.bytes_per_sample == 1 ? sumsAboveBlack<uint8_t>(frame, conversion)
                                                : sumsAboveBlack<uint16_t>(frame, conversion);
  const Sums counts = countsOf(frame);
  Sums means{};
  for (size_t i = 0; i < 3; ++i) means[i] = meanOf(sums[i], counts[i]);
  const uint64_t max = *std::max_element(means.begin(), means.end());
  Gains gains{VISTREL_GAIN_ONE, VISTREL_GAIN_ONE, VISTREL_GAIN_ONE};
  for (size_t i = 0; max && i < 3; ++i) {
    const uint64_t m = means[i];
    gains[i] = VISTREL_GAIN_MAX;
    if (m)
      gains[i] = static_cast<uint32_t>(
          std::min<uint64_t>((VISTREL_GAIN_ONE * max + m / 2) / m, VISTREL_GAIN_MAX));
  }
  return gains;
}

core::ColumnPair<uint32_t> blackOf(const vistrel_conversion& c, int64_t x, int64_t y) {
  const uint32_t* const row = c.black + (y & 1) * 2;
  return {row[x & 1], row[~x & 1]};
}

Gains gainsOf(const vistrel_frame& frame, const vistrel_conversion& c) {
  if (c.white_balance == VISTREL_BALANCE_GRAY_WORLD) return measureGains(frame, c);
  if (c.white_balance == VISTREL_BALANCE_GAINS) return {c.gains[0], c.gains[1], c.gains[2]};
  return {VISTREL_GAIN_ONE, VISTREL_GAIN_ONE, VISTREL_GAIN_ONE};
}

}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_measure_gains(const vistrel_frame* frame, const vistrel_conversion* conversion,
                              uint32_t gains[3], vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(frame, "frame");
    checkPointer(conversion, "conversion");
    checkPointer(gains, "gains");
    checkFrame(*frame);
    if (!isMosaic(*frame))
      reject(VISTREL_BAD_PHASE, "frame.phase", vistrel_phase_name(frame->phase),
             "gains are measured on Bayer frames only");
    checkExcess(*conversion);
    checkBlack(*frame, *conversion);
    checkSamples(*frame);
    const Gains measured = measureGains(*frame, *conversion);
    std::copy(measured.begin(), measured.end(), gains);
  });
}
