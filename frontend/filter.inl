// Rows of filtered samples. A filter reads taps, each a pointer to the sample that belongs to the
// row's first result, and forms a vector of results at a time.
#include "common/lanes.inl"
#include "common/wide.inl"

template <>
struct Lanes<uint32_t> {
  typedef uint32_t Vector __attribute__((vector_size(kVectorBytes)));
};
typedef VectorOf<uint16_t> Words;
typedef VectorOf<int16_t> SignedWords;

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

// The mean of 2 x 2.
template <class T>
struct Box {
  static constexpr size_t kTaps = 4;
  explicit Box(const _FLT_3X3*) {}

  VISTREL_INLINE VectorOf<T> at(const T* const* taps, size_t x) const {
    const VectorOf<T> mean =
        mean4(load(taps[0] + x), load(taps[1] + x), load(taps[2] + x), load(taps[3] + x));
    if constexpr (sizeof(T) == 1) return mean;
    return smaller(mean, VectorOf<T>{} + static_cast<T>(kLimit<T>));
  }
};

VISTREL_INLINE Words fifthOf(Words sum) { return highProduct(sum, Words{} + 0xCCCD) >> 2; }

// The mean of five, whose taps differ between columns that are even and odd: five taps for either.
template <class T>
struct FiveTaps {
  static constexpr size_t kTaps = 10;
  explicit FiveTaps(const _FLT_3X3*) {}

  VISTREL_INLINE VectorOf<T> at(const T* const* taps, size_t x) const {
    const T* const* const first = taps + 5 * (x & 1);  // the taps of x, x + 2 ...
    const T* const* const second = taps + 5 * (1 - (x & 1));
    if constexpr (sizeof(T) == 1) {
      return (VectorOf<T>)(mean(first, x, 0) | mean(second, x, 1) << 8);
    } else {
      const VectorOf<uint32_t> mask = VectorOf<uint32_t>{} + 0xFFFF;
      return (Words)(((VectorOf<uint32_t>)mean(first, x) & mask) |
                     ((VectorOf<uint32_t>)mean(second, x) & ~mask));
    }
  }

 private:
  VISTREL_INLINE static Words mean(const uint8_t* const* taps, size_t x, int place) {
    Words sum = samplesAt<uint16_t>(place, taps[0] + x);
    for (int i = 1; i < 5; ++i) sum += samplesAt<uint16_t>(place, taps[i] + x);
    return fifthOf(sum);
  }
  // A sum that leaves its lane is above every limit too.
  VISTREL_INLINE static Words mean(const uint16_t* const* taps, size_t x) {
    Words sum = load(taps[0] + x);
    for (int i = 1; i < 5; ++i) {
      sum += load(taps[i] + x);
      sum |= (Words)(sum < load(taps[i] + x));
    }
    return fifthOf(smaller(sum, Words{} + (5 * kLimit<uint16_t> + 4)));
  }
};

// Quotients of sums that fit a word, 0..255: n / d = n * ceil(2^(15 + s) / d) >> (15 + s) for all
// n < 2^15, where 2^s is the power of two at or above d.
class WordQuotient {
 public:
  typedef uint16_t Lane;
  explicit WordQuotient(int32_t divisor) {
    // No sum reaches 2^15: as divisor it gives zero as any larger one does.
    const uint32_t d = std::min<uint32_t>(divisor, 1 << 15);
    m_shift = std::bit_width(d - 1);
    m_multiplier = Words{} + static_cast<uint16_t>(((uint32_t{1} << (15 + m_shift)) + d - 1) / d);
  }
  template <int limit>
  VISTREL_INLINE Words of(Words sum) const {
    const Words n = (Words)larger((SignedWords)sum, SignedWords{});
    const Words q = highProduct(n + n, m_multiplier) >> m_shift;
    return (Words)smaller((SignedWords)q, SignedWords{} + int16_t{limit});
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
  VISTREL_INLINE VectorOf<uint32_t> of(VectorOf<uint32_t> sum) const {
    Half half[2];
    std::memcpy(half, &sum, sizeof half);
    for (Half& h : half)
      h = __builtin_convertvector((__builtin_convertvector(h, Doubles) + m_half) * m_reciprocal, Half);
    VectorOf<int32_t> q;
    std::memcpy(&q, half, sizeof q);
    return (VectorOf<uint32_t>)clampTo(q, limit);
  }

 private:
  typedef int32_t Half __attribute__((vector_size(kVectorBytes / 2)));
  typedef double Doubles __attribute__((vector_size(kVectorBytes)));
  double m_reciprocal, m_half;
};

// Nine taps with weights of their own. Lanes: sums wrap in them.
template <class T, class Quotient>
class Weighted {
 public:
  static constexpr size_t kTaps = 9;
  explicit Weighted(const _FLT_3X3* filter) : m_quotient(filter->nDivisor) {
    for (size_t i = 0; i < kTaps; ++i)
      m_weights[i] = VectorOf<Lane>{} + static_cast<Lane>(filter->anWeights[i]);
  }

  VISTREL_INLINE VectorOf<T> at(const T* const* taps, size_t x) const {
    VectorOf<Lane> result{};
    for (int place = 0; place < int(sizeof(Lane) / sizeof(T)); ++place) {
      VectorOf<Lane> sum{};
      for (size_t i = 0; i < kTaps; ++i) sum += m_weights[i] * samplesAt<Lane>(place, taps[i] + x);
      result |= m_quotient.template of<kLimit<T>>(sum) << (8 * int(sizeof(T)) * place);
    }
    return (VectorOf<T>)result;
  }

 private:
  typedef typename Quotient::Lane Lane;
  Quotient m_quotient;
  VectorOf<Lane> m_weights[kTaps];
};

// The last vector begins where it ends with the row, and so repeats a few results.
template <class T, class Filter>
void filterRow(const T* const* taps, const _FLT_3X3* weights, size_t n, T* __restrict d) {
  constexpr size_t step = kLanes<T>, kTaps = Filter::kTaps;
  const Filter filter(weights);
  const T* tap[kTaps];
  std::copy_n(taps, kTaps, tap);
  if (n >= step) {
    for (size_t x = 0; x < n - step; x += step) store(d + x, filter.at(tap, x));
    store(d + n - step, filter.at(tap, n - step));
    return;
  }
  T row[kTaps][step] = {};
  for (size_t i = 0; i < kTaps; ++i) tap[i] = std::copy_n(tap[i], n, row[i]) - n;
  const VectorOf<T> few = filter.at(tap, 0);
  std::memcpy(d, &few, n * sizeof(T));
}

template <class T>
constexpr FilterRows<T> kFilterRows = {
    filterRow<T, Box<T>>, filterRow<T, FiveTaps<T>>,
    sizeof(T) == 1 ? filterRow<T, Weighted<T, WordQuotient>> : nullptr,
    filterRow<T, Weighted<T, DoubleWordQuotient>>};
