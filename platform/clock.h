// Ticks from a count of microseconds.
#pragma once

#include <cstdint>

namespace vistrel::core {

// quirk: early-tick-wrap. Only the low word counts: back to 0 after 71.6 minutes.
constexpr uint32_t ticksOf(uint64_t microseconds) {
  return static_cast<uint32_t>(microseconds) / 1000;
}

}  // namespace vistrel::core
