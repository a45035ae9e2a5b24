// Single facts from CPUID: from leaf 1 unless another leaf is named.
#include <initializer_list>

#include "cpu/cpuid.h"
#include "vistrel/processor.h"

using vistrel::core::CpuidRegisters;
using vistrel::core::g_processor;

namespace {

constexpr uint32_t kHighestExtendedLeaf = 0x80000000;
constexpr uint32_t kExtendedFeatures = 0x80000001;
constexpr uint32_t kSseAndAvxState = 6;

CpuidRegisters leaf(uint32_t number) { return g_processor->cpuid(number, 0); }

constexpr int32_t bits(uint32_t value, unsigned from, unsigned count) {
  return static_cast<int32_t>((value >> from) & ((1u << count) - 1));
}
constexpr int32_t bit(uint32_t value, unsigned number) { return bits(value, number, 1); }

}  // namespace

int32_t ipp_has_cpuid() { return g_processor->hasCpuid(); }
uint32_t ipp_max_cpuid_input() { return leaf(0).eax; }
int32_t ipp_has_rdtsc() { return bit(leaf(1).edx, 4); }
int32_t ipp_is_mmx_extension() { return bit(leaf(1).edx, 23); }
int32_t ipp_is_ssx_extension() { return bit(leaf(1).edx, 25); }
int32_t ipp_is_wni_extension() { return bit(leaf(1).edx, 26); }
int32_t ipp_is_pni_extension() { return bit(leaf(1).ecx, 0); }
int32_t ipp_is_mni_extension() { return bit(leaf(1).ecx, 9); }
int32_t ipp_is_sse41_extension() { return bit(leaf(1).ecx, 19); }
int32_t ipp_is_sse42_extension() { return bit(leaf(1).ecx, 20); }
int32_t ipp_is_movbe() { return bit(leaf(1).ecx, 22); }
uint64_t ipp_get_pentium_counter() { return g_processor->timeStamp(); }

int32_t ipp_is_htt_extension() {
  const CpuidRegisters r = leaf(1);
  return bit(r.edx, 28) && bits(r.ebx, 16, 8) > 1;
}

uint32_t ipp_is_em64t_extension() {
  const uint32_t highest = leaf(kHighestExtendedLeaf).eax;
  // quirk: highest-leaf-as-flag. If it is too low, its number is returned and reads as true.
  if (highest < kExtendedFeatures) return highest;
  return static_cast<uint32_t>(bit(leaf(kExtendedFeatures).edx, 29));
}

int32_t ipp_is_avx_extension() {
  const uint32_t ecx = leaf(1).ecx;
  if (!bit(ecx, 27) || !bit(ecx, 28)) return 0;
  return (g_processor->enabledState() & kSseAndAvxState) == kSseAndAvxState;
}

int32_t ipp_get_cores_on_die() {
  return ipp_max_cpuid_input() < 4 ? 1 : bits(leaf(4).eax, 26, 6) + 1;
}

int32_t ipp_is_GenuineIntel() {
  const CpuidRegisters r = leaf(0);
  return r.ebx == 0x756E6547 && r.edx == 0x49656E69 && r.ecx == 0x6C65746E;
}

void ipp_get_pentium_ident(IppPentiumIdent* pIdent) {
  const CpuidRegisters one = leaf(1), two = leaf(2);
  pIdent->family = bits(one.eax, 8, 4);
  pIdent->stepping = bits(one.eax, 0, 4);
  pIdent->model = bits(one.eax, 4, 4);
  pIdent->type = bits(one.eax, 11, 2);  // quirk: type-at-bit-11. The field begins at bit 12.
  pIdent->leaf1Edx = static_cast<int32_t>(one.edx);
  pIdent->leaf2Eax = static_cast<int32_t>(two.eax);
  pIdent->leaf2Edx = static_cast<int32_t>(two.edx);
  pIdent->mmx = ipp_is_mmx_extension();
  pIdent->sse = ipp_is_ssx_extension();
  pIdent->sse2 = ipp_is_wni_extension();
  pIdent->htt = ipp_is_htt_extension();
  pIdent->sse3 = ipp_is_pni_extension();
  pIdent->em64t = static_cast<int32_t>(ipp_is_em64t_extension());
  pIdent->ssse3 = ipp_is_mni_extension();
  pIdent->cores = ipp_get_cores_on_die();
  pIdent->sse41 = ipp_is_sse41_extension();
  pIdent->sse42 = ipp_is_sse42_extension();
  pIdent->extendedFamily = bits(one.eax, 20, 8);
  pIdent->extendedModel = bits(one.eax, 16, 4);
  pIdent->movbe = ipp_is_movbe();
  pIdent->avx = bit(one.ecx, 28);
  pIdent->osxsave = bit(one.ecx, 27);
}

void ownGetReg(uint32_t* pRegs, uint32_t nLeaf, uint32_t nSubLeaf) {
  const CpuidRegisters r = g_processor->cpuid(nLeaf, nSubLeaf);
  pRegs[0] = r.eax;
  pRegs[1] = r.ebx;
  pRegs[2] = r.ecx;
  pRegs[3] = r.edx;
}

int32_t ownGetCacheSize(const uint32_t* pTable) {
  const CpuidRegisters r = leaf(2);
  if ((r.eax & 0xFF) != 1) return -1;
  uint8_t descriptors[16];
  int count = 0;
  for (uint32_t value : {r.eax, r.ebx, r.ecx, r.edx}) {
    if (value == 0 || bit(value, 31)) continue;
    for (unsigned from = 0; from < 32; from += 8)
      descriptors[count++] = static_cast<uint8_t>(value >> from);
  }
  // quirk: first-byte-skipped. The first byte is the count in EAX, unless EAX itself was skipped.
  for (; pTable[0] != 0; pTable += 2)
    for (int i = 1; i < count; ++i)
      if (descriptors[i] == pTable[0]) return static_cast<int32_t>(pTable[1]);
  return -1;
}
