// Samples as doubles. Needs wide.inl.

// As many as there are double words in a vector.
typedef double Doubles __attribute__((vector_size(2 * kVectorBytes)));
constexpr size_t kDoubles = kVectorBytes / sizeof(int32_t);

// A vector of samples in kParts parts: part i has the elements i, i + kParts, i + 2 * kParts ...
template <class T>
struct Doubled {
  static constexpr size_t kParts = sizeof(int32_t) / sizeof(T);

  VISTREL_INLINE static Doubles part(VectorOf<T> v, size_t i) {
    const int unused = kBits * static_cast<int>(kParts - 1 - i);
    const Lane lanes = (Lane)v << unused >> (kBits * static_cast<int>(kParts - 1));
    return __builtin_convertvector((VectorOf<int32_t>)lanes, Doubles);
  }

  // Of values from 0 up that fit 32 bits: truncated, at most limit.
  VISTREL_INLINE static VectorOf<T> join(const Doubles (&parts)[kParts], int limit) {
    Lane joined{};
    for (size_t i = 0; i < kParts; ++i) {
      const auto v = __builtin_convertvector(parts[i], VectorOf<int32_t>);
      joined |= (Lane)smaller(v, v - v + limit) << (kBits * static_cast<int>(i));
    }
    return (VectorOf<T>)joined;
  }

 private:
  typedef uint32_t Lane __attribute__((vector_size(kVectorBytes)));
  static constexpr int kBits = 8 * static_cast<int>(sizeof(T));
};
