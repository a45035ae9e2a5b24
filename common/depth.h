// The only difference between the 8-bit and the 16-bit version of an algorithm.
#pragma once

#include <cstdint>

namespace vistrel::core {

// quirk: ten-bit-limit. Computed 16-bit samples are clamped to ten bits, whatever the depth of the
// source; sensed samples pass unchanged.
template <class T>
constexpr int kLimit = sizeof(T) == 1 ? 255 : 1023;

}  // namespace vistrel::core
