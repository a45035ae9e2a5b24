// The row kernels of Cok's algorithm.
#if defined(VISTREL_COK_ROWS_INL_H) == defined(VISTREL_TOGGLE)
#ifdef VISTREL_COK_ROWS_INL_H
#undef VISTREL_COK_ROWS_INL_H
#else
#define VISTREL_COK_ROWS_INL_H
#endif

#include "common/depth.h"
#include "common/rows/pixel_kernels-inl.h"
#include "common/rows/taps-inl.h"
#include "demosaic/cok/cok_formulas-inl.h"
#include "demosaic/cok/cok_kernels.h"

VISTREL_BEGIN_TARGET
namespace vistrel::core::VISTREL_NAMESPACE {

// Green and hues at the red or blue sites of a row.
template <class T, int parity>
void hueRow(const HalfRowWindow<T, 1>& mosaic, size_t n, T* __restrict green,
            const HueParts<T>& hues) {
  const HalfRowWindow<T, 1> rows = mosaic;
  const HueParts<T> to = hues;
  for (size_t k = 0; k < n; k += kLanes<T>) {
    const Tap<T, 1, parity> m{rows, k};
    const Vec<T> g = Cok::green(m);
    store(green + k, g);
    const Ratio<Vec<T>> ratio = Cok::hue(m(0, 0), g);
    for (size_t i = 0; i < AsDouble<T>::kParts; ++i) {
      const Doubles hue = AsDouble<T>::part(ratio.colour, i) / AsDouble<T>::part(ratio.green, i);
      std::memcpy(to.part[i] + k / AsDouble<T>::kParts, &hue, sizeof hue);
    }
  }
}

template <class T, int parity>
struct HueTap {
  const HueWindow<T>& window;
  size_t k, part;

  VISTREL_INLINE Doubles operator()(int dx, int dy) const {
    constexpr int parts = AsDouble<T>::kParts;
    const int element = static_cast<int>(part) + ((parity + dx) >> 1);
    Doubles hue;
    std::memcpy(&hue, window.row[dy + 1].element(element) + k / parts, sizeof hue);
    return hue;
  }
};

// The products fit 32 bits: large green raises the neighbouring greens that the hues are divided
// by.
struct FillCok {
  template <class T, int greenParity>
  VISTREL_INLINE static Halves<T> at(const CokRows<T>& rows, size_t k) {
    constexpr int g = greenParity, c = 1 - greenParity;
    Halves<T> h;
    h.green[g] = load(rows.green[g] + k);
    h.green[c] = load(rows.green[c] + k);
    Doubles along[AsDouble<T>::kParts], across[AsDouble<T>::kParts], opposite[AsDouble<T>::kParts];
    for (size_t i = 0; i < AsDouble<T>::kParts; ++i) {
      const Doubles atGreen = AsDouble<T>::part(h.green[g], i);
      along[i] = Cok::along(atGreen, HueTap<T, g>{rows.hues, k, i});
      across[i] = Cok::across(atGreen, HueTap<T, g>{rows.hues, k, i});
      opposite[i] = Cok::opposite(AsDouble<T>::part(h.green[c], i), HueTap<T, c>{rows.hues, k, i});
    }
    h.own[g] = AsDouble<T>::join(along, kLimit<T>);
    h.opposite[g] = AsDouble<T>::join(across, kLimit<T>);
    h.own[c] = load(rows.colour + k);
    h.opposite[c] = AsDouble<T>::join(opposite, kLimit<T>);
    return h;
  }
};

template <class T>
constexpr CokKernels<T> kCokKernels = {{hueRow<T, 0>, hueRow<T, 1>},
                                       kPixelKernels<T, CokRows<T>, FillCok>};

}  // namespace vistrel::core::VISTREL_NAMESPACE
VISTREL_END_TARGET

#endif
