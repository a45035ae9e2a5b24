// The table of streams.
#pragma once

#include <cstddef>
#include <cstdint>

namespace reference {

// Entry 128 stands for unknown ids: it never has a work buffer, and nothing frees its user table.
extern uint16_t* g_pwBGRBuff[129];
extern uint32_t g_anIDs[128];
extern uint16_t* g_pwUserLUT[129];

// The bytes of each work buffer. A test that puts a buffer of its own into g_pwBGRBuff sets them.
extern size_t g_anBGRBytes[129];

unsigned ID2Index(uint32_t nID);
int NewIndex(uint32_t nID);
int32_t InitIPPStaticLibraries();  // 0: there is one level here

int32_t ImgLoadDriver();
void ImgUnloadDriver();
uint32_t ImgInitialize(uint32_t nID, uint32_t nImgWidth, uint32_t nImgHeight);
uint32_t ImgLoadLookupTable(uint32_t nID, const uint16_t* pTable, uint32_t nEntries);

}  // namespace reference
