// The table of streams: the id, the work buffer and the look-up table of each.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr unsigned kStreams = 128;
constexpr uint32_t kFreeSlot = 0xFFFFFFFF;
constexpr unsigned kUserTableEntries = 4096;

// Slot kStreams stands for all unknown ids. Its work buffer is always null. Unknown ids share its
// user table, which loading and unloading the driver leave unchanged.
extern uint16_t* g_pwBGRBuff[kStreams + 1];
extern size_t g_anBGRBytes[kStreams + 1];  // sizes of the work buffers
extern uint32_t g_anIDs[kStreams];
extern uint16_t* g_pwUserLUT[kStreams + 1];

// Returns the first slot that holds nID, or kStreams.
unsigned ID2Index(uint32_t nID);

// Returns the slot of nID; a new id gets a free slot. Returns -1 if all slots are in use.
int NewIndex(uint32_t nID);

}  // namespace vistrel::core
