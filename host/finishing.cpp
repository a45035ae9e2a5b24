#include "host/finishing.h"

#include <algorithm>
#include <cstdlib>

#include "demosaic/algorithms.h"
#include "host/status.h"

namespace vistrel::host {
namespace {

constexpr const char* kField = "conversion.finish";

void checkMatrix(const vistrel_frame& f, const vistrel_finish& finish) {
  for (size_t row = 0; row < 3; ++row) {
    int64_t sum = 0;
    for (size_t i = 3 * row; i < 3 * row + 3; ++i) {
      if (finish.matrix[i] && !isMosaic(f))
        reject(VISTREL_BAD_FINISH, textOf("finish.matrix[{}]", i), finish.matrix[i],
               "a mono frame has no colours; only 0 is allowed");
      sum += std::abs(int64_t{finish.matrix[i]});
    }
    if (sum > VISTREL_MATRIX_MAX)
      reject(VISTREL_BAD_FINISH, textOf("finish.matrix[{}]", 3 * row), finish.matrix[3 * row],
             "the absolute values of its row add up to {}; {} is allowed", sum,
             int{VISTREL_MATRIX_MAX});
  }
}

void checkTransfer(const vistrel_finish& finish) {
  const uint32_t n = finish.transfer_points;
  if (!finish.transfer && n)
    reject(VISTREL_BAD_FINISH, "finish.transfer_points", n, "without transfer, only 0 is allowed");
  if (finish.transfer && (n < 2 || n > core::kFinishEntries))
    reject(VISTREL_BAD_FINISH, "finish.transfer_points", n, "2 to {} are allowed",
           core::kFinishEntries);
}

uint64_t largestGain(const vistrel_frame& f, const Gains& gains) {
  return isMosaic(f) ? *std::max_element(gains.begin(), gains.end()) : uint64_t{VISTREL_GAIN_ONE};
}

uint64_t gainAt(const vistrel_frame& f, const Gains& gains, int64_t x, int64_t y) {
  const uint32_t colour =
      vistrel_colour_at(f.phase, static_cast<uint32_t>(x & 1), static_cast<uint32_t>(y & 1));
  return colour == VISTREL_NO_COLOUR ? uint64_t{VISTREL_GAIN_ONE} : gains[colour];
}

// In 16 bits.
uint32_t expanded(uint32_t v, uint32_t bits) { return v << (16 - bits) | v >> (2 * bits - 16); }

// What a clipped sample of a colour is scaled to, in 16 bits.
int32_t clipOf(const Plan& p, const vistrel_frame& f, const vistrel_conversion& c,
               const Gains& gains, uint32_t colour) {
  uint32_t least = 65535;
  for (int64_t y = 0; y < 2; ++y)
    for (int64_t x = 0; x < 2; ++x) {
      if (vistrel_colour_at(f.phase, uint32_t(x), uint32_t(y)) != colour) continue;
      const core::Scaling s = scalingOf(p, f, c, gains, x, y);
      const uint32_t product = s.range.even * s.factor.even + (1u << (s.shift() - 1));
      least = std::min(least, expanded(std::min(product >> s.shift(), s.fullScale()), p.bits));
    }
  return static_cast<int32_t>(least);
}

}  // namespace

uint32_t whiteOf(const vistrel_frame& f, const vistrel_conversion& c) {
  return c.white ? c.white : (1u << f.bits) - 1;
}

uint32_t finishBits(const vistrel_frame& f, const vistrel_conversion& c) {
  constexpr uint32_t kMost = 16;
  return isMosaic(f) ? std::min(kMost, core::findAlgorithm(c.algorithm)->maxBits) : kMost;
}

void checkFinish(const vistrel_frame& f, const vistrel_conversion& c) {
  if (!c.finish) return;
  const vistrel_finish& finish = *c.finish;
  if (f.phase == VISTREL_BGR)
    reject(VISTREL_BAD_FINISH, kField, "", "it is for Bayer and mono frames; this one is bgr");
  if (findFormat(c.format)->gray() && c.gray == VISTREL_RAW_GRAY)
    reject(VISTREL_BAD_FINISH, kField, "", "raw gray is not finished");
  if (finish.highlights > VISTREL_HIGHLIGHTS_NEUTRAL)
    reject(VISTREL_BAD_FINISH, "finish.highlights", finish.highlights,
           "0 (clip) and 1 (neutral) are allowed");
  if (!finish.exposure || finish.exposure > VISTREL_EXPOSURE_MAX)
    reject(VISTREL_BAD_FINISH, "finish.exposure", finish.exposure,
           "1 to {} are allowed; {} is an exposure of 1", int{VISTREL_EXPOSURE_MAX},
           int{VISTREL_EXPOSURE_ONE});
  checkMatrix(f, finish);
  checkTransfer(finish);
  checkReserved("finish.reserved", finish.reserved);
}

core::Scaling scalingOf(const Plan& p, const vistrel_frame& f, const vistrel_conversion& c,
                        const Gains& gains, int64_t x, int64_t y) {
  const core::ColumnPair<uint32_t> black = blackOf(c, x, y);
  const uint32_t white = whiteOf(f, c);
  const core::ColumnPair<uint32_t> range{white - black.even, white - black.odd};
  const auto factor = [&](uint32_t r, int64_t column) {
    return core::Scaling::factorOf(p.bits, r, gainAt(f, gains, column, y), largestGain(f, gains));
  };
  const uint32_t below = belowOf(f), mask = ((1u << f.bits) - 1) << below;
  const bool isCalibrated = c.calibration;
  return {isCalibrated ? 0xFFFF : mask,
          isCalibrated ? 0 : below,
          p.bits,
          isCalibrated ? core::ColumnPair<uint32_t>{0, 0} : black,
          range,
          {factor(range.even, x), factor(range.odd, x + 1)}};
}

size_t finishTableBytes(const Plan& p, const vistrel_conversion& c) {
  return c.finish ? core::kFinishEntries * p.format->bytes_per_sample : 0;
}

const void* fillFinishTable(const EngineCall& call, void* table) {
  if (!call.conversion.finish) return nullptr;
  const vistrel_finish& finish = *call.conversion.finish;
  constexpr uint64_t kMost = uint64_t{1} << 28;
  const uint64_t amplification =
      (finish.exposure * largestGain(call.frame, call.gains) + 2048) >> 12;
  core::fillFinishTable(static_cast<uint32_t>(std::min(amplification, kMost)), finish.transfer,
                        finish.transfer_points, call.plan.format->bytes_per_sample, table);
  return table;
}

core::Finish finishOf(const Plan& p, const vistrel_frame& f, const vistrel_conversion& c,
                      const Gains& gains, const void* table) {
  const vistrel_finish& finish = *c.finish;
  core::Finish how{
      .channels = p.format->mono ? size_t{1} : 3,
      .bits = p.bits,
      .hasMatrix = std::any_of(std::begin(finish.matrix), std::end(finish.matrix),
                               [](int32_t m) { return m != 0; }),
      .sampleBytes = p.format->bytes_per_sample,
      .table = table,
  };
  // The channel of a pixel that has this colour.
  const auto channelOf = [&p](uint32_t colour) { return p.format->redFirst ? colour : 2 - colour; };
  for (uint32_t colour = 0; colour < 3; ++colour) {
    if (finish.highlights == VISTREL_HIGHLIGHTS_NEUTRAL && isMosaic(f))
      how.clip[channelOf(colour)] = clipOf(p, f, c, gains, colour);
    for (uint32_t from = 0; from < 3; ++from)
      how.matrix[3 * channelOf(colour) + channelOf(from)] = finish.matrix[3 * colour + from];
  }
  return how;
}

}  // namespace vistrel::host
