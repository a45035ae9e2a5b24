#include "tests/reference/curves.h"
#include "tests/reference/output.h"

namespace reference {

void Create10To8BitLUT(uint8_t* pTable, uint32_t nLutMode, const uint16_t* pUserLut,
                       int32_t nUserShift) {
  uint16_t samples16[1024] = {};
  if (nLutMode != 10) {
    GeneratePredefinedLut(static_cast<int>(nLutMode - 1), 10, 8, samples16);
  } else if (nUserShift == 0) {
    for (uint32_t i = 0; i < 1024; ++i) samples16[i] = pUserLut[i];
  } else {
    for (uint32_t i = 0; i < 1024; ++i) {
      const uint32_t index = shl(i, static_cast<uint32_t>(nUserShift));
      samples16[i] = pUserLut[index < 4096 ? index : 4095];
    }
  }
  for (uint32_t i = 0; i < 1024; ++i) pTable[i] = static_cast<uint8_t>(samples16[i] & 0xFF);
}

}  // namespace reference
