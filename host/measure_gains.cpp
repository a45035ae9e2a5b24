#include "host/measure_gains.h"

#include <algorithm>
#include <optional>

#include "host/plan.h"
#include "host/significant.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

// Of a colour: red, green, blue.
struct ColourSums {
  std::array<uint64_t, 3> sums{}, counts{};

  void add(uint32_t colour, uint64_t sum, uint64_t count) {
    sums[colour] += sum;
    counts[colour] += count;
  }
};

// Reads the samples of a region of a mosaic, some at a time.
template <class T>
class RegionSamples {
 public:
  RegionSamples(const vistrel_frame& frame, const vistrel_conversion& conversion,
                const vistrel_region& region)
      : frame_(frame), conversion_(conversion), region_(region), significant_(frame),
        packing_(packingOf(frame)) {}

  // Throws Rejection for excess bits.
  ColourSums sums() const {
    ColourSums total;
    const uint32_t end = region_.y + region_.height;
    if (conversion_.excess == VISTREL_REJECT)
      for (uint32_t y = region_.y; y < end; ++y)
        significant_.rejectExcess(part(y), region_.width, y, [this](size_t i) {
          return region_.x + static_cast<uint32_t>(i);
        });
    if (conversion_.white)
      for (uint32_t y = region_.y + (region_.y & 1); y + 1 < end; y += 2) addUnclipped(total, y);
    else
      for (uint32_t y = region_.y; y < end; ++y) addAll(total, y);
    return total;
  }

 private:
  static constexpr uint32_t kSome = 1024;
  using Line = T[kSome];

  const unsigned char* rowOf(uint32_t y) const {
    return static_cast<const unsigned char*>(frame_.samples) + y * strideOf(frame_);
  }
  // Of samples that are not packed, or packed in whole bytes.
  const unsigned char* part(uint32_t y) const {
    return rowOf(y) + size_t{region_.x} * frame_.bytes_per_sample;
  }

  // Row y from column x on, above black.
  void load(uint32_t x, uint32_t y, uint32_t n, Line& line) const {
    const auto* const row = rowOf(y);
    const void* from = row + size_t{x} * sizeof(T);
    if (packing_) {
      core::unpackPart(*packing_, row, frame_.width, x, x + n, line);
      from = line;
    }
    core::prepareRow(from, n, line,
                     {frame_.bits,
                      significant_.below,
                      0,
                      blackOf(conversion_, x, y),
                      {VISTREL_GAIN_ONE, VISTREL_GAIN_ONE}});
  }

  void addAll(ColourSums& total, uint32_t y) const {
    Line line;
    const uint32_t end = region_.x + region_.width;
    for (uint32_t x = region_.x; x < end; x += kSome) {
      const uint32_t n = std::min(kSome, end - x);
      load(x, y, n, line);
      const auto [even, odd] = core::sumsAboveBlack<T>(line, n, {frame_.bits, 0, 0, {0, 0}, {}});
      total.add(vistrel_colour_at(frame_.phase, x, y), even, (n + 1) / 2);
      total.add(vistrel_colour_at(frame_.phase, x + 1, y), odd, n / 2);
    }
  }

  // Adds the blocks of rows y and y + 1 that have no sample at white or above.
  void addUnclipped(ColourSums& total, uint32_t y) const {
    Line upper, lower;
    const uint32_t end = region_.x + region_.width;
    for (uint32_t x = region_.x + (region_.x & 1); x + 1 < end; x += kSome) {
      const uint32_t n = std::min(kSome, end - x) & ~1u;
      load(x, y, n, upper);
      load(x, y + 1, n, lower);
      for (uint32_t i = 0; i < n; i += 2) addBlock(total, x, y, upper + i, lower + i);
    }
  }

  void addBlock(ColourSums& total, uint32_t x, uint32_t y, const T* upper, const T* lower) const {
    const uint32_t* const black = conversion_.black;
    const uint32_t white = conversion_.white;
    if (upper[0] + black[0] >= white || upper[1] + black[1] >= white ||
        lower[0] + black[2] >= white || lower[1] + black[3] >= white)
      return;
    total.add(vistrel_colour_at(frame_.phase, x, y), upper[0], 1);
    total.add(vistrel_colour_at(frame_.phase, x + 1, y), upper[1], 1);
    total.add(vistrel_colour_at(frame_.phase, x, y + 1), lower[0], 1);
    total.add(vistrel_colour_at(frame_.phase, x + 1, y + 1), lower[1], 1);
  }

  const vistrel_frame& frame_;
  const vistrel_conversion& conversion_;
  const vistrel_region region_;
  const Significant<T> significant_;
  const std::optional<core::Packing> packing_;
};

// The mean in 1/256, rounded. Computed in two parts, since 256 times a sum may exceed 64 bits.
uint64_t meanOf(uint64_t sum, uint64_t count) {
  if (!count) return 0;
  return sum / count * 256 + (sum % count * 256 + count / 2) / count;
}

}  // namespace

Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion,
                   const vistrel_region& region) {
  const ColourSums total = frame.bytes_per_sample == 1
                               ? RegionSamples<uint8_t>(frame, conversion, region).sums()
                               : RegionSamples<uint16_t>(frame, conversion, region).sums();
  std::array<uint64_t, 3> means{};
  for (size_t i = 0; i < 3; ++i) means[i] = meanOf(total.sums[i], total.counts[i]);
  const uint64_t max = *std::max_element(means.begin(), means.end());
  Gains gains = kNoGains;
  for (size_t i = 0; max && i < 3; ++i) {
    const uint64_t m = means[i];
    gains[i] = VISTREL_GAIN_MAX;
    if (m)
      gains[i] = static_cast<uint32_t>(
          std::min<uint64_t>((VISTREL_GAIN_ONE * max + m / 2) / m, VISTREL_GAIN_MAX));
  }
  return gains;
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
    checkWhite(*frame, *conversion);
    const vistrel_region region = regionOf(*frame, *conversion);
    checkSamples(*frame);
    const Gains measured = measureGains(*frame, *conversion, region);
    std::copy(measured.begin(), measured.end(), gains);
  });
}
