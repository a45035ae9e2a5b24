// The directional demosaic: its definition is the reference's, which has tests of its own.
#include "tests/reference/directional.h"

#include "demosaic/algorithms.h"
#include "demosaic/directional/mirrored_ring.h"
#include "tests/arena.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

using ::testing::ElementsAre;

constexpr int kGrids[] = {CFA_GRID_BGGR, CFA_GRID_RGGB, CFA_GRID_GBRG, CFA_GRID_GRBG};

struct Size {
  int width, height;
};

// Rows of the image, blue first.
template <class T>
std::vector<T> rowsOf(const std::vector<T>& samples, Size size, unsigned bits, int grid,
                      RowInterval rows, bool redFirst = false) {
  const core::Mosaic mosaic = core::Mosaic::ofGrid(static_cast<unsigned>(grid));
  PlainRows<T> source(samples.data(), size.width, size.height);
  const size_t rowSamples = 3 * static_cast<size_t>(size.width);
  Canvas<T> canvas(rowSamples * static_cast<size_t>(rows.end - rows.first));
  PlainImage<T> image(canvas.data() - static_cast<ptrdiff_t>(rowSamples) * rows.first,
                      static_cast<ptrdiff_t>(rowSamples));
  Memory memory;
  RowProcess<T>* const demosaic =
      directional<T>().make({.source = source,
                             .mosaic = mosaic,
                             .columns = size.width,
                             .height = size.height,
                             .roi = {0, 0, size.width, size.height},
                             .rows = rows,
                             .image = &image,
                             .order = redFirst ? mosaic.exchanged() : mosaic,
                             .bits = bits},
                            memory);
  demosaic->advance(demosaic->last());
  return canvas.samples();
}

template <class T>
std::vector<T> imageOf(const std::vector<T>& samples, Size size, unsigned bits, int grid,
                       bool redFirst = false) {
  return rowsOf(samples, size, bits, grid, {0, size.height}, redFirst);
}

template <class T>
std::vector<T> referenceOf(const std::vector<T>& samples, Size size, unsigned bits, int grid) {
  const std::vector<uint16_t> rgb =
      reference::demosaicDirectional({size.width, size.height, static_cast<int>(bits), grid,
                                      std::vector<uint16_t>(samples.begin(), samples.end())});
  return std::vector<T>(rgb.begin(), rgb.end());
}

// A third of the samples are extreme.
template <class T>
std::vector<T> stark(Size size, unsigned bits, unsigned seed) {
  const unsigned largest = (1u << bits) - 1;
  std::vector<T> frame = noise<T>(static_cast<size_t>(size.width * size.height), largest, seed);
  std::mt19937 random(seed);
  for (T& sample : frame) {
    const auto kind = random() % 6;
    if (kind < 2) sample = static_cast<T>(kind ? largest : 0);
  }
  return frame;
}

VISTREL_LEVEL_SUITE(DirectionalDemosaic);

// Worked out in the reference's test.
TEST_P(DirectionalDemosaic, ConvertsTheSmallestFrame) {
  const auto pixels = ElementsAre(10, 25, 40, 5, 20, 35, 15, 30, 45, 10, 25, 40);
  EXPECT_THAT(imageOf<uint8_t>({10, 20, 30, 40}, {2, 2}, 8, CFA_GRID_RGGB, true), pixels);
  EXPECT_THAT(imageOf<uint16_t>({10, 20, 30, 40}, {2, 2}, 12, CFA_GRID_RGGB, true), pixels);
  EXPECT_THAT(imageOf<uint16_t>({10, 20, 30, 40}, {2, 2}, 16, CFA_GRID_RGGB, true), pixels);
}

TEST_P(DirectionalDemosaic, IsTheReferenceAtEverySmallSize) {
  for (int width = 2; width < 14; ++width)
    for (int height = 2; height < 14; ++height)
      for (const int grid : kGrids) {
        const Size size{width, height};
        const auto bytes = stark<uint8_t>(size, 8, static_cast<unsigned>(width * height));
        ASSERT_EQ(imageOf(bytes, size, 8, grid, true), referenceOf(bytes, size, 8, grid))
            << width << 'x' << height << ", grid " << grid;
        const auto words = stark<uint16_t>(size, 14, static_cast<unsigned>(width + height));
        ASSERT_EQ(imageOf(words, size, 14, grid, true), referenceOf(words, size, 14, grid))
            << width << 'x' << height << ", grid " << grid;
      }
}

// Whole vectors of every level, and tails.
TEST_P(DirectionalDemosaic, IsTheReferenceAtEveryWidthAndDepth) {
  for (const uint32_t width : kWidths) {
    if (width < 2) continue;
    const Size size{static_cast<int>(width), 5};
    for (unsigned bits = 8; bits <= 16; ++bits) {
      const auto samples = stark<uint16_t>(size, bits, width + bits);
      ASSERT_EQ(imageOf(samples, size, bits, CFA_GRID_GBRG, true),
                referenceOf(samples, size, bits, CFA_GRID_GBRG))
          << width << " columns, " << bits << " bits";
    }
  }
}

TEST_P(DirectionalDemosaic, StoresEitherColourFirst) {
  const Size size{37, 9};
  const auto samples = stark<uint8_t>(size, 8, 5);
  auto red = imageOf(samples, size, 8, CFA_GRID_GRBG, true);
  for (size_t i = 0; i < red.size(); i += 3) std::swap(red[i], red[i + 2]);
  EXPECT_EQ(imageOf(samples, size, 8, CFA_GRID_GRBG), red);
}

TEST_P(DirectionalDemosaic, MakesAnyRowsAlone) {
  const Size size{35, 41};
  const auto samples = stark<uint16_t>(size, 12, 7);
  const auto image = imageOf(samples, size, 12, CFA_GRID_BGGR);
  for (int first = 0; first < size.height; ++first)
    for (const int count : {1, 2, 11}) {
      const int end = std::min(first + count, size.height);
      const auto at = [&](int y) { return image.begin() + 3 * size.width * y; };
      EXPECT_EQ(rowsOf(samples, size, 12, CFA_GRID_BGGR, {first, end}),
                (std::vector<uint16_t>(at(first), at(end))))
          << first << ", " << end;
    }
}

// Column c of row r of a frame of 5x3 has the value 10 r + c. Beyond it lie the same samples, as
// often as it takes.
TEST(MirroredRing, ContinuesAPlaneBeyondTheFrame) {
  Memory memory;
  const MirroredRing<int16_t> ring(3, 2, {5, 3}, memory);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 5; ++x)
      ring.half(y, static_cast<unsigned>(x % 2))[x / 2] = static_cast<int16_t>(10 * y + x);
    ring.mirrorEnds(y);
  }
  const auto columns = [&](int y) {
    const int16_t *const even = ring.half(y, 0), *const odd = ring.half(y, 1);
    return std::vector<int>{even[-1], odd[-1], even[0], odd[1], even[2], odd[2], even[3]};
  };
  EXPECT_THAT(columns(0), ElementsAre(2, 1, 0, 3, 4, 3, 2));
  EXPECT_THAT(columns(2), ElementsAre(22, 21, 20, 23, 24, 23, 22));
  for (const auto& [y, mirrored] : {std::pair{-1, 1}, {-2, 2}, {-3, 1}, {3, 1}, {4, 0}, {5, 1}})
    EXPECT_EQ(ring.half(y, 1), ring.half(mirrored, 1)) << y;
}

TEST(MirroredRing, RepeatsTheSmallestFrame) {
  Memory memory;
  const MirroredRing<int16_t> ring(2, 1, {2, 2}, memory);
  ring.half(1)[0] = 7;
  ring.mirrorEnds(1, 1);
  EXPECT_EQ(ring.half(1)[-1], 7);
  EXPECT_EQ(ring.half(1)[1], 7);
  EXPECT_EQ(ring.half(-1, 0), ring.half(1, 1));
}

}  // namespace
}  // namespace vistrel::core::test
