// Packed and planar rows, handed over in parts of any size.
#include "output/pixel_rows.h"

#include "tests/levels.h"
#include "tests/output/pixel_parts.h"

namespace vistrel::core::test {
namespace {

VISTREL_LEVEL_SUITE(PixelRowsSuite);

TEST_P(PixelRowsSuite, Packed) {
  for (const size_t width : kRowWidths) {
    expectSplitsToAgree(width, 3, 1, [&](Image& image, bool bypasses, Arena& arena) {
      return InterleavedRows(image.plane(0, bypasses), width, 3, 3, nullptr, arena);
    });
    if (4 * width <= kStride)
      expectSplitsToAgree(width, 3, 1, [&](Image& image, bool bypasses, Arena& arena) {
        const auto alpha = pixelFormatKernels().alphaLast8;
        return InterleavedRows(image.plane(0, bypasses), width, 3, 4, alpha, arena);
      });
  }
}

TEST_P(PixelRowsSuite, Planar) {
  const auto expect = [](size_t sampleBytes, PlanesFunction convert) {
    for (const size_t width : kRowWidths)
      expectSplitsToAgree(
          width, 3 * sampleBytes, 1, [&](Image& image, bool bypasses, Arena& arena) {
            return PlanarRows(
                {image.plane(0, bypasses), image.plane(1, bypasses), image.plane(2, bypasses)},
                width, sampleBytes, convert, arena);
          });
  };
  expect(1, pixelFormatKernels().planes8);
  expect(2, pixelFormatKernels().planes16);
  expect(1, pixelFormatKernels().planes709);
}

}  // namespace
}  // namespace vistrel::core::test
