#include "cfa/ahd/ahd_rows.h"

#include "cfa/ahd/running_choice.h"
#include "common/rows/sweep.h"
#include "common/simd/simd.h"

#define VISTREL_BODY "cfa/ahd/ahd_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

// Of an image's half rows in colours_.
enum { kAlong, kAcross, kOpposite, kComputed };

// One reflection; in a frame of five rows or columns the farthest sample falls short of it and is
// the one on the nearest edge.
int mirror(int c, int last) {
  const int reflected = c < 0 ? -c : c > last ? 2 * last - c : c;
  return std::clamp(reflected, 0, last);
}

}  // namespace

// Each ring has as many rows as lie between the making of a row and its last use.
template <class T>
AhdRows<T>::AhdRows(const CfaFrame<T>& frame, CfaRect strip, int shift, Level level)
    : frame_(frame), first_(strip.x - kReach),
      columns_(static_cast<size_t>(strip.width) + 2 * kReach), n_((columns_ + 1) / 2),
      top_(strip.y - kReach), loaded_(top_), shift_(shift),
      kernels_(*VISTREL_AT_LEVEL(level, kAhd<T>)), mosaic_(6, 2, columns_),
      green_(4, kImages, columns_), colours_(3, kImages * kComputed, columns_),
      scores_(3, 2, columns_), scoreColumns_(1, 2, columns_), choice_(1, 2, columns_),
      differences_(3, kImages, columns_), lumaChroma_(3, kImages * 2 * 3, columns_),
      sums_(1, 2, columns_) {}

template <class T>
AhdRows<T>::operator bool() const {
  return mosaic_ && green_ && colours_ && scores_ && scoreColumns_ && choice_ && differences_ &&
         lumaChroma_ && sums_;
}

template <class T>
void AhdRows<T>::goTo(int y) {
  for (; loaded_ <= y + kReach; ++loaded_)
    stepInside(loaded_ - top_, stage(0, [&](int i) { load(top_ + i); }),
               stage(2, [&](int i) { green(top_ + i); }),
               stage(1, [&](int i) { colours(top_ + i); }),
               stage(1, [&](int i) { scores(top_ + i); }));
  sums(y);
  y_ = y;
}

template <class T>
void AhdRows<T>::load(int y) {
  const T* source = frame_.samples + mirror(y, frame_.size.height - 1) * frame_.step;
  T* const halves[2] = {mosaic_.half(slot(y), 0), mosaic_.half(slot(y), 1)};
  const int lastColumn = frame_.size.width - 1;
  const int begin = first_ < 0 ? (1 - first_) & ~1 : 0;  // even, inside the frame from here
  const int inside = std::min(static_cast<int>(columns_), lastColumn + 1 - first_);
  const int end = begin + std::max(0, inside - begin) / 2 * 2;
  if (begin < end)
    kernels_.split(source + first_ + begin, static_cast<size_t>(end - begin) / 2,
                   halves[0] + begin / 2, halves[1] + begin / 2);
  const auto mirrored = [&](int i) {
    halves[i & 1][i / 2] = source[mirror(first_ + i, lastColumn)];
  };
  for (int i = 0; i < std::min(begin, static_cast<int>(columns_)); ++i) mirrored(i);
  for (int i = end; i < static_cast<int>(columns_); ++i) mirrored(i);
  if (shift_)
    for (T* half : halves) kernels_.scale(half, n_, shift_);
}

template <class T>
AhdGreen<T> AhdRows<T>::greenOf(int image, int y) const {
  const unsigned i = static_cast<unsigned>(image);
  return {green_.half(slot(y), i), differences_.half(slot(y), i)};
}

template <class T>
void AhdRows<T>::green(int y) {
  HalfRowWindow<T, 2> mosaic;
  for (int dy = -2; dy <= 2; ++dy)
    for (unsigned p = 0; p < 2; ++p) mosaic.half[dy + 2][p] = mosaic_.half(slot(y + dy), p);
  kernels_.green[1 - greenParity(y)](mosaic, n_, greenOf(kAlongRow, y), greenOf(kAlongColumn, y));
}

template <class T>
AhdColours<T> AhdRows<T>::coloursOf(int image, int y) const {
  const unsigned i = static_cast<unsigned>(image);
  const auto computed = [&](unsigned which) {
    return colours_.half(slot(y), i * kComputed + which);
  };
  const auto lumaChroma = [&](unsigned parity) {
    const unsigned first = (i * 2 + parity) * 3;
    return LumaChroma<T>{lumaChroma_.half(slot(y), first), lumaChroma_.half(slot(y), first + 1),
                         lumaChroma_.half(slot(y), first + 2)};
  };
  return {computed(kAlong), computed(kAcross), computed(kOpposite), {lumaChroma(0), lumaChroma(1)}};
}

template <class T>
ImageHalves<T> AhdRows<T>::halves(int image, int y) const {
  const unsigned g = greenParity(y), c = 1 - g;
  const AhdColours<T> colours = coloursOf(image, y);
  ImageHalves<T> h;
  h.own[g] = colours.along;
  h.own[c] = mosaic_.half(slot(y), c);
  h.green[g] = mosaic_.half(slot(y), g);
  h.green[c] = greenOf(image, y).green;
  h.opposite[g] = colours.across;
  h.opposite[c] = colours.opposite;
  return h;
}

template <class T>
void AhdRows<T>::colours(int y) {
  for (int image = 0; image < kImages; ++image) {
    const ImageHalves<T> h = halves(image, y);
    const unsigned g = greenParity(y);
    AhdSensed<T> source{h.own[1 - g], {h.green[0], h.green[1]}, {}, &weights_};
    for (int dy = -1; dy <= 1; ++dy) source.differences[dy + 1] = greenOf(image, y + dy).difference;
    kernels_.colours[g][frame_.isRedRow(y)](source, n_, coloursOf(image, y));
  }
}

template <class T>
void AhdRows<T>::scores(int y) {
  LumaChromaWindow<T> h, v;
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) {
      h[dy + 1][p] = coloursOf(kAlongRow, y + dy).lumaChroma[p];
      v[dy + 1][p] = coloursOf(kAlongColumn, y + dy).lumaChroma[p];
    }
  for (unsigned p = 0; p < 2; ++p) kernels_.scores[p](h, v, n_, scores_.half(slot(y), p));
}

template <class T>
void AhdRows<T>::sums(int y) {
  const T* rows[3][2];
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) rows[dy + 1][p] = scores_.half(slot(y + dy), p);
  kernels_.sums(rows, n_, sums_.half(0, 0), sums_.half(0, 1), scoreColumns_.half(0, 0),
                scoreColumns_.half(0, 1));
}

// There a tie is the image along rows.
template <class T>
void AhdRows<T>::beginAt(int x) {
  const int i = x - first_;
  int8_t& sum = sums_.half(0, i & 1)[i / 2];
  if (sum == 0) sum = 1;
}

template <class T>
void AhdRows<T>::store(int x, int xEnd, T* pixels, RowCopies<T>& copies) {
  runningChoice(sums_.half(0, 0), sums_.half(0, 1), n_, choice_.half(0, 0), choice_.half(0, 1));
  const int first = x - first_;
  // From an odd column on, what was odd is even.
  const auto move = [&](const T*(&halves)[2]) {
    const T* const from[2] = {halves[first & 1] + first / 2,
                              halves[1 - (first & 1)] + (first + 1) / 2};
    std::copy(from, from + 2, halves);
  };
  ChosenRows<T> rows{halves(kAlongRow, y_),
                     halves(kAlongColumn, y_),
                     {choice_.half(0, 0), choice_.half(0, 1)},
                     std::min(shift_, 15)};
  for (ImageHalves<T>* image : {&rows.h, &rows.v}) {
    move(image->own);
    move(image->green);
    move(image->opposite);
  }
  move(rows.choice);
  const unsigned parity = greenParity(y_) ^ (static_cast<unsigned>(first) & 1);
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  kernels_.pixels->of[parity][!frame_.isRedRow(y_)](rows, static_cast<size_t>(xEnd - x), pixels,
                                                    copies);
}

template class AhdRows<uint8_t>;
template class AhdRows<uint16_t>;

}  // namespace vistrel::core
