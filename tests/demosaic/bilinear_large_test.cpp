// Bilinear conversions of frames larger than the caches.
#include "output/colour.h"
#include "tests/demosaic/bilinear.h"
#include "tests/levels.h"

namespace vistrel::core::test {
namespace {

// Every format, and one that does not exist.
const std::vector<uint32_t> kFormats = {2, 3, 5, 6, 7, 8};

TEST(BilinearLarge, BytesAtEveryLevel) {
  constexpr uint32_t w = 1052, h = 1006;  // of 2x2
  const auto m = noiseMosaic<uint8_t>(BAYER_RGGB, 0, 0, 2 * w, 2 * h, 255, 1);
  const auto filled = filledBuffer(m);
  for (uint32_t format : kFormats) {
    Canvas<uint8_t> expected(4 * w * h);
    ConvertToOutputFormat8(filled.data(), w, h, expected.data(), format, 1, 1);
    for (Level level : supportedLevels()) {
      SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(level) << ", " << format);
      const LevelScope scope(level);
      std::vector<uint8_t> buffer(m.samples());
      Canvas<uint8_t> result(4 * w * h);
      g_pwBGRBuff[kSlot] = reinterpret_cast<uint16_t*>(buffer.data());
      ImageColorBilinear(kSlot, m.imgWidth, m.bayer, 1, format, 0, 0, w, h, m.frame.data(),
                         result.data());
      EXPECT_TRUE(result.samples() == expected.samples());
      EXPECT_TRUE(buffer == filled);
    }
  }
  g_pwBGRBuff[kSlot] = nullptr;
}

TEST(BilinearLarge, SixteenBitSamplesAtEveryLevel) {
  constexpr uint32_t w = 1531, h = 1403;
  const auto m = noiseMosaic<uint16_t>(BAYER_GBRG, 3, 1, w, h, 4095, 2);
  const auto filled = filledBuffer(m);
  for (uint32_t format : kFormats) {
    const uint32_t dstBits = format == IMG_FMT_GRAY8 || format == IMG_FMT_GRAY16 ? 10 : 30;
    Canvas<uint16_t> expected(3 * w * h);
    ConvertToOutputFormat16(filled.data(), w, h, 12, expected.data(), format, 1, nullptr, 0,
                            dstBits, 1);
    for (Level level : supportedLevels()) {
      SCOPED_TRACE(::testing::Message() << ::testing::PrintToString(level) << ", " << format);
      const LevelScope scope(level);
      std::vector<uint16_t> buffer(m.samples());
      Canvas<uint16_t> result(3 * w * h);
      g_pwBGRBuff[kSlot] = buffer.data();
      ImageColorBilinear(kSlot, m.imgWidth, m.bayer, 0, format, 1, 3, 1, w, h, m.frame.data(),
                         reinterpret_cast<uint8_t*>(result.data()), dstBits, 12);
      EXPECT_TRUE(result.samples() == expected.samples());
      EXPECT_TRUE(buffer == filled);
    }
  }
  g_pwBGRBuff[kSlot] = nullptr;
}

}  // namespace
}  // namespace vistrel::core::test
