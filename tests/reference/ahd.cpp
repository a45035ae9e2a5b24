#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <vector>

#include "tests/reference/arith.h"
#include "tests/reference/cfa.h"
#include "tests/reference/cfa_sites.h"

namespace reference {

namespace {

enum Direction { kAcross, kDown };  // the H image and the V image

// The whole frame, readable at every coordinate.
template <class T>
struct Frame {
  const T* pSrc;
  ptrdiff_t srcStep;  // samples
  int maxX, maxY, grid;

  // Reflects once about the edge sample; coordinates still outside read the nearest edge.
  static int mirror(int c, int L) {
    const int m = c < 0 ? -c : c > L ? 2 * L - c : c;
    return clamp(m, 0, L);
  }
  int S(int x, int y) const { return pSrc[mirror(y, maxY) * srcStep + mirror(x, maxX)]; }
  char colour(int x, int y) const { return colourAt(grid, x, y); }
  bool isRedRow(int y) const { return colour(0, y) == 'R' || colour(1, y) == 'R'; }
};

// Values at the coordinates of a rectangle and of three pixels around it.
class Plane {
 public:
  explicit Plane(CfaRect a)
      : x_(a.x - 3), y_(a.y - 3), w_(a.width + 6),
        values_(static_cast<size_t>(w_) * static_cast<size_t>(a.height + 6)) {}
  int& at(int x, int y) { return values_[static_cast<size_t>(ptrdiff_t{y - y_} * w_ + (x - x_))]; }

 private:
  int x_, y_, w_;
  std::vector<int> values_;
};

// Calls visit(x, y) for the rectangle and `reach` pixels around it.
template <class Visit>
void forEach(CfaRect a, int reach, Visit visit) {
  for (int y = a.y - reach; y < a.y + a.height + reach; ++y)
    for (int x = a.x - reach; x < a.x + a.width + reach; ++x) visit(x, y);
}

template <class T>
int greenAt(const Frame<T>& f, Direction d, int x, int y) {
  if (f.colour(x, y) == 'G') return f.S(x, y);
  const int dx = d == kAcross ? 1 : 0, dy = 1 - dx;
  const int a = f.S(x - dx, y - dy), b = f.S(x + dx, y + dy), c = f.S(x, y);
  const int l = f.S(x - 2 * dx, y - 2 * dy), r = f.S(x + 2 * dx, y + 2 * dy);
  const int t = ((2 * c - l - r) >> 2) + ((a + b) >> 1);
  return clamp(t, std::min(a, b), std::max(a, b));
}

// One of the two images of a rectangle.
template <class T>
struct Image {
  Plane R, G, B;

  Image(const Frame<T>& f, Direction d, CfaRect a) : R(a), G(a), B(a) {
    forEach(a, 3, [&](int x, int y) { G.at(x, y) = greenAt(f, d, x, y); });
    forEach(a, 2, [&](int x, int y) { fillRedAndBlue(f, x, y); });
  }

 private:
  void fillRedAndBlue(const Frame<T>& f, int x, int y) {
    constexpr int M = std::numeric_limits<T>::max();
    const int g = G.at(x, y);
    const auto C = [&](int dx, int dy) { return f.S(x + dx, y + dy) - G.at(x + dx, y + dy); };
    const char colour = f.colour(x, y);
    if (colour == 'G') {
      const int beside = clamp(g + ((C(-1, 0) + C(1, 0)) >> 1), 0, M);
      const int above = clamp(g + ((C(0, -1) + C(0, 1)) >> 1), 0, M);
      R.at(x, y) = f.isRedRow(y) ? beside : above;
      B.at(x, y) = f.isRedRow(y) ? above : beside;
      return;
    }
    const int diagonal = clamp(g + ((C(-1, -1) + C(1, -1) + C(-1, 1) + C(1, 1)) >> 2), 0, M);
    R.at(x, y) = colour == 'R' ? f.S(x, y) : diagonal;
    B.at(x, y) = colour == 'B' ? f.S(x, y) : diagonal;
  }
};

struct LumaChroma {
  Plane Y, U, V;

  template <class T>
  LumaChroma(Image<T>& image, CfaRect a) : Y(a), U(a), V(a) {
    forEach(a, 2, [&](int x, int y) {
      const int R = image.R.at(x, y), G = image.G.at(x, y), B = image.B.at(x, y);
      Y.at(x, y) = (66 * R + 129 * G + 25 * B + 128) >> 8;
      U.at(x, y) = (-38 * R - 74 * G + 112 * B + 128) >> 8;
      V.at(x, y) = (112 * R - 94 * G - 18 * B + 128) >> 8;
    });
  }

  int dL(int x, int y, int dx, int dy) { return std::abs(Y.at(x + dx, y + dy) - Y.at(x, y)); }

  // Wraps in 32 bits.
  int dC(int x, int y, int dx, int dy) {
    const uint32_t u = static_cast<uint32_t>(U.at(x + dx, y + dy) - U.at(x, y));
    const uint32_t v = static_cast<uint32_t>(V.at(x + dx, y + dy) - V.at(x, y));
    return static_cast<int32_t>(u * u + v * v);
  }

  int countOfAlike(int x, int y, int Leps, int Ceps) {
    const int neighbours[4][2] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
    int count = 0;
    for (const int(&n)[2] : neighbours)
      if (dL(x, y, n[0], n[1]) <= Leps && dC(x, y, n[0], n[1]) <= Ceps) ++count;
    return count;
  }
};

int scoreAt(LumaChroma& h, LumaChroma& v, int x, int y) {
  const int Leps = std::min(std::max(h.dL(x, y, -1, 0), h.dL(x, y, 1, 0)),
                            std::max(v.dL(x, y, 0, -1), v.dL(x, y, 0, 1)));
  const int Ceps = std::min(std::max(h.dC(x, y, -1, 0), h.dC(x, y, 1, 0)),
                            std::max(v.dC(x, y, 0, -1), v.dC(x, y, 0, 1)));
  return h.countOfAlike(x, y, Leps, Ceps) - v.countOfAlike(x, y, Leps, Ceps);
}

bool holds(CfaRect a, int x, int y) {
  return x >= a.x && x < a.x + a.width && y >= a.y && y < a.y + a.height;
}

// Produces the rectangle `a` and writes those of its pixels that lie in the region.
template <class T>
void sweep(const Frame<T>& frame, CfaRect a, CfaRect region, T* pDst, ptrdiff_t dstStep) {
  Image<T> imageH(frame, kAcross, a), imageV(frame, kDown, a);
  LumaChroma lumaH(imageH, a), lumaV(imageV, a);
  Plane D(a);
  forEach(a, 1, [&](int x, int y) { D.at(x, y) = scoreAt(lumaH, lumaV, x, y); });
  for (int y = a.y; y < a.y + a.height; ++y) {
    int t = 1;
    for (int x = a.x; x < a.x + a.width; ++x) {
      int sum = 0;
      for (int j = -1; j <= 1; ++j)
        for (int i = -1; i <= 1; ++i) sum += D.at(x + i, y + j);
      if (sum != 0) t = sum;
      if (!holds(region, x, y)) continue;
      Image<T>& chosen = t < 0 ? imageV : imageH;
      T* const rgb = pDst + (y - region.y) * dstStep + 3 * (x - region.x);
      rgb[0] = static_cast<T>(chosen.R.at(x, y));
      rgb[1] = static_cast<T>(chosen.G.at(x, y));
      rgb[2] = static_cast<T>(chosen.B.at(x, y));
    }
  }
}

int evenBelow(int v) { return v & ~1; }

// Cuts the region into an interior and up to four bands. The cut only determines where a row's
// running choice starts.
template <class T>
void cut(const Frame<T>& frame, CfaRect region, T* pDst, ptrdiff_t dstStep) {
  const int W = frame.maxX + 1, H = frame.maxY + 1;
  const int x = region.x, y = region.y, w = region.width, h = region.height;
  int x0 = x <= 5 ? 5 : x;
  int y0 = y <= 5 ? 5 : y;
  // The interior begins at a red site: first at a column that has one, then at its row.
  if (frame.colour(x0, y0) == 'B' || (frame.colour(x0, y0) == 'G' && frame.isRedRow(y0))) x0 += 1;
  if (frame.colour(x0, y0) != 'R') y0 += 1;
  const int wI = evenBelow(std::min(W - 5, x + w) - x0);
  const int hI = evenBelow(std::min(H - 5, y + h) - y0);

  const auto run = [&](CfaRect a) { sweep(frame, a, region, pDst, dstStep); };
  if (wI >= 1 && hI >= 1) run({x0, y0, wI, hI});
  if (y0 - y >= 1) run({x, y, w, y0 - y});
  if ((y + h) - (y0 + hI) >= 1) run({x, y0 + hI, w, (y + h) - (y0 + hI)});
  if (x0 - x >= 1 && hI >= 1) run({x, y0, x0 - x, hI});
  if ((x + w) - (x0 + wI) >= 1 && hI >= 1) run({x0 + wI, y0, (x + w) - (x0 + wI), hI});
}

// Steps in samples.
template <class T>
int32_t demosaic(const T* pSrc, CfaRect roi, CfaSize size, ptrdiff_t srcStep, T* pDst,
                 ptrdiff_t dstStep, int grid) {
  if (pSrc == nullptr || pDst == nullptr) return -8;
  if (size.width < 5 || size.height < 5) return -6;
  if (grid < 0 || grid > 3) return -5;
  if (roi.x < 1) roi.x = 0;
  if (roi.y < 1) roi.y = 0;
  if (int64_t{roi.x} + roi.width > size.width) roi.width = size.width - roi.x;
  if (int64_t{roi.y} + roi.height > size.height) roi.height = size.height - roi.y;
  if (roi.width < 1 || roi.height < 1) return 0;
  cut(Frame<T>{pSrc, srcStep, size.width - 1, size.height - 1, grid}, roi, pDst, dstStep);
  return 0;
}

}  // namespace

int32_t ippiDemosaicAHD_8u_C1C3R(const uint8_t* pSrc, CfaRect srcRoi, CfaSize srcSize, int srcStep,
                                 uint8_t* pDst, int dstStep, int grid, uint8_t*, int) {
  return demosaic(pSrc, srcRoi, srcSize, srcStep, pDst, dstStep, grid);
}

int32_t ippiDemosaicAHD_16u_C1C3R(const uint16_t* pSrc, CfaRect srcRoi, CfaSize srcSize,
                                  int srcStep, uint16_t* pDst, int dstStep, int grid, uint16_t*,
                                  int) {
  return demosaic(pSrc, srcRoi, srcSize, srcStep / 2, pDst, dstStep / 2, grid);
}

}  // namespace reference
