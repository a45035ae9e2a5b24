// Nine taps with weights of their own, over a divisor. Needs lanes.inl and wide.inl.

template <>
struct Lanes<uint32_t> {
  typedef uint32_t Vector __attribute__((vector_size(kVectorBytes)));
};
typedef VectorOf<uint16_t> Words;
typedef VectorOf<uint32_t> DoubleWords;

// The samples at one place of wider lanes, zero-extended: every second one, or every fourth.
template <class Lane, class T>
VISTREL_INLINE VectorOf<Lane> samplesAt(int place, const T* p) {
  constexpr int places = sizeof(Lane) / sizeof(T), bits = 8 * sizeof(T);
  const VectorOf<Lane> lanes = (VectorOf<Lane>)load(p) >> (bits * place);
  return place == places - 1 ? lanes : lanes & static_cast<T>(-1);
}

VISTREL_INLINE Words highProduct(Words a, Words b) {
#if VISTREL_LEVEL == 4
  return (Words)_mm512_mulhi_epu16((__m512i)a, (__m512i)b);
#elif VISTREL_LEVEL == 3
  return (Words)_mm256_mulhi_epu16((__m256i)a, (__m256i)b);
#elif VISTREL_X86
  return (Words)_mm_mulhi_epu16((__m128i)a, (__m128i)b);
#else
  for (size_t i = 0; i < kLanes<uint16_t>; ++i)
    a[i] = static_cast<uint16_t>(uint32_t{a[i]} * b[i] >> 16);
  return a;
#endif
}

// Quotients of sums that fit a word, 0..255: n / d = n * ceil(2^(15 + s) / d) >> (15 + s) for all
// n < 2^15, where 2^s is the power of two at or above d.
class WordQuotient {
 public:
  typedef uint16_t Lane;
  explicit WordQuotient(int32_t divisor) {
    // No sum reaches 2^15: as divisor it gives zero as any larger one does.
    const uint32_t d = std::min<uint32_t>(divisor, 1 << 15);
    m_shift = std::bit_width(d - 1);
    const auto multiplier = static_cast<uint16_t>(((uint32_t{1} << (15 + m_shift)) + d - 1) / d);
    m_multiplier = Words{} + multiplier;
  }
  template <int limit>
  VISTREL_INLINE Words of(Words sum) const {
    const Words n = (Words)larger((VectorOf<int16_t>)sum, VectorOf<int16_t>{});
    const Words q = highProduct(n + n, m_multiplier) >> m_shift;
    return (Words)smaller((VectorOf<int16_t>)q, VectorOf<int16_t>{} + int16_t{limit});
  }

 private:
  int m_shift;
  Words m_multiplier;
};

// Quotients of any sum by any divisor. Half of one off the nearest multiple of the divisor, no sum
// is near enough to be carried over it by the rounding of a reciprocal and a product.
class DoubleWordQuotient {
 public:
  typedef uint32_t Lane;
  explicit DoubleWordQuotient(int32_t divisor)
      : m_reciprocal(1.0 / divisor), m_half(divisor < 0 ? -0.5 : 0.5) {}

  template <int limit>
  VISTREL_INLINE DoubleWords of(DoubleWords sum) const {
    const Doubles n = __builtin_convertvector((VectorOf<int32_t>)sum, Doubles);
    const auto q = __builtin_convertvector((n + m_half) * m_reciprocal, VectorOf<int32_t>);
    return (DoubleWords)clampTo(q, limit);
  }

 private:
  typedef double Doubles __attribute__((vector_size(2 * kVectorBytes)));
  double m_reciprocal, m_half;
};

// The weighted sums of nine taps, wrapped to a lane.
template <class T, class Lane>
class Sums {
 public:
  explicit Sums(const int32_t (&weights)[9]) {
    for (int i = 0; i < 9; ++i) m_weights[i] = VectorOf<Lane>{} + static_cast<Lane>(weights[i]);
  }
  VISTREL_INLINE VectorOf<Lane> at(const T* const* taps, size_t x, int place) const {
    VectorOf<Lane> sum{};
    for (int i = 0; i < 9; ++i) sum += m_weights[i] * samplesAt<Lane>(place, taps[i] + x);
    return sum;
  }

 private:
  VectorOf<Lane> m_weights[9];
};

// The same of words by weights of 16 bits, where the taps of a row are neighbours: products of
// pairs, without widening. They are signed, so half of their range is taken off the samples. A pair
// reaches one sample beyond a row of an odd length.
class PairSums {
 public:
  explicit PairSums(const int32_t (&weights)[9]) {
    uint32_t all = 0;
    for (int row = 0; row < 3; ++row) {
      const int32_t* const w = weights + 3 * row;
      const uint32_t left = static_cast<uint16_t>(w[0]), right = static_cast<uint16_t>(w[2]);
      m_left[row] += left | static_cast<uint32_t>(w[1]) << 16;
      m_right[row][0] += right;
      m_right[row][1] += right << 16;
      for (int i = 0; i < 3; ++i) all += static_cast<uint32_t>(w[i]);
    }
    m_taken += all << 15;
  }
  VISTREL_INLINE DoubleWords at(const uint16_t* const* taps, size_t x, int place) const {
    DoubleWords sum = m_taken;
    for (int row = 0; row < 3; ++row)
      sum += pairProducts(load(taps[3 * row + place] + x), m_left[row]) +
             pairProducts(load(taps[3 * row + 2] + x), m_right[row][place]);
    return sum;
  }

 private:
  VISTREL_INLINE static DoubleWords pairProducts(Words samples, DoubleWords weights) {
    const auto s = samples ^ 0x8000;
#if VISTREL_LEVEL == 4
    return (DoubleWords)_mm512_madd_epi16((__m512i)s, (__m512i)weights);
#elif VISTREL_LEVEL == 3
    return (DoubleWords)_mm256_madd_epi16((__m256i)s, (__m256i)weights);
#elif VISTREL_X86
    return (DoubleWords)_mm_madd_epi16((__m128i)s, (__m128i)weights);
#else
    const auto a = (VectorOf<int32_t>)s, b = (VectorOf<int32_t>)weights;
    return (DoubleWords)(((a << 16) >> 16) * ((b << 16) >> 16)) +
           (DoubleWords)((a >> 16) * (b >> 16));
#endif
  }

  DoubleWords m_left[3]{}, m_right[3][2]{}, m_taken{};
};

// Nine taps with weights of their own.
template <class T, class Sums, class Quotient>
class Weighted {
 public:
  static constexpr size_t kTaps = 9;
  explicit Weighted(const _FLT_3X3& filter)
      : m_sums(filter.anWeights), m_quotient(filter.nDivisor) {}

  VISTREL_INLINE VectorOf<T> at(const T* const* taps, size_t x) const {
    constexpr int bits = 8 * sizeof(T), places = kLanes<T> / kLanes<typename Quotient::Lane>;
    VectorOf<typename Quotient::Lane> result{};
    for (int place = 0; place < places; ++place)
      result |= m_quotient.template of<kLimit<T>>(m_sums.at(taps, x, place)) << (bits * place);
    return (VectorOf<T>)result;
  }

 private:
  Sums m_sums;
  Quotient m_quotient;
};

template <class T>
using AnyWeights = Weighted<T, Sums<T, uint32_t>, DoubleWordQuotient>;

// For weights that are small, see areSmall().
template <class T>
using SmallWeights = std::conditional_t<sizeof(T) == 1,
                                        Weighted<uint8_t, Sums<uint8_t, uint16_t>, WordQuotient>,
                                        Weighted<uint16_t, PairSums, DoubleWordQuotient>>;
