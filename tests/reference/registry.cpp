#include "tests/reference/registry.h"

#include <cstdlib>
#include <cstring>

namespace reference {

uint16_t* g_pwBGRBuff[129];
uint32_t g_anIDs[128];
uint16_t* g_pwUserLUT[129];
size_t g_anBGRBytes[129];

unsigned ID2Index(uint32_t nID) {
  unsigned nIndex = 0;
  while (nIndex < 128 && g_anIDs[nIndex] != nID) ++nIndex;
  return nIndex;
}

int NewIndex(uint32_t nID) {
  for (int i = 0; i < 128; ++i)
    if (g_anIDs[i] == nID) return i;
  for (int i = 0; i < 128; ++i) {
    if (g_anIDs[i] == 0xFFFFFFFF) {
      g_anIDs[i] = nID;
      return i;
    }
  }
  return -1;
}

int32_t InitIPPStaticLibraries() { return 0; }

int32_t ImgLoadDriver() {
  for (int i = 0; i < 128; ++i) {
    g_pwBGRBuff[i] = nullptr;
    g_pwUserLUT[i] = nullptr;
  }
  for (int i = 0; i < 128; ++i) g_anIDs[i] = 0xFFFFFFFF;
  return InitIPPStaticLibraries();
}

void ImgUnloadDriver() {
  for (int i = 0; i < 128; ++i) {
    std::free(g_pwBGRBuff[i]);
    g_pwBGRBuff[i] = nullptr;
    std::free(g_pwUserLUT[i]);
    g_pwUserLUT[i] = nullptr;
  }
}

uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight) {
  const int nIndex = NewIndex(nID);
  if (nIndex < 0) return 0;
  std::free(g_pwBGRBuff[nIndex]);
  const uint32_t samples = (3 * nImgWidth + 18) * (nImgHeight + 6);
  g_anBGRBytes[nIndex] = size_t{samples} * 2;
  g_pwBGRBuff[nIndex] = static_cast<uint16_t*>(std::malloc(g_anBGRBytes[nIndex]));
  return g_pwBGRBuff[nIndex] != nullptr ? 1 : 0;
}

uint32_t ImgLoadLookupTable(uint32_t nID, const uint16_t* pTable, uint32_t nEntries) {
  const unsigned nIndex = ID2Index(nID);
  if (g_pwUserLUT[nIndex] == nullptr)
    g_pwUserLUT[nIndex] = static_cast<uint16_t*>(std::calloc(4096, 2));
  if (g_pwUserLUT[nIndex] == nullptr) return 0;
  const size_t bytes = nEntries <= 4096 ? size_t{nEntries} * 2 : 8192;
  if (bytes != 0) std::memcpy(g_pwUserLUT[nIndex], pTable, bytes);
  return 1;
}

}  // namespace reference
