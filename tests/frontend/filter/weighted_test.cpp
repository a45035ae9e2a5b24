// The filter of nine weights.
#include <cstdint>
#include <limits>

#include "tests/frontend/filter/filtered.h"

namespace vistrel::core::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

VISTREL_STREAM_SUITE(WeightedFilter);

constexpr _FLT_3X3 kIdentity = {1, {0, 0, 0, 0, 1, 0, 0, 0, 0}};

// A single weight of 1.
_FLT_3X3 tap(int which) {
  _FLT_3X3 filter = {1, {}};
  filter.anWeights[which] = 1;
  return filter;
}
TEST_P(WeightedFilter, TheIdentityLeavesEveryFormatUnchanged) {
  for (uint32_t width : kWidths) {
    const Size size = {width, 5};
    const Bytes image = noise<uint8_t>(width * 5 * 4, 255, width);
    for (uint32_t format : {0u, 5u, 2u, 3u, 4u, 7u, 8u, 0xFFFFFFFFu})
      EXPECT_EQ(filtered(&kIdentity, format, size, image), image);
    const Samples16 samples16 = noise<uint16_t>(width * 5, 1023, width);
    for (uint32_t format : {1u, 6u})
      EXPECT_EQ(filtered(&kIdentity, format, size, samples16), samples16);
  }
}

// quirk: ten-bit-limit
TEST_P(WeightedFilter, BrightSixteenBitSamplesStopAtTenBitsAndTheOuterRingStays) {
  for (uint32_t width : {3u, 9u, 40u}) {
    const Samples16 after =
        filtered(&kMean, IMG_FMT_GRAY16, {width, 7}, flat<uint16_t>(width * 7, 2000));
    for (uint32_t y = 0; y < 7; ++y)
      for (uint32_t x = 0; x < width; ++x) {
        const bool ring = y == 0 || y == 6 || x == 0 || x == width - 1;
        ASSERT_EQ(after[y * width + x], ring ? 2000 : 1023) << x << ", " << y;
      }
  }
}

TEST_P(WeightedFilter, ANegativeDivisorTurnsPositiveWeightsToZero) {
  _FLT_3X3 filter = kMean;
  filter.nDivisor = -1;
  const Bytes bytes = filtered(&filter, IMG_FMT_GRAY8, {3, 3}, flat<uint8_t>(9, 200));
  EXPECT_THAT(bytes, ElementsAre(200, 200, 200, 200, 0, 200, 200, 200, 200));
  const Samples16 samples16 = filtered(&filter, IMG_FMT_GRAY16, {3, 3}, flat<uint16_t>(9, 200));
  EXPECT_THAT(samples16, ElementsAre(200, 200, 200, 200, 0, 200, 200, 200, 200));
}

TEST_P(WeightedFilter, ANegativeDivisorAndNegativeWeightsMakeAPositiveMean) {
  const _FLT_3X3 filter = {-9, {-1, -1, -1, -1, -1, -1, -1, -1, -1}};
  const Bytes bytes = noise<uint8_t>(40 * 9, 255, 3);
  EXPECT_EQ(filtered(&filter, IMG_FMT_GRAY8, {40, 9}, bytes),
            filtered(&kMean, IMG_FMT_GRAY8, {40, 9}, bytes));
  const Samples16 samples16 = noise<uint16_t>(40 * 9, 1023, 3);
  EXPECT_EQ(filtered(&filter, IMG_FMT_GRAY16, {40, 9}, samples16),
            filtered(&kMean, IMG_FMT_GRAY16, {40, 9}, samples16));
}

TEST_P(WeightedFilter, ThreeByThreeChangesTheCentreAlone) {
  const Bytes image = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  const _FLT_3X3 filter = {2, {1, 2, 3, 4, 5, 6, 7, 8, 9}};  // 1 + 4 + 9 + ... + 81 = 285
  EXPECT_THAT(filtered(&filter, IMG_FMT_GRAY8, {3, 3}, image),
              ElementsAre(1, 2, 3, 4, 142, 6, 7, 8, 9));
  EXPECT_THAT(filtered(&filter, IMG_FMT_GRAY16, {3, 3}, Samples16(image.begin(), image.end())),
              ElementsAre(1, 2, 3, 4, 142, 6, 7, 8, 9));
}

// Every gray tap reads its own neighbour.
TEST_P(WeightedFilter, GrayTapsAreTheNineNeighbours) {
  const Size size = {70, 6};
  const Bytes image = noise<uint8_t>(70 * 6, 255, 5);
  const Samples16 samples16 = noise<uint16_t>(70 * 6, 1023, 6);
  for (int k = 0; k < 9; ++k) {
    const _FLT_3X3 filter = tap(k);
    const Bytes bytesAfter = filtered(&filter, IMG_FMT_MONO8, size, image);
    const Samples16 samples16After = filtered(&filter, IMG_FMT_MONO16, size, samples16);
    for (int y = 1; y < 5; ++y)
      for (int x = 1; x < 69; ++x) {
        const int from = (y + k / 3 - 1) * 70 + x + k % 3 - 1;
        ASSERT_EQ(bytesAfter[y * 70 + x], image[from]) << k << ": " << x << ", " << y;
        ASSERT_EQ(samples16After[y * 70 + x], samples16[from]) << k << ": " << x << ", " << y;
      }
  }
}

// Columns of the nine taps, in bytes.
void expectTaps(uint32_t format, int pixel, const int (&columns)[9]) {
  const int width = 23, row = width * pixel;
  const Bytes image = noise<uint8_t>(row * 5, 255, 8);
  for (int k = 0; k < 9; ++k) {
    const _FLT_3X3 filter = tap(k);
    const Bytes after = filtered(&filter, format, {23, 5}, image);
    for (int y = 0; y < 5; ++y)
      for (int p = 0; p < row; ++p) {
        const bool inside = 1 <= y && y < 4 && pixel <= p && p < row - pixel;
        const int from = inside ? (y + k / 3 - 1) * row + p + columns[k] : y * row + p;
        ASSERT_EQ(after[y * row + p], image[from]) << k << ": byte " << p << " of row " << y;
      }
  }
}

// quirk: filter-centre-row
TEST_P(WeightedFilter, TheCentreRowOfBgrTakesTheNeighbouringBytes) {
  expectTaps(IMG_FMT_BGR24, 3, {-3, 0, 3, -1, 0, 1, -3, 0, 3});
}

// quirk: filter-lower-left
TEST_P(WeightedFilter, TheLowerLeftTapOfArgbIsTheByteRightBefore) {
  for (uint32_t format : {3u, 4u, 9u}) expectTaps(format, 4, {-4, 0, 4, -4, 0, 4, -1, 0, 4});
}

// quirk: filter-bgr48
TEST_P(WeightedFilter, Bgr48IsFilteredAsFourBytesAPixel) {
  const Bytes image = noise<uint8_t>(10 * 6 * 6, 255, 9);
  Bytes expected = image;
  const Bytes firstTwoThirds(image.begin(), image.begin() + 10 * 6 * 4);
  const Bytes after = filtered(&kMean, IMG_FMT_ARGB32, {10, 6}, firstTwoThirds);
  std::copy(after.begin(), after.end(), expected.begin());
  EXPECT_EQ(filtered(&kMean, IMG_FMT_BGR48, {10, 6}, image), expected);
  EXPECT_NE(expected, image);
}

TEST_P(WeightedFilter, ImagesOfOneOrTwoRowsOrColumnsStayAndAreCopiedAllTheSame) {
  for (const Size size : {Size{1, 9}, Size{2, 9}, Size{9, 1}, Size{9, 2}, Size{1, 1}, Size{2, 2}}) {
    const size_t pixels = size.width * size.height;
    const Bytes image = noise<uint8_t>(pixels * 4, 255, 1);
    for (uint32_t format : {0u, 2u, 3u}) {
      std::fill_n(buffer(), pixels * 2, uint16_t{0xEEEE});
      EXPECT_EQ(filtered(&kMean, format, size, image), image);
      const size_t copied = pixels * (format == 0 ? 1 : format == 2 ? 3 : 4);
      EXPECT_TRUE(std::equal(image.begin(), image.begin() + ptrdiff_t(copied),
                             reinterpret_cast<uint8_t*>(buffer())));
    }
    const Samples16 samples16 = noise<uint16_t>(pixels, 65535, 1);
    EXPECT_EQ(filtered(&kMean, IMG_FMT_GRAY16, size, samples16), samples16);
    EXPECT_TRUE(std::equal(samples16.begin(), samples16.end(), buffer()));
  }
}

int wrappedQuotient(uint32_t sum, int32_t divisor, int limit) {
  const int64_t quotient = static_cast<int32_t>(sum) / int64_t{divisor};  // truncates
  return static_cast<int>(std::clamp<int64_t>(quotient, 0, limit));
}

constexpr int32_t kDivisors[] = {1,   2,    3,     5,     7,      9,      16,        100,
                                 127, 128,  255,   256,   257,    1000,   1023,      16383,
                                 327, 4095, 32766, 32767, 32768,  32769,  65536,     8388607,
                                 -2,  -3,   -9,    -100,  -32767, -32768, 2147483647};

// All products of a byte and a small weight, and a choice of divisors.
TEST_P(WeightedFilter, QuotientsOfSmallSumsAreExact) {
  const uint32_t width = 258;
  const Bytes image = painted<uint8_t>(width, 3, [](uint32_t x, uint32_t) { return x - 1; });
  for (const int32_t divisor : kDivisors)
    for (int32_t weight = -128; weight <= 128; ++weight) {
      const _FLT_3X3 filter = {divisor, {0, 0, 0, 0, weight, 0, 0, 0, 0}};
      const Bytes after = filtered(&filter, IMG_FMT_GRAY8, {width, 3}, image);
      for (int v = 0; v < 256; ++v)
        ASSERT_EQ(after[width + v + 1],
                  wrappedQuotient(static_cast<uint32_t>(v * weight), divisor, 255))
            << v << " * " << weight << " / " << divisor;
    }
}

// Sums around multiples of the divisor, of both signs.
TEST_P(WeightedFilter, QuotientsOfLargeSumsAreExact) {
  const uint32_t width = 1026;
  for (const int32_t divisor : kDivisors)
    for (const int32_t weight : {1, 2, 255, 257, 32767, -32768, 32768, 65537, 16777217, -77777}) {
      const _FLT_3X3 filter = {divisor, {0, 0, 0, 0, weight, 0, 0, 0, 0}};
      const Samples16 image =
          painted<uint16_t>(width, 3, [](uint32_t x, uint32_t) { return x * 64; });
      const Samples16 after = filtered(&filter, IMG_FMT_GRAY16, {width, 3}, image);
      const Bytes bytes = painted<uint8_t>(width, 3, [](uint32_t x, uint32_t) { return x; });
      const Bytes bytesAfter = filtered(&filter, IMG_FMT_GRAY8, {width, 3}, bytes);
      for (uint32_t x = width + 1; x < 2 * width - 1; ++x) {
        ASSERT_EQ(after[x],
                  wrappedQuotient(image[x] * static_cast<uint32_t>(weight), divisor, 1023))
            << image[x] << " * " << weight << " / " << divisor;
        ASSERT_EQ(bytesAfter[x],
                  wrappedQuotient(bytes[x] * static_cast<uint32_t>(weight), divisor, 255))
            << bytes[x] << " * " << weight << " / " << divisor;
      }
    }
}

TEST_P(WeightedFilter, SumsWrapIn32Bits) {
  constexpr int32_t kTop = std::numeric_limits<int32_t>::max();
  _FLT_3X3 filter = {1, {kTop, 0, 0, 0, 0, 0, 0, 0, kTop}};  // 2 * (2^31 - 1) * v = -2 * v
  EXPECT_EQ(filtered(&filter, IMG_FMT_GRAY8, {3, 3}, flat<uint8_t>(9, 50))[4], 0);
  filter.nDivisor = -1;
  EXPECT_EQ(filtered(&filter, IMG_FMT_GRAY8, {3, 3}, flat<uint8_t>(9, 50))[4], 100);
  EXPECT_EQ(filtered(&filter, IMG_FMT_GRAY16, {3, 3}, flat<uint16_t>(9, 50))[4], 100);
}

TEST_P(WeightedFilter, TheLowestSumByMinusOneWrapsToItself) {
  constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
  const auto centre = [](int32_t divisor) {
    const _FLT_3X3 filter = {divisor, {0, 0, 0, 0, kLowest, 0, 0, 0, 0}};
    return filtered(&filter, IMG_FMT_GRAY8, {3, 3}, flat<uint8_t>(9, 1))[4];
  };
  EXPECT_EQ(centre(-1), 0);
  EXPECT_EQ(centre(-2), 255);
  EXPECT_EQ(centre(-1 << 23), 255);
  EXPECT_EQ(centre(-1 << 24), 128);
  EXPECT_EQ(centre(kLowest), 1);
}

}  // namespace
}  // namespace vistrel::core::test
