// a * b / c, truncated toward zero, of three signed values. Needs wide.inl and doubles.inl.

// The product wraps in 32 bits.
VISTREL_INLINE int productOver(int a, int b, int c) { return wrapMul(a, b) / c; }

VISTREL_INLINE VectorOf<int32_t> productOver(VectorOf<int32_t> a, VectorOf<int32_t> b,
                                             VectorOf<int32_t> c) {
  typedef uint32_t Wrapping __attribute__((vector_size(kVectorBytes)));
  const auto product = (VectorOf<int32_t>)((Wrapping)a * (Wrapping)b);
  return __builtin_convertvector(__builtin_convertvector(product, Doubles) /
                                     __builtin_convertvector(c, Doubles),
                                 VectorOf<int32_t>);
}

// Of values below 4096: a float holds the product, and the quotient of integers below 2^24 does not
// reach the next integer by rounding. Even elements, then odd ones, as halves of double words.
typedef float Floats __attribute__((vector_size(kVectorBytes)));

VISTREL_INLINE Floats evenFloats(VectorOf<int16_t> v) {
  return __builtin_convertvector((VectorOf<int32_t>)v << 16 >> 16, Floats);
}
VISTREL_INLINE Floats oddFloats(VectorOf<int16_t> v) {
  return __builtin_convertvector((VectorOf<int32_t>)v >> 16, Floats);
}
VISTREL_INLINE VectorOf<int16_t> productOver(VectorOf<int16_t> a, VectorOf<int16_t> b,
                                             VectorOf<int16_t> c) {
  const Floats even = evenFloats(a) * evenFloats(b) / evenFloats(c);
  const Floats odd = oddFloats(a) * oddFloats(b) / oddFloats(c);
  const auto low = __builtin_convertvector(even, VectorOf<int32_t>) & 0xFFFF;
  return (VectorOf<int16_t>)(low | __builtin_convertvector(odd, VectorOf<int32_t>) << 16);
}
