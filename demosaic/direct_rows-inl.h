// Turns vectors of half rows into bytes of the caller's format.
#if defined(VISTREL_DIRECT_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_DIRECT_ROWS_INL_H
#undef VISTREL_DIRECT_ROWS_INL_H
#else
#define VISTREL_DIRECT_ROWS_INL_H
#endif

#include "common/rows/pixel_kernels-inl.h"
#include "common/simd/pairs-inl.h"
#include "demosaic/direct_rows.h"
#include "output/bt709-inl.h"
#include "output/luma-inl.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

#if VISTREL_PERMUTES

using Bytes = Vec<uint8_t>;

// Blue or red first, green, red or blue last; by column parity.
struct ByteHalves {
  Bytes first[2], green[2], last[2];
};

#if VISTREL_AVX512

VISTREL_INLINE void storeBytes(uint8_t* d, Bytes v) { _mm512_storeu_si512(d, as<__m512i>(v)); }

// The low 16-byte lanes of all vectors in order, then the next ones.
template <int n>
VISTREL_INLINE void storeLanes(uint8_t* d, const Bytes (&v)[n]) {
  static_assert(n == 2);
  const __m512i a = as<__m512i>(v[0]), b = as<__m512i>(v[1]);
  storeBytes(
      d, as<Bytes>(_mm512_permutex2var_epi64(a, _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11), b)));
  storeBytes(d + 64, as<Bytes>(_mm512_permutex2var_epi64(
                         a, _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15), b)));
}

// Pairs of samples so that unpacking three times leaves pixels in order.
VISTREL_INLINE Bytes inUnpackingOrder(Bytes v) {
  alignas(64) static constexpr uint16_t order[] = {0,  4,  8,  12, 16, 20, 24, 28, 1,  5,  9,
                                                   13, 17, 21, 25, 29, 2,  6,  10, 14, 18, 22,
                                                   26, 30, 3,  7,  11, 15, 19, 23, 27, 31};
  return as<Bytes>(
      _mm512_maskz_permutexvar_epi16(~__mmask32{0}, _mm512_load_si512(order), as<__m512i>(v)));
}
#define VISTREL_UNPACK(half, bits, a, b) \
  as<Bytes>(_mm512_maskz_unpack##half##_epi##bits(kAll##bits, as<__m512i>(a), as<__m512i>(b)))
// Masks of all lanes, because the unmasked forms make g++ 12 warn of its own header.
constexpr __mmask64 kAll8 = ~__mmask64{0};
constexpr __mmask32 kAll16 = ~__mmask32{0};
constexpr __mmask16 kAll32 = 0xFFFF;

// Vectors of pixels, each in order.
VISTREL_INLINE void storeInOrder(uint8_t* d, const Bytes (&v)[8]) {
  for (int i = 0; i < 8; ++i) storeBytes(d + 64 * i, v[i]);
}

#elif VISTREL_GROUPS

VISTREL_INLINE Bytes inUnpackingOrder(Bytes v) { return v; }
#define VISTREL_UNPACK(half, bits, a, b) \
  as<Bytes>(VISTREL_OP(unpack##half##_epi##bits)(as<Register>(a), as<Register>(b)))

// The low 16-byte lanes of all vectors in order, then the upper ones.
template <int n>
VISTREL_INLINE void storeLanes(uint8_t* d, const Bytes (&v)[n]) {
  Register* out = reinterpret_cast<Register*>(d);
#if VISTREL_AVX2
  for (int i = 0; i < n / 2; ++i) {
    const Register a = as<Register>(v[2 * i]), b = as<Register>(v[2 * i + 1]);
    storeRegister(out + i, _mm256_permute2x128_si256(a, b, 0x20));
    storeRegister(out + n / 2 + i, _mm256_permute2x128_si256(a, b, 0x31));
  }
#else
  for (int i = 0; i < n; ++i) storeRegister(out + i, as<Register>(v[i]));
#endif
}
VISTREL_INLINE void storeInOrder(uint8_t* d, const Bytes (&v)[8]) { storeLanes<8>(d, v); }

#else

template <int n>
VISTREL_INLINE void storeLanes(uint8_t* d, const Bytes (&v)[n]) {
  for (int i = 0; i < n; ++i) storeRegister(d + 16 * i, as<Register>(v[i]));
}

template <bool alphaFirst>
VISTREL_INLINE void storeFours(uint8_t* d, Bytes first, Bytes green, Bytes last) {
  const auto a = as<uint8x16_t>(first), b = as<uint8x16_t>(green), c = as<uint8x16_t>(last);
  const uint8x16_t alpha = vdupq_n_u8(255);
  if constexpr (alphaFirst)
    vst4q_u8(d, {{alpha, a, b, c}});
  else
    vst4q_u8(d, {{a, b, c, alpha}});
}

template <bool alphaFirst>
VISTREL_INLINE void storeWithAlpha(uint8_t* d, const ByteHalves& h) {
  storeFours<alphaFirst>(d, inTurn<false>(h.first), inTurn<false>(h.green), inTurn<false>(h.last));
  storeFours<alphaFirst>(d + 64, inTurn<true>(h.first), inTurn<true>(h.green),
                         inTurn<true>(h.last));
}

#endif
#if VISTREL_GROUPS

// Pixels of four bytes each, of one column parity.
struct Fours {
  Bytes v[4];
  VISTREL_INLINE Fours(Bytes a, Bytes b, Bytes c, Bytes d) {
    const Bytes abLow = VISTREL_UNPACK(lo, 8, a, b), abHigh = VISTREL_UNPACK(hi, 8, a, b);
    const Bytes cdLow = VISTREL_UNPACK(lo, 8, c, d), cdHigh = VISTREL_UNPACK(hi, 8, c, d);
    v[0] = VISTREL_UNPACK(lo, 16, abLow, cdLow);
    v[1] = VISTREL_UNPACK(hi, 16, abLow, cdLow);
    v[2] = VISTREL_UNPACK(lo, 16, abHigh, cdHigh);
    v[3] = VISTREL_UNPACK(hi, 16, abHigh, cdHigh);
  }
};

template <bool alphaFirst>
VISTREL_INLINE Fours fours(const ByteHalves& h, int parity) {
  const Bytes first = inUnpackingOrder(h.first[parity]), green = inUnpackingOrder(h.green[parity]),
              last = inUnpackingOrder(h.last[parity]), alpha = Bytes{} + uint8_t{255};
  return alphaFirst ? Fours(alpha, first, green, last) : Fours(first, green, last, alpha);
}

template <bool alphaFirst>
VISTREL_INLINE void storeWithAlpha(uint8_t* d, const ByteHalves& h) {
  const Fours even = fours<alphaFirst>(h, 0), odd = fours<alphaFirst>(h, 1);
  Bytes v[8];
  for (int i = 0; i < 4; ++i) {
    v[2 * i] = VISTREL_UNPACK(lo, 32, even.v[i], odd.v[i]);
    v[2 * i + 1] = VISTREL_UNPACK(hi, 32, even.v[i], odd.v[i]);
  }
  storeInOrder(d, v);
}

#undef VISTREL_UNPACK

#endif

VISTREL_INLINE Channels<uint8_t> channelsOf(const ByteHalves& h, int parity) {
  return {h.first[parity], h.green[parity], h.last[parity]};
}

VISTREL_INLINE void storeInTurn(uint8_t* d, Bytes even, Bytes odd) {
#if VISTREL_NEON
  vst2q_u8(d, {{as<uint8x16_t>(even), as<uint8x16_t>(odd)}});
#else
  const Pairs<uint8_t> pairs = pairsOf(even, odd);
  storeLanes<2>(d, {pairs.lower, pairs.upper});
#endif
}

VISTREL_INLINE void storeLuma(uint8_t* d, const ByteHalves& h) {
  storeInTurn(d, luma(channelsOf(h, 0)), luma(channelsOf(h, 1)));
}

struct Sums {
  Vec<int16_t> lower, upper;

  VISTREL_INLINE explicit Sums(const Bytes (&halves)[2]) {
    const Pairs<uint8_t> pairs = pairsOf(halves[0], halves[1]);
    lower = pairSums(pairs.lower);
    upper = pairSums(pairs.upper);
  }
  VISTREL_INLINE void storeWithout(const Sums& green, int16_t* d) const {
    storeLanes<2>(reinterpret_cast<uint8_t*>(d),
                  {as<Bytes>(lower - green.lower), as<Bytes>(upper - green.upper)});
  }
};

VISTREL_INLINE void storeYcc420(const DirectPlace& to, const ByteHalves& h) {
  storeInTurn(to.pixels, luma709(channelsOf(h, 0)), luma709(channelsOf(h, 1)));
  const Sums green(h.green);
  Sums(h.first).storeWithout(green, to.sums.blue);
  Sums(h.last).storeWithout(green, to.sums.red);
}

template <DirectFormat format>
VISTREL_INLINE void storeFormat(const DirectPlace& to, const ByteHalves& h) {
  if constexpr (format == DirectFormat::three)
    storePixels<uint8_t>(to.pixels, nullptr, h.first, h.green, h.last);
  else if constexpr (format == DirectFormat::luma)
    storeLuma(to.pixels, h);
  else if constexpr (format == DirectFormat::ycc420)
    storeYcc420(to, h);
  else
    storeWithAlpha<format == DirectFormat::alphaFirst>(to.pixels, h);
}

// The place of column x, an even one.
template <DirectFormat format>
VISTREL_INLINE DirectPlace placeAt(const DirectPlace& row, size_t x) {
  DirectPlace place{row.pixels + bytesOf(format) * x, {}};
  if constexpr (format == DirectFormat::ycc420)
    place.sums = {row.sums.blue + x / 2, row.sums.red + x / 2};
  return place;
}

// n columns, fewer than a vector makes.
template <DirectFormat format>
void storeFew(const DirectPlace& to, const ByteHalves& h, size_t n) {
  uint8_t pixels[bytesOf(format) * 2 * kLanes<uint8_t>];
  int16_t blue[kLanes<uint8_t>], red[kLanes<uint8_t>];
  storeFormat<format>({pixels, {blue, red}}, h);
  std::memcpy(to.pixels, pixels, bytesOf(format) * n);
  if constexpr (format == DirectFormat::ycc420) {
    std::memcpy(to.sums.blue, blue, n / 2 * sizeof(int16_t));
    std::memcpy(to.sums.red, red, n / 2 * sizeof(int16_t));
  }
}

VISTREL_INLINE Bytes narrowed(Vec<uint16_t> low, Vec<uint16_t> high, unsigned shift) {
  const auto by = madeHere(static_cast<uint16_t>(shift));
#if VISTREL_AVX512
  const __m512i v = _mm512_packus_epi16(as<__m512i>(low >> by), as<__m512i>(high >> by));
  return as<Bytes>(
      _mm512_maskz_permutexvar_epi64(0xFF, _mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), v));
#else
  return as<Bytes>(inOrder(pack16(as<Register>(low >> by), as<Register>(high >> by))));
#endif
}

// What Fill computes for a vector of bytes from element k on.
template <class Rows, class Fill, class T, int greenParity>
VISTREL_INLINE Halves<uint8_t> bytesAt(const Rows& rows, size_t k, unsigned shift) {
  if constexpr (sizeof(T) == 1) {
    static_cast<void>(shift);
    return Fill::template at<T, greenParity>(rows, k);
  } else {
    const Halves<T> low = Fill::template at<T, greenParity>(rows, k);
    const Halves<T> high = Fill::template at<T, greenParity>(rows, k + kLanes<T>);
    Halves<uint8_t> h;
    for (int p = 0; p < 2; ++p) {
      h.own[p] = narrowed(low.own[p], high.own[p], shift);
      h.green[p] = narrowed(low.green[p], high.green[p], shift);
      h.opposite[p] = narrowed(low.opposite[p], high.opposite[p], shift);
    }
    return h;
  }
}

template <class T, class Rows, class Fill, DirectFormat format, int greenParity, bool redRow>
void directRow(const Rows& source, size_t columns, unsigned shift, const DirectRowSink& sink) {
  const Rows rows = source;
  const DirectRowSink row = sink;  // in registers: a store of a byte may change anything else
  const auto halvesAt = [&](size_t x) __attribute__((always_inline)) {
    const Halves<uint8_t> h = bytesAt<Rows, Fill, T, greenParity>(rows, x / 2, shift);
    ByteHalves b;
    for (int p = 0; p < 2; ++p) {
      b.first[p] = redRow ? h.opposite[p] : h.own[p];
      b.green[p] = h.green[p];
      b.last[p] = redRow ? h.own[p] : h.opposite[p];
    }
    return b;
  };
  constexpr size_t step = 2 * kLanes<uint8_t>;
  size_t x = 0;
  for (; x + step <= columns; x += step) {
    storeFormat<format>(placeAt<format>(row.place(), x), halvesAt(x));
    row.written(x, x + step);
  }
  if (x < columns) storeFew<format>(placeAt<format>(row.place(), x), halvesAt(x), columns - x);
}

#define VISTREL_DIRECT(f)                                                            \
  {                                                                                  \
    {directRow<T, Rows, Fill, f, 0, false>, directRow<T, Rows, Fill, f, 0, true>}, { \
      directRow<T, Rows, Fill, f, 1, false>, directRow<T, Rows, Fill, f, 1, true>    \
    }                                                                                \
  }
template <class T, class Rows, class Fill>
constexpr DirectKernels<Rows> kDirectKernels = {
    {VISTREL_DIRECT(DirectFormat::three), VISTREL_DIRECT(DirectFormat::alphaLast),
     VISTREL_DIRECT(DirectFormat::alphaFirst), VISTREL_DIRECT(DirectFormat::luma),
     VISTREL_DIRECT(DirectFormat::ycc420)}};
#undef VISTREL_DIRECT

#else

// This level leaves the format to the output.
template <class T, class Rows, class Fill>
constexpr DirectKernels<Rows> kDirectKernels = {};

#endif

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
