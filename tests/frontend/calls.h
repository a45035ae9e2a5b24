// Conversions by named arguments, and a driver that is loaded during a test.
#pragma once

#include "streams/registry.h"
#include "tests/frames.h"
#include "tests/levels.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {

constexpr uint32_t kStream = 7;

struct Call {
  uint32_t format = IMG_FMT_BGR24;
  uint32_t algorithm = DM_BILINEAR;
  uint32_t bayer = BAYER_GRBG;
  uint32_t binning = 0;
  uint32_t dstBits = 24;
  uint32_t lutMode = 0;
  uint32_t imgWidth = 64, imgHeight = 64;
  uint32_t roiX = 0, roiY = 0, roiWidth = 16, roiHeight = 8;
  uint32_t srcBits = 12;
  uint32_t skip = 0;
  uint32_t id = kStream;
};

inline uint32_t convert(const Call& c, const std::vector<uint8_t>& frame, void* pDst) {
  return ImgConvert8(c.id, c.format, c.algorithm, c.bayer, c.binning, c.imgWidth, c.imgHeight,
                     c.roiX, c.roiY, c.roiWidth, c.roiHeight, frame.data(), pDst, c.srcBits,
                     c.skip);
}

inline uint32_t convert(const Call& c, const std::vector<uint16_t>& frame, void* pDst) {
  return ImgConvert16(c.id, c.format, c.algorithm, c.bayer, c.binning, c.dstBits, c.lutMode,
                      c.imgWidth, c.imgHeight, c.roiX, c.roiY, c.roiWidth, c.roiHeight,
                      frame.data(), pDst, c.srcBits, c.skip);
}

// A destination for 8-bit or 16-bit samples.
using Image = Canvas<uint8_t, 66>;

// The result's pixels as bytes, including those left unchanged; expects the conversion to succeed.
template <class T>
std::vector<uint8_t> converted(const Call& c, const std::vector<T>& frame) {
  const size_t bytes[] = {1, 2, 3, 4, 4, 1, 2, 6};
  Image canvas(bytes[c.format] * c.roiWidth * c.roiHeight);
  EXPECT_EQ(convert(c, frame, canvas.data()), 1u);
  return canvas.samples();
}

struct LoadedDriver {
  LoadedDriver() {
    ImgLoadDriver();
    EXPECT_EQ(ImgInitialize(kStream, 64, 64), 1u);
  }
  ~LoadedDriver() { ImgUnloadDriver(); }
};

// A stream for frames of 64 x 64, whose buffer is filled with 0xEE.
class StreamAtEveryLevel : public ::testing::TestWithParam<Level> {
 protected:
  void SetUp() override {
    ASSERT_EQ(currentLevel(), GetParam());
    std::fill_n(buffer(), kSamples, uint16_t{0xEEEE});
  }
  static uint16_t* buffer() { return g_pwBGRBuff[0]; }
  static bool bufferUntouched() {
    return std::all_of(buffer(), buffer() + kSamples, [](uint16_t v) { return v == 0xEEEE; });
  }

 private:
  static constexpr size_t kSamples = (3 * 64 + 18) * (64 + 6);
  LoadedDriver driver_;
  LevelScope scope_{GetParam()};
};

}  // namespace vistrel::core::test

#define VISTREL_STREAM_SUITE(Suite)                                                       \
  class Suite : public ::vistrel::core::test::StreamAtEveryLevel {};                      \
  INSTANTIATE_TEST_SUITE_P(Every, Suite,                                                  \
                           ::testing::ValuesIn(::vistrel::core::test::supportedLevels()), \
                           ::testing::PrintToStringParamName())
