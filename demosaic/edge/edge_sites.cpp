#include "demosaic/edge/edge_sites.h"

#include "demosaic/edge/edge_formulas-inl.h"

namespace vistrel::core {

namespace {

constexpr int kLanesOfACall = 4;

// The samples around a pixel.
template <class T>
struct SampleTap {
  T pixel;
  ptrdiff_t stride;
  int operator()(int dx, int dy) const { return pixel[dy * stride + dx]; }
};

// The same, relative to the site x columns to the right and y rows below.
template <class M>
struct MovedTap {
  M m;
  int x, y;
  int operator()(int dx, int dy) const { return m(x + dx, y + dy); }
};

// Measures of the sites around a pixel, computed on demand.
template <class M>
struct MeasuredTap {
  M m;
  using At = MovedTap<M>;
  int columnActivity3(int dx, int dy) const {
    return base::Measures::columnActivity3(At{m, dx, dy});
  }
  int columnActivity5(int dx, int dy) const {
    return base::Measures::columnActivity5(At{m, dx, dy});
  }
  int rowActivity3(int dx, int dy) const { return base::Measures::rowActivity3(At{m, dx, dy}); }
  int rowActivity5(int dx, int dy) const { return base::Measures::rowActivity5(At{m, dx, dy}); }
  int inRow(int dx, int dy) const { return base::Measures::inRow(At{m, dx, dy}); }
  int inColumn(int dx, int dy) const { return base::Measures::inColumn(At{m, dx, dy}); }
};

}  // namespace

template <class T>
void vec_RB_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                                int bBlueRow) {
  int *const own = bBlueRow ? pBlue : pRed, *const opposite = bBlueRow ? pRed : pBlue;
  for (int i = 0; i < 2 * kLanesOfACall; i += 2) {
    const SampleTap<T> m{pBuf + nPos + i, nStride};
    const MeasuredTap<SampleTap<T>> q{m};
    pGreen[i] = base::Edge::green(q);
    own[i] = m(0, 0);
    opposite[i] = base::Edge::opposite(m, q);
  }
}

template <class T>
void vec_G_CalcGreen_3x3x4_ext(T pBuf, int nPos, int nStride, int* pRed, int* pBlue, int* pGreen,
                               int& T0, int& T1, int& T2, int& T3, int bBlueRow) {
  const int thresholds[4] = {T0, T1, T2, T3};
  int *const own = bBlueRow ? pBlue : pRed, *const opposite = bBlueRow ? pRed : pBlue;
  for (int i = 0; i < 2 * kLanesOfACall; i += 2) {
    const SampleTap<T> m{pBuf + nPos + i, nStride};
    const MeasuredTap<SampleTap<T>> q{m};
    const int green = base::Edge::smoothed(m, q, thresholds);
    pGreen[i] = green;
    own[i] = base::Edge::along(m, q, green);
    opposite[i] = base::Edge::acrossRows(m, q, green);
  }
}

#define VISTREL_INSTANCES(T)                                                                  \
  template void vec_RB_CalcGreen_3x3x4_ext<T>(T, int, int, int*, int*, int*, int);            \
  template void vec_G_CalcGreen_3x3x4_ext<T>(T, int, int, int*, int*, int*, int&, int&, int&, \
                                             int&, int);
VISTREL_INSTANCES(const unsigned char*)
VISTREL_INSTANCES(const unsigned short*)
#undef VISTREL_INSTANCES

}  // namespace vistrel::core
