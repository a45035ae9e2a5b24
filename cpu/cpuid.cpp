#include "cpu/cpuid.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#include <x86intrin.h>
#endif

namespace vistrel::core {
namespace {

#if defined(__x86_64__) || defined(__i386__)

class ThisProcessor final : public Processor {
 public:
  bool hasCpuid() const override {
#if defined(__x86_64__)
    return true;
#else
    return __get_cpuid_max(0, nullptr) != 0;
#endif
  }

  CpuidRegisters cpuid(uint32_t leaf, uint32_t subLeaf) const override {
    CpuidRegisters r{};
    if (hasCpuid()) __cpuid_count(leaf, subLeaf, r.eax, r.ebx, r.ecx, r.edx);
    return r;
  }

  uint32_t enabledState() const override {
    uint32_t low, high;
    __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
  }

  uint64_t timeStamp() const override { return __rdtsc(); }
};

#else

class ThisProcessor final : public Processor {
 public:
  bool hasCpuid() const override { return false; }
  CpuidRegisters cpuid(uint32_t, uint32_t) const override { return {}; }
  uint32_t enabledState() const override { return 0; }
  uint64_t timeStamp() const override { return 0; }
};

#endif

constinit const ThisProcessor thisProcessor;

}  // namespace

constinit const Processor* g_processor = &thisProcessor;

}  // namespace vistrel::core
