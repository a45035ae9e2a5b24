#include "vistrel/processor.h"

#include <algorithm>

#include "cpu/cpuid.h"
#include "cpu/level.h"
#include "cpu/level_choice.h"

uint32_t ippJumpIndexForMergedLibs = 0;
uint32_t ippJumpIndexForMergedLibsLP = 0;

namespace vistrel::core {

uint64_t ownFeaturesMask = kUndetected;
uint64_t ownFeatures = 0;
int32_t ownFeaturesAreValid = 0;

namespace {

struct FeatureBit {
  uint32_t CpuidRegisters::*output;
  unsigned bit;
  uint64_t feature;
};
constexpr FeatureBit kFeatureBits[] = {
    {&CpuidRegisters::edx, 23, IPP_CPU_MMX},   {&CpuidRegisters::edx, 25, IPP_CPU_SSE},
    {&CpuidRegisters::edx, 26, IPP_CPU_SSE2},  {&CpuidRegisters::ecx, 0, IPP_CPU_SSE3},
    {&CpuidRegisters::ecx, 9, IPP_CPU_SSSE3},  {&CpuidRegisters::ecx, 22, IPP_CPU_MOVBE},
    {&CpuidRegisters::ecx, 19, IPP_CPU_SSE41}, {&CpuidRegisters::ecx, 20, IPP_CPU_SSE42},
    {&CpuidRegisters::ecx, 28, IPP_CPU_AVX},   {&CpuidRegisters::ecx, 25, IPP_CPU_AES},
    {&CpuidRegisters::ecx, 1, IPP_CPU_CLMUL},
};
constexpr uint32_t kFamilyFeatures = 0x20000001;

struct CodedLevel {
  uint32_t code;
  LevelChoice choice;
};
constexpr LevelChoice kSse3 = {0x0F, 1, 0, 0}, kSsse3 = {0x1F, 2, 0, 0}, kMovbe = {0x1F, 2, 1, 0},
                      kSse41 = {0x5F, 3, 0, 0}, kSse42 = {0xDF, 3, 0, 0}, kAes = {0xCDF, 3, 0, 0};
constexpr CodedLevel kCodedLevels[] = {
    {0, kSse3},   {32, kSse3},  {66, kSse3},  {33, kSsse3}, {34, kSsse3},
    {67, kSsse3}, {36, kMovbe}, {35, kSse41}, {68, kSse41}, {37, kSse42},
    {69, kSse42}, {38, kAes},   {71, kAes},
};
constexpr uint32_t kDetect = 0xFFFFFFFF;

// Reads the operating system's AVX state and the leaf of family 0xB only if leaf 1 calls for it.
uint64_t detectFeatures() {
  const CpuidRegisters one = g_processor->cpuid(1, 0);
  uint64_t mask = 0;
  for (const FeatureBit& f : kFeatureBits)
    if (one.*f.output >> f.bit & 1) mask |= f.feature;
  if (ipp_is_avx_extension()) mask |= IPP_CPU_AVX_OS;
  const bool familyB = (one.eax >> 8 & 0xF) == 0xB;
  if (familyB && g_processor->cpuid(kFamilyFeatures, 0).edx & 2) mask |= IPP_CPU_FAMILY_B;
  return mask;
}

bool isLevelWithoutVariant(uint32_t code) {
  return (code >= 1 && code <= 11) || code == 64 || code == 65 || code == 96;
}

void enable(uint64_t mask) {
  ownFeaturesMask = mask;
  g_topLevel = std::min(widestLevel(), enabledLevel(mask));
}

int32_t apply(const LevelChoice& choice) {
  enable(choice.enabled);
  ippJumpIndexForMergedLibs = choice.index;
  ippJumpIndexForMergedLibsLP = choice.lp;
  return choice.status;
}

}  // namespace

LevelChoice chooseLevel(uint64_t features, const BaseLevel& base) {
  if (features & IPP_CPU_SSE41) return {features & 0xCDF, 3, 0, 0};
  if (features & IPP_CPU_SSSE3) return {features & 0x1F, 2, (features & IPP_CPU_MOVBE) != 0, 0};
  if (features & base.required) return {features & base.enabled, 1, 0, 0};
  return {features & base.enabledBelow, 0, 0, kBelowBase};
}

}  // namespace vistrel::core

using namespace vistrel::core;

int32_t ippStaticInit() {
  uint64_t features = 0;
  int32_t status = ippGetCpuFeatures(&features, nullptr);
  status = apply(status == 0 ? chooseLevel(features) : LevelChoice{kUndetected, 0, 0, status});
  return ipp_has_cpuid() && ipp_is_GenuineIntel() ? status : kOtherVendor;
}

int32_t ippInit() { return ippStaticInit(); }

int32_t ippStaticInitCpu(uint32_t nCode) {
  if (nCode == kDetect) return ippInit();
  for (const CodedLevel& level : kCodedLevels)
    if (level.code == nCode) return apply(level.choice);
  return isLevelWithoutVariant(nCode) ? kBelowBase : kUnknownCode;
}

int32_t ippInitCpu(uint32_t nCode) { return ippStaticInitCpu(nCode); }

int32_t ippGetCpuFeatures(uint64_t* pMask, uint32_t* pRegs) {
  uint64_t features;
  if (!ownGetMaskFeatures(&features)) return kBelowBase;
  if (!pMask) return kNullPointer;
  const bool callersLeaf = *pMask == kGetInfo;
  *pMask = features;
  if (pRegs) callersLeaf ? ownGetReg(pRegs, pRegs[0], pRegs[2]) : ownGetReg(pRegs, 1, 0);
  return 0;
}

int32_t ippSetCpuFeaturesMask(uint64_t nMask) {
  ownSetFeatureMask(nMask);
  return 0;
}

uint64_t ippGetEnabledCpuFeatures() { return ownFeaturesMask; }

int32_t ownGetMaskFeatures(uint64_t* pMask) {
  if (!ownFeaturesAreValid) {
    if (!ipp_has_cpuid()) return 0;
    ownFeatures = detectFeatures();
    ownFeaturesAreValid = 1;
  }
  *pMask = ownFeatures;
  return ownFeaturesAreValid;
}

int32_t ownGetFeature(uint64_t nMask) { return (ownFeaturesMask & nMask) == nMask; }

int32_t ownSetFeatureMask(uint64_t nMask) {
  enable(nMask);
  return 1;
}
