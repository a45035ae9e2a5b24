// Compiles VISTREL_BODY, the path of a *-inl.h file, once for each instruction-set level: into
// vistrel::core::base, vistrel::core::ssse3 and so on. The guards count the levels, so a source
// file can have only one body. With VISTREL_FEW_LEVELS, levels of x86 share bodies.
#ifdef VISTREL_EACH_LEVEL
#error "This source has compiled a body for each level already."
#endif
#define VISTREL_EACH_LEVEL
#include "common/simd/simd.h"

#include VISTREL_BODY

#if VISTREL_X86 && VISTREL_FEW_LEVELS

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 3
#define VISTREL_TOGGLE
#include VISTREL_BODY

namespace vistrel::core {
namespace ssse3 = base;
namespace sse41 = base;
namespace avx512 = avx2;
}  // namespace vistrel::core

#elif VISTREL_X86 || defined(__aarch64__)

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 1
#define VISTREL_TOGGLE
#include VISTREL_BODY

#endif
#if VISTREL_X86 && !VISTREL_FEW_LEVELS

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 2
#undef VISTREL_TOGGLE
#include VISTREL_BODY

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 3
#define VISTREL_TOGGLE
#include VISTREL_BODY

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 4
#undef VISTREL_TOGGLE
#include VISTREL_BODY

#endif

#undef VISTREL_LEVEL
#define VISTREL_LEVEL 0
