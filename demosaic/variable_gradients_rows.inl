#include "common/simd/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/simd/registers.inl"
#endif
#include "common/simd/wide.inl"
#include "common/rows/pixel_row.inl"
#include "common/simd/values.inl"

// Quotients by 1 to 8, truncated, of two values by the same n. A reciprocal is a little too large,
// so that a multiple of n never falls short, by less than its other quotients stay below the next
// whole number.
typedef float Reals __attribute__((vector_size(kVectorBytes)));
struct PairReciprocals {
  Reals low, high;
};
constexpr float kJustAboveOne = 0x1.000008p0f;

VISTREL_INLINE float reciprocal(int n) { return kJustAboveOne / static_cast<float>(n); }
VISTREL_INLINE Reals reciprocal(VectorOf<int32_t> n) {
  return kJustAboveOne / __builtin_convertvector(n, Reals);
}
VISTREL_INLINE PairReciprocals reciprocal(VectorOf<int16_t> n) {
  const auto pairs = (VectorOf<int32_t>)n;
  return {reciprocal(pairs & 0xFFFF), reciprocal(pairs >> 16)};
}

VISTREL_INLINE int product(int a, float r) { return static_cast<int>(static_cast<float>(a) * r); }
VISTREL_INLINE VectorOf<int32_t> product(VectorOf<int32_t> a, Reals r) {
  return __builtin_convertvector(__builtin_convertvector(a, Reals) * r, VectorOf<int32_t>);
}
VISTREL_INLINE VectorOf<int16_t> product(VectorOf<int16_t> a, PairReciprocals r) {
  const auto pairs = (VectorOf<int32_t>)a;
  const auto low = product((pairs << 16) >> 16, r.low);
  const auto high = product(pairs >> 16, r.high);
  return (VectorOf<int16_t>)((low & 0xFFFF) | (high << 16));
}

#include "demosaic/variable_gradients.inl"

template <class Values>
struct FillVariableGradients {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 2>& rows, size_t k) {
    using V = typename Values::Value;
    constexpr int g = greenParity, c = 1 - greenParity;
    const V start = V{} + (sizeof(V{}[0]) == 2 ? 0x7FFF : 0xFFFF);
    V own[Values::kParts], opposite[Values::kParts], green[Values::kParts],
        diagonal[Values::kParts];
    for (size_t i = 0; i < Values::kParts; ++i) {
      const ValueTap<Values, 2, g> atGreen{rows, k, i};
      const ValueTap<Values, 2, c> atColour{rows, k, i};
      const auto lacksColours = Missing<T, V>::at(AtGreen{}, atGreen, start);
      const auto lacksGreen = Missing<T, V>::at(AtColour{}, atColour, start);
      own[i] = lacksColours.first;
      opposite[i] = lacksColours.second;
      green[i] = lacksGreen.first;
      diagonal[i] = lacksGreen.second;
    }
    Halves<T> h;
    h.own[g] = Values::join(own);
    h.green[g] = load(rows.half[2][g] + k);
    h.opposite[g] = Values::join(opposite);
    h.own[c] = load(rows.half[2][c] + k);
    h.green[c] = Values::join(green);
    h.opposite[c] = Values::join(diagonal);
    return h;
  }
};

template <class T, class Values>
constexpr const auto& kRowsOf = kPixelRows<T, HalfRowWindow<T, 2>, FillVariableGradients<Values>>;

template <class T>
constexpr VariableGradientsKernels<T> kVariableGradients = {
    isTwelveBits<T>, kRowsOf<T, ShortValues<T>>, kRowsOf<T, Widened<T>>};
