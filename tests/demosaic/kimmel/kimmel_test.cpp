// Kimmel's hues on both paths: weights, hues, limits, and where the path in floats goes.
#include <array>
#include <set>

#include "tests/demosaic/demosaiced.h"
#include "tests/demosaic/guarded.h"
#include "tests/levels.h"
#include "vistrel/platform.h"
#include "vistrel/processor.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(Kimmel);

// Enables or disables vector operations, and restores them.
class FloatScope {
 public:
  explicit FloatScope(bool inFloats) {
    ippSetCpuFeaturesMask(inFloats ? mask_ | IPP_CPU_SSE : mask_ & ~uint64_t{IPP_CPU_SSE});
  }
  ~FloatScope() { ippSetCpuFeaturesMask(mask_); }
  FloatScope(const FloatScope&) = delete;
  FloatScope& operator=(const FloatScope&) = delete;

 private:
  const uint64_t mask_ = ippGetEnabledCpuFeatures();
};

template <class T>
Demosaiced<T> inDoubles(uint32_t bayer, const Frame<T>& frame) {
  const FloatScope off(false);
  return {ImageColorHueKimmel, bayer, frame};
}
// Processors without vector operations take doubles.
template <class T>
Demosaiced<T> inFloats(uint32_t bayer, const Frame<T>& frame) {
  const FloatScope on(true);
  return {ImageColorHueKimmel, bayer, frame};
}

// A mosaic with one value per channel.
template <class T>
Frame<T> coloured(uint32_t bayer, uint32_t width, uint32_t height, std::array<unsigned, 3> bgr) {
  Frame<T> frame(width, height, 0);
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x)
      frame.at(x, y) =
          static_cast<T>(bgr[static_cast<size_t>(core::Mosaic::ofPhase(bayer).colourAt(x, y))]);
  return frame;
}

template <class T>
Frame<T> noiseFrom(uint32_t width, uint32_t height, unsigned from, unsigned range) {
  Frame<T> frame(width, height, 0);
  frame.samples = noise<T>(frame.samples.size(), range, width + height);
  for (T& sample : frame.samples) sample = static_cast<T>(sample + from);
  return frame;
}

std::array<int, 3> pixel(const auto& out, int x, int y) {
  return {out.blue(x, y), out.green(x, y), out.red(x, y)};
}

// The area that no weight of the rim reaches.
template <class T>
void expectInside(const Demosaiced<T>& out, int width, int height, std::array<int, 3> bgr) {
  for (int y = 2; y < height - 2; ++y)
    for (int x = 2; x < width - 2; ++x) ASSERT_EQ(pixel(out, x, y), bgr) << x << ", " << y;
}

template <class T>
void flatStaysFlat(int v) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    const Frame<T> frame(38, 9, static_cast<unsigned>(v));
    expectInside(inDoubles<T>(bayer, frame), 38, 9, {v, v, v});
  }
}

TEST_P(Kimmel, AFlatFrameStaysFlatInside) {
  for (int v : {0, 1, 100, 255}) flatStaysFlat<uint8_t>(v);
  for (int v : {0, 1, 100, 1023}) flatStaysFlat<uint16_t>(v);
}

// Red at (3, 1), green at (2, 1) of GR/BG. Beyond the region hues are 0 and still weigh 1, so of
// the four diagonals two count in row 0 and one in the corner. Beside green at (2, 0): west, east
// and south have the hue 1, the weights are 1, 1, 1 / sqrt(50^2 + 1) and north, with neither green
// nor red, 1 / sqrt(50^2 + 50^2 + 1): 100 * 2.019996 / 2.034137 = 99.3.
// quirk: guard-green
TEST_P(Kimmel, TheRimLosesWhatNeighboursWithoutGreenDoNotGive) {
  const auto out = inDoubles<uint8_t>(BAYER_GRBG, Frame<uint8_t>(38, 10, 100));
  EXPECT_EQ(pixel(out, 3, 2), (std::array{100, 100, 100}));
  EXPECT_EQ(pixel(out, 3, 0), (std::array{50, 100, 100}));
  EXPECT_EQ(pixel(out, 37, 0), (std::array{25, 100, 100}));
  EXPECT_EQ(out.red(4, 0), 99);
}

// Two rows: no green is smoothed, and above and below a site lies the other row. Green 200 in row 0
// and 0 in row 1. The red at 18 is 2 higher: so to the red at 16 its side weighs 1 / sqrt(2), the
// others weigh 1, and green is (200 + 200 / sqrt(2)) / (3 + 1 / sqrt(2)) = 92.1; elsewhere 100.
template <class T>
void weighsByDifferences(Demosaiced<T> (*demosaic)(uint32_t, const Frame<T>&)) {
  Frame<T> frame = coloured<T>(BAYER_RGGB, 40, 2, {100, 0, 100});
  for (uint32_t x = 1; x < 40; x += 2) frame.at(x, 0) = 200;
  frame.at(18, 0) = 102;
  const auto out = demosaic(BAYER_RGGB, frame);
  EXPECT_EQ(out.green(16, 0), 92);
  EXPECT_EQ(out.green(20, 0), 92);
  EXPECT_NEAR(out.green(12, 0), 100, 1);
}

TEST_P(Kimmel, ADifferenceOfTwoMakesTheRadicandTwo) {
  weighsByDifferences<uint8_t>(inDoubles<uint8_t>);
  weighsByDifferences<uint16_t>(inDoubles<uint16_t>);
  weighsByDifferences<uint8_t>(inFloats<uint8_t>);
}

#if defined(__SSE2__)

// quirk: ten-bit-limit
TEST_P(Kimmel, ComputedSamplesStopAtTenBitsSensedOnesPass) {
  for (unsigned v : {1024u, 4095u, 65535u}) {
    const Frame<uint16_t> frame(40, 8, v);
    for (const auto& out : {inDoubles<uint16_t>(BAYER_GRBG, frame), inFloats(BAYER_GRBG, frame)})
      for (int y = 2; y < 6; ++y)
        for (int x = 2; x < 38; ++x) {
          const bool redSite = y % 2 == 0 && x % 2 == 1, blueSite = y % 2 == 1 && x % 2 == 0;
          ASSERT_EQ(out.blue(x, y), static_cast<int>(blueSite ? v : 1023u));
          ASSERT_EQ(out.green(x, y), static_cast<int>(redSite || blueSite ? 1023u : v));
          ASSERT_EQ(out.red(x, y), static_cast<int>(redSite ? v : 1023u));
        }
  }
}

TEST_P(Kimmel, TheEnabledFeaturesChooseThePath) {
  const Frame<uint8_t> frame = coloured<uint8_t>(BAYER_GRBG, 16, 8, {5, 1, 5});
  const FloatScope on(true);
  const auto out = [&] { return Demosaiced<uint8_t>(ImageColorHueKimmel, BAYER_GRBG, frame); };
  EXPECT_EQ(out().red(4, 4), 1);
  const FloatScope off(false);
  EXPECT_EQ(out().red(4, 4), 5);
}

// Green 1, colours 5. A hue of 5 is bounded by the green 1.
// quirk: bounded-hue
TEST_P(Kimmel, HuesInFloatsAreAtMostTheirGreen) {
  for (uint32_t bayer = 0; bayer < 2; ++bayer) {
    const auto bytes = coloured<uint8_t>(bayer, 32, 9, {5, 1, 5});
    const auto samples16 = coloured<uint16_t>(bayer, 32, 9, {5, 1, 5});
    expectInside(inDoubles(bayer, bytes), 32, 9, {5, 1, 5});
    for (int y = 2; y < 7; ++y)
      for (int x = 2; x < 30; ++x) {
        const bool green = core::Mosaic::ofPhase(bayer).isGreenAt(x, y);
        for (const auto& [blue, g, red] :
             {pixel(inFloats(bayer, bytes), x, y), pixel(inFloats(bayer, samples16), x, y)})
          ASSERT_EQ((std::multiset{blue, red}), (std::multiset{1, green ? 1 : 5}));
      }
  }
}

// The same in a row of twelve: in the tail, red and blue sites use the hue of 5 unchanged.
// quirk: unbounded-tail
TEST_P(Kimmel, TheTailAloneTakesPlainHuesAtRedAndBlueSites) {
  const auto out = inFloats(BAYER_GRBG, coloured<uint8_t>(BAYER_GRBG, 14, 9, {5, 1, 5}));
  for (int y = 2; y < 7; ++y)
    for (int x = 2; x < 12; ++x) {
      const bool green = (x + y) % 2 == 0, redRow = y % 2 == 0;
      ASSERT_EQ(redRow ? out.blue(x, y) : out.red(x, y), !green && x >= 8 ? 5 : 1)
          << x << ", " << y;
      ASSERT_EQ(redRow ? out.red(x, y) : out.blue(x, y), green ? 1 : 5) << x << ", " << y;
    }
}

// The approximate weights change a mean by less than one code. For red and blue that holds only in
// flat frames: elsewhere a difference of one code in one pass changes the weights of the next one.
template <class T>
void expectNearDoubles(uint32_t bayer, uint32_t width, uint32_t height) {
  const auto noisy = noiseFrom<T>(width, height, 60, 190);
  const auto plain = coloured<T>(bayer, width, height, {90, 120, 61});
  const auto exactGreen = inDoubles(bayer, noisy), green = inFloats(bayer, noisy);
  const auto exact = inDoubles(bayer, plain), out = inFloats(bayer, plain);
  for (int y = 0; y < static_cast<int>(height); ++y)
    for (int x = 0; x < static_cast<int>(width); ++x) {
      ASSERT_NEAR(green.green(x, y), exactGreen.green(x, y), 1) << x << ", " << y;
      for (size_t c = 0; c < 3; ++c)
        ASSERT_NEAR(pixel(out, x, y)[c], pixel(exact, x, y)[c], 1) << c << " of " << x << ", " << y;
    }
}

TEST_P(Kimmel, InPhaseThePathInFloatsIsWithinOneCode) {
  for (uint32_t width : {2u, 8u, 12u, 64u, 70u})
    for (uint32_t height : {2u, 3u, 9u}) {
      for (uint32_t bayer = 0; bayer < 4; ++bayer) expectNearDoubles<uint8_t>(bayer, width, height);
      expectNearDoubles<uint16_t>(BAYER_GRBG, width, height);
      expectNearDoubles<uint16_t>(BAYER_BGGR, width, height);
    }
}

TEST_P(Kimmel, SevenColumnsAreATailAndInPhase) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    expectNearDoubles<uint8_t>(bayer, 7, 9);
    expectNearDoubles<uint16_t>(bayer, 7, 9);
  }
}

// Blocks out of phase take green sites for red or blue ones and weigh the green of sites that have
// none yet: 0. Then the true red and blue sites, without green, lose their colour.
template <class T>
void expectBlack(const Demosaiced<T>& out, int width, int height) {
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) ASSERT_EQ(pixel(out, x, y), (std::array{0, 0, 0})) << x << y;
}

// quirk: shifted-blocks
TEST_P(Kimmel, BlocksOfSixteenBitSamplesIgnoreTheColumnPhase) {
  for (uint32_t bayer : {BAYER_RGGB, BAYER_GBRG}) {
    expectBlack(inFloats(bayer, noiseFrom<uint16_t>(16, 9, 60, 900)), 16, 9);
    expectNearDoubles<uint16_t>(bayer, 15, 9);
    const auto twelve = noiseFrom<uint16_t>(12, 9, 60, 900);
    expectBlack(inFloats(bayer, twelve), 8, 9);
    const auto out = inFloats(bayer, twelve), exact = inDoubles<uint16_t>(bayer, twelve);
    for (int y = 0; y < 9; ++y)
      for (int x = 9; x < 12; ++x) ASSERT_NEAR(out.green(x, y), exact.green(x, y), 1);
  }
  for (uint32_t bayer : {BAYER_GRBG, BAYER_BGGR})
    expectBlack(inFloats(bayer, noiseFrom<uint16_t>(17, 9, 60, 900)), 16, 9);
}

// quirk: shifted-blocks
TEST_P(Kimmel, BlocksOfBytesAreOutOfPhaseInOddWidths) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    expectBlack(inFloats(bayer, noiseFrom<uint8_t>(17, 9, 60, 190)), 16, 9);
  }
}

// Eight by three pixels of two by two. The buffer's rows are 20 pixels apart, the walk's 12: its
// second row covers pixels 12 to 19 of the first one, two of which are guard, and two of the second
// row; its third covers pixels 4 to 11 of the second one.
// quirk: unbinned-walk
TEST_P(Kimmel, TheWalkInFloatsKnowsNoBinning) {
  const auto m = noiseMosaic<uint8_t>(BAYER_GRBG, 0, 0, 16, 6, 255, 1);
  const std::vector<uint8_t> before = m.scatteredBuffer();
  std::vector<uint8_t> work(m.samples()), result(3 * 8 * 3);
  g_pwBGRBuff[9] = reinterpret_cast<uint16_t*>(work.data());
  const FloatScope on(true);
  ImageColorHueKimmel(9, m.imgWidth, BAYER_GRBG, 1, IMG_FMT_BGR24, 0, 0, 8, 3, m.frame.data(),
                      result.data());
  g_pwBGRBuff[9] = nullptr;
  std::set<size_t> changed;  // rows of the walk
  for (size_t k = 0; k < work.size(); ++k) {
    const size_t p = k / 3 - 2 * 20 - 2;  // from the image's first pixel
    const bool walked = k >= 3 * 42 && p < 3 * 12 && p % 12 < 8;
    if (work[k] == before[k]) continue;
    ASSERT_TRUE(walked) << k;
    changed.insert(p / 12);
  }
  EXPECT_EQ(changed, (std::set<size_t>{0, 1, 2}));
}

#endif

}  // namespace
}  // namespace vistrel::core::test
