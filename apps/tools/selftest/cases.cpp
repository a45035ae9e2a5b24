#include "apps/tools/selftest/cases.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>

#include "vistrel/vistrel_host.h"

namespace vistrel::app::selftest {
namespace {

constexpr uint32_t kDepths[] = {8, 10, 12, 14, 16};

void addAlgorithm(std::vector<Case>& cases, const vistrel_algorithm& a, uint32_t threshold) {
  const std::string name = threshold ? fmt::format("{}:{}", a.name, threshold) : a.name;
  for (const uint32_t bits : kDepths) {
    if (bits > a.max_bits) break;
    for (uint32_t phase = 0; phase < VISTREL_MONO; ++phase)
      cases.push_back({name, a.code, threshold, bits, phase, 1, kAllBits});
    for (uint32_t binning = 2; binning <= 4; ++binning)
      cases.push_back({name, a.code, threshold, bits, VISTREL_RGGB, binning, kAllBits});
  }
}

void addMono(std::vector<Case>& cases) {
  for (const uint32_t bits : kDepths)
    for (uint32_t binning = 1; binning <= 4; ++binning)
      cases.push_back({"mono", 0, 0, bits, VISTREL_MONO, binning, kAllBits});
}

// Three windows and five curves, in colour and in gray.
void addTones(std::vector<Case>& cases) {
  for (uint32_t mode = 0; mode <= 7; ++mode) {
    cases.push_back({"bilinear", VISTREL_BILINEAR, 0, 12, VISTREL_GRBG, 1, mode});
    cases.push_back({"mono", 0, 0, 12, VISTREL_MONO, 1, mode});
  }
}

constexpr uint32_t kFinishes = 3;

void addFinished(std::vector<Case>& cases) {
  for (const char* const name : {"bilinear", "ahd", "directional", "vng", "mono"}) {
    uint32_t code = 0;
    const bool isMono = vistrel_parse_algorithm(name, &code, nullptr) != VISTREL_OK;
    const uint32_t phase = isMono ? VISTREL_MONO : VISTREL_BGGR;
    for (const uint32_t bits : kDepths)
      for (uint32_t finish = 1; finish <= kFinishes; ++finish)
        cases.push_back({name, code, 0, bits, phase, finish == 2 ? 2u : 1u, kAllBits, finish});
  }
}

// A pseudo-random number for each position.
uint32_t noise(uint32_t x, uint32_t y) {
  uint32_t v = x * 73856093u ^ y * 19349663u;
  v = (v ^ v >> 13) * 0x5BD1E995u;
  return v ^ v >> 15;
}

// 0..65535, in bands of 29 columns.
uint32_t lightAt(uint32_t x, uint32_t y) {
  switch (x / 29) {
    case 0: return noise(x, y) & 65535;
    case 1: return (x * 2251 + y * 1777) % 65536;
    case 2: return noise(x, y) & 1 ? 65535 : 0;
    case 3: return 64000 + (noise(x, y) & 1535);
    case 4: return noise(x, y) & 2047;
    case 5: return (x + y) / 6 % 2 ? 52000 + (noise(x, y) & 4095) : 9000;
    default: return 30000 + 40 * x + (noise(x, y) & 511);
  }
}

constexpr uint64_t kSeed = 0xCBF29CE484222325, kPrime = 0x100000001B3;

}  // namespace

std::string nameOf(const Case& c) {
  const std::string tone = c.reduction == kAllBits ? "" : fmt::format(", lut mode {}", c.reduction);
  const std::string finish = c.finish ? fmt::format(", finish {}", c.finish) : "";
  return fmt::format("{}, {} bits, {}, binning {}{}{}", c.algorithm, c.bits,
                     vistrel_phase_name(c.phase), c.binning, tone, finish);
}

std::vector<Case> allCases() {
  std::vector<Case> cases;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i) {
    addAlgorithm(cases, *a, 0);
    if (a->code == VISTREL_EDGE) addAlgorithm(cases, *a, 20);
  }
  addMono(cases);
  addTones(cases);
  addFinished(cases);
  return cases;
}

// 1: black, white, gains, highlights, matrix, sRGB. 2: dark, flat, hot pixels, means, asinh, 16
// bits. 3: exposure, gamma with few points, turned.
Finishing::Finishing(const Case& c, vistrel_conversion& conversion) {
  const bool isMono = c.phase == VISTREL_MONO;
  const uint32_t unit = 1u << (c.bits - 8);
  finish_.exposure = c.finish == 3 ? 6000 : VISTREL_EXPOSURE_ONE;
  transfer_.resize(c.finish == 3 ? 17 : 65536);
  constexpr uint32_t kKinds[] = {VISTREL_TRANSFER_SRGB, VISTREL_TRANSFER_ASINH,
                                 VISTREL_TRANSFER_GAMMA};
  constexpr uint32_t kParameters[] = {0, 50'000, 2200};
  vistrel_make_transfer(kKinds[c.finish - 1], kParameters[c.finish - 1], transfer_.data(),
                        transfer_.size(), nullptr);
  finish_.transfer = transfer_.data();
  finish_.transfer_points = static_cast<uint32_t>(transfer_.size());
  conversion.format = isMono ? VISTREL_MONO8 : VISTREL_BGR24;
  conversion.finish = &finish_;
  if (c.finish == 1) {
    for (uint32_t i = 0; i < 4; ++i) conversion.black[i] = (10 + i) * unit;
    conversion.white = 240 * unit;
    if (isMono) return;
    conversion.white_balance = VISTREL_BALANCE_GAINS;
    constexpr uint32_t kGains[] = {8000, 4096, 6000};
    std::copy(std::begin(kGains), std::end(kGains), conversion.gains);
    finish_.highlights = VISTREL_HIGHLIGHTS_NEUTRAL;
    constexpr int32_t kMatrix[] = {7000, -2000, -904, -1000, 6000, -904, 100, -2500, 6496};
    std::copy(std::begin(kMatrix), std::end(kMatrix), finish_.matrix);
  } else if (c.finish == 2) {
    for (uint32_t i = 0; i < kWidth * kHeight; ++i) {
      dark_.push_back(static_cast<uint16_t>(noise(i, 1) % (4 * unit)));
      flat_.push_back(static_cast<uint16_t>(3000 + noise(i, 2) % 3000));
    }
    for (uint32_t y = 3; y < kHeight; y += 5) hot_.push_back({noise(y, 3) % kWidth, y});
    calibration_.dark = dark_.data(), calibration_.dark_size = 2 * dark_.size();
    calibration_.flat = flat_.data(), calibration_.flat_size = 2 * flat_.size();
    calibration_.hot = hot_.data(), calibration_.hot_count = hot_.size();
    conversion.calibration = &calibration_;
    conversion.bin_mode = VISTREL_BIN_MEAN;
    conversion.format = isMono ? VISTREL_MONO16 : VISTREL_RGB48;
  } else {
    conversion.orientation = VISTREL_TURNED_90;
  }
}

std::vector<uint16_t> testFrame(uint32_t bits) {
  std::vector<uint16_t> frame;
  for (uint32_t y = 0; y < kHeight; ++y)
    for (uint32_t x = 0; x < kWidth; ++x)
      frame.push_back(static_cast<uint16_t>(lightAt(x, y) >> (16 - bits)));
  return frame;
}

uint64_t hashOf(const uint8_t* samples, size_t count) {
  uint64_t hash = kSeed;
  for (size_t i = 0; i < count; ++i) hash = (hash ^ samples[i]) * kPrime;
  return hash;
}

uint64_t hashOf(const uint16_t* samples, size_t count) {
  uint64_t hash = kSeed;
  for (size_t i = 0; i < count; ++i) {
    hash = (hash ^ (samples[i] & 255u)) * kPrime;
    hash = (hash ^ samples[i] >> 8) * kPrime;
  }
  return hash;
}

}  // namespace vistrel::app::selftest
