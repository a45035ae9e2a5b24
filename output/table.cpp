#include "output/table.h"

#include <algorithm>

#include "common/arith.h"
#include "vistrel/tone_curves.h"

namespace vistrel::core {

namespace {
constexpr uint32_t kLastUserEntry = 4095;
}  // namespace

void Create10To8BitLUT(uint8_t* pTable, uint32_t nLutMode, const uint16_t* pUserLut,
                       int32_t nUserShift) {
  uint16_t curve[kTableEntries] = {};
  if (nLutMode == kUserTable)
    for (uint32_t i = 0; i < kTableEntries; ++i)
      curve[i] = pUserLut[std::min(shl(i, static_cast<uint32_t>(nUserShift)), kLastUserEntry)];
  else
    GeneratePredefinedLut(static_cast<int>(nLutMode - 1), 10, 8, curve);
  for (uint32_t i = 0; i < kTableEntries; ++i) pTable[i] = static_cast<uint8_t>(curve[i]);
}

}  // namespace vistrel::core
