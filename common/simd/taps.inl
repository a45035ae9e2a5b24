// How formulas read their neighbours: m(dx, dy) is the sample dx columns to the right and dy rows
// below the sites of one column parity, for a vector of such sites.

template <class T, int reach, int parity>
struct Tap {  // as samples
  const HalfRowWindow<T, reach>& window;
  size_t k;

  VISTREL_INLINE VectorOf<T> operator()(int dx, int dy) const {
    const int column = parity + dx;
    return load(window.half[dy + reach][column & 1] + k + (column >> 1));
  }
};

template <class T, int reach, int parity>
struct WideTap {  // as signed values
  const HalfRowWindow<T, reach>& window;
  size_t k;

  VISTREL_INLINE Wide<T> operator()(int dx, int dy) const {
    const int column = parity + dx;
    return loadWide(window.half[dy + reach][column & 1] + k + (column >> 1));
  }
};
