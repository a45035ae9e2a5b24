// Compiles VISTREL_BODY, the path of an .inl file, once for each instruction-set level, inside
// that level's target region and its own namespace (vistrel::core::base, vistrel::core::ssse3, ...), with
// VISTREL_LEVEL set to the level's number. So no file needs an instruction-set flag of its own.
// Headers of the standard library belong in front of this one. No include guard.

#define VISTREL_LEVEL 0
namespace vistrel::core::base {
#include VISTREL_BODY
}
#undef VISTREL_LEVEL

#if defined(__x86_64__) || defined(__i386__)

#define VISTREL_LEVEL 1
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("ssse3"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("ssse3")
#endif
namespace vistrel::core::ssse3 {
#include VISTREL_BODY
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef VISTREL_LEVEL

#define VISTREL_LEVEL 2
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("sse4.1"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("sse4.1")
#endif
namespace vistrel::core::sse41 {
#include VISTREL_BODY
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef VISTREL_LEVEL

#define VISTREL_LEVEL 3
#if defined(__clang__)
#pragma clang attribute push(__attribute__((target("avx2"))), apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2")
#endif
namespace vistrel::core::avx2 {
#include VISTREL_BODY
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef VISTREL_LEVEL

#define VISTREL_LEVEL 4
#if defined(__clang__)
#pragma clang attribute push( \
    __attribute__((target("avx2,avx512f,avx512bw,avx512vl,avx512dq,avx512vbmi"))), \
    apply_to = function)
#else
#pragma GCC push_options
#pragma GCC target("avx2,avx512f,avx512bw,avx512vl,avx512dq,avx512vbmi,prefer-vector-width=512")
#endif
namespace vistrel::core::avx512 {
#include VISTREL_BODY
}
#if defined(__clang__)
#pragma clang attribute pop
#else
#pragma GCC pop_options
#endif
#undef VISTREL_LEVEL

#endif
#undef VISTREL_BODY
