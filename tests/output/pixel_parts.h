// Rows of pixels that get their pixels in parts of any size, compared with those that get whole
// rows.
#pragma once

#include "output/pixel_rows.h"
#include "tests/frames.h"

namespace vistrel::core::test {

using Bytes = std::vector<uint8_t>;

constexpr size_t kHeight = 7;
constexpr ptrdiff_t kStride = 700;

// Appends rows first .. end - 1, a random number of pixels at a time.
inline void fill(PixelRows& rows, const Bytes& pixels, size_t width, size_t pixelBytes,
                 size_t first, size_t end, unsigned most) {
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

}  // namespace vistrel::core::test
