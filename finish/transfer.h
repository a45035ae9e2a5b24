// Transfer curves: from linear light to the values of a picture.
#pragma once

#include <cstdint>
#include <span>

namespace vistrel::core {

// f(0) = 0 and f(1) = 1.
enum class TransferCurve {
  linear,  // x
  srgb,    // the encoding of IEC 61966-2-1
  gamma,   // x^(1/G)
  asinh,   // asinh(N x) / asinh(N): Lupton et al., PASP 116 (2004)
};

struct Transfer {
  TransferCurve curve;
  uint32_t parameter;  // G (100 to 10000) or N (1 to 1000000000) in thousandths
};

// Sets points[i] to 65535 f(i / last), rounded, halves up; `last` is the last index, 1 to 65535.
//
// linear and the straight part of srgb are exact. The others round what falls short of its value,
// or exceeds it, by less than 2^-40, and asinh of N < 1 by less than 2^-40 / N. A value of gamma
// that falls short of a half by less counts as a half, so the halves themselves are exact.
void fillTransfer(const Transfer& transfer, std::span<uint16_t> points);

}  // namespace vistrel::core
