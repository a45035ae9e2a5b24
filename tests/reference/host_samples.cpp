#include <algorithm>
#include <array>
#include <cstring>
#include <set>
#include <utility>

#include "tests/reference/host.h"

namespace reference {

namespace {

size_t channelsOf(const vistrel_frame& frame) { return frame.phase == VISTREL_BGR ? 3 : 1; }
bool isMosaic(const vistrel_frame& frame) { return frame.phase <= VISTREL_GBRG; }

// Samples that share bytes.
struct Group {
  size_t samples, bytes;
};

Group groupOf(const vistrel_frame& frame) {
  switch (frame.packing) {
    case VISTREL_PACKING_PFNC:
    case VISTREL_PACKING_MIPI: return {4, frame.bits * size_t{4} / 8};
    case VISTREL_PACKING_GIGE: return {2, 3};
    default: return {1, frame.bytes_per_sample};
  }
}

const uint8_t* rowOf(const vistrel_frame& frame, size_t y) {
  const size_t stride = frame.stride ? frame.stride : hostRowBytes(frame);
  return static_cast<const uint8_t*>(frame.samples) + y * stride;
}

// The bits from `first` on of a stream that begins with the lowest bit of the first byte.
uint32_t bitsAt(const uint8_t* stream, size_t first, size_t count) {
  uint32_t value = 0;
  for (size_t b = 0; b < count; ++b)
    value |= (stream[(first + b) / 8] >> ((first + b) % 8) & 1u) << b;
  return value;
}

uint32_t gigeSample(const uint8_t* row, size_t i, uint32_t bits) {
  const uint8_t* const pair = row + i / 2 * 3;
  const uint32_t high = i % 2 ? pair[2] : pair[0];
  const uint32_t low = bitsAt(pair + 1, i % 2 ? 4 : 0, bits - 8);
  return high << (bits - 8) | low;
}

// A row's last group has the high bytes of its own samples only.
uint32_t mipiSample(const uint8_t* row, size_t i, size_t rowSamples, uint32_t bits) {
  const size_t samples = bits == 12 ? 2 : 4;
  const size_t first = i / samples * samples, in = i - first;
  const uint8_t* const group = row + first * bits / 8;
  const size_t high = std::min(samples, rowSamples - first);
  return uint32_t{group[in]} << (bits - 8) | bitsAt(group + high, in * (bits - 8), bits - 8);
}

uint32_t shiftOf(const vistrel_frame& frame) {
  return frame.alignment == VISTREL_HIGH_BITS ? 8 * frame.bytes_per_sample - frame.bits : 0;
}

uint32_t fullScale(const vistrel_frame& frame) { return (1u << frame.bits) - 1; }

// The frame's value at a place, after the mask.
uint32_t significant(const vistrel_frame& frame, size_t i, size_t y) {
  return hostStoredSample(frame, i, y) >> shiftOf(frame) & fullScale(frame);
}

uint32_t levelAt(const void* levels, size_t stride, const vistrel_frame& frame, size_t x,
                 size_t y) {
  uint16_t level;
  std::memcpy(&level,
              static_cast<const uint8_t*>(levels) + y * (stride ? stride : 2 * frame.width) + 2 * x,
              2);
  return level;
}

// Without dark and black, evened out.
uint64_t evened(const vistrel_frame& frame, const vistrel_conversion& c, size_t x, size_t y,
                size_t channel) {
  const vistrel_calibration* const by = c.calibration;
  const uint32_t sample = significant(frame, x * channelsOf(frame) + channel, y);
  const uint32_t dark = by && by->dark ? levelAt(by->dark, by->dark_stride, frame, x, y) : 0;
  const uint32_t level = dark + c.black[2 * (y % 2) + x % 2];
  const uint64_t v = sample > level ? sample - level : 0;
  if (!by) return v;
  const uint64_t flat = by->flat ? levelAt(by->flat, by->flat_stride, frame, x, y) : 4096;
  return std::min<uint64_t>((v * flat + 2048) >> 12, fullScale(frame));
}

using HotPixels = std::set<std::pair<int64_t, size_t>>;

HotPixels hotPixels(const vistrel_conversion& c) {
  HotPixels hot;
  for (size_t i = 0; c.calibration && i < c.calibration->hot_count; ++i)
    hot.emplace(c.calibration->hot[i].x, c.calibration->hot[i].y);
  return hot;
}

uint64_t calibrated(const vistrel_frame& frame, const vistrel_conversion& c, const HotPixels& hot,
                    size_t x, size_t y, size_t channel) {
  if (!hot.count({x, y})) return evened(frame, c, x, y, channel);
  uint64_t sum = 0, count = 0;
  for (const int64_t step : {-1, 1}) {
    int64_t at = static_cast<int64_t>(x);
    do at += isMosaic(frame) ? 2 * step : step;
    while (hot.count({at, y}));
    if (at < 0 || at >= frame.width) continue;
    sum += evened(frame, c, static_cast<size_t>(at), y, channel);
    ++count;
  }
  return count == 2 ? (sum + 1) / 2 : sum;
}

constexpr char kColours[] = "RGB";  // in the order of gains
using Gains = std::array<uint64_t, 3>;

uint64_t aboveBlack(const vistrel_frame& frame, const vistrel_conversion& c, size_t x, size_t y) {
  const uint32_t sample = significant(frame, x, y), black = c.black[2 * (y % 2) + x % 2];
  return sample > black ? sample - black : 0;
}

// Whether the whole block of 2x2 samples is.
bool isBelowWhite(const vistrel_frame& frame, const vistrel_conversion& c, size_t x, size_t y) {
  const size_t left = x / 2 * 2, top = y / 2 * 2;
  if (left + 1 >= frame.width || top + 1 >= frame.height) return false;
  for (size_t i = 0; i < 4; ++i)
    if (significant(frame, left + i % 2, top + i / 2) >= c.white) return false;
  return true;
}

Gains grayWorld(const vistrel_frame& frame, const vistrel_conversion& c) {
  Gains means{}, gains{};
  for (size_t i = 0; i < 3; ++i) {
    uint64_t sum = 0, count = 0;
    for (size_t y = 0; y < frame.height; ++y)
      for (size_t x = 0; x < frame.width; ++x)
        if (hostColour(frame.phase, static_cast<int64_t>(x), static_cast<int64_t>(y)) ==
            kColours[i])
          if (!c.white || isBelowWhite(frame, c, x, y)) sum += aboveBlack(frame, c, x, y), ++count;
    means[i] = count ? (2 * 256 * sum + count) / (2 * count) : 0;
  }
  const uint64_t largest = *std::max_element(means.begin(), means.end());
  for (size_t i = 0; i < 3; ++i) {
    const uint64_t mean = means[i];
    gains[i] = VISTREL_GAIN_MAX;
    if (mean) gains[i] = std::min((4096 * largest + mean / 2) / mean, gains[i]);
    if (!largest) gains[i] = VISTREL_GAIN_ONE;
  }
  return gains;
}

}  // namespace

std::array<uint64_t, 3> hostGains(const vistrel_frame& frame, const vistrel_conversion& c) {
  if (c.white_balance == VISTREL_BALANCE_GRAY_WORLD) return grayWorld(frame, c);
  if (c.white_balance == VISTREL_BALANCE_GAINS) return {c.gains[0], c.gains[1], c.gains[2]};
  return {VISTREL_GAIN_ONE, VISTREL_GAIN_ONE, VISTREL_GAIN_ONE};
}

char hostColour(uint32_t phase, int64_t x, int64_t y) {
  constexpr const char* kBlocks[] = {"GRBG", "BGGR", "RGGB", "GBRG"};
  return kBlocks[phase][2 * (y & 1) + (x & 1)];
}

size_t hostRowBytes(const vistrel_frame& frame) {
  const Group group = groupOf(frame);
  const size_t samples = frame.width * channelsOf(frame), rest = samples % group.samples;
  const bool isTight = frame.packing > VISTREL_PACKING_BIG;
  return samples / group.samples * group.bytes + (isTight ? (rest * frame.bits + 7) / 8 : 0);
}

uint32_t hostStoredSample(const vistrel_frame& frame, size_t i, size_t y) {
  const uint8_t* const row = rowOf(frame, y);
  switch (frame.packing) {
    case VISTREL_PACKING_LITTLE: return row[2 * i] | uint32_t{row[2 * i + 1]} << 8;
    case VISTREL_PACKING_BIG: return row[2 * i + 1] | uint32_t{row[2 * i]} << 8;
    case VISTREL_PACKING_PFNC: return bitsAt(row, i * frame.bits, frame.bits);
    case VISTREL_PACKING_GIGE: return gigeSample(row, i, frame.bits);
    case VISTREL_PACKING_MIPI:
      return mipiSample(row, i, frame.width * channelsOf(frame), frame.bits);
  }
  if (frame.bytes_per_sample == 1) return row[i];
  uint16_t sample;
  std::memcpy(&sample, row + 2 * i, 2);
  return sample;
}

bool hasExcessBits(const vistrel_frame& frame, uint32_t stored) {
  return stored & ~(fullScale(frame) << shiftOf(frame));
}

uint32_t hostBits(const vistrel_frame& frame, const vistrel_conversion& c) {
  const bool isNarrow =
      isMosaic(frame) && c.algorithm >= VISTREL_LAROCHE && c.algorithm <= VISTREL_GROUPING;
  const uint32_t bits = !c.finish                                        ? frame.bits
                        : isNarrow                                       ? 10
                        : isMosaic(frame) && c.algorithm == VISTREL_EDGE ? 15
                                                                         : 16;
  return c.truncate_to ? std::min(bits, c.truncate_to) : bits;
}

namespace {

uint64_t gainAt(const vistrel_frame& frame, const std::array<uint64_t, 3>& gains, size_t x,
                size_t y) {
  if (!isMosaic(frame)) return VISTREL_GAIN_ONE;
  const char colour = hostColour(frame.phase, static_cast<int64_t>(x), static_cast<int64_t>(y));
  return gains[static_cast<size_t>(std::strchr(kColours, colour) - kColours)];
}

}  // namespace

uint32_t hostScaled(const vistrel_frame& frame, const vistrel_conversion& c,
                    const std::array<uint64_t, 3>& gains, uint64_t above, size_t x, size_t y) {
  const uint32_t B = hostBits(frame, c);
  const uint64_t F = (1u << B) - 1, g = gainAt(frame, gains, x, y),
                 G = isMosaic(frame) ? *std::max_element(gains.begin(), gains.end()) : g,
                 R = (c.white ? c.white : fullScale(frame)) - c.black[2 * (y % 2) + x % 2];
  const uint64_t factor = (F * (uint64_t{1} << (31 - B)) * g + R * G / 2) / (R * G);
  const uint64_t half = uint64_t{1} << (30 - B);
  return static_cast<uint32_t>(std::min((std::min(above, R) * factor + half) >> (31 - B), F));
}

HostSamples hostSamples(const vistrel_frame& frame, const vistrel_conversion& c) {
  const auto gains = hostGains(frame, c);
  const auto hot = hotPixels(c);
  const size_t channels = channelsOf(frame);
  HostSamples result{frame.width, frame.height, static_cast<uint32_t>(channels), {}};
  for (size_t y = 0; y < frame.height; ++y)
    for (size_t i = 0; i < frame.width * channels; ++i) {
      const size_t x = i / channels;
      const uint64_t v = calibrated(frame, c, hot, x, y, i % channels);
      const uint64_t w =
          std::min<uint64_t>((v * gainAt(frame, gains, x, y) + 2048) >> 12, fullScale(frame));
      result.values.push_back(static_cast<uint16_t>(c.finish
                                                        ? hostScaled(frame, c, gains, v, x, y)
                                                        : w >> (frame.bits - hostBits(frame, c))));
    }
  return result;
}

}  // namespace reference
