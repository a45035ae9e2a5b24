// Variable gradients: which directions are kept, what they contribute, and the functions for one
// pixel.
#include "tests/demosaic/by_name.h"

#include <array>
#include <string>

#include "tests/demosaic/demosaiced.h"
#include "tests/demosaic/guarded.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(VariableGradients);

// Places and gradients in the order in which the threshold compares them: N, E, S, W, NE, SE, NW,
// SW.
constexpr int kPlaces[8][2] = {{0, -2}, {2, 0}, {0, 2},   {-2, 0},
                               {2, -2}, {2, 2}, {-2, -2}, {-2, 2}};
using Gradients = std::array<int, 8>;

constexpr int kSensed = 100;

// A red site of 100 with eight reds around it; all other samples are `others`. So the gradient of
// each direction is the difference of its red. The result is green at the site; blue is the same.
template <class T>
int greenAt(uint32_t x, const Gradients& g, unsigned others) {
  constexpr uint32_t y = 4;
  Frame<T> frame(95, 9, others);
  for (uint32_t i = 1; i < 95; i += 2)
    for (uint32_t j = 0; j < 9; j += 2) frame.at(i, j) = kSensed;
  for (size_t k = 0; k < g.size(); ++k)
    frame.at(x + static_cast<uint32_t>(kPlaces[k][0]), y + static_cast<uint32_t>(kPlaces[k][1])) =
        static_cast<T>(kSensed + g[k]);
  const Demosaiced<T> out(ImageColorVariableGradients, BAYER_GRBG, frame);
  const int i = static_cast<int>(x);
  EXPECT_EQ(out.red(i, y), kSensed);
  EXPECT_EQ(out.blue(i, y), out.green(i, y));
  return out.green(i, y);
}

// In the first lanes, in the middle, and in the last ones.
template <class T>
void expectGreen(const Gradients& g, unsigned others, int expected) {
  for (uint32_t x : {3u, 17u, 33u, 61u, 63u, 65u, 91u})
    EXPECT_EQ(greenAt<T>(x, g, others), expected) << x;
}

// Shares of N 110, of E, S, W 110, of NE and NW 120, of SE and SW 115: without N their sum is 800.
// quirk: exclusive-extremes
TEST_P(VariableGradients, TheFirstGradientIsNotTheMaximum) {
  const Gradients g = {40, 20, 20, 20, 20, 20, 20, 20};
  expectGreen<uint8_t>(g, 100, 86);  // 100 + (700 - 800) / 7; with N, 100 + (800 - 920) / 8 = 85
  expectGreen<uint16_t>(g, 100, 86);
}

// Shares 140, 135, 130, 125, 147, 140, 137, 130: 1084.
// quirk: exclusive-extremes
TEST_P(VariableGradients, FallingGradientsAreAllKept) {
  const Gradients g = {80, 70, 60, 50, 40, 30, 20, 10};
  expectGreen<uint8_t>(g, 100, 65);  // 100 + (800 - 1084) / 8 = 100 - 35.5
  expectGreen<uint16_t>(g, 100, 65);
}

// The last gradient is 0: the maximum is 0 as well, without wrapping, and only SW is kept, whose
// share is (150 + 100 + 100 + 160) / 4 = 127.
TEST_P(VariableGradients, FallingToZeroKeepsTheLastAlone) {
  const Gradients g = {80, 70, 60, 50, 40, 30, 20, 0};
  expectGreen<uint8_t>(g, 100, 73);
  expectGreen<uint16_t>(g, 100, 73);
}

// N and S are kept, shares 103 and 104; the threshold is 6 + 100 / 2.
TEST_P(VariableGradients, ANegativeQuotientIsTruncated) {
  const Gradients g = {6, 100, 8, 100, 100, 100, 100, 100};
  expectGreen<uint8_t>(g, 100, 97);  // 100 + (200 - 207) / 2
  expectGreen<uint16_t>(g, 100, 97);
  expectGreen<uint8_t>(g, 0, 0);
  expectGreen<uint16_t>(g, 0, 0);
}

// Minimum 10, maximum 41: the threshold is 30. The shares of N and E are 105 and 115.
TEST_P(VariableGradients, AGradientAtTheThresholdIsKeptAboveItDropped) {
  // Minimum 10, maximum 41: the threshold is 30. Shares: N 105, E 115, S 120, the others dropped.
  expectGreen<uint8_t>({10, 30, 41, 41, 41, 41, 41, 41}, 100, 90);  // (200 - 220) / 2
  expectGreen<uint8_t>({10, 31, 41, 41, 41, 41, 41, 41}, 100, 95);
}

TEST_P(VariableGradients, ComputedSamplesAreClamped) {
  const Gradients dark = {-100, -100, -100, -100, -100, -100, -100, -100};
  expectGreen<uint8_t>(dark, 255, 255);  // shares of 50 and 25: 100 + (2040 - 300) / 8 = 317
  expectGreen<uint16_t>(dark, 255, 317);
  expectGreen<uint16_t>({}, 1023, 1023);
  expectGreen<uint16_t>({}, 1024, 1023);
  expectGreen<uint16_t>({}, 4095, 1023);
  expectGreen<uint16_t>({}, 65535, 1023);
}

TEST_P(VariableGradients, FlatColoursComeOutEverywhere) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer)
    for (uint32_t width : {2u, 3u, 34u, 131u}) {
      Frame<uint8_t> frame(width, 7, 0);
      for (uint32_t y = 0; y < 7; ++y)
        for (uint32_t x = 0; x < width; ++x) {
          const int channel = core::Mosaic::ofPhase(bayer).colourAt(x, y);
          frame.at(x, y) = static_cast<uint8_t>(channel == kBlue    ? 10
                                                : channel == kGreen ? 200
                                                                    : 90);
        }
      const Demosaiced<uint8_t> out(ImageColorVariableGradients, bayer, frame);
      for (int y = 0; y < 7; ++y)
        for (int x = 0; x < static_cast<int>(width); ++x) {
          ASSERT_EQ(out.blue(x, y), 10) << x << ", " << y << ", phase " << bayer;
          ASSERT_EQ(out.green(x, y), 200) << x << ", " << y << ", phase " << bayer;
          ASSERT_EQ(out.red(x, y), 90) << x << ", " << y << ", phase " << bayer;
        }
    }
}

// quirk: ten-bit-limit
TEST_P(VariableGradients, ComputedSamplesStopAtTenBitsSensedOnesPass) {
  for (unsigned v : {1024u, 4095u, 4096u, 65535u}) {
    const Demosaiced<uint16_t> out(ImageColorVariableGradients, BAYER_GRBG,
                                   Frame<uint16_t>(70, 8, v));
    for (int y = 0; y < 8; ++y)
      for (int x = 0; x < 70; ++x) {
        const bool redSite = y % 2 == 0 && x % 2 == 1, blueSite = y % 2 == 1 && x % 2 == 0;
        ASSERT_EQ(out.blue(x, y), blueSite ? v : 1023u);
        ASSERT_EQ(out.green(x, y), redSite || blueSite ? 1023u : v);
        ASSERT_EQ(out.red(x, y), redSite ? v : 1023u);
      }
  }
}

// Pixel by pixel on the scattered mosaic.
template <class T>
void expectPixelByPixel(unsigned top, int width, int height) {
  for (uint32_t bayer = 0; bayer < 4; ++bayer) {
    const auto m = noiseMosaic<T>(bayer, 1, 3, width, height, top, bayer);
    std::vector<T> expected = m.scatteredBuffer(), work(m.samples());
    const auto stride = static_cast<unsigned>(m.stride());
    for (int j = 0; j < height; ++j)
      for (int i = 0; i < width; ++i) {
        T* const pixel = &expected[indexOf(m, i, j, 0)];
        switch (m.site(i, j)) {
          case SITE_GR: calcOneGreenCenter(pixel, stride, 2); break;
          case SITE_GB: calcOneGreenCenter(pixel, stride, 0); break;
          case SITE_R: calcOneRedBluCenter(pixel, stride, 0); break;
          case SITE_B: calcOneRedBluCenter(pixel, stride, 2); break;
        }
      }
    std::vector<uint8_t> result(3 * sizeof(T) * static_cast<size_t>(width * height));
    g_pwBGRBuff[9] = reinterpret_cast<uint16_t*>(work.data());
    const auto w = static_cast<uint32_t>(width), h = static_cast<uint32_t>(height);
    if constexpr (sizeof(T) == 1)
      ImageColorVariableGradients(9, m.imgWidth, bayer, 0, IMG_FMT_BGR24, 1, 3, w, h,
                                  m.frame.data(), result.data());
    else
      ImageColorVariableGradients(9, m.imgWidth, bayer, 0, IMG_FMT_BGR48, 0, 1, 3, w, h,
                                  m.frame.data(), result.data(), 48, 16);
    g_pwBGRBuff[9] = nullptr;
    ASSERT_EQ(work, expected) << width << " x " << height << ", phase " << bayer;
  }
}

TEST_P(VariableGradients, RowsAreMadeOfPixels) {
  for (int width : {2, 3, 31, 66, 130})
    for (int height : {2, 5, 9}) {
      expectPixelByPixel<uint8_t>(255, width, height);
      expectPixelByPixel<uint16_t>(1023, width, height);
      expectPixelByPixel<uint16_t>(4095, width, height);
      expectPixelByPixel<uint16_t>(65535, width, height);
    }
}

// The greens two steps away are copies of the pixel, all else is 40: every gradient is 0, the
// shares of green are 4 * 100 + 4 * 40, those of the others 8 * 40.
TEST_P(VariableGradients, ASinglePixelTakesItsColoursFromWhatTheBufferHeld) {
  const Demosaiced<uint8_t> out(ImageColorVariableGradients, BAYER_GRBG, Frame<uint8_t>(1, 1, 100),
                                40);
  EXPECT_EQ(out.blue(0, 0), 70);  // 100 + (320 - 560) / 8
  EXPECT_EQ(out.green(0, 0), 100);
  EXPECT_EQ(out.red(0, 0), 70);
}

// Five by five pixels around a green site with H beside it and V above it, or around a red or blue
// one.
template <class T>
class GradientPatch {
 public:
  GradientPatch(bool green, unsigned nChannel, unsigned value)
      : green_(green), channel_(nChannel), samples_(5 * kStride) {
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) sensed(dx, dy) = static_cast<T>(value);
  }

  T& at(int dx, int dy, unsigned channel) {
    return samples_.at(static_cast<size_t>((dy + 2) * static_cast<int>(kStride) + 3 * (dx + 2)) +
                       channel);
  }
  T& sensed(int dx, int dy) {
    const unsigned other = 2 - channel_;
    const bool evenRow = dy % 2 == 0, evenColumn = dx % 2 == 0;
    if (green_) return at(dx, dy, evenRow == evenColumn ? 1 : evenRow ? channel_ : other);
    return at(dx, dy, evenRow != evenColumn ? 1 : evenRow ? other : channel_);
  }
  // '#' for high, anything else for low.
  void draw(const std::array<std::string, 5>& rows, unsigned low, unsigned high) {
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) {
        const char c = rows[static_cast<size_t>(dy + 2)][static_cast<size_t>(dx + 2)];
        sensed(dx, dy) = static_cast<T>(c == '#' ? high : low);
      }
  }
  // The resulting pixel: blue, green, red.
  std::array<int, 3> run() {
    (green_ ? green : colour)(&at(0, 0, 0), kStride, channel_);
    return {at(0, 0, 0), at(0, 0, 1), at(0, 0, 2)};
  }

 private:
  static constexpr unsigned kStride = 15;
  static void green(T* p, unsigned stride, unsigned c) { calcOneGreenCenter(p, stride, c); }
  static void colour(T* p, unsigned stride, unsigned c) { calcOneRedBluCenter(p, stride, c); }

  bool green_;
  unsigned channel_;
  std::vector<T> samples_;
};

template <class T>
void channelsGoWhereTheyBelong() {
  for (unsigned channel : {0u, 2u}) {
    GradientPatch<T> green(true, channel, 100), colour(false, channel, 100);
    for (int dy = -2; dy <= 2; ++dy)
      for (int dx = -2; dx <= 2; ++dx) {
        const bool evenRow = dy % 2 == 0, evenColumn = dx % 2 == 0;
        if (evenRow != evenColumn) green.sensed(dx, dy) = evenRow ? 30 : 70;  // H, V
        if (evenRow != evenColumn) colour.sensed(dx, dy) = 60;                // green
        if (!evenRow && !evenColumn) colour.sensed(dx, dy) = 20;              // D
      }
    const std::array<int, 3> of0 = {30, 100, 70}, of2 = {70, 100, 30};
    EXPECT_EQ(green.run(), channel == 0 ? of0 : of2);
    const std::array<int, 3> red = {20, 60, 100}, blue = {100, 60, 20};
    EXPECT_EQ(colour.run(), channel == 0 ? red : blue);
  }
}

TEST(OnePixel, ChannelsGoWhereTheyBelong) {
  channelsGoWhereTheyBelong<uint8_t>();
  channelsGoWhereTheyBelong<uint16_t>();
}

template <class T>
std::array<int, 3> greenPixel(const Gradients& g) {
  GradientPatch<T> patch(true, 2, 100);
  for (size_t k = 0; k < g.size(); ++k)
    patch.sensed(kPlaces[k][0], kPlaces[k][1]) = static_cast<T>(100 + g[k]);
  return patch.run();
}

// A green site, the greens two steps away differing: diagonals give the green next to them, 100.
TEST(OnePixel, GreenSitesChooseAlike) {
  const Gradients falling = {80, 70, 60, 50, 40, 30, 20, 10};  // 140 + 135 + 130 + 125 + 400
  const Gradients north = {40, 20, 20, 20, 20, 20, 20, 20};    // 110 + 110 + 110 + 400
  EXPECT_THAT(greenPixel<uint8_t>(falling), ::testing::ElementsAre(84, 100, 84));
  EXPECT_THAT(greenPixel<uint16_t>(falling), ::testing::ElementsAre(84, 100, 84));
  EXPECT_THAT(greenPixel<uint8_t>(north), ::testing::ElementsAre(96, 100, 96));  // -30 / 7
  EXPECT_THAT(greenPixel<uint16_t>(north), ::testing::ElementsAre(96, 100, 96));
}

// All eight gradients are 196104 or 196105, the threshold is 65535 + 98052.
TEST(OnePixel, WithNoDirectionKeptTheSensedValueStandsForAll) {
  GradientPatch<uint16_t> patch(true, 2, 0);
  patch.draw({"###.#", "...#.", "##..#", "###.#", "###.#"}, 0, 65535);
  patch.sensed(0, 0) = 500;
  EXPECT_THAT(patch.run(), ::testing::ElementsAre(500, 500, 500));
  patch.draw({"...#.", "###.#", "..###", "...#.", "...#."}, 0, 65535);
  patch.sensed(0, 0) = 65035;
  EXPECT_THAT(patch.run(), ::testing::ElementsAre(1023, 65035, 1023));
}

}  // namespace
}  // namespace vistrel::core::test
