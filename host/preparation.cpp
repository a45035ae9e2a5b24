#include "host/preparation.h"

#include "host/measure_gains.h"

namespace vistrel::host {

core::ColumnPair<uint32_t> blackOf(const vistrel_conversion& c, int64_t x, int64_t y) {
  const uint32_t* const row = c.black + (y & 1) * 2;
  return {row[x & 1], row[~x & 1]};
}

Gains gainsOf(const vistrel_frame& frame, const vistrel_conversion& c) {
  if (c.white_balance == VISTREL_BALANCE_GRAY_WORLD)
    return measureGains(frame, c, {0, 0, frame.width, frame.height});
  if (c.white_balance == VISTREL_BALANCE_GAINS) return {c.gains[0], c.gains[1], c.gains[2]};
  return kNoGains;
}

}  // namespace vistrel::host
