// Converts microseconds to ticks.
#pragma once

#include <cstdint>

namespace vistrel::core {

// quirk: early-tick-wrap. Only the low 32 bits count: ticks wrap to 0 after 71.6 minutes.
constexpr uint32_t ticksOf(uint64_t microseconds) {
  return static_cast<uint32_t>(microseconds) / 1000;
}

}  // namespace vistrel::core
