// The frame of every *-inl.h file: vector code that is compiled once for each instruction-set
// level.
//
// Such a file has a guard of its own, includes what it uses and opens its target and namespace:
//
//   #if defined(VISTREL_TAPS_INL_H) == defined(VISTREL_TOGGLE)
//   #ifdef VISTREL_TAPS_INL_H
//   #undef VISTREL_TAPS_INL_H
//   #else
//   #define VISTREL_TAPS_INL_H
//   #endif
//
//   #include "common/simd/lanes-inl.h"
//
//   VISTREL_BEGIN_TARGET
//   namespace vistrel::core::VISTREL_NAMESPACE {
//   ...
//   }  // namespace vistrel::core::VISTREL_NAMESPACE
//   VISTREL_END_TARGET
//   #endif
//
// each_level.h includes such a file once for each level and toggles VISTREL_TOGGLE in between, so
// that the guard admits the file again. Included on its own, the file is compiled for the base
// level.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "common/arch.h"

#if VISTREL_X86
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#elif defined(__wasm_simd128__)
#include <wasm_simd128.h>
#endif

// The level being compiled, by its number: on x86 0 base, 1 to 4 SSSE3, SSE4.1, AVX2, AVX-512; on
// 64-bit ARM 0 base, 1 NEON. WebAssembly has no way to ask for instructions, so its base level has
// the vectors if all of a module has them.
#ifndef VISTREL_LEVEL
#define VISTREL_LEVEL 0
#endif

// The instructions that the level has.
#define VISTREL_SSSE3 (VISTREL_X86 && VISTREL_LEVEL >= 1)
#define VISTREL_SSE41 (VISTREL_X86 && VISTREL_LEVEL >= 2)
#define VISTREL_AVX2 (VISTREL_X86 && VISTREL_LEVEL >= 3)
#define VISTREL_AVX512 (VISTREL_X86 && VISTREL_LEVEL == 4)
#define VISTREL_NEON (!VISTREL_X86 && VISTREL_LEVEL == 1)
#ifdef __wasm_simd128__
#define VISTREL_WASM 1
#else
#define VISTREL_WASM 0
#endif

// What several of them have: permutations; x86's operations on groups (registers-inl.h).
#define VISTREL_PERMUTES (VISTREL_SSSE3 || VISTREL_NEON || VISTREL_WASM)
#define VISTREL_GROUPS (VISTREL_SSSE3 || VISTREL_WASM)

#define VISTREL_PASTE(a, b) VISTREL_PASTE_EXPANDED(a, b)
#define VISTREL_PASTE_EXPANDED(a, b) a##b

#define VISTREL_NAMESPACE VISTREL_PASTE(VISTREL_NAMESPACE_, VISTREL_LEVEL)
#define VISTREL_NAMESPACE_0 base
#if VISTREL_X86
#define VISTREL_NAMESPACE_1 ssse3
#define VISTREL_NAMESPACE_2 sse41
#define VISTREL_NAMESPACE_3 avx2
#define VISTREL_NAMESPACE_4 avx512
#else
#define VISTREL_NAMESPACE_1 neon
#endif

// Functions between VISTREL_BEGIN_TARGET and VISTREL_END_TARGET may use the level's instructions,
// so no file needs compiler flags of its own.
#define VISTREL_BEGIN_TARGET VISTREL_PASTE(VISTREL_BEGIN_TARGET_, VISTREL_LEVEL)
#define VISTREL_END_TARGET VISTREL_PASTE(VISTREL_END_TARGET_, VISTREL_LEVEL)
#define VISTREL_BEGIN_TARGET_0
#define VISTREL_END_TARGET_0
#if VISTREL_X86
#define VISTREL_PRAGMA(text) _Pragma(#text)
#if defined(__clang__)
#define VISTREL_BEGIN_TARGET_OF(isa) \
  VISTREL_PRAGMA(clang attribute push(__attribute__((target(isa))), apply_to = function))
#define VISTREL_END_TARGET_1 VISTREL_PRAGMA(clang attribute pop)
#define VISTREL_BEGIN_TARGET_4 \
  VISTREL_BEGIN_TARGET_OF("avx2,avx512f,avx512bw,avx512vl,avx512dq,avx512vbmi")
#else
#define VISTREL_BEGIN_TARGET_OF(isa) \
  VISTREL_PRAGMA(GCC push_options) VISTREL_PRAGMA(GCC target(isa))
#define VISTREL_END_TARGET_1 VISTREL_PRAGMA(GCC pop_options)
#define VISTREL_BEGIN_TARGET_4 \
  VISTREL_BEGIN_TARGET_OF(     \
      "avx2,avx512f,avx512bw,avx512vl,avx512dq,avx512vbmi,prefer-vector-width=512")
#endif
#define VISTREL_BEGIN_TARGET_1 VISTREL_BEGIN_TARGET_OF("ssse3")
#define VISTREL_BEGIN_TARGET_2 VISTREL_BEGIN_TARGET_OF("sse4.1")
#define VISTREL_BEGIN_TARGET_3 VISTREL_BEGIN_TARGET_OF("avx2")
#define VISTREL_END_TARGET_2 VISTREL_END_TARGET_1
#define VISTREL_END_TARGET_3 VISTREL_END_TARGET_1
#define VISTREL_END_TARGET_4 VISTREL_END_TARGET_1
#else
#define VISTREL_BEGIN_TARGET_1
#define VISTREL_END_TARGET_1
#endif

// Debug builds keep the calls: for the debugger, and because sanitizers turn the inlined bodies
// into code that takes minutes to compile.
#ifdef VISTREL_KEEP_CALLS
#define VISTREL_INLINE inline
#else
#define VISTREL_INLINE [[gnu::always_inline]] inline
#endif
