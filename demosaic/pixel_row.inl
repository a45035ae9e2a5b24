// A row of finished pixels from formulas over half rows. No site is tested within a row: its green
// sites all have one column parity, its others are all red or all blue.

#include "common/interleave.inl"

// Reads the sample dx columns to the right and dy rows below the sites of a column parity.
template <class T, int reach, int parity>
struct Tap {
  const MosaicWindow<T, reach>& window;
  size_t k;

  VISTREL_INLINE VectorOf<T> operator()(int dx, int dy) const {
    const int column = parity + dx;
    return load(window.half[dy + reach][column & 1] + k + (column >> 1));
  }
};

template <class T, class Formulas, int greenParity, bool redRow>
VISTREL_INLINE void storeBlock(const MosaicWindow<T, 1>& window, size_t k, T* pixels, T* copy) {
  const Tap<T, 1, greenParity> atGreen{window, k};
  const Tap<T, 1, 1 - greenParity> atColour{window, k};
  VectorOf<T> own[2], green[2], opposite[2];
  own[greenParity] = Formulas::along(atGreen);
  green[greenParity] = atGreen(0, 0);
  opposite[greenParity] = Formulas::across(atGreen);
  own[1 - greenParity] = atColour(0, 0);
  green[1 - greenParity] = Formulas::green(atColour);
  opposite[1 - greenParity] = Formulas::opposite(atColour);
  if constexpr (redRow)
    storePixels<T>(pixels, copy, opposite, green, own);
  else
    storePixels<T>(pixels, copy, own, green, opposite);
}

template <class T, class Formulas, int greenParity, bool redRow>
void pixelRow(const MosaicWindow<T, 1>& rows, size_t columns, T* pixels, RowCopies<T>& copies) {
  const MosaicWindow<T, 1> window = rows;
  T* const copy = copies.plain;
  constexpr size_t step = 2 * kLanes<T>;
  size_t x = 0;
  for (; x + step <= columns; x += step) {
    storeBlock<T, Formulas, greenParity, redRow>(window, x / 2, pixels + 3 * x,
                                                 copy ? copy + 3 * x : nullptr);
    copies.work.upTo(pixels + 3 * (x + step));
    copies.result.upTo(pixels + 3 * (x + step));
  }
  if (x == columns) return;
  T block[3 * step];
  storeBlock<T, Formulas, greenParity, redRow>(window, x / 2, block, nullptr);
  const size_t rest = 3 * (columns - x) * sizeof(T);
  std::memcpy(pixels + 3 * x, block, rest);
  if (copy) std::memcpy(copy + 3 * x, block, rest);
}

// By column parity of the green sites and by the row's other colour.
template <class T, class Formulas>
constexpr PixelRow<T> kPixelRows[2][2] = {
    {pixelRow<T, Formulas, 0, false>, pixelRow<T, Formulas, 0, true>},
    {pixelRow<T, Formulas, 1, false>, pixelRow<T, Formulas, 1, true>}};
