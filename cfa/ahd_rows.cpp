#include "cfa/ahd_rows.h"

#include "cfa/running_choice.h"
#include "common/simd.h"
#include "common/sweep.h"

#define VISTREL_BODY "cfa/ahd.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

// Of an image's half rows in m_colours.
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
    : m_frame(frame), m_first(strip.x - kReach),
      m_columns(static_cast<size_t>(strip.width) + 2 * kReach), m_n((m_columns + 1) / 2),
      m_top(strip.y - kReach), m_loaded(m_top), m_shift(shift),
      m_kernels(*VISTREL_AT_LEVEL(level, kAhd<T>)), m_mosaic(6, 2, m_columns),
      m_green(4, kImages, m_columns), m_colours(3, kImages * kComputed, m_columns),
      m_scores(3, 2, m_columns), m_scoreColumns(1, 2, m_columns), m_choice(1, 2, m_columns),
      m_differences(3, kImages, m_columns), m_lumaChroma(3, kImages * 2 * 3, m_columns),
      m_sums(1, 2, m_columns) {}

template <class T>
AhdRows<T>::operator bool() const {
  return m_mosaic && m_green && m_colours && m_scores && m_scoreColumns && m_choice &&
         m_differences && m_lumaChroma && m_sums;
}

template <class T>
void AhdRows<T>::goTo(int y) {
  for (; m_loaded <= y + kReach; ++m_loaded)
    stepInside(m_loaded - m_top, stage(0, [&](int i) { load(m_top + i); }),
               stage(2, [&](int i) { green(m_top + i); }),
               stage(1, [&](int i) { colours(m_top + i); }),
               stage(1, [&](int i) { scores(m_top + i); }));
  sums(y);
  m_y = y;
}

template <class T>
void AhdRows<T>::load(int y) {
  const T* source = m_frame.samples + mirror(y, m_frame.size.height - 1) * m_frame.step;
  T* const halves[2] = {m_mosaic.half(slot(y), 0), m_mosaic.half(slot(y), 1)};
  const int lastColumn = m_frame.size.width - 1;
  const int begin = m_first < 0 ? (1 - m_first) & ~1 : 0;  // even, inside the frame from here
  const int inside = std::min(static_cast<int>(m_columns), lastColumn + 1 - m_first);
  const int end = begin + std::max(0, inside - begin) / 2 * 2;
  if (begin < end)
    m_kernels.split(source + m_first + begin, static_cast<size_t>(end - begin) / 2,
                    halves[0] + begin / 2, halves[1] + begin / 2);
  const auto mirrored = [&](int i) {
    halves[i & 1][i / 2] = source[mirror(m_first + i, lastColumn)];
  };
  for (int i = 0; i < std::min(begin, static_cast<int>(m_columns)); ++i) mirrored(i);
  for (int i = end; i < static_cast<int>(m_columns); ++i) mirrored(i);
  if (m_shift)
    for (T* half : halves) m_kernels.scale(half, m_n, m_shift);
}

template <class T>
AhdGreen<T> AhdRows<T>::greenOf(int image, int y) const {
  const unsigned i = static_cast<unsigned>(image);
  return {m_green.half(slot(y), i), m_differences.half(slot(y), i)};
}

template <class T>
void AhdRows<T>::green(int y) {
  HalfRowWindow<T, 2> mosaic;
  for (int dy = -2; dy <= 2; ++dy)
    for (unsigned p = 0; p < 2; ++p) mosaic.half[dy + 2][p] = m_mosaic.half(slot(y + dy), p);
  m_kernels.green[1 - greenParity(y)](mosaic, m_n, greenOf(kAlongRow, y), greenOf(kAlongColumn, y));
}

template <class T>
AhdColours<T> AhdRows<T>::coloursOf(int image, int y) const {
  const unsigned i = static_cast<unsigned>(image);
  const auto computed = [&](unsigned which) {
    return m_colours.half(slot(y), i * kComputed + which);
  };
  const auto lumaChroma = [&](unsigned parity) {
    const unsigned first = (i * 2 + parity) * 3;
    return LumaChroma<T>{m_lumaChroma.half(slot(y), first), m_lumaChroma.half(slot(y), first + 1),
                         m_lumaChroma.half(slot(y), first + 2)};
  };
  return {computed(kAlong), computed(kAcross), computed(kOpposite), {lumaChroma(0), lumaChroma(1)}};
}

template <class T>
ImageHalves<T> AhdRows<T>::halves(int image, int y) const {
  const unsigned g = greenParity(y), c = 1 - g;
  const AhdColours<T> colours = coloursOf(image, y);
  ImageHalves<T> h;
  h.own[g] = colours.along;
  h.own[c] = m_mosaic.half(slot(y), c);
  h.green[g] = m_mosaic.half(slot(y), g);
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
    AhdSensed<T> source{h.own[1 - g], {h.green[0], h.green[1]}, {}, &m_weights};
    for (int dy = -1; dy <= 1; ++dy) source.differences[dy + 1] = greenOf(image, y + dy).difference;
    m_kernels.colours[g][m_frame.isRedRow(y)](source, m_n, coloursOf(image, y));
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
  for (unsigned p = 0; p < 2; ++p) m_kernels.scores[p](h, v, m_n, m_scores.half(slot(y), p));
}

template <class T>
void AhdRows<T>::sums(int y) {
  const T* rows[3][2];
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) rows[dy + 1][p] = m_scores.half(slot(y + dy), p);
  m_kernels.sums(rows, m_n, m_sums.half(0, 0), m_sums.half(0, 1), m_scoreColumns.half(0, 0),
                 m_scoreColumns.half(0, 1));
}

// There a tie is the image along rows.
template <class T>
void AhdRows<T>::beginAt(int x) {
  const int i = x - m_first;
  int8_t& sum = m_sums.half(0, i & 1)[i / 2];
  if (sum == 0) sum = 1;
}

template <class T>
void AhdRows<T>::store(int x, int xEnd, T* pixels, RowCopies<T>& copies) {
  runningChoice(m_sums.half(0, 0), m_sums.half(0, 1), m_n, m_choice.half(0, 0),
                m_choice.half(0, 1));
  const int first = x - m_first;
  // From an odd column on, what was odd is even.
  const auto move = [&](const T*(&halves)[2]) {
    const T* const from[2] = {halves[first & 1] + first / 2,
                              halves[1 - (first & 1)] + (first + 1) / 2};
    std::copy(from, from + 2, halves);
  };
  ChosenRows<T> rows{halves(kAlongRow, m_y),
                     halves(kAlongColumn, m_y),
                     {m_choice.half(0, 0), m_choice.half(0, 1)},
                     std::min(m_shift, 15)};
  for (ImageHalves<T>* image : {&rows.h, &rows.v}) {
    move(image->own);
    move(image->green);
    move(image->opposite);
  }
  move(rows.choice);
  const unsigned parity = greenParity(m_y) ^ (static_cast<unsigned>(first) & 1);
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  m_kernels.pixels->of[parity][!m_frame.isRedRow(m_y)](rows, static_cast<size_t>(xEnd - x), pixels,
                                                       copies);
}

template class AhdRows<uint8_t>;
template class AhdRows<uint16_t>;

}  // namespace vistrel
