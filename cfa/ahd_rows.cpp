#include "cfa/ahd_rows.h"

#include "common/level.h"
#include "common/simd.h"

#define VISTREL_BODY "cfa/ahd.inl"
#include "common/each_level.inl"

namespace vistrel {

namespace {

// Of an image's half rows in m_colours: what a row computes.
constexpr int kAlong = 0, kAcross = 1, kOpposite = 2, kComputed = 3;

// One reflection; in a frame of five rows or columns the farthest sample falls short of it and is
// the one on the nearest edge.
int mirror(int c, int last) {
  const int reflected = c < 0 ? -c : c > last ? 2 * last - c : c;
  return std::clamp(reflected, 0, last);
}

}  // namespace

template <class T>
AhdRows<T>::AhdRows(const CfaFrame<T>& frame, int left, int columns, int shift)
    : m_frame(frame), m_first(left - kMargin),
      m_columns(static_cast<size_t>(columns) + 2 * kMargin), m_n((m_columns + 1) / 2),
      m_shift(shift), m_kernels(*VISTREL_BY_LEVEL(kAhd<T>)), m_mosaic(6, 2, m_columns),
      m_green(4, kImages, m_columns), m_colours(3, kImages * kComputed, m_columns),
      m_choice(1, 2, m_columns), m_lumaChroma(3, kImages * 2 * 3, m_columns),
      m_scores(3, 2, m_columns), m_sums(1, 4, m_columns) {}

template <class T>
AhdRows<T>::operator bool() const {
  return m_mosaic && m_green && m_colours && m_choice && m_lumaChroma && m_scores && m_sums;
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
    for (T* half : halves)
      for (size_t k = 0; k < m_n; ++k) half[k] = static_cast<T>(uint32_t{half[k]} << std::min(m_shift, 16));
}

template <class T>
const T* AhdRows<T>::greenHalf(int image, int y, unsigned parity) const {
  return parity == greenParity(y) ? m_mosaic.half(slot(y), parity)
                                  : m_green.half(slot(y), static_cast<unsigned>(image));
}

template <class T>
void AhdRows<T>::green(int y) {
  HalfRowWindow<T, 2> mosaic;
  for (int dy = -2; dy <= 2; ++dy)
    for (unsigned p = 0; p < 2; ++p) mosaic.half[dy + 2][p] = m_mosaic.half(slot(y + dy), p);
  m_kernels.green[1 - greenParity(y)](mosaic, m_n, m_green.half(slot(y), kAlongRow),
                                      m_green.half(slot(y), kAlongColumn));
}

template <class T>
void AhdRows<T>::colours(int y) {
  for (int image = 0; image < kImages; ++image) {
    HalfRowWindow<T, 1> mosaic, green;
    for (int dy = -1; dy <= 1; ++dy)
      for (unsigned p = 0; p < 2; ++p) {
        mosaic.half[dy + 1][p] = m_mosaic.half(slot(y + dy), p);
        green.half[dy + 1][p] = greenHalf(image, y + dy, p);
      }
    const auto computed = [&](int which) {
      return m_colours.half(slot(y), static_cast<unsigned>(image * kComputed + which));
    };
    m_kernels.colours[greenParity(y)](mosaic, green, m_n, computed(kAlong), computed(kAcross),
                                      computed(kOpposite));
    keepImage(image, y);
  }
}

template <class T>
ImageHalves<T> AhdRows<T>::halves(int image, int y) const {
  const unsigned g = greenParity(y), c = 1 - g;
  const auto computed = [&](int which) {
    return m_colours.half(slot(y), static_cast<unsigned>(image * kComputed + which));
  };
  ImageHalves<T> h;
  h.own[g] = computed(kAlong);
  h.opposite[g] = computed(kAcross);
  h.own[c] = m_mosaic.half(slot(y), c);
  h.opposite[c] = computed(kOpposite);
  for (unsigned p = 0; p < 2; ++p) h.green[p] = greenHalf(image, y, p);
  return h;
}

template <class T>
LumaChroma<T> AhdRows<T>::lumaChroma(int image, int y, unsigned parity) const {
  const unsigned first = (static_cast<unsigned>(image) * 2 + parity) * 3;
  return {m_lumaChroma.half(slot(y), first), m_lumaChroma.half(slot(y), first + 1),
          m_lumaChroma.half(slot(y), first + 2)};
}

template <class T>
void AhdRows<T>::keepImage(int image, int y) {
  const ImageHalves<T> h = halves(image, y);
  const bool red = m_frame.isRedRow(y);
  for (unsigned p = 0; p < 2; ++p)
    m_kernels.lumaChroma(red ? h.own[p] : h.opposite[p], h.green[p],
                         red ? h.opposite[p] : h.own[p], m_n, lumaChroma(image, y, p));
}

template <class T>
void AhdRows<T>::scores(int y) {
  LumaChromaWindow<T> h, v;
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) {
      h[dy + 1][p] = lumaChroma(kAlongRow, y + dy, p);
      v[dy + 1][p] = lumaChroma(kAlongColumn, y + dy, p);
    }
  for (unsigned p = 0; p < 2; ++p) m_kernels.scores[p](h, v, m_n, m_scores.half(slot(y), p));
}

template <class T>
void AhdRows<T>::sums(int y) {
  const int8_t* rows[3][2];
  for (int dy = -1; dy <= 1; ++dy)
    for (unsigned p = 0; p < 2; ++p) rows[dy + 1][p] = m_scores.half(slot(y + dy), p);
  m_kernels.sums(rows, m_n, m_sums.half(0, 0), m_sums.half(0, 1), m_sums.half(0, 2),
                 m_sums.half(0, 3));
}

// A tie repeats the choice of the pixel before; one at the start chooses the image along rows.
template <class T>
void AhdRows<T>::choose(int from, int to) {
  const int8_t* const sums[2] = {m_sums.half(0, 0), m_sums.half(0, 1)};
  T* const choice[2] = {m_choice.half(0, 0), m_choice.half(0, 1)};
  int t = 1;
  for (int i = from + kMargin; i < to + kMargin; ++i) {
    const int sum = sums[i & 1][i / 2];
    t = sum != 0 ? sum : t;
    choice[i & 1][i / 2] = static_cast<T>(t >> 31);
  }
}

template <class T>
void AhdRows<T>::store(int y, int from, int to, T* pixels) {
  const int first = from + kMargin;
  const auto at = [&](const T* const (&halves)[2]) {
    // From an odd column on, what was odd is even.
    return std::array{halves[first & 1] + first / 2, halves[1 - (first & 1)] + (first + 1) / 2};
  };
  const auto move = [&](const ImageHalves<T>& h) {
    ImageHalves<T> moved;
    for (unsigned p = 0; p < 2; ++p) {
      moved.own[p] = at(h.own)[p];
      moved.green[p] = at(h.green)[p];
      moved.opposite[p] = at(h.opposite)[p];
    }
    return moved;
  };
  const T* const choice[2] = {m_choice.half(0, 0), m_choice.half(0, 1)};
  const ChosenRows<T> rows{move(halves(kAlongRow, y)), move(halves(kAlongColumn, y)),
                           {at(choice)[0], at(choice)[1]}, std::min(m_shift, 15)};
  const unsigned parity = greenParity(y) ^ (static_cast<unsigned>(first) & 1);
  RowCopies<T> copies;
  // Red is stored first here, so a row of red sites stores its own colour as others do blue.
  m_kernels.pixels->of[parity][!m_frame.isRedRow(y)](rows, static_cast<size_t>(to - from), pixels,
                                                     copies);
}

template class AhdRows<uint8_t>;
template class AhdRows<uint16_t>;

}  // namespace vistrel
