// A frame after one algorithm, read from the work buffer.
#pragma once

#include <type_traits>

#include "streams/registry.h"
#include "tests/demosaic/by_name.h"
#include "tests/frames.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {

template <class T>
struct Frame {
  uint32_t width, height;
  std::vector<T> samples;

  Frame(uint32_t w, uint32_t h, unsigned value)
      : width(w), height(h), samples(flat<T>(size_t{w} * h, value)) {}

  T& at(uint32_t x, uint32_t y) { return samples.at(y * width + x); }
};

using Demosaic8 = void(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                       uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                       uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst);
using Demosaic16 = void(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                        uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                        uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits);
template <class T>
using Demosaic = std::conditional_t<sizeof(T) == 1, Demosaic8, Demosaic16>;

template <class T>
class Demosaiced {
 public:
  // before: the initial contents of the work buffer.
  Demosaiced(Demosaic<T>* demosaic, uint32_t bayer, const Frame<T>& frame, unsigned before = 0xEE)
      : stride_(3 * frame.width + 12),
        work_(flat<T>(size_t{stride_} * (frame.height + 4), before)) {
    constexpr unsigned slot = 9;
    const uint32_t w = frame.width, h = frame.height;
    Canvas<T> canvas(size_t{3} * w * h);
    uint8_t* const pDst = reinterpret_cast<uint8_t*>(canvas.data());
    g_pwBGRBuff[slot] = reinterpret_cast<uint16_t*>(work_.data());
    if constexpr (sizeof(T) == 1)
      demosaic(slot, w, bayer, 0, IMG_FMT_BGR24, 0, 0, w, h, frame.samples.data(), pDst);
    else
      demosaic(slot, w, bayer, 0, IMG_FMT_BGR48, 0, 0, 0, w, h, frame.samples.data(), pDst, 48, 16);
    g_pwBGRBuff[slot] = nullptr;
    for (uint32_t y = 0; y < h; ++y) expectSameRow(canvas.samples(), y, w);
  }

  // Channels of a pixel, from -2 to two beyond the last one in both directions.
  int blue(int x, int y) const { return channel(x, y, 0); }
  int green(int x, int y) const { return channel(x, y, 1); }
  int red(int x, int y) const { return channel(x, y, 2); }

 private:
  size_t index(int x, int y) const {
    return static_cast<size_t>((y + 2) * static_cast<int>(stride_) + 3 * (x + 2));
  }
  int channel(int x, int y, size_t c) const { return work_.at(index(x, y) + c); }

  // The result is the work buffer's image.
  void expectSameRow(const std::vector<T>& image, uint32_t y, uint32_t w) const {
    const auto row = image.begin() + ptrdiff_t{3} * y * w;
    const auto work = work_.begin() + static_cast<ptrdiff_t>(index(0, static_cast<int>(y)));
    EXPECT_TRUE(std::equal(row, row + ptrdiff_t{3} * w, work)) << "row " << y;
  }

  uint32_t stride_;
  std::vector<T> work_;
};

// Every sample has the value of its column.
template <class T>
Frame<T> columns(const std::vector<unsigned>& values, uint32_t height) {
  Frame<T> frame(static_cast<uint32_t>(values.size()), height, 0);
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < frame.width; ++x) frame.at(x, y) = static_cast<T>(values[x]);
  return frame;
}

}  // namespace vistrel::core::test
