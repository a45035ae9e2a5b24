// Small builders of frames, and a destination that shows what a call left unchanged.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

namespace vistrel::core::test {

// Widths below, at and above the vector bodies' steps, tails included.
inline const std::vector<uint32_t> kWidths = {1,  2,  3,  5,  7,  8,   9,   15,  16,  17,  31, 32,
                                              33, 47, 63, 64, 65, 127, 128, 129, 201, 257, 401};

template <class T>
std::vector<T> flat(size_t samples, unsigned value) {
  return std::vector<T>(samples, static_cast<T>(value));
}

template <class T>
std::vector<T> impulse(size_t samples, size_t at, unsigned value) {
  std::vector<T> frame(samples);
  frame.at(at) = static_cast<T>(value);
  return frame;
}

// Samples of 0..top.
template <class T>
std::vector<T> noise(size_t samples, unsigned top, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<T> frame(samples);
  for (T& sample : frame) sample = static_cast<T>(random() % (top + 1));
  return frame;
}

// value(x, y) at every position.
template <class T, class Value>
std::vector<T> painted(uint32_t width, uint32_t height, Value value) {
  std::vector<T> frame;
  for (uint32_t y = 0; y < height; ++y)
    for (uint32_t x = 0; x < width; ++x) frame.push_back(static_cast<T>(value(x, y)));
  return frame;
}

// A destination between two margins. Every byte is 0x55 at first. The first sample lies at an
// address that suits no vector and, with an odd margin, no 16-bit sample either.
template <class T, int kMargin = 67>
class Canvas {
 public:
  static constexpr T kPreset = static_cast<T>(0x5555);

  explicit Canvas(size_t samples) : all_(samples + 2 * kMargin, kPreset) {}
  ~Canvas() {
    EXPECT_EQ(std::count(all_.begin(), all_.begin() + kMargin, kPreset), kMargin);
    EXPECT_EQ(std::count(all_.end() - kMargin, all_.end(), kPreset), kMargin);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  T* data() { return all_.data() + kMargin; }
  std::vector<T> samples() const { return {all_.begin() + kMargin, all_.end() - kMargin}; }
  bool untouched() const {
    return std::all_of(all_.begin(), all_.end(), [](T v) { return v == kPreset; });
  }

 private:
  std::vector<T> all_;
};

}  // namespace vistrel::core::test
