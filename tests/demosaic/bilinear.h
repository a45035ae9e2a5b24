// Bilinear conversions, and their expected results, stated pixel by pixel.
#pragma once

#include "streams/registry.h"
#include "tests/demosaic/by_name.h"
#include "tests/demosaic/guarded.h"

namespace vistrel::core::test {

constexpr uint32_t kSlot = 9;

// The results of a conversion to colour: its samples, and the work buffer.
template <class T>
struct Outcome {
  std::vector<T> image, buffer;
};

// Unbinned, at full depth: bytes to BGR24, 16-bit samples to BGR48.
template <class T>
Outcome<T> convert(const Mosaic<T>& m, std::vector<T> buffer) {
  const uint32_t x0 = static_cast<uint32_t>(m.x0), y0 = static_cast<uint32_t>(m.y0),
                 Wf = static_cast<uint32_t>(m.Wf), Hf = static_cast<uint32_t>(m.Hf);
  Canvas<T> canvas(size_t{3} * Wf * Hf);
  uint8_t* const pDst = reinterpret_cast<uint8_t*>(canvas.data());
  g_pwBGRBuff[kSlot] = reinterpret_cast<uint16_t*>(buffer.data());
  if constexpr (sizeof(T) == 1)
    ImageColorBilinear(kSlot, m.imgWidth, m.bayer, 0, IMG_FMT_BGR24, x0, y0, Wf, Hf, m.frame.data(),
                       pDst);
  else
    ImageColorBilinear(kSlot, m.imgWidth, m.bayer, 0, IMG_FMT_BGR48, 0, x0, y0, Wf, Hf,
                       m.frame.data(), pDst, 48, 16);
  g_pwBGRBuff[kSlot] = nullptr;
  return {canvas.samples(), buffer};
}

template <class T>
Outcome<T> convert(const Mosaic<T>& m) {
  return convert(m, std::vector<T>(m.samples(), static_cast<T>(0xEEEE)));
}

// A colour that the pixel did not sense: the mean of those of its eight neighbours that sensed it.
template <class T>
unsigned interpolated(const Mosaic<T>& m, int i, int j, int channel) {
  if (sensedChannel(m.site(i, j)) == channel) return m.sensed(i, j);
  unsigned sum = 0, count = 0;
  for (int dj = -1; dj <= 1; ++dj)
    for (int di = -1; di <= 1; ++di) {
      if (sensedChannel(m.site(i + di, j + dj)) != channel) continue;
      sum += m.scattered(i + di, j + dj, channel);
      ++count;
    }
  return sum / count;
}

// The expected work buffer after a conversion: the guard keeps the mosaic.
template <class T>
std::vector<T> filledBuffer(const Mosaic<T>& m) {
  return m.buffer([&](int i, int j, int c) {
    const bool guard = i < 0 || j < 0 || i >= m.Wf || j >= m.Hf;
    return guard ? m.scattered(i, j, c) : interpolated(m, i, j, c);
  });
}

}  // namespace vistrel::core::test
