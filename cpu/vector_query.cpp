#include "vistrel/platform.h"
#include "vistrel/processor.h"

namespace {

#if defined(__SSE2__)
constexpr bool kPackedOperations = true;
#else
constexpr bool kPackedOperations = false;
#endif

}  // namespace

int OS_IsSSE() { return kPackedOperations && (ippGetEnabledCpuFeatures() & IPP_CPU_SSE) != 0; }
