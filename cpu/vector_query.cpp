#include "vistrel/platform.h"
#include "vistrel/processor.h"

namespace {

#if defined(__SSE2__)
constexpr bool kVectorOperations = true;
#else
constexpr bool kVectorOperations = false;
#endif

}  // namespace

int OS_IsSSE() { return kVectorOperations && (ippGetEnabledCpuFeatures() & IPP_CPU_SSE) != 0; }
