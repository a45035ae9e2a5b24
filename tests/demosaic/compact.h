// The compact image that near neighbours and the homogeneity-directed function leave.
#pragma once

#include "common/mosaic.h"
#include "tests/demosaic/demosaiced.h"

namespace vistrel::core::test {

struct CompactRegion {
  uint32_t x, y, width, height;
};

inline constexpr unsigned kBefore = 0xEE;  // what the work buffer holds before

// Blue, green, red of the region's pixels, in the source's bits. demosaic: takes the arguments of
// the function at either depth.
template <class T>
std::vector<T> compact(auto demosaic, const Frame<T>& frame, uint32_t nBayer, CompactRegion r,
                       uint32_t bits = 8) {
  constexpr unsigned slot = 9;
  Frame<T> source = frame;
  std::vector<T> work = flat<T>(size_t{3} * frame.width * (frame.height + r.height), kBefore);
  Canvas<T> canvas(size_t{3} * r.width * r.height);
  uint8_t* const pDst = reinterpret_cast<uint8_t*>(canvas.data());
  g_pwBGRBuff[slot] = reinterpret_cast<uint16_t*>(work.data());
  if constexpr (sizeof(T) == 1)
    demosaic(slot, frame.width, nBayer, 0u, unsigned{IMG_FMT_BGR24}, r.x, r.y, r.width, r.height,
             source.samples.data(), pDst);
  else
    demosaic(slot, frame.width, nBayer, 0u, unsigned{IMG_FMT_BGR48}, 0u, r.x, r.y, r.width,
             r.height, source.samples.data(), pDst, 3 * bits, bits);
  g_pwBGRBuff[slot] = nullptr;
  const std::vector<T> image = canvas.samples();
  EXPECT_TRUE(std::equal(image.begin(), image.end(), work.begin()));
  return image;
}

// A frame of one colour: red 200, green 100, blue 50.
template <class T>
Frame<T> plainColours(uint32_t nBayer, uint32_t w, uint32_t h) {
  constexpr T kBgr[] = {50, 100, 200};
  Frame<T> frame(w, h, 0);
  for (uint32_t y = 0; y < h; ++y)
    for (uint32_t x = 0; x < w; ++x)
      frame.at(x, y) = kBgr[core::Mosaic::ofPhase(nBayer).colourAt(x, y)];
  return frame;
}

template <class T>
void expectPlain(const std::vector<T>& image) {
  for (size_t i = 0; i < image.size(); ++i)
    ASSERT_EQ(image[i], i % 3 == 0 ? 50 : i % 3 == 1 ? 100 : 200) << i;
}

}  // namespace vistrel::core::test
