// Chooses a level from the detected features, and holds the choice.
#pragma once

#include <cstdint>

#include "common/arch.h"

namespace vistrel::core {

constexpr int32_t kBelowBase = 36;
constexpr int32_t kOtherVendor = 20;
constexpr int32_t kUnknownCode = 21;
constexpr int32_t kNullPointer = -8;

// The eight bytes "getinfoa" in memory order.
constexpr uint64_t kGetInfo = 0x616F666E69746567;

extern uint64_t ownFeaturesMask;  // enabled
extern uint64_t ownFeatures;      // detected, once ownFeaturesAreValid
extern int32_t ownFeaturesAreValid;

// The features that the base level requires, those enabled at that level, and those enabled below
// it.
struct BaseLevel {
  uint64_t required, enabled, enabledBelow;
};
constexpr BaseLevel kBase64 = {0x08, 0x0F, 0x07};  // SSE3
constexpr BaseLevel kBase32 = {0x04, 0x07, 0x03};  // SSE2
constexpr BaseLevel kBase = sizeof(void*) == 8 ? kBase64 : kBase32;

// The features that are enabled while none are detected.
constexpr uint64_t kUndetected = VISTREL_X86 ? 0x07 : 0;

struct LevelChoice {
  uint64_t enabled;
  uint32_t index, lp;
  int32_t status;

  bool operator==(const LevelChoice&) const = default;
};

LevelChoice chooseLevel(uint64_t features, const BaseLevel& base = kBase);

}  // namespace vistrel::core
