#include "cfa/ahd/reconstruction.h"

namespace vistrel::core {

namespace {

// Indices of an image's half rows among the colours.
constexpr unsigned kAlong = 0, kAcross = 1, kOpposite = 2, kComputed = 3;

// Unlike mirrored(), reflects only once: in a frame of five rows or columns, the farthest samples
// are still outside after that and become those on the edge.
int reflected(int c, int last) {
  return std::clamp(c < 0 ? -c : c > last ? 2 * last - c : c, 0, last);
}

}  // namespace

// Each ring has as many rows as lie between a row's computation and its last use.
template <class T>
AhdReconstruction<T>::AhdReconstruction(const CfaRows<T>& frame, int first, size_t columns,
                                        int shift, const AhdKernels<T>& kernels, Arena& arena)
    : frame_(frame), first_(first), columns_(columns), shift_(shift), kernels_(kernels),
      mosaic_(6, 2, columns, arena), green_(4, kAhdImages, columns, arena),
      colours_(3, kAhdImages * kComputed, columns, arena),
      differences_(3, kAhdImages, columns, arena),
      lumaChroma_(3, kAhdImages * 2 * 3, columns, arena) {}

template <class T>
void AhdReconstruction<T>::load(int y) {
  const T* source = frame_.source.row(reflected(y, frame_.size.height - 1));
  T* const halves[2] = {mosaic_.half(placeOf(y), 0), mosaic_.half(placeOf(y), 1)};
  const int lastColumn = frame_.size.width - 1, columns = static_cast<int>(columns_);
  const int begin = first_ < 0 ? (1 - first_) & ~1 : 0;  // even; from here on inside the frame
  const int inside = std::min(columns, lastColumn + 1 - first_);
  const int end = begin + std::max(0, inside - begin) / 2 * 2;
  if (begin < end)
    kernels_.split(source + first_ + begin, static_cast<size_t>(end - begin), halves[0] + begin / 2,
                   halves[1] + begin / 2);
  const auto reflect = [&](int i) {
    halves[i & 1][i / 2] = source[reflected(first_ + i, lastColumn)];
  };
  for (int i = 0; i < std::min(begin, columns); ++i) reflect(i);
  for (int i = end; i < columns; ++i) reflect(i);
  if (shift_)
    for (T* half : halves) kernels_.scale(half, halfSize(), shift_);
}

template <class T>
AhdGreen<T> AhdReconstruction<T>::greenOf(AhdImage image, int y) const {
  return {green_.half(placeOf(y), image), differences_.half(placeOf(y), image)};
}

template <class T>
void AhdReconstruction<T>::fillGreen(int y) {
  const auto rows = windowOf<2>(
      y, [&](int row, unsigned parity) -> const T* { return mosaic_.half(placeOf(row), parity); });
  kernels_.green[mosaic().colourParity(y)](rows, halfSize(), greenOf(kAlongRow, y),
                                           greenOf(kAlongColumn, y));
}

template <class T>
AhdColours<T> AhdReconstruction<T>::coloursOf(AhdImage image, int y) const {
  const auto computed = [&](unsigned which) {
    return colours_.half(placeOf(y), image * kComputed + which);
  };
  const auto lumaChroma = [&](unsigned parity) {
    const unsigned first = (image * 2 + parity) * 3;
    return LumaChroma<T>{lumaChroma_.half(placeOf(y), first),
                         lumaChroma_.half(placeOf(y), first + 1),
                         lumaChroma_.half(placeOf(y), first + 2)};
  };
  return {computed(kAlong), computed(kAcross), computed(kOpposite), {lumaChroma(0), lumaChroma(1)}};
}

template <class T>
ImageHalves<T> AhdReconstruction<T>::halves(AhdImage image, int y) const {
  const unsigned g = mosaic().greenParity(y), c = 1 - g;
  const AhdColours<T> colours = coloursOf(image, y);
  ImageHalves<T> h;
  h.own[g] = colours.along;
  h.own[c] = mosaic_.half(placeOf(y), c);
  h.green[g] = mosaic_.half(placeOf(y), g);
  h.green[c] = greenOf(image, y).green;
  h.opposite[g] = colours.across;
  h.opposite[c] = colours.opposite;
  return h;
}

template <class T>
void AhdReconstruction<T>::fillColours(int y) {
  for (const AhdImage image : {kAlongRow, kAlongColumn}) {
    const ImageHalves<T> h = halves(image, y);
    const unsigned g = mosaic().greenParity(y);
    AhdSensed<T> source{h.own[1 - g], {h.green[0], h.green[1]}, {}, &weights_};
    for (int dy = -1; dy <= 1; ++dy) source.differences[dy + 1] = greenOf(image, y + dy).difference;
    kernels_.colours[g][mosaic().isRedRow(y)](source, halfSize(), coloursOf(image, y));
  }
}

template <class T>
LumaChromaWindow<T> AhdReconstruction<T>::lumaChroma(AhdImage image, int y) const {
  LumaChromaWindow<T> window;
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) window.row[dy + 1][p] = coloursOf(image, y + dy).lumaChroma[p];
  return window;
}

template class AhdReconstruction<uint8_t>;
template class AhdReconstruction<uint16_t>;

}  // namespace vistrel::core
