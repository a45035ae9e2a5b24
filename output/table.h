// Reduces samples through a table of 1024 bytes, indexed by the top ten bits of a sample.
#pragma once

#include <cstdint>

namespace vistrel::core {

constexpr unsigned kTableEntries = 1024;

// Values of nLutMode. Those of the curves, 3..7, lie in between: curve 2 comes first.
constexpr uint32_t kLastWindow = 2, kUserTable = 10;

// Whether nLutMode keeps eight consecutive bits of a sample; all other values select a table.
constexpr bool isWindow(uint32_t nLutMode) { return nLutMode <= kLastWindow; }

// Fills pTable with a curve or with the user table, of which it reads every 2^nUserShift-th entry.
// Unknown modes give a table of zeros.
void Create10To8BitLUT(uint8_t* pTable, uint32_t nLutMode, const uint16_t* pUserLut,
                       int32_t nUserShift);

}  // namespace vistrel::core
