// The contents of the guarded layout, stated pixel by pixel, independent of any order of steps.
#pragma once

#include "common/mosaic.h"
#include "demosaic/work_buffer.h"
#include "tests/frames.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::test {

// A frame and the region of it that is scattered, in unbinned pixels of the sensor.
template <class T>
struct Mosaic {
  std::vector<T> frame;
  uint32_t imgWidth;
  uint32_t bayer;
  int x0, y0, Wf, Hf;

  size_t stride() const { return 3 * static_cast<size_t>(Wf) + 12; }
  size_t samples() const { return (static_cast<size_t>(Hf) + 4) * stride(); }

  Site site(int i, int j) const { return core::Mosaic::ofPhase(bayer).siteAt(x0 + i, y0 + j); }
  // Source rows begin at the frame's first row, whatever y0 is.
  unsigned source(int i, int j) const {
    return frame.at(static_cast<size_t>(j) * imgWidth + static_cast<size_t>(x0 + i));
  }
  bool interior(int i, int j) const { return j > 0 && j < Hf - 1 && i > 0 && i < Wf - 1; }

  // The sensed sample of an image pixel: greens inside the outermost ring are smoothed.
  unsigned sensed(int i, int j) const {
    if (!isGreen(site(i, j)) || !interior(i, j)) return source(i, j);
    return (source(i - 1, j - 1) + source(i + 1, j - 1) + source(i - 1, j + 1) +
            source(i + 1, j + 1) + 4 * source(i, j)) /
           8;
  }

  // A channel of a pixel of image or guard; a guard pixel is the image pixel two further in.
  unsigned scattered(int i, int j, int channel) const {
    i += i < 0 ? 2 : i >= Wf ? -2 : 0;
    j += j < 0 ? 2 : j >= Hf ? -2 : 0;
    return channel == sensedChannel(site(i, j)) ? sensed(i, j) : 0;
  }

  // A whole buffer, from value(i, j, channel) of each pixel of image and guard.
  template <class Value>
  std::vector<T> buffer(Value value) const {
    std::vector<T> all;
    for (int j = -2; j < Hf + 2; ++j)
      for (int i = -2; i < Wf + 2; ++i)
        for (int c = 0; c < 3; ++c) all.push_back(static_cast<T>(value(i, j, c)));
    return all;
  }
  std::vector<T> scatteredBuffer() const {
    return buffer([&](int i, int j, int c) { return scattered(i, j, c); });
  }
};

template <class T>
size_t indexOf(const Mosaic<T>& m, int i, int j, int channel) {
  return static_cast<size_t>(j + 2) * m.stride() + static_cast<size_t>(3 * (i + 2) + channel);
}

// A frame of noise that ends with the region's last sample.
template <class T>
Mosaic<T> noiseMosaic(uint32_t bayer, int x0, int y0, int Wf, int Hf, unsigned top, unsigned seed) {
  const size_t width = static_cast<size_t>(x0 + Wf + 1);
  return {noise<T>(width * static_cast<size_t>(Hf) - 1, top, seed),
          static_cast<uint32_t>(width),
          bayer,
          x0,
          y0,
          Wf,
          Hf};
}

}  // namespace vistrel::core::test
