#include "common/simd/lanes.inl"
#if VISTREL_LEVEL >= 1
#include "common/simd/registers.inl"
#endif
#include "common/simd/wide.inl"
#include "demosaic/bilinear.inl"
#include "common/rows/pixel_row.inl"
#include "common/simd/taps.inl"

struct FillBilinear {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const HalfRowWindow<T, 1>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    const Tap<T, 1, g> atGreen{rows, k};
    const Tap<T, 1, c> atColour{rows, k};
    Halves<T> h;
    h.own[g] = Bilinear::along(atGreen);
    h.green[g] = atGreen(0, 0);
    h.opposite[g] = Bilinear::across(atGreen);
    h.own[c] = atColour(0, 0);
    h.green[c] = Bilinear::green(atColour);
    h.opposite[c] = Bilinear::opposite(atColour);
    return h;
  }
};

template <class T>
constexpr const auto& kBilinearRows = kPixelRows<T, HalfRowWindow<T, 1>, FillBilinear>;
