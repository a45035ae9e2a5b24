// Unpacks rows a vector of 16-bit samples at a time. Eight samples, which fill whole bytes, become
// 16 bytes of the vector.
#if defined(VISTREL_UNPACK_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_UNPACK_INL_H
#undef VISTREL_UNPACK_INL_H
#else
#define VISTREL_UNPACK_INL_H
#endif

#include <bit>

#include "samples/packings-inl.h"
#include "samples/unpack.h"
#include "samples/unpackers-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Unpacks group by group: the ends of rows, and everything at levels that can't permute bytes.
template <class Format>
void unpackGroups(const uint8_t* from, size_t samples, uint8_t* to) {
  const auto put = [&](unsigned k, unsigned n) {
    const uint16_t sample = Format::sample(from, k, n);
    std::memcpy(to + 2 * k, &sample, 2);
  };
  for (; samples >= Format::kGroup; samples -= Format::kGroup) {
    for (unsigned k = 0; k < Format::kGroup; ++k) put(k, Format::kGroup);
    from += Format::kGroup * Format::kStored / 8;
    to += 2 * Format::kGroup;
  }
  const auto rest = static_cast<unsigned>(samples);
  for (unsigned k = 0; k < rest; ++k) put(k, rest);
}

#if VISTREL_PERMUTES

// Unpacks this many vectors of samples.
template <class Format>
VISTREL_INLINE void unpackVectors(const uint8_t* from, size_t vectors, uint8_t* to) {
  constexpr size_t step = kLanes<uint16_t> / 8 * Format::kStored;
  for (size_t i = 0; i < vectors; ++i) {
    const auto source = loadSource<Format::kStored>(from + i * step);
    const Vec<uint16_t> v = Unpacker<Format>::samples(source);
    std::memcpy(to + i * kVectorBytes, &v, sizeof v);
  }
}

// Unpacks by eights, through a buffer, near the row's end, where a load would read too far.
template <class Format>
void unpackLast(const uint8_t* from, size_t eights, uint8_t* to) {
  constexpr size_t stored = Format::kStored;
  uint8_t packed[kSourceBytes<stored>] = {};
  static_assert((sizeof packed - 1) / stored <= kVectorBytes / 16, "They are one vector at most.");
  std::memcpy(packed, from, eights * stored);
  const Vec<uint16_t> v = Unpacker<Format>::samples(loadSource<stored>(packed));
  std::memcpy(to, &v, eights * 16);
}

template <class Format>
void unpack(const uint8_t* from, size_t samples, void* to) {
  constexpr size_t stored = Format::kStored, read = kSourceBytes<stored>;
  constexpr size_t eightsAVector = kVectorBytes / 16;
  auto* d = static_cast<uint8_t*>(to);
  const size_t eights = samples / 8, bytes = eights * stored;
  const size_t vectors = bytes < read ? 0 : (bytes - read) / (eightsAVector * stored) + 1;
  unpackVectors<Format>(from, vectors, d);
  const size_t done = vectors * eightsAVector;
  if (done < eights) unpackLast<Format>(from + done * stored, eights - done, d + done * 16);
  unpackGroups<Format>(from + bytes, samples % 8, d + eights * 16);
}

#else

template <class Format>
void unpack(const uint8_t* from, size_t samples, void* to) {
  unpackGroups<Format>(from, samples, static_cast<uint8_t*>(to));
}

#endif

inline void copyBytes(const uint8_t* from, size_t samples, void* to) {
  std::memcpy(to, from, samples);
}

// Samples of two bytes, in this machine's byte order or the other one.
inline void copyPairs(const uint8_t* from, size_t samples, void* to) {
  std::memcpy(to, from, 2 * samples);
}
inline void swapPairs(const uint8_t* from, size_t samples, void* to) {
  constexpr size_t lanes = kLanes<uint16_t>;
  auto* d = static_cast<uint8_t*>(to);
  size_t i = 0;
  for (; i + lanes <= samples; i += lanes) {
    Vec<uint16_t> v;
    std::memcpy(&v, from + 2 * i, sizeof v);
    v = v << 8 | v >> 8;
    std::memcpy(d + 2 * i, &v, sizeof v);
  }
  for (; i < samples; ++i) {
    d[2 * i] = from[2 * i + 1];
    d[2 * i + 1] = from[2 * i];
  }
}

constexpr bool kIsLittle = std::endian::native == std::endian::little;
constexpr UnpackRow kUnpackRows[kPackings] = {copyBytes,
                                              kIsLittle ? copyPairs : swapPairs,
                                              kIsLittle ? swapPairs : copyPairs,
                                              unpack<Pfnc<10>>,
                                              unpack<Pfnc<12>>,
                                              unpack<Pfnc<14>>,
                                              unpack<Gige<10>>,
                                              unpack<Gige<12>>,
                                              unpack<Mipi<10>>,
                                              unpack<Mipi<12>>,
                                              unpack<Mipi<14>>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
