// Rows of pixels, handed over in parts of any size.
#include "output/pixel_rows.h"

#include <cstring>

#include "output/ycc420_rows.h"
#include "tests/frames.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PixelRowsSuite);

using Bytes = std::vector<uint8_t>;

constexpr size_t kHeight = 7;
constexpr ptrdiff_t kStride = 700;

// Appends rows first .. end - 1, a random number of pixels at a time.
void fill(PixelRows& rows, const Bytes& pixels, size_t width, size_t pixelBytes, size_t first,
          size_t end, unsigned most) {
  std::mt19937 random(most);
  for (size_t y = first; y < end; ++y) {
    rows.begin(y);
    for (size_t x = 0, n; x < width; x += n) {
      n = std::min<size_t>(1 + random() % most, width - x);
      rows.append(&pixels[(y * width + x) * pixelBytes], n);
    }
    rows.end();
  }
}

// Several planes of `rows` rows in one block of memory.
struct Image {
  Bytes bytes = Bytes(3 * kHeight * kStride, 0x5C);
  PlaneMemory plane(size_t i, bool bypasses) {
    return {&bytes[i * kHeight * kStride], kStride, bypasses};
  }
};

// Makes `Rows` for bands of an image, and compares them with those made at once.
template <class Make>
void expectSplitsToAgree(size_t width, size_t pixelBytes, size_t bandRows, Make make) {
  const Bytes pixels = noise<uint8_t>(width * kHeight * pixelBytes, 255, 7);
  const auto made = [&](bool bypasses, size_t band, unsigned most) {
    Image image;
    for (size_t first = 0; first < kHeight; first += band)
      withArena([&](Arena& arena) {
        auto rows = make(image, bypasses, arena);
        if (!arena.counts())
          fill(rows, pixels, width, pixelBytes, first, std::min(first + band, kHeight), most);
      });
    return image.bytes;
  };
  const Bytes expected = made(false, kHeight, 100000);
  EXPECT_NE(expected, Image().bytes);
  for (const unsigned most : {1u, 2u, 5u, 97u, 100000u})
    for (const bool bypasses : {false, true})
      for (const size_t band : {kHeight, bandRows})
        EXPECT_TRUE(made(bypasses, band, most) == expected)
            << width << " pixels, parts of up to " << most << ", bands of " << band;
}

constexpr size_t kRowWidths[] = {1, 2, 3, 8, 33, 64, 127, 200, 233};

TEST_P(PixelRowsSuite, Packed) {
  for (const size_t width : kRowWidths) {
    expectSplitsToAgree(width, 3, 1, [&](Image& image, bool bypasses, Arena& arena) {
      return PackedRows(image.plane(0, bypasses), width, 3, 3, nullptr, arena);
    });
    if (4 * width <= kStride)
      expectSplitsToAgree(width, 3, 1, [&](Image& image, bool bypasses, Arena& arena) {
        const auto alpha = pixelFormatKernels().alphaLast8;
        return PackedRows(image.plane(0, bypasses), width, 3, 4, alpha, arena);
      });
  }
}

TEST_P(PixelRowsSuite, Planar) {
  for (const size_t sampleBytes : {1, 2})
    for (const size_t width : kRowWidths)
      expectSplitsToAgree(
          width, 3 * sampleBytes, 1, [&](Image& image, bool bypasses, Arena& arena) {
            return PlanarRows(
                {image.plane(0, bypasses), image.plane(1, bypasses), image.plane(2, bypasses)},
                width, sampleBytes, arena);
          });
}

TEST_P(PixelRowsSuite, Ycc420) {
  for (const bool inPairs : {true, false})
    for (const size_t width : kRowWidths)
      expectSplitsToAgree(width, 3, 2, [&](Image& image, bool bypasses, Arena& arena) {
        const Ycc420Planes planes{image.plane(0, bypasses),
                                  {image.plane(1, bypasses), image.plane(2, bypasses)},
                                  inPairs};
        return Ycc420Rows(planes, width, kHeight, arena);
      });
}

}  // namespace
}  // namespace vistrel::core::test
