// The functions for one rectangle, compared with the primitives on the whole frame.
#include "tests/cfa/by_name.h"

#include "tests/cfa/primitives.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Rectangles);

template <class T>
void expectSame(const Rgb<T>& a, const Rgb<T>& b, CfaRect rect) {
  EXPECT_TRUE(a.hasOnly(rect));
  for (int y = rect.y; y < rect.y + rect.height; ++y)
    for (int x = rect.x; x < rect.x + rect.width; ++x) ASSERT_EQ(a.at(x, y), b.at(x, y));
}

template <class T, class Rect>
void expectNearest(const Mosaic<T>& m, int grid, CfaRect rect, Rect rectangle) {
  Rgb<T> rgb(rect);
  rectangle(&m.samples[static_cast<size_t>(rect.y * m.width + rect.x)], m.width, rect.width,
            rect.height, rgb.data(), rgb.step());
  expectSame(rgb, nearest(m, grid), rect);
}

// A rectangle at (2, 2) has the frame's own colours at its corner.
TEST_P(Rectangles, OfNearestNeighboursBearTheirColoursInTheirNames) {
  for (int width : {1, 2, 15, 16, 17, 33, 70}) {
    const CfaRect rect{2, 2, width, 5};
    const Mosaic<uint8_t> bytes = noiseMosaic<uint8_t>(width + 4, 9, 1, 80);
    const Mosaic<uint16_t> samples16 = noiseMosaic<uint16_t>(width + 4, 9, 2, 9000);
    expectNearest(bytes, CFA_GRID_BGGR, rect, owncnBayerRectBGGR_8u);
    expectNearest(bytes, CFA_GRID_RGGB, rect, owncnBayerRectRGGB_8u);
    expectNearest(bytes, CFA_GRID_GBRG, rect, owncnBayerRectGBRG_8u);
    expectNearest(bytes, CFA_GRID_GRBG, rect, owncnBayerRectGRBG_8u);
    expectNearest(samples16, CFA_GRID_BGGR, rect, owncnBayerRectBGGR_16u);
    expectNearest(samples16, CFA_GRID_RGGB, rect, owncnBayerRectRGGB_16u);
    expectNearest(samples16, CFA_GRID_GBRG, rect, owncnBayerRectGBRG_16u);
    expectNearest(samples16, CFA_GRID_GRBG, rect, owncnBayerRectGRBG_16u);
  }
}

TEST_P(Rectangles, OfNearestNeighboursBeginOnAnyColumnAndRow) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(30, 12, 3, 80);
  expectNearest(m, CFA_GRID_BGGR, {3, 2, 20, 4}, owncnBayerRectGBRG_8u);
  expectNearest(m, CFA_GRID_BGGR, {2, 3, 20, 4}, owncnBayerRectGRBG_8u);
  expectNearest(m, CFA_GRID_BGGR, {3, 3, 20, 4}, owncnBayerRectRGGB_8u);
}

// By phase: RG GB, GB RG, BG GR, GR BG.
constexpr int kGrids[4] = {CFA_GRID_RGGB, CFA_GRID_GBRG, CFA_GRID_BGGR, CFA_GRID_GRBG};

// Regions that lie in the band at the frame's upper or lower edge are one rectangle each. Their
// origins are even.
constexpr CfaRect kBands[] = {{0, 0, 40, 3}, {2, 0, 1, 1}, {4, 2, 17, 3}, {0, 20, 40, 3}};

template <class T, class Rect>
void expectBands(int phase, Rect rectangle) {
  const Mosaic<T> m = noiseMosaic<T>(40, 23, static_cast<unsigned>(phase), 80);
  for (const CfaRect& rect : kBands) {
    Rgb<T> rgb(rect);
    rectangle(m.samples.data(), m.width * int{sizeof(T)}, rect, rgb.data(), rgb.stepBytes());
    expectSame(rgb, homogeneous(m, kGrids[phase], rect), rect);
  }
}

template <class T, class Local>
void expectPhase(int phase, Local local) {
  expectBands<T>(phase, [=](const T* pSrc, int srcStep, CfaRect rect, T* pDst, int dstStep) {
    local(pSrc, srcStep, rect, pDst, dstStep, nullptr, 0, 39, 22);
  });
}

template <class T, class Local>
void expectEveryPhase(Local local) {
  for (int phase = 0; phase < 4; ++phase)
    expectBands<T>(phase, [=](const T* pSrc, int srcStep, CfaRect rect, T* pDst, int dstStep) {
      local(pSrc, srcStep, rect, pDst, dstStep, nullptr, 0, phase, 39, 22);
    });
}

TEST_P(Rectangles, OfHomogeneityKnowTheirPhase) {
  expectPhase<uint8_t>(0, localAHD_RGGB_8u);
  expectPhase<uint8_t>(1, localAHD_GBRG_8u);
  expectPhase<uint8_t>(2, localAHD_BGGR_8u);
  expectPhase<uint8_t>(3, localAHD_GRBG_8u);
  expectPhase<uint16_t>(0, localAHD_RGGB_16u);
  expectPhase<uint16_t>(1, localAHD_GBRG_16u);
  expectPhase<uint16_t>(2, localAHD_BGGR_16u);
  expectPhase<uint16_t>(3, localAHD_GRBG_16u);
}

TEST(RectanglesOfHomogeneity, AreChosenByPhase) {
  for (auto local : {m7_localAHD_8u, u8_localAHD_8u, y8_localAHD_8u})
    expectEveryPhase<uint8_t>(local);
  for (auto local : {m7_localAHD_16u, u8_localAHD_16u, y8_localAHD_16u})
    expectEveryPhase<uint16_t>(local);
}

TEST(RectanglesOfHomogeneity, AreNoneForAnotherPhase) {
  const Mosaic<uint8_t> m = noiseMosaic<uint8_t>(40, 23, 4);
  for (int phase : {-1, 4}) {
    Rgb<uint8_t> rgb({0, 0, 8, 8});
    m7_localAHD_8u(m.samples.data(), 40, {0, 0, 8, 8}, rgb.data(), rgb.stepBytes(), nullptr, 0,
                   phase, 39, 22);
    EXPECT_TRUE(rgb.isUntouched());
  }
}

// From a red site, with even sides, five samples from the frame's edges: a region of its own.
template <class T, class Local>
void expectInterior(Local local) {
  for (const CfaRect& rect : {CfaRect{6, 6, 28, 12}, CfaRect{6, 8, 2, 2}, CfaRect{10, 6, 18, 4}}) {
    const Mosaic<T> m = noiseMosaic<T>(40, 23, 5, 80);
    Rgb<T> rgb(rect);
    local(m.samples.data(), m.width * int{sizeof(T)}, rect, rgb.data(), rgb.stepBytes(), nullptr,
          0);
    expectSame(rgb, homogeneous(m, CFA_GRID_RGGB, rect), rect);
  }
}

TEST_P(Rectangles, OfTheInteriorNeedNoMirror) {
  expectInterior<uint8_t>(localIntAHD_8u);
  expectInterior<uint16_t>(localIntAHD_16u);
}

// A rectangle of one pixel gives what a larger one gives there, unless the pixel is a tie that
// inherits a choice; a scene of columns has no ties.
TEST_P(Rectangles, OfOnePixelHaveThatOfALargerOne) {
  Mosaic<uint8_t> m(40, 23, 0);
  const Mosaic<uint8_t> line = noiseMosaic<uint8_t>(40, 1, 6);
  for (size_t i = 0; i < m.samples.size(); ++i) m.samples[i] = line.samples[i % 40];
  for (int y : {0, 1, 11, 21, 22})
    for (int x = y % 2; x < 40; x += 2) {
      Rgb<uint8_t> rgb({x, y, 1, 1});
      const auto rectangle = y % 2 ? localAHD_BGGR_8u : localAHD_RGGB_8u;
      rectangle(m.samples.data(), 40, {x, y, 1, 1}, rgb.data(), rgb.stepBytes(), nullptr, 0, 39,
                22);
      EXPECT_EQ(rgb.at(x, y), homogeneous(m, CFA_GRID_RGGB).at(x, y));
    }
}

}  // namespace
}  // namespace vistrel::core::test
