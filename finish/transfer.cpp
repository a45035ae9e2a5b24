#include "finish/transfer.h"

#include <bit>

#include "finish/fixed_point.h"

namespace vistrel::core {
namespace {

constexpr uint64_t kWhite = 65535;

// n / d, rounded, halves up.
uint16_t nearest(Uint128 n, Uint128 d) { return static_cast<uint16_t>((2 * n + d) / (2 * d)); }

// Points as functions of their index, 0 to `last`.
struct LinearPoint {
  uint64_t last;
  uint16_t operator()(uint64_t i) const { return nearest(kWhite * i, last); }
};

// (i / last)^(p / q)
struct Power {
  Fixed log2OfLast;
  uint32_t p, q;
  Power(uint64_t last, uint32_t numerator, uint32_t denominator)
      : log2OfLast(fixedLog2(last)), p(numerator), q(denominator) {}
  Fixed operator()(uint64_t i) const { return fixedExp2Minus((log2OfLast - fixedLog2(i)) * p / q); }
};

struct SrgbPoint {
  uint64_t last;
  Power power{last, 10, 24};
  uint16_t operator()(uint64_t i) const {
    if (i * 10'000'000 <= last * 31308) return nearest(kWhite * 1292 * i, last * 100);
    return nearest(kWhite * (1055 * power(i) - 55 * kFixedOne), 1000 * kFixedOne);
  }
};

struct GammaPoint {
  Power power;
  GammaPoint(uint64_t last, uint32_t gamma) : power(last, 1000, gamma) {}
  uint16_t operator()(uint64_t i) const {
    constexpr Fixed kError = Fixed{1} << 24;
    return i ? nearest(kWhite * power(i) + kError, kFixedOne) : uint16_t{0};
  }
};

int leadingZerosOf(Uint128 x) {
  const auto high = static_cast<uint64_t>(x >> 64);
  return high ? std::countl_zero(high) : 64 + std::countl_zero(static_cast<uint64_t>(x));
}

// asinh(a / b) / ln 2 = log2(a + sqrt(a^2 + b^2)) - log2(b), scaled up until the root has 62 bits.
Fixed asinhOf(uint64_t a, uint64_t b) {
  const Uint128 sum = Uint128{a} * a + Uint128{b} * b;
  const int shift = (leadingZerosOf(sum) - 4) / 2;
  const uint64_t root = rootOf(sum << 2 * shift);
  return fixedLog2((a << shift) + root) - fixedLog2(b << shift);
}

struct AsinhPoint {
  uint64_t last, parameter;
  Fixed asinhOfOne = asinhOf(parameter, 1000);
  uint16_t operator()(uint64_t i) const {
    return nearest(kWhite * asinhOf(parameter * i, 1000 * last), asinhOfOne);
  }
};

template <class Point>
void fill(std::span<uint16_t> points, const Point& point) {
  for (size_t i = 0; i < points.size(); ++i) points[i] = point(i);
}

}  // namespace

void fillTransfer(const Transfer& transfer, std::span<uint16_t> points) {
  const uint64_t last = points.size() - 1;
  switch (transfer.curve) {
    case TransferCurve::linear: return fill(points, LinearPoint{last});
    case TransferCurve::srgb: return fill(points, SrgbPoint{last});
    case TransferCurve::gamma: return fill(points, GammaPoint(last, transfer.parameter));
    case TransferCurve::asinh: return fill(points, AsinhPoint{last, transfer.parameter});
  }
}

}  // namespace vistrel::core
