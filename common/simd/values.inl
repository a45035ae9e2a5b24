// How formulas see a vector of samples: as signed values, in one part or two. Needs wide.inl.

// Two neighbouring samples as one lane.
template <class T>
struct PairsOf;
template <>
struct PairsOf<uint8_t> {
  typedef uint16_t Vector __attribute__((vector_size(kVectorBytes)));
};
template <>
struct PairsOf<uint16_t> {
  typedef uint32_t Vector __attribute__((vector_size(kVectorBytes)));
};

// With twice the bits: the even elements, then the odd ones. So no sample has to leave its place.
template <class T>
struct Widened {
  using Sample = T;
  using Value = Wide<T>;
  static constexpr size_t kParts = 2;

  VISTREL_INLINE static Value part(VectorOf<T> v, size_t i) {
    return (Value)(i == 0 ? (Pairs)v & static_cast<T>(-1) : (Pairs)v >> kBits);
  }
  // Of values that fit the sample.
  VISTREL_INLINE static VectorOf<T> join(const Value (&parts)[2]) {
    return (VectorOf<T>)((Pairs)parts[0] | (Pairs)parts[1] << kBits);
  }

 private:
  using Pairs = typename PairsOf<T>::Vector;
  static constexpr int kBits = 8 * static_cast<int>(sizeof(T));
};

// Words of twelve bits as they are: eight of them still have a sum.
struct TwelveBits {
  using Sample = uint16_t;
  using Value = VectorOf<int16_t>;
  static constexpr size_t kParts = 1;

  VISTREL_INLINE static Value part(VectorOf<uint16_t> v, size_t) { return (Value)v; }
  VISTREL_INLINE static VectorOf<uint16_t> join(const Value (&parts)[1]) {
    return (VectorOf<uint16_t>)parts[0];
  }
};

// Sixteen bits a value: for bytes, and for words that isTwelveBits finds.
template <class T>
using ShortValues = std::conditional_t<sizeof(T) == 1, Widened<T>, TwelveBits>;

template <class T>
bool isTwelveBits(const T* half, size_t n) {
  if constexpr (sizeof(T) == 1) return true;
  T bits = 0;
  for (size_t k = 0; k < n; ++k) bits = static_cast<T>(bits | half[k]);
  return bits < 4096;
}

// As the taps of taps.inl: one part of the values there.
template <class Values, int reach, int parity>
struct ValueTap {
  const HalfRowWindow<typename Values::Sample, reach>& window;
  size_t k, part;

  VISTREL_INLINE auto operator()(int dx, int dy) const {
    const int column = parity + dx;
    return Values::part(load(window.half[dy + reach][column & 1] + k + (column >> 1)), part);
  }
};
