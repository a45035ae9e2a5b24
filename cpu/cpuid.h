// The processor that the probes read.
#pragma once

#include <cstdint>

namespace vistrel::core {

struct CpuidRegisters {
  uint32_t eax, ebx, ecx, edx;
};

class Processor {
 public:
  virtual bool hasCpuid() const = 0;
  virtual CpuidRegisters cpuid(uint32_t leaf, uint32_t subLeaf) const = 0;
  virtual uint32_t enabledState() const = 0;  // extended control register 0
  virtual uint64_t timeStamp() const = 0;

 protected:
  ~Processor() = default;
};

// The processor in use. Tests replace it.
extern const Processor* g_processor;

}  // namespace vistrel::core
