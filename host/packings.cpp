#include "host/packings.h"

#include <cstring>

#include "host/status.h"

namespace vistrel::host {
namespace {

using Byte = unsigned char;

// A packing: groups of kPixels samples in kBytes bytes, and sample k of a group. The last group of
// a row may have only n samples.

struct Bytes {
  static constexpr unsigned kPixels = 1, kBytes = 1;
  static uint8_t sample(const Byte* group, unsigned, unsigned) { return group[0]; }
};

template <unsigned kLowByte>  // its place
struct TwoBytes {
  static constexpr unsigned kPixels = 1, kBytes = 2;
  static uint16_t sample(const Byte* group, unsigned, unsigned) {
    return static_cast<uint16_t>(group[kLowByte] | group[1 - kLowByte] << 8);
  }
};

// Field k of a stream of fields, lowest bits first; only reads the bytes that the field is in.
template <unsigned kBits>
unsigned field(const Byte* stream, unsigned k) {
  const unsigned shift = k * kBits % 8;
  stream += k * kBits / 8;
  unsigned bits = stream[0];
  if (shift + kBits > 8) bits |= unsigned{stream[1]} << 8;
  if (shift + kBits > 16) bits |= unsigned{stream[2]} << 16;
  return bits >> shift & ((1u << kBits) - 1);
}

template <unsigned kBits>
struct Pfnc {
  static constexpr unsigned kPixels = 8, kBytes = kBits;
  static uint16_t sample(const Byte* group, unsigned k, unsigned) {
    return static_cast<uint16_t>(field<kBits>(group, k));
  }
};

template <unsigned kBits>
struct Gige {
  static constexpr unsigned kPixels = 2, kBytes = 3, kLow = kBits - 8;
  static uint16_t sample(const Byte* group, unsigned k, unsigned) {
    return static_cast<uint16_t>(group[2 * k] << kLow | (group[1] >> 4 * k & ((1 << kLow) - 1)));
  }
};

template <unsigned kBits>
struct Mipi {
  static constexpr unsigned kPixels = kBits == 12 ? 2 : 4, kBytes = kPixels * kBits / 8;
  static uint16_t sample(const Byte* group, unsigned k, unsigned n) {
    constexpr unsigned kLow = kBits - 8;
    return static_cast<uint16_t>(group[k] << kLow | field<kLow>(group + n, k));
  }
};

template <class Packing>
void unpackRow(const Byte* from, uint64_t samples, Byte* to) {
  const auto put = [&](unsigned k, unsigned n) {
    const auto sample = Packing::sample(from, k, n);
    std::memcpy(to + k * sizeof sample, &sample, sizeof sample);
  };
  constexpr size_t kTo = Packing::kPixels * sizeof(Packing::sample(from, 0, 0));
  for (; samples >= Packing::kPixels; samples -= Packing::kPixels) {
    for (unsigned k = 0; k < Packing::kPixels; ++k) put(k, Packing::kPixels);
    from += Packing::kBytes;
    to += kTo;
  }
  const auto rest = static_cast<unsigned>(samples);
  for (unsigned k = 0; k < rest; ++k) put(k, rest);
}

constexpr Packing kPackings[] = {
    {VISTREL_PACKING_BYTES, "BYTES", 8, 8, 8, unpackRow<Bytes>},
    {VISTREL_PACKING_LITTLE, "LITTLE", 8, 16, 16, unpackRow<TwoBytes<0>>},
    {VISTREL_PACKING_BIG, "BIG", 8, 16, 16, unpackRow<TwoBytes<1>>},
    {VISTREL_PACKING_PFNC, "PFNC", 10, 10, 10, unpackRow<Pfnc<10>>},
    {VISTREL_PACKING_PFNC, "PFNC", 12, 12, 12, unpackRow<Pfnc<12>>},
    {VISTREL_PACKING_PFNC, "PFNC", 14, 14, 14, unpackRow<Pfnc<14>>},
    {VISTREL_PACKING_GIGE, "GIGE", 10, 10, 12, unpackRow<Gige<10>>},
    {VISTREL_PACKING_GIGE, "GIGE", 12, 12, 12, unpackRow<Gige<12>>},
    {VISTREL_PACKING_MIPI, "MIPI", 10, 10, 10, unpackRow<Mipi<10>>},
    {VISTREL_PACKING_MIPI, "MIPI", 12, 12, 12, unpackRow<Mipi<12>>},
    {VISTREL_PACKING_MIPI, "MIPI", 14, 14, 14, unpackRow<Mipi<14>>},
};

}  // namespace

const Packing& findPacking(uint32_t code, uint32_t bits) {
  std::string packings, allowed, name;
  for (const Packing& row : kPackings) {
    if (row.code == code && row.minBits <= bits && bits <= row.maxBits) return row;
    if (row.code == code) {
      name = row.name;
      allowed += fmt::format("{}{}", allowed.empty() ? "" : ", ", row.minBits) +
                 (row.maxBits > row.minBits ? fmt::format(" to {}", row.maxBits) : "");
    }
    if (packings.find(row.name) == packings.npos)
      packings += fmt::format("{}{} ({})", packings.empty() ? "" : ", ", row.name, row.code);
  }
  if (allowed.empty())
    reject(VISTREL_BAD_PACKING, "packed.packing", code, "{} are allowed", packings);
  reject(VISTREL_BAD_BITS, "packed.bits", bits, "packing {} allows {}", name, allowed);
}

}  // namespace vistrel::host
