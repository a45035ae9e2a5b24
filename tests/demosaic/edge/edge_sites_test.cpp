// The edge demosaic's colours of four pixels, on a patch of the mosaic.
#include "demosaic/edge/edge_sites.h"

#include <array>
#include <random>

#include "tests/frames.h"
#include "tests/reference/edge_kernels.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

// Five rows of eleven samples, which four pixels read. Lane 0 is the pixel at (0, 0).
template <class T>
struct Patch {
  static constexpr int kStride = 11, kPosition = 2 * kStride + 2;

  std::vector<T> samples;

  explicit Patch(unsigned value) : samples(flat<T>(5 * kStride, value)) {}

  T& at(int x, int y) { return samples.at(static_cast<size_t>((y + 2) * kStride + x + 2)); }
  void set(T value, std::initializer_list<std::array<int, 2>> places) {
    for (const auto& [x, y] : places) at(x, y) = value;
  }
};

constexpr int kUntouched = -12345;

struct Colours {
  std::array<int, 8> red, green, blue;
  Colours() {
    for (auto* colour : {&red, &green, &blue}) colour->fill(kUntouched);
  }
  bool operator==(const Colours&) const = default;
};

template <class T>
Colours atRedOrBlue(const Patch<T>& patch, int bBlueRow) {
  Colours c;
  vec_RB_CalcGreen_3x3x4_ext<const T*>(patch.samples.data(), Patch<T>::kPosition, Patch<T>::kStride,
                                       c.red.data(), c.blue.data(), c.green.data(), bBlueRow);
  return c;
}

using Thresholds = std::array<int, 4>;

template <class T>
Colours atGreen(const Patch<T>& patch, Thresholds t, int bBlueRow) {
  Colours c;
  vec_G_CalcGreen_3x3x4_ext<const T*>(patch.samples.data(), Patch<T>::kPosition, Patch<T>::kStride,
                                      c.red.data(), c.blue.data(), c.green.data(), t[0], t[1], t[2],
                                      t[3], bBlueRow);
  return c;
}

constexpr Thresholds kNone = {0, 0, 0, 0}, kWidest = {255, 191, 127, 63};

template <class Check>
void atBothDepths(Check check) {
  check(uint8_t{});
  check(uint16_t{});
}

TEST(EdgeSites, FillEverySecondElementOfAFlatWithItsValue) {
  atBothDepths([](auto depth) {
    using T = decltype(depth);
    for (int v : {0, 1, 77, int{std::numeric_limits<T>::max()}})
      for (int bBlueRow : {0, 1}) {
        const Patch<T> patch(static_cast<unsigned>(v));
        for (const Colours& c : {atRedOrBlue(patch, bBlueRow), atGreen(patch, kNone, bBlueRow),
                                 atGreen(patch, kWidest, bBlueRow)})
          for (const auto& colour : {c.red, c.green, c.blue})
            EXPECT_THAT(colour,
                        ElementsAre(v, kUntouched, v, kUntouched, v, kUntouched, v, kUntouched));
      }
  });
}

TEST(EdgeSites, ATieOfDirectionsTakesTheColumn) {
  Patch<uint8_t> patch(50);
  patch.set(10, {{0, -1}, {0, 1}});
  patch.set(91, {{-1, 0}, {1, 0}});
  EXPECT_EQ(atRedOrBlue(patch, 0).green[0], 10);
  patch.at(0, 1) = 11;  // the column changes by one
  EXPECT_EQ(atRedOrBlue(patch, 0).green[0], 91);
  patch.at(1, 0) = 90;  // and so does the row
  EXPECT_EQ(atRedOrBlue(patch, 0).green[0], (10 + 11) >> 1);
}

// A green site with all four diagonals at zero.
int peak(int value, Thresholds t) {
  Patch<uint8_t> patch(0);
  patch.at(0, 0) = static_cast<uint8_t>(value);
  return atGreen(patch, t, 0).green[0];
}

TEST(EdgeSites, GreenTakesQuartersOfTheMean) {
  EXPECT_EQ(peak(255, {254, 191, 127, 63}), 255);
  EXPECT_EQ(peak(255, kWidest), 63 + 127 + 31);  // 221
  EXPECT_EQ(peak(191, kWidest), (191 >> 1) + (95 >> 1));
  EXPECT_EQ(peak(127, kWidest), (63 >> 1) + (63 >> 2) + (127 >> 2));
  EXPECT_EQ(peak(63, kWidest), 31);
}

TEST(EdgeSites, ARangeEqualToAThresholdIsNotAboveIt) {
  EXPECT_EQ(peak(191, {255, 191, 127, 63}), (191 >> 1) + (95 >> 1));  // the second
  EXPECT_EQ(peak(192, {255, 191, 127, 63}), (192 >> 2) + (192 >> 1) + (96 >> 2));
  EXPECT_EQ(peak(64, {64, 63, 62, 61}), (64 >> 2) + (64 >> 1) + (32 >> 2));  // the first
  EXPECT_EQ(peak(64, {66, 65, 64, 63}), (32 >> 1) + (32 >> 2) + (64 >> 2));  // the third
  EXPECT_EQ(peak(64, {67, 66, 65, 64}), 32);                                 // the last
}

TEST(EdgeSites, WithoutThresholdsOnlyAFlatIsSmoothed) {
  for (int v : {0, 3, 254, 255})
    EXPECT_EQ(atGreen(Patch<uint8_t>(unsigned(v)), kNone, 0).green[0], v);
  EXPECT_EQ(peak(1, kNone), 1);
}

// Each row loses a half before the sum; otherwise the result would be 4 >> 2.
TEST(EdgeSites, TheMeanOfGreenTruncatesItsPairsFirst) {
  Patch<uint8_t> patch(0);
  patch.at(-1, -1) = 3;
  patch.at(0, 0) = patch.at(1, 1) = 1;
  EXPECT_EQ(atGreen(patch, kWidest, 0).green[0], (2 * 1 + 1 + 0) >> 2);
}

// bBlueRow decides which of the rows' two colours a result is.
TEST(EdgeSites, RowsOfBlueExchangeRedAndBlue) {
  Patch<uint8_t> green(100), other(100);
  for (int x = -1; x <= 7; x += 2) green.at(x, 0) = 180;                   // left and right
  for (int x = -2; x <= 8; x += 2) green.at(x, -1) = green.at(x, 1) = 40;  // above and below
  EXPECT_THAT(atGreen(green, kNone, 0).red[2], 180);
  EXPECT_THAT(atGreen(green, kNone, 0).blue[2], 40);
  EXPECT_THAT(atGreen(green, kNone, 1).red[2], 40);
  EXPECT_THAT(atGreen(green, kNone, 1).blue[2], 180);
  for (int x = -2; x <= 8; x += 2) other.at(x, 0) = other.at(x, -2) = other.at(x, 2) = 180;
  for (int x = -1; x <= 7; x += 2) other.at(x, -1) = other.at(x, 1) = 40;
  EXPECT_THAT(atRedOrBlue(other, 0).red[2], 180);
  EXPECT_THAT(atRedOrBlue(other, 0).blue[2], 40);
  EXPECT_THAT(atRedOrBlue(other, 1).red[2], 40);
  EXPECT_THAT(atRedOrBlue(other, 1).blue[2], 180);
}

// Flat green exceeds a single diagonal by one: a sum of -1, of which a quarter is -1.
TEST(EdgeSites, SumsOfDifferencesRoundDown) {
  Patch<uint8_t> diagonal(100), upright(100);
  diagonal.at(1, 1) = 99;
  EXPECT_EQ(atRedOrBlue(diagonal, 0).blue[0], 99);
  upright.at(0, 1) = 99;
  EXPECT_EQ(atGreen(upright, kNone, 0).blue[0], 99);
  EXPECT_EQ(atGreen(upright, kNone, 0).red[0], 100);
}

// Greens of the even rows and of the odd rows, the diagonals; rows two away differ from the pixel,
// so that green is taken along rows.
Patch<uint8_t> stripes(uint8_t evenGreen, uint8_t oddGreen, uint8_t diagonal) {
  Patch<uint8_t> patch(0);
  for (int y : {-2, 0, 2})
    for (int x = -2; x <= 8; ++x) patch.at(x, y) = x & 1 ? evenGreen : y == 0 ? 0 : 100;
  for (int y : {-1, 1})
    for (int x = -2; x <= 8; ++x) patch.at(x, y) = x & 1 ? diagonal : oddGreen;
  return patch;
}

TEST(EdgeSites, ResultsMayLeaveTheRangeOfSamples) {
  EXPECT_EQ(atRedOrBlue(stripes(200, 0, 255), 0).green[0], 200);
  EXPECT_EQ(atRedOrBlue(stripes(200, 0, 255), 0).blue[0], 200 + 255);
  EXPECT_EQ(atRedOrBlue(stripes(0, 255, 0), 1).red[0], -255);
  Patch<uint8_t> bright(0), dark(255);
  for (int y : {-2, 0, 2})
    for (int x : {-1, 1, 3, 5, 7}) bright.at(x, y) = 255;
  for (int y : {-1, 1})
    for (int x : {-2, 0, 2, 4, 6, 8}) bright.at(x, y) = 255;
  bright.at(0, 0) = 255;
  for (size_t i = 0; i < dark.samples.size(); ++i)
    dark.samples[i] = static_cast<uint8_t>(255 - bright.samples[i]);
  const Colours above = atGreen(bright, kNone, 0), below = atGreen(dark, kNone, 0);
  EXPECT_EQ(above.green[0], 255);
  EXPECT_EQ(above.red[0], 255 + 255);
  EXPECT_EQ(above.blue[0], 255 + 255);
  EXPECT_EQ(below.green[0], 0);
  EXPECT_EQ(below.red[0], -255);
  EXPECT_EQ(below.blue[0], -255);
}

// quirk: signed-samples
TEST(EdgeSites, ASampleWithAllSixteenBitsCountsAsTheSmaller) {
  Patch<uint16_t> patch(1000);
  patch.at(0, 0) = 40000;
  patch.set(40000, {{0, -2}, {0, 2}});
  patch.set(3000, {{-1, 0}, {1, 0}});
  // No change down the column, twice 1000 - 40000 along the row, which is less.
  EXPECT_EQ(atRedOrBlue(patch, 0).green[0], 3000);
  patch.set(1000, {{0, -2}, {0, 2}});
  patch.set(40000, {{-2, 0}, {2, 0}});
  EXPECT_EQ(atRedOrBlue(patch, 0).green[0], 1000);
  Patch<uint16_t> green(1000);
  green.at(0, 0) = 40000;  // a range of -39000 is above no threshold
  EXPECT_EQ(atGreen(green, kNone, 0).green[0], (2 * 40000 + 1000 + 1000) >> 2);
}

// Both kernels on noise of every range, against the plain transcription.
template <class T>
void compareOnNoise(unsigned top, unsigned seed) {
  Patch<T> patch(0);
  patch.samples = noise<T>(patch.samples.size(), top, seed);
  Colours rb, g;
  std::mt19937 random(seed);
  Thresholds t;
  for (int& v : t) v = static_cast<int>(random() % (top + 1));
  std::sort(t.rbegin(), t.rend());
  const int bBlueRow = static_cast<int>(seed & 1);
  const T* const samples = patch.samples.data();
  reference::vec_RB_CalcGreen_3x3x4_ext<const T*>(samples, patch.kPosition, patch.kStride,
                                                  rb.red.data(), rb.blue.data(), rb.green.data(),
                                                  bBlueRow);
  reference::vec_G_CalcGreen_3x3x4_ext<const T*>(samples, patch.kPosition, patch.kStride,
                                                 g.red.data(), g.blue.data(), g.green.data(), t[0],
                                                 t[1], t[2], t[3], bBlueRow);
  ASSERT_EQ(atRedOrBlue(patch, bBlueRow), rb) << seed;
  ASSERT_EQ(atGreen(patch, t, bBlueRow), g) << seed;
}

TEST(EdgeSites, AgreeWithThePlainFormulasOnNoise) {
  for (unsigned seed = 0; seed < 2000; ++seed) {
    compareOnNoise<uint8_t>(seed % 3 == 0 ? 3 : 255, seed);
    compareOnNoise<uint16_t>(seed % 3 == 0 ? 7 : seed % 3 == 1 ? 4095 : 65535, seed);
  }
}

}  // namespace
}  // namespace vistrel::core::test
