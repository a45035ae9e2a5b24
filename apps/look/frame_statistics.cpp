#include "apps/look/frame_statistics.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>

namespace vistrel::app {
namespace {

vistrel_region wholeIfEmpty(const vistrel_frame& frame, const vistrel_region& r) {
  return r.x || r.y || r.width || r.height ? r : vistrel_region{0, 0, frame.width, frame.height};
}

// The rows of a frame, as values of its significant bits.
class SampleRows {
 public:
  explicit SampleRows(const vistrel_frame& frame)
      : frame_(frame),
        stride_(frame.stride ? frame.stride : size_t{frame.width} * frame.bytes_per_sample),
        shift_(frame.alignment == VISTREL_HIGH_BITS ? 16 - frame.bits : 0),
        largest_((1u << frame.bits) - 1) {}

  // Samples with more than the significant bits count as the largest.
  uint32_t at(uint32_t x, uint32_t y) const {
    const char* row = static_cast<const char*>(frame_.samples) + y * stride_;
    if (frame_.bytes_per_sample == 1) return static_cast<unsigned char>(row[x]);
    uint16_t sample;
    std::memcpy(&sample, row + size_t{x} * 2, 2);
    return std::min<uint32_t>(sample >> shift_, largest_);
  }

 private:
  const vistrel_frame& frame_;
  size_t stride_;
  uint32_t shift_, largest_;
};
class FrameBlocks {
 public:
  FrameBlocks(const vistrel_frame& frame, const BlackLevels& black, uint32_t white)
      : rows_(frame), colours_(coloursOf(frame.phase)), black_(black), white_(white) {}

  Block mono(uint32_t x, uint32_t y) const {
    const uint32_t sample = rows_.at(x, y);
    const float value = scaled(sample, 2 * (y % 2) + x % 2);
    return {{value, value, value}, sample >= white_};
  }

  Block mosaic(uint32_t x, uint32_t y) const {
    Block block{};
    for (uint32_t place = 0; place < 4; ++place) {
      const uint32_t sample = rows_.at(x + place % 2, y + place / 2), colour = colours_[place];
      block.colour[colour] += scaled(sample, place) * (colour == VISTREL_GREEN ? 0.5f : 1.0f);
      block.clipped |= sample >= white_;
    }
    return block;
  }

 private:
  float scaled(uint32_t sample, uint32_t place) const {
    if (white_ <= black_[place]) return 0;
    const float range = static_cast<float>(white_ - black_[place]);
    return (static_cast<float>(std::min(sample, white_)) - static_cast<float>(black_[place])) /
           range;
  }

  SampleRows rows_;
  std::array<uint32_t, 4> colours_;
  BlackLevels black_;
  uint32_t white_;
};

// One histogram for each place of the 2x2 block, of the values at all pixels of a region.
template <class Value>
std::array<Histogram, 4> histogramsBy(const vistrel_region& r, uint32_t bits, Value&& valueAt) {
  std::array<Histogram, 4> places;
  places.fill(Histogram(size_t{1} << bits));
  for (uint32_t y = r.y; y < r.y + r.height; ++y)
    for (uint32_t x = r.x; x < r.x + r.width; ++x) ++places[2 * (y % 2) + x % 2][valueAt(x, y)];
  return places;
}

}  // namespace

std::array<Histogram, 4> histogramsOf(const vistrel_frame& frame, const vistrel_region& region) {
  const SampleRows rows(frame);
  return histogramsBy(wholeIfEmpty(frame, region), frame.bits,
                      [&rows](uint32_t x, uint32_t y) { return rows.at(x, y); });
}

std::array<Histogram, 4> differencesOf(const vistrel_frame& frame, const vistrel_region& region) {
  const SampleRows rows(frame);
  vistrel_region r = wholeIfEmpty(frame, region);
  r.width -= std::min(r.width, 2u);
  return histogramsBy(r, frame.bits, [&rows](uint32_t x, uint32_t y) {
    const uint32_t one = rows.at(x, y), other = rows.at(x + 2, y);
    return std::max(one, other) - std::min(one, other);
  });
}

Histogram sumOf(const std::array<Histogram, 4>& places) {
  Histogram sum(places[0].size());
  for (const Histogram& place : places)
    std::transform(sum.begin(), sum.end(), place.begin(), sum.begin(), std::plus());
  return sum;
}

uint64_t countOf(const Histogram& histogram) {
  return std::accumulate(histogram.begin(), histogram.end(), uint64_t{0});
}

uint32_t quantile(const Histogram& histogram, double part) {
  const double below = part * static_cast<double>(countOf(histogram));
  uint64_t count = 0;
  for (uint32_t value = 0; value < histogram.size(); ++value) {
    count += histogram[value];
    if (static_cast<double>(count) > below) return value;
  }
  return 0;
}

std::array<uint32_t, 4> coloursOf(uint32_t phase) {
  switch (phase) {
    case VISTREL_GRBG: return {VISTREL_GREEN, VISTREL_RED, VISTREL_BLUE, VISTREL_GREEN};
    case VISTREL_BGGR: return {VISTREL_BLUE, VISTREL_GREEN, VISTREL_GREEN, VISTREL_RED};
    case VISTREL_RGGB: return {VISTREL_RED, VISTREL_GREEN, VISTREL_GREEN, VISTREL_BLUE};
    case VISTREL_GBRG: return {VISTREL_GREEN, VISTREL_BLUE, VISTREL_RED, VISTREL_GREEN};
    default: return {VISTREL_GREEN, VISTREL_GREEN, VISTREL_GREEN, VISTREL_GREEN};
  }
}

uint64_t balancedSamples(const vistrel_frame& frame, uint32_t white, const vistrel_region& region) {
  const vistrel_region r = wholeIfEmpty(frame, region);
  if (!white) return uint64_t{r.width} * r.height;
  const FrameBlocks reader(frame, {}, white);
  uint64_t count = 0;
  for (uint32_t y = r.y + r.y % 2; y + 1 < r.y + r.height; y += 2)
    for (uint32_t x = r.x + r.x % 2; x + 1 < r.x + r.width; x += 2)
      if (!reader.mosaic(x, y).clipped) count += 4;
  return count;
}

std::vector<Block> blocksOf(const vistrel_frame& frame, const BlackLevels& black, uint32_t white,
                            const vistrel_region& region) {
  const vistrel_region r = wholeIfEmpty(frame, region);
  const bool mono = frame.phase == VISTREL_MONO;
  const uint32_t left = (r.x + 1) / 2, top = (r.y + 1) / 2, reach = mono ? 1 : 0;
  const uint32_t right = (r.x + r.width + reach) / 2, bottom = (r.y + r.height + reach) / 2;
  uint32_t step = 1;
  const auto along = [&](uint32_t begin, uint32_t end) { return uint64_t{end - begin} / step + 1; };
  while (along(left, right) * along(top, bottom) > kMaxBlocks) ++step;
  const FrameBlocks reader(frame, black, white);
  std::vector<Block> blocks;
  for (uint32_t y = top; y < bottom; y += step)
    for (uint32_t x = left; x < right; x += step)
      blocks.push_back(mono ? reader.mono(2 * x, 2 * y) : reader.mosaic(2 * x, 2 * y));
  return blocks;
}

}  // namespace vistrel::app
