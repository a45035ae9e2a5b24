// Estimates and choices, compared with what zlib makes.
#include "apps/pictures/png_coding.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

namespace vistrel {
namespace {

double deflatedSize(const std::vector<uint8_t>& bytes, int strategy) {
  z_stream zlib{};
  deflateInit2(&zlib, 1, Z_DEFLATED, MAX_WBITS, 8, strategy);
  std::vector<uint8_t> packed(deflateBound(&zlib, bytes.size()));
  zlib.next_in = const_cast<uint8_t*>(bytes.data());
  zlib.avail_in = static_cast<uInt>(bytes.size());
  zlib.next_out = packed.data();
  zlib.avail_out = static_cast<uInt>(packed.size());
  deflate(&zlib, Z_FINISH);
  const auto size = static_cast<double>(zlib.total_out);
  deflateEnd(&zlib);
  return size;
}

constexpr uint32_t kWidth = 300, kHeight = 200;

// Rows of 16-bit samples.
Image imageOf(const std::function<double(uint32_t x, uint32_t y)>& sample) {
  Image image{{kWidth, kHeight, 1, 16, 2 * kWidth, 2 * kWidth * kHeight, 0, 0, {}}, {}};
  image.pixels.resize(image.layout.bytes);
  auto* const to = reinterpret_cast<uint16_t*>(image.pixels.data());
  for (uint32_t y = 0; y < kHeight; ++y)
    for (uint32_t x = 0; x < kWidth; ++x)
      to[y * kWidth + x] = static_cast<uint16_t>(std::clamp(sample(x, y), 0.0, 65535.0));
  return image;
}

std::vector<Image> allImages() {
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  return {imageOf([](auto, auto) { return 7; }),
          imageOf([&](auto, auto) { return random() % 50 ? 0 : random() % 900; }),
          imageOf([&](auto, auto) { return 900 + 30 * normal(random); }),
          imageOf([&](auto, auto) { return random(); }),
          imageOf([&](auto x, auto y) { return 90 * x + 70 * y + 9 * normal(random); }),
          imageOf([&](auto x, auto) { return 256 * (x / 9 % 2) + random() % 3; }),
          imageOf([&](auto x, auto y) { return 30000 * (1 + sin(x / 9.0) * cos(y / 7.0)); })};
}

double sizeWith(const Image& image, const app::PngCoding& coding) {
  app::PictureRows rows(image, app::Depth::kScaled, std::endian::big);
  app::FilteredRows filtered(coding.filter, rows.bytes(), 2);
  std::vector<uint8_t> bytes;
  for (uint32_t y = 0; y < rows.count(); ++y) {
    const std::vector<uint8_t>& row = filtered.next(rows.row(y));
    bytes.insert(bytes.end(), row.begin(), row.end());
  }
  return deflatedSize(bytes, coding.strategy);
}

void expectNear(uint64_t bits, double bytes) {
  EXPECT_NEAR(static_cast<double>(bits) / 8, bytes, 0.03 * bytes + 120);  // 120: the codes
}

TEST(PngCoding, EstimatesAreNearTheTruth) {
  std::mt19937 random(3);
  for (const uint32_t levels : {1u, 2u, 7u, 60u, 256u})
    for (const uint32_t run : {1u, 2u, 5u, 40u}) {
      std::vector<uint8_t> bytes;
      while (bytes.size() < 40000)
        bytes.insert(bytes.end(), 1 + random() % run, static_cast<uint8_t>(random() % levels));
      app::DeflatedSize size;
      size.add(bytes);
      expectNear(size.bitsOfBytes(), deflatedSize(bytes, Z_HUFFMAN_ONLY));
      expectNear(size.bitsOfRuns(), deflatedSize(bytes, Z_RLE));
    }
}

TEST(PngCoding, IsAboutTheBest) {
  int number = 0;
  for (const Image& image : allImages()) {
    double best = INFINITY;
    for (int filter = 0; filter < 5; ++filter)
      for (const int strategy : {Z_HUFFMAN_ONLY, Z_RLE})
        best = std::min(best, sizeWith(image, {static_cast<app::PngFilter>(filter), strategy}));
    app::PictureRows rows(image, app::Depth::kScaled, std::endian::big);
    EXPECT_LE(sizeWith(image, app::pngCodingOf(rows, 2)), 1.03 * best + 100) << number;
    ++number;
  }
}

TEST(PngCoding, SuitsPicturesOfFewRows) {
  Image image = imageOf([](auto x, auto) { return x; });
  for (const uint32_t height : {1u, 2u, 5u}) {
    image.layout.height = height;
    app::PictureRows rows(image, app::Depth::kScaled, std::endian::big);
    EXPECT_GT(sizeWith(image, app::pngCodingOf(rows, 2)), 0);
  }
}

}  // namespace
}  // namespace vistrel
