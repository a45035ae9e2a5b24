// The table of streams: a caller's id, its work buffer, its look-up table.
// A leaf header: the demosaic functions, below this room, read the two tables.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr unsigned kStreams = 128;
constexpr uint32_t kFreeSlot = 0xFFFFFFFF;
constexpr unsigned kUserTableEntries = 4096;

// Slot kStreams stands for every unknown id. Its work buffer is always null;
// its user table is shared by all unknown ids and outlives load and unload.
extern uint16_t* g_pwBGRBuff[kStreams + 1];
extern size_t g_anBGRBytes[kStreams + 1];  // the size of each
extern uint32_t g_anIDs[kStreams];
extern uint16_t* g_pwUserLUT[kStreams + 1];

// The first slot that holds nID, or kStreams.
unsigned ID2Index(uint32_t nID);

// The slot of nID, taking a free one if there is none yet; -1 when all are taken.
int NewIndex(uint32_t nID);

int32_t InitIPPStaticLibraries();

}  // namespace vistrel::core
