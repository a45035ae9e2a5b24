// The only difference between the 8-bit and the 16-bit version of an algorithm.
#pragma once

#include <cstdint>
#include <type_traits>

namespace vistrel::core {

// quirk: ten-bit-limit. Computed 16-bit samples are clamped to ten bits, whatever the depth of the
// source; sensed samples pass unchanged.
template <class T>
constexpr int kLimit = sizeof(T) == 1 ? 255 : 1023;

// A signed type of twice the sample's length, for sums and differences.
template <class T>
using Widened = std::conditional_t<sizeof(T) == 1, int16_t, int32_t>;

}  // namespace vistrel::core
