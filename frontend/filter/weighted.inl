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
    shift_ = std::bit_width(d - 1);
    const auto multiplier = static_cast<uint16_t>(((uint32_t{1} << (15 + shift_)) + d - 1) / d);
    multiplier_ = Words{} + multiplier;
  }
  template <int limit>
  VISTREL_INLINE Words of(Words sum) const {
    const Words n = (Words)larger((VectorOf<int16_t>)sum, VectorOf<int16_t>{});
    const Words q = highProduct(n + n, multiplier_) >> shift_;
    return (Words)smaller((VectorOf<int16_t>)q, VectorOf<int16_t>{} + int16_t{limit});
  }

 private:
  int shift_;
  Words multiplier_;
};

// Quotients of any sum by any divisor. Half of one off the nearest multiple of the divisor, no sum
// is near enough to be carried over it by the rounding of a reciprocal and a product.
class DoubleWordQuotient {
 public:
  typedef uint32_t Lane;
  explicit DoubleWordQuotient(int32_t divisor)
      : reciprocal_(1.0 / divisor), half_(divisor < 0 ? -0.5 : 0.5) {}

  template <int limit>
  VISTREL_INLINE DoubleWords of(DoubleWords sum) const {
    const Doubles n = __builtin_convertvector((VectorOf<int32_t>)sum, Doubles);
    const auto q = __builtin_convertvector((n + half_) * reciprocal_, VectorOf<int32_t>);
    return (DoubleWords)clampTo(q, limit);
  }

 private:
  typedef double Doubles __attribute__((vector_size(2 * kVectorBytes)));
  double reciprocal_, half_;
};

// The weighted sums of nine taps, wrapped to a lane.
template <class T, class Lane>
class Sums {
 public:
  explicit Sums(const int32_t (&weights)[9]) {
    for (int i = 0; i < 9; ++i) weights_[i] = VectorOf<Lane>{} + static_cast<Lane>(weights[i]);
  }
  VISTREL_INLINE VectorOf<Lane> at(const T* const* taps, size_t x, int place) const {
    VectorOf<Lane> sum{};
    for (int i = 0; i < 9; ++i) sum += weights_[i] * samplesAt<Lane>(place, taps[i] + x);
    return sum;
  }

 private:
  VectorOf<Lane> weights_[9];
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
      left_[row] += left | static_cast<uint32_t>(w[1]) << 16;
      right_[row][0] += right;
      right_[row][1] += right << 16;
      for (int i = 0; i < 3; ++i) all += static_cast<uint32_t>(w[i]);
    }
    taken_ += all << 15;
  }
  VISTREL_INLINE DoubleWords at(const uint16_t* const* taps, size_t x, int place) const {
    DoubleWords sum = taken_;
    for (int row = 0; row < 3; ++row)
      sum += pairProducts(load(taps[3 * row + place] + x), left_[row]) +
             pairProducts(load(taps[3 * row + 2] + x), right_[row][place]);
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

  DoubleWords left_[3]{}, right_[3][2]{}, taken_{};
};

// Nine taps with weights of their own.
template <class T, class Sums, class Quotient>
class Weighted {
 public:
  static constexpr size_t kTaps = 9;
  explicit Weighted(const _FLT_3X3& filter)
      : sums_(filter.anWeights), quotient_(filter.nDivisor) {}

  VISTREL_INLINE VectorOf<T> at(const T* const* taps, size_t x) const {
    constexpr int bits = 8 * sizeof(T), places = kLanes<T> / kLanes<typename Quotient::Lane>;
    VectorOf<typename Quotient::Lane> result{};
    for (int place = 0; place < places; ++place)
      result |= quotient_.template of<kLimit<T>>(sums_.at(taps, x, place)) << (bits * place);
    return (VectorOf<T>)result;
  }

 private:
  Sums sums_;
  Quotient quotient_;
};

template <class T>
using AnyWeights = Weighted<T, Sums<T, uint32_t>, DoubleWordQuotient>;

// For weights that pass fitsFastPath().
template <class T>
using SmallWeights = std::conditional_t<sizeof(T) == 1,
                                        Weighted<uint8_t, Sums<uint8_t, uint16_t>, WordQuotient>,
                                        Weighted<uint16_t, PairSums, DoubleWordQuotient>>;
