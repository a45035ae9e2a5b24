// A frame after one algorithm, read from the work buffer, for the tests in this folder.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <type_traits>
#include <vector>

#include "tests/reference/convert.h"
#include "tests/reference/registry.h"

// A mosaic of w by h samples.
template <class T>
struct Mosaic {
  uint32_t w, h;
  std::vector<T> samples;

  Mosaic(uint32_t width, uint32_t height, T value)
      : w(width), h(height), samples(size_t{width} * height, value) {}
  T& at(uint32_t x, uint32_t y) { return samples[y * w + x]; }
};

// Channels blue, green, red of the whole frame. The pixels are those of the guarded layout.
template <class T>
class Demosaiced {
 public:
  Demosaiced(uint32_t nAlgorithm, uint32_t nBayer, const Mosaic<T>& frame, uint32_t nBinning = 0)
      : S_(3 * frame.w + 12) {
    reference::ImgLoadDriver();
    reference::ImgInitialize(1, frame.w, frame.h);
    const uint32_t w = frame.w / (nBinning + 1), h = frame.h / (nBinning + 1);
    std::vector<uint8_t> out(size_t{frame.w} * frame.h * 3);
    const T* const samples = frame.samples.data();
    uint32_t done;
    if constexpr (std::is_same_v<T, uint8_t>)
      done = reference::ImgConvert8(1, 2, nAlgorithm, nBayer, nBinning, frame.w, frame.h, 0, 0, w,
                                    h, samples, out.data(), 8, 0);
    else
      done = reference::ImgConvert16(1, 2, nAlgorithm, nBayer, nBinning, 24, 0, frame.w, frame.h, 0,
                                     0, w, h, samples, out.data(), 16, 0);
    EXPECT_EQ(done, 1U);
    const T* const work = reinterpret_cast<const T*>(reference::g_pwBGRBuff[0]);
    work_.assign(work, work + size_t{S_} * (frame.h + 4));
    reference::ImgUnloadDriver();
  }

  int B(int x, int y) const { return channel(0, x, y); }
  int G(int x, int y) const { return channel(1, x, y); }
  int R(int x, int y) const { return channel(2, x, y); }

 private:
  int channel(int c, int x, int y) const {
    return work_[static_cast<size_t>((y + 2) * static_cast<int>(S_) + 3 * (x + 2) + c)];
  }

  uint32_t S_;
  std::vector<T> work_;
};

constexpr uint32_t GRBG = 0, BGGR = 1, RGGB = 2, GBRG = 3;
