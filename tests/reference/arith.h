// Integer rules: shift counts count modulo 32; a double is truncated toward zero.
#pragma once

#include <cstdint>

namespace reference {

inline uint32_t shl(uint32_t v, uint32_t count) { return v << (count % 32); }
inline uint32_t shr(uint32_t v, uint32_t count) { return v >> (count % 32); }
inline int32_t sar(int32_t v, uint32_t count) { return v >> (count % 32); }

// A double that does not fit 32 bits becomes 0x80000000, as in the processor's conversion.
inline int32_t trunc32(double v) {
  const bool fits = v > -2147483649.0 && v < 2147483648.0;
  return fits ? static_cast<int32_t>(v) : INT32_MIN;
}

inline int clamp(int v, int low, int high) { return v < low ? low : v > high ? high : v; }

}  // namespace reference
