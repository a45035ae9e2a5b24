#include "streams/registry.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "common/huge_pages.h"
#include "common/work_layout.h"
#include "vistrel/processor.h"
#include "vistrel/vistrel.h"

namespace vistrel::core {

uint16_t* g_pwBGRBuff[kStreams + 1];
size_t g_anBGRBytes[kStreams + 1];
uint32_t g_anIDs[kStreams];
uint16_t* g_pwUserLUT[kStreams + 1];

unsigned ID2Index(uint32_t nID) {
  return static_cast<unsigned>(std::find(std::begin(g_anIDs), std::end(g_anIDs), nID) - g_anIDs);
}

int NewIndex(uint32_t nID) {
  unsigned slot = ID2Index(nID);
  if (slot == kStreams) {
    slot = ID2Index(kFreeSlot);
    if (slot == kStreams) return -1;
    g_anIDs[slot] = nID;
  }
  return static_cast<int>(slot);
}

namespace {

void release(uint16_t*& block) {
  std::free(block);
  block = nullptr;
}

}  // namespace
}  // namespace vistrel::core

using namespace vistrel::core;

int32_t ImgLoadDriver() {
  std::fill_n(g_pwBGRBuff, kStreams, nullptr);
  std::fill_n(g_pwUserLUT, kStreams, nullptr);
  std::fill_n(g_anIDs, kStreams, kFreeSlot);
  return ippStaticInit();
}

void ImgUnloadDriver() {
  for (unsigned slot = 0; slot < kStreams; ++slot) {
    release(g_pwBGRBuff[slot]);
    release(g_pwUserLUT[slot]);
  }
}

uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight) {
  const int slot = NewIndex(nID);
  if (slot < 0) return 0;
  std::free(g_pwBGRBuff[slot]);
  g_anBGRBytes[slot] = workBufferBytes(nImgWidth, nImgHeight);
  g_pwBGRBuff[slot] = static_cast<uint16_t*>(std::malloc(g_anBGRBytes[slot]));
  adviseHugePages(g_pwBGRBuff[slot], g_anBGRBytes[slot]);
  return g_pwBGRBuff[slot] != nullptr;
}

uint32_t ImgLoadLookupTable(uint32_t nID, const uint16_t* pTable, uint32_t nEntries) {
  uint16_t*& table = g_pwUserLUT[ID2Index(nID)];
  if (!table) table = static_cast<uint16_t*>(std::calloc(kUserTableEntries, sizeof *table));
  if (!table) return 0;
  const uint32_t entries = std::min<uint32_t>(nEntries, kUserTableEntries);
  if (entries) std::memcpy(table, pTable, entries * sizeof *table);
  return 1;
}
