// How raw samples become a picture for the eye, and how users write that down.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "vistrel/vistrel_finish.h"

namespace vistrel::app {

// 1 in gains, matrices and exposures, which count in 1/4096.
constexpr uint32_t kLookOne = 4096;

constexpr uint32_t kMaxLevel = 65535;  // of black and white
constexpr uint32_t kMaxLookGain = 16 * kLookOne;
constexpr int32_t kMaxMatrixRow = 32767;  // of the absolute values of a row, added
constexpr uint32_t kMaxExposure = 1024 * kLookOne;

// The library's codes.
enum class Curve {
  kLinear = VISTREL_TRANSFER_LINEAR,
  kSrgb = VISTREL_TRANSFER_SRGB,
  kGamma = VISTREL_TRANSFER_GAMMA,
  kAsinh = VISTREL_TRANSFER_ASINH
};

struct Transfer {
  Curve curve = Curve::kSrgb;
  uint32_t parameter = 0;  // in thousandths; 0 for the curves without one

  bool operator==(const Transfer&) const = default;
};

using Gains = std::array<uint32_t, 3>;        // red, green, blue
using ColourMatrix = std::array<int32_t, 9>;  // row by row
using BlackLevels = std::array<uint32_t, 4>;  // of the places of the 2x2 block, row by row

constexpr ColourMatrix kIdentityMatrix = {4096, 0, 0, 0, 4096, 0, 0, 0, 4096};

// Colours are scaled from black..white to 0..1 and multiplied by the gains; highlights, matrix,
// exposure and transfer follow in this order. What is above 1 is only clipped after the exposure.
struct Look {
  BlackLevels black{};
  uint32_t white = 0;
  Gains gains = {kLookOne, kLookOne, kLookOne};
  ColourMatrix matrix = kIdentityMatrix;
  uint32_t exposure = kLookOne;
  Transfer transfer;
  bool neutralHighlights = true;

  bool operator==(const Look&) const = default;
};

// The parts that are known; the others are to be decided.
struct KnownLook {
  std::optional<BlackLevels> black;
  std::optional<uint32_t> white;
  std::optional<Gains> gains;
  std::optional<ColourMatrix> matrix;
  std::optional<uint32_t> exposure;
  std::optional<Transfer> transfer;
  std::optional<bool> neutralHighlights;

  bool operator==(const KnownLook&) const = default;
};

// How the other parts are decided.
enum class LookMode { kAuto, kLinear, kSrgb, kAstro };

struct LookChoice {
  LookMode mode = LookMode::kAuto;
  KnownLook known;
};

// Parses a mode, NAME=VALUE,... or a mode followed by the latter. Throws ProgramError (usage).
LookChoice parseLook(std::string_view text);

// "srgb", "asinh:50.000".
std::string transferText(const Transfer& transfer);

// NAME=VALUE,... of all parts, but for colours of mono frames; parseLook makes the same integers of
// it.
std::string lookText(const Look& look, bool isMono = false);

}  // namespace vistrel::app
