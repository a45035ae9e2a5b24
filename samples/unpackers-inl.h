// Turns packed bytes into 16-bit lanes. A permutation moves the bytes of each sample to its lane; a
// multiplication by powers of two shifts each lane by its own count.
#if defined(VISTREL_UNPACKERS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_UNPACKERS_INL_H
#undef VISTREL_UNPACKERS_INL_H
#else
#define VISTREL_UNPACKERS_INL_H
#endif

#include "common/simd/lanes-inl.h"
#include "common/simd/registers-inl.h"
#include "samples/packings-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

constexpr uint8_t kZero = 0x80;  // in an order, stands for a byte of 0

// The source bytes of a vector: eight samples for each 16 bytes, `step` bytes apart. So every 16
// bytes begin with those of their own samples.
template <size_t step>
VISTREL_INLINE auto loadSource(const uint8_t* from) {
#if VISTREL_AVX512
  return _mm512_maskz_inserti64x4(0xFF, _mm512_castsi256_si512(loadGroups(from, step)),
                                  loadGroups(from + 2 * step, step), 1);
#elif VISTREL_GROUPS
  return loadGroups(from, step);
#else
  return load(from);
#endif
}
using Source = decltype(loadSource<10>(nullptr));

// The number of bytes that this reads.
template <size_t step>
constexpr size_t kSourceBytes = (kVectorBytes / 16 - 1) * step + 16;

// The bytes that become the lower and the upper half of a lane.
struct Halves {
  unsigned lower, upper;
};

struct ByteOrder {
  alignas(16) uint8_t byte[16] = {};

  // halvesOf(k): the halves of sample k of eight.
  template <class HalvesOf>
  constexpr explicit ByteOrder(HalvesOf halvesOf) {
    for (unsigned k = 0; k < 8; ++k) {
      const Halves halves = halvesOf(k);
      byte[2 * k] = static_cast<uint8_t>(halves.lower);
      byte[2 * k + 1] = static_cast<uint8_t>(halves.upper);
    }
  }
};

VISTREL_INLINE Vec<uint16_t> permuteSource(Source v, const ByteOrder& order) {
#if VISTREL_AVX512
  const auto bytes = _mm_load_si128(reinterpret_cast<const __m128i*>(order.byte));
  return as<Vec<uint16_t>>(_mm512_shuffle_epi8(v, _mm512_maskz_broadcast_i32x4(0xFFFF, bytes)));
#elif VISTREL_GROUPS
  return as<Vec<uint16_t>>(permute(v, order.byte));
#else
  return as<Vec<uint16_t>>(vqtbl1q_u8(as<uint8x16_t>(v), vld1q_u8(order.byte)));
#endif
}

struct Factors {
  alignas(64) uint16_t factor[kLanes<uint16_t>] = {};

  // shiftOf(k): the count by which the lane of sample k of eight shifts to the left.
  template <class ShiftOf>
  constexpr explicit Factors(ShiftOf shiftOf) {
    for (unsigned i = 0; i < kLanes<uint16_t>; ++i)
      factor[i] = static_cast<uint16_t>(1u << shiftOf(i % 8));
  }
  VISTREL_INLINE friend Vec<uint16_t> operator*(Vec<uint16_t> v, const Factors& f) {
    return v * madeHere(load(f.factor));
  }
};

// samples(source): a vector of samples from the source bytes of a packing.
template <class Format>
struct Unpacker;

// A field of at most twelve bits that begins at an even bit spans at most two bytes.
template <unsigned bits>
struct Unpacker<Pfnc<bits>> {
  using Format = Pfnc<bits>;
  static constexpr ByteOrder kFields{[](unsigned k) {
    return Halves{Format::byteOf(k), Format::byteOf(k) + 1};
  }};
  static constexpr Factors kToTop{[](unsigned k) { return 16 - bits - Format::shiftOf(k); }};

  VISTREL_INLINE static Vec<uint16_t> samples(Source v) {
    return permuteSource(v, kFields) * kToTop >> (16 - bits);
  }
};

// A field of fourteen bits may span three bytes. The bits of the first byte come from another lane.
template <>
struct Unpacker<Pfnc<14>> {
  using Format = Pfnc<14>;
  static constexpr ByteOrder kFirst{[](unsigned k) { return Halves{Format::byteOf(k), kZero}; }};
  static constexpr ByteOrder kOthers{[](unsigned k) {
    const bool third = Format::shiftOf(k) > 2;
    const unsigned second = Format::byteOf(k) + 1;
    return Halves{second, third ? second + 1 : unsigned{kZero}};
  }};
  static constexpr Factors kShift{[](unsigned k) { return 8 - Format::shiftOf(k); }};

  VISTREL_INLINE static Vec<uint16_t> samples(Source v) {
    const auto first = permuteSource(v, kFirst) * kShift >> 8;
    return first | (permuteSource(v, kOthers) * kShift & 0x3FFF);
  }
};

template <class Places>
struct Unpacker<HighAndLow<Places>> {
  using Format = HighAndLow<Places>;
  static constexpr unsigned kGroup = Format::kGroup, kLow = Format::kLow;
  static constexpr unsigned groupOf(unsigned k) {
    return k / kGroup * kGroup * Format::kStored / 8;
  }
  static constexpr ByteOrder kHigh{[](unsigned k) {
    return Halves{kZero, groupOf(k) + Format::highOf(k % kGroup)};
  }};
  static constexpr ByteOrder kLows{[](unsigned k) {
    const bool second = Format::shiftOf(k % kGroup) + kLow > 8;
    const unsigned first = groupOf(k) + Format::lowOf(k % kGroup, kGroup);
    return Halves{first, second ? first + 1 : unsigned{kZero}};
  }};
  static constexpr Factors kToTop{
      [](unsigned k) { return 16 - kLow - Format::shiftOf(k % kGroup); }};

  VISTREL_INLINE static Vec<uint16_t> samples(Source v) {
    return permuteSource(v, kHigh) >> (8 - kLow) | permuteSource(v, kLows) * kToTop >> (16 - kLow);
  }
};

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
