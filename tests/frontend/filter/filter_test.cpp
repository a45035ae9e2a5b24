// Filters of finished images, in place: what all share, and the two without weights.
#include "tests/frontend/filter/filtered.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

VISTREL_STREAM_SUITE(Filter);
VISTREL_STREAM_SUITE(FixedFilter);

const _FLT_3X3* const kBox = nullptr;
const _FLT_3X3* const kFiveTaps = reinterpret_cast<const _FLT_3X3*>(uintptr_t{1});

// Positions, in samples, at which two images differ.
template <class T>
std::vector<size_t> changes(const std::vector<T>& before, const std::vector<T>& after) {
  std::vector<size_t> positions;
  for (size_t i = 0; i < before.size(); ++i)
    if (before[i] != after[i]) positions.push_back(i);
  return positions;
}

// Of a sample and its neighbours to the right and below.
TEST_P(FixedFilter, TheBoxIsATruncatedMeanOfFour) {
  const Bytes image = {10, 20, 30,  //
                       40, 50, 60,  //
                       71, 80, 92};
  EXPECT_THAT(filtered(kBox, IMG_FMT_GRAY8, {3, 3}, image),
              ElementsAre(30, 40, 30,  //
                          60, 70, 60,  // 241 / 4, 282 / 4
                          71, 80, 92));
}

TEST_P(FixedFilter, TheBoxOfBytesLeavesTheLastRowAndColumn) {
  for (uint32_t width : kWidths) {
    const Bytes after = filtered(kBox, IMG_FMT_MONO8, {width, 3},
                                 painted<uint8_t>(width, 3, [](uint32_t x, uint32_t y) {
                                   return 4 * ((x + y) & 1) + 4 * y;
                                 }));
    // A block of the first two rows has 0, 4, 4 and 8.
    for (uint32_t x = 0; x < width; ++x) {
      ASSERT_EQ(after[x], x < width - 1 ? 4 : 4 * (x & 1));
      ASSERT_EQ(after[2 * width + x], 8 + 4 * (x & 1));
    }
  }
}

// quirk: filter-narrow-box
TEST_P(FixedFilter, TheBoxOfFourColumnsOfSixteenBitSamplesChangesTheFirstOneOnly) {
  const Samples16 image = noise<uint16_t>(4 * 6, 1023, 4);
  Samples16 expected = image;
  for (int y = 0; y < 5; ++y)
    expected[4 * y] = static_cast<uint16_t>(
        (image[4 * y] + image[4 * y + 1] + image[4 * y + 4] + image[4 * y + 5]) / 4);
  EXPECT_EQ(filtered(kBox, IMG_FMT_GRAY16, {4, 6}, image), expected);
  for (uint32_t width : {2u, 3u}) {
    const Samples16 narrow = noise<uint16_t>(width * 6, 1023, width);
    EXPECT_EQ(filtered(kBox, IMG_FMT_GRAY16, {width, 6}, narrow), narrow);
  }
}

// quirk: ten-bit-limit
TEST_P(FixedFilter, MeansOfBrightSixteenBitSamplesStopAtTenBits) {
  for (const unsigned v : {1023, 1024, 40000, 65535}) {
    const Samples16 image = flat<uint16_t>(5 * 5, v);
    EXPECT_EQ(filtered(kBox, IMG_FMT_GRAY16, {5, 5}, image)[0], 1023);
    EXPECT_EQ(filtered(kFiveTaps, IMG_FMT_GRAY16, {5, 5}, image)[10], 1023);
  }
  // 5119 / 5 = 1023 in either way, 5114 / 5 = 1022.
  for (const int last : {5119 - 4000, 5114 - 4000}) {
    Samples16 image = flat<uint16_t>(5 * 5, 1000);
    image[10] = static_cast<uint16_t>(last);
    EXPECT_EQ(filtered(kFiveTaps, IMG_FMT_GRAY16, {5, 5}, image)[10], last == 1119 ? 1023 : 1022);
  }
}

TEST_P(FixedFilter, TheMeanOfFiveOnFiveRowsChangesRowTwoUpToTheFifthLastColumn) {
  for (uint32_t width : {5u, 6u, 12u, 37u, 70u}) {
    const Bytes image =
        painted<uint8_t>(width, 5, [](uint32_t x, uint32_t y) { return y == 2 ? 0 : 255 - x; });
    std::vector<size_t> expected;
    for (size_t x = 0; x + 4 < width; ++x) expected.push_back(2 * width + x);
    EXPECT_EQ(changes(image, filtered(kFiveTaps, IMG_FMT_GRAY8, {width, 5}, image)), expected);
    const Samples16 samples16(image.begin(), image.end());
    EXPECT_EQ(changes(samples16, filtered(kFiveTaps, IMG_FMT_GRAY16, {width, 5}, samples16)),
              expected);
  }
}

TEST_P(FixedFilter, TheMeanOfFiveLeavesUpToFourRowsOrColumns) {
  for (uint32_t small : {2u, 3u, 4u})
    for (const Size size : {Size{small, 9}, Size{9, small}}) {
      const Bytes image = noise<uint8_t>(9 * small, 255, small);
      EXPECT_EQ(filtered(kFiveTaps, IMG_FMT_GRAY8, size, image), image);
      const Samples16 samples16 = noise<uint16_t>(9 * small, 1023, small);
      EXPECT_EQ(filtered(kFiveTaps, IMG_FMT_GRAY16, size, samples16), samples16);
    }
}

// The positions that an impulse reaches.
template <class T>
std::vector<size_t> reachOf(Size size, size_t at, uint32_t format) {
  const std::vector<T> image = impulse<T>(size.width * size.height, at, 100);
  const std::vector<T> after = filtered(kFiveTaps, format, size, image);
  return changes(flat<T>(image.size(), 0), after);
}

// Where row and column are even: the diagonals. Elsewhere: two samples off.
TEST_P(FixedFilter, TheMeanOfFiveFollowsTheMosaic) {
  const Size size = {64, 12};
  const auto index = [](size_t x, size_t y) { return y * 64 + x; };
  for (const size_t x : {20u, 41u})
    for (const size_t y : {5u, 6u}) {
      std::vector<size_t> expected;
      for (size_t j = 2; j < 10; ++j)
        for (size_t i = 0; i < 60; ++i) {
          const size_t dx = i < x ? x - i : i - x, dy = j < y ? y - j : j - y;
          const bool diagonal = i % 2 == 0 && j % 2 == 0;
          const bool taps = diagonal ? dx == 1 && dy == 1 : dx + dy == 2 && dx != 1;
          if (taps || (dx == 0 && dy == 0)) expected.push_back(index(i, j));
        }
      EXPECT_EQ(reachOf<uint8_t>(size, index(x, y), IMG_FMT_GRAY8), expected) << x << ", " << y;
      EXPECT_EQ(reachOf<uint16_t>(size, index(x, y), IMG_FMT_GRAY16), expected) << x << ", " << y;
    }
}

// quirk: filter-row-seam. At columns 0 and 1 the left taps are the end of the row above.
TEST_P(FixedFilter, TheMeanOfFiveBeginsInColumnZero) {
  const Size size = {10, 7};
  for (const auto format : {IMG_FMT_GRAY8, IMG_FMT_GRAY16}) {
    const auto reach = [&](size_t x, size_t y) {
      return format == IMG_FMT_GRAY8 ? reachOf<uint8_t>(size, y * 10 + x, format)
                                     : reachOf<uint16_t>(size, y * 10 + x, format);
    };
    // The impulses stay: 28, 29 and 49.
    EXPECT_THAT(reach(8, 2), ElementsAre(28, 30));          // two left of (0, 3)
    EXPECT_THAT(reach(9, 2), ElementsAre(20, 29, 31, 40));  // lower left of (0, 2), two left of
    EXPECT_THAT(reach(9, 4), ElementsAre(40, 49));          // (1, 3), a corner of (0, 4)
  }
}

TEST_P(Filter, AFormatIsGrayOrHasThreeOrFourBytes) {
  const Size size = {11, 6};
  const Bytes image = noise<uint8_t>(11 * 6 * 4, 255, 2);
  const auto by = [&](uint32_t format) { return filtered(&kMean, format, size, image); };
  const Bytes gray = by(0), three = by(2), four = by(3);
  EXPECT_EQ(by(5), gray);
  EXPECT_NE(three, gray);
  EXPECT_NE(four, three);
  EXPECT_NE(four, gray);
  for (uint32_t format : {4u, 7u, 8u, 255u, 0xFFFFFFFFu}) EXPECT_EQ(by(format), four);
  const Samples16 samples16 = noise<uint16_t>(11 * 6, 1023, 2);
  EXPECT_EQ(filtered(&kMean, 6, size, samples16), filtered(&kMean, 1, size, samples16));
}

TEST_P(Filter, TheWorkBufferHoldsTheWholeCopyAndNoMore) {
  const Bytes image = noise<uint8_t>(20 * 10 * 4, 255, 2);
  const uint8_t* const bytes = reinterpret_cast<uint8_t*>(buffer());
  const uint32_t copied[] = {200, 400, 600, 800, 800, 200, 400, 800};  // by format
  for (uint32_t format = 0; format < 8; ++format)
    for (const _FLT_3X3* const filter : {&kMean, kBox, kFiveTaps}) {
      if (filter != &kMean && copied[format] > 400) continue;
      const uint32_t size = copied[format];
      std::fill_n(buffer(), 600, uint16_t{0xEEEE});
      Bytes copy = image;
      copy.resize(1200);
      ImgFilter(kStream, filter, format, 20, 10, copy.data());
      EXPECT_TRUE(std::equal(bytes, bytes + size, image.begin()));
      EXPECT_TRUE(std::all_of(bytes + size, bytes + 1200, [](uint8_t v) { return v == 0xEE; }));
    }
}

}  // namespace
}  // namespace vistrel::core::test
