// Integers of 128 bits: the compiler's, or two of 64 bits where it has none, as on machines of 32
// bits.
#pragma once

#include <compare>
#include <concepts>
#include <cstdint>

namespace vistrel::core {

class Uint128Halves {
 public:
  constexpr Uint128Halves(uint64_t value = 0) : low_(value) {}

  template <std::unsigned_integral T>
  constexpr explicit operator T() const {
    if constexpr (std::same_as<T, bool>)
      return high_ || low_;
    else
      return static_cast<T>(low_);
  }
  constexpr explicit operator double() const {
    return static_cast<double>(high_) * 0x1p64 + static_cast<double>(low_);
  }

  friend constexpr auto operator<=>(const Uint128Halves&, const Uint128Halves&) = default;

  friend constexpr Uint128Halves operator+(Uint128Halves a, Uint128Halves b) {
    const uint64_t low = a.low_ + b.low_;
    return {a.high_ + b.high_ + (low < a.low_), low};
  }
  friend constexpr Uint128Halves operator-(Uint128Halves a, Uint128Halves b) {
    return {a.high_ - b.high_ - (a.low_ < b.low_), a.low_ - b.low_};
  }
  constexpr Uint128Halves operator-() const { return Uint128Halves() - *this; }

  friend constexpr Uint128Halves operator<<(Uint128Halves v, unsigned n) {
    if (n == 0) return v;
    if (n >= 64) return {v.low_ << (n - 64), 0};
    return {v.high_ << n | v.low_ >> (64 - n), v.low_ << n};
  }
  friend constexpr Uint128Halves operator>>(Uint128Halves v, unsigned n) {
    if (n == 0) return v;
    if (n >= 64) return {0, v.high_ >> (n - 64)};
    return {v.high_ >> n, v.low_ >> n | v.high_ << (64 - n)};
  }

  friend constexpr Uint128Halves operator*(Uint128Halves a, Uint128Halves b) {
    Uint128Halves product = ofLows(a.low_, b.low_);
    product.high_ += a.high_ * b.low_ + a.low_ * b.high_;
    return product;
  }
  // Long division, bit by bit.
  friend constexpr Uint128Halves operator/(Uint128Halves a, Uint128Halves b) {
    Uint128Halves quotient, rest;
    for (unsigned bit = 128; bit-- > 0;) {
      const bool isCarried = rest.high_ >> 63;
      rest = (rest << 1) | ((a >> bit).low_ & 1);
      if (!isCarried && rest < b) continue;
      rest = rest - b;
      quotient = quotient + (Uint128Halves(1) << bit);
    }
    return quotient;
  }
  constexpr Uint128Halves& operator/=(Uint128Halves b) { return *this = *this / b; }

 private:
  constexpr Uint128Halves(uint64_t high, uint64_t low) : high_(high), low_(low) {}

  friend constexpr Uint128Halves operator|(Uint128Halves v, uint64_t bits) {
    return {v.high_, v.low_ | bits};
  }

  static constexpr Uint128Halves ofLows(uint64_t a, uint64_t b) {
    constexpr uint64_t kHalf = 0xFFFFFFFF;
    const uint64_t low = (a & kHalf) * (b & kHalf), first = (a >> 32) * (b & kHalf),
                   second = (a & kHalf) * (b >> 32);
    const uint64_t middle = (low >> 32) + (first & kHalf) + (second & kHalf);
    return {(a >> 32) * (b >> 32) + (first >> 32) + (second >> 32) + (middle >> 32),
            middle << 32 | (low & kHalf)};
  }

  uint64_t high_ = 0, low_;  // compared in this order
};

#ifdef __SIZEOF_INT128__
__extension__ typedef unsigned __int128 Uint128;
#else
using Uint128 = Uint128Halves;
#endif

}  // namespace vistrel::core
