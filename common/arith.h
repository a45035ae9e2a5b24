// Integer arithmetic with defined results: shift counts count modulo 32, differences and products
// wrap, and a double out of range becomes the lowest 32-bit integer.
#pragma once

#include <cstdint>

namespace vistrel::core {

constexpr uint32_t shl(uint32_t v, uint32_t count) { return v << (count & 31); }
constexpr uint32_t shr(uint32_t v, uint32_t count) { return v >> (count & 31); }
constexpr int32_t sar(int32_t v, uint32_t count) { return v >> (count & 31); }

constexpr int32_t wrapSub(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}
constexpr int32_t wrapMul(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b));
}

// Rounds toward zero. Values outside the 32-bit range, NaN included, give the lowest integer.
constexpr int32_t truncToInt(double v) {
  return v > -2147483649.0 && v < 2147483648.0 ? static_cast<int32_t>(v) : INT32_MIN;
}

}  // namespace vistrel::core
