// What bodies compiled by each_level.inl stand on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#define VISTREL_X86 1
#else
#define VISTREL_X86 0
#endif

// Debug builds keep the calls: for the debugger, and because sanitizers make code of the inlined
// bodies that takes minutes to compile.
#ifdef VISTREL_KEEP_CALLS
#define VISTREL_INLINE inline
#else
#define VISTREL_INLINE [[gnu::always_inline]] inline
#endif
