// Sample reduction by table: 1024 bytes, indexed by the top ten bits of a sample.
#pragma once

#include <cstdint>

namespace vistrel::core {

constexpr unsigned kTableEntries = 1024;

// nLutMode: 0, 1, 2 keep eight consecutive bits of a sample; every other value is a table.
constexpr bool isWindow(uint32_t nLutMode) { return nLutMode <= 2; }

// Fills pTable by nLutMode: 3..7 a predefined curve, 10 the user table, read at
// every 2^nUserShift-th entry. Modes that name nothing give a table of zeros.
void Create10To8BitLUT(uint8_t* pTable, uint32_t nLutMode, const uint16_t* pUserLut,
                       int32_t nUserShift);

}  // namespace vistrel::core
