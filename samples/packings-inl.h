// Packings whose samples are not whole bytes, read sample by sample.
//
//   kBits, kStored   bits of a sample, and from one sample to the next
//   kGroup           samples per group; a group fills whole bytes
//   sample(g, k, n)  sample k of the n in the group at g; reads no byte beyond the group
#if defined(VISTREL_PACKINGS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_PACKINGS_INL_H
#undef VISTREL_PACKINGS_INL_H
#else
#define VISTREL_PACKINGS_INL_H
#endif

#include "common/simd/simd.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// The field of this many bits that begins at bit `shift` of the first byte.
template <unsigned bits>
constexpr unsigned field(const uint8_t* bytes, unsigned shift) {
  unsigned v = bytes[0];
  if (shift + bits > 8) v |= unsigned{bytes[1]} << 8;
  if (shift + bits > 16) v |= unsigned{bytes[2]} << 16;
  return v >> shift & ((1u << bits) - 1);
}

template <unsigned bits>
struct Pfnc {
  static constexpr unsigned kBits = bits, kStored = bits, kGroup = 8;
  static constexpr unsigned byteOf(unsigned k) { return k * bits / 8; }
  static constexpr unsigned shiftOf(unsigned k) { return k * bits % 8; }

  static uint16_t sample(const uint8_t* group, unsigned k, unsigned) {
    return static_cast<uint16_t>(field<bits>(group + byteOf(k), shiftOf(k)));
  }
};

// Packings with the upper eight bits of a sample in one byte and the lower bits elsewhere.
template <class Places>
struct HighAndLow : Places {
  static constexpr unsigned kLow = Places::kBits - 8;

  static uint16_t sample(const uint8_t* group, unsigned k, unsigned n) {
    const unsigned low = field<kLow>(group + Places::lowOf(k, n), Places::shiftOf(k));
    return static_cast<uint16_t>(group[Places::highOf(k)] << kLow | low);
  }
};

template <unsigned bits>
struct GigePlaces {
  static constexpr unsigned kBits = bits, kStored = 12, kGroup = 2;
  static constexpr unsigned highOf(unsigned k) { return 2 * k; }
  static constexpr unsigned lowOf(unsigned, unsigned) { return 1; }
  static constexpr unsigned shiftOf(unsigned k) { return 4 * k; }
};
template <unsigned bits>
using Gige = HighAndLow<GigePlaces<bits>>;

template <unsigned bits>
struct MipiPlaces {
  static constexpr unsigned kBits = bits, kStored = bits, kGroup = bits == 12 ? 2 : 4;
  static constexpr unsigned highOf(unsigned k) { return k; }
  static constexpr unsigned lowOf(unsigned k, unsigned n) { return n + k * (bits - 8) / 8; }
  static constexpr unsigned shiftOf(unsigned k) { return k * (bits - 8) % 8; }
};
template <unsigned bits>
using Mipi = HighAndLow<MipiPlaces<bits>>;

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
