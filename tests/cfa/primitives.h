// Frames for the colour filter array primitives, and their results.
#pragma once

#include <array>
#include <limits>

#include "tests/frames.h"
#include "vistrel/cfa.h"

namespace vistrel::core::test {

template <class T>
struct Mosaic {
  int width, height;
  std::vector<T> samples;

  Mosaic(int w, int h, std::vector<T> s) : width(w), height(h), samples(std::move(s)) {}
  Mosaic(int w, int h, unsigned value)
      : Mosaic(w, h, flat<T>(static_cast<size_t>(w) * static_cast<size_t>(h), value)) {}

  T& at(int x, int y) { return samples.at(static_cast<size_t>(y * width + x)); }
  int at(int x, int y) const { return samples.at(static_cast<size_t>(y * width + x)); }
  CfaSize size() const { return {width, height}; }
  CfaRect all() const { return {0, 0, width, height}; }
};

template <class T>
Mosaic<T> noiseMosaic(int w, int h, unsigned seed, unsigned top = std::numeric_limits<T>::max()) {
  return {w, h, noise<T>(static_cast<size_t>(w) * static_cast<size_t>(h), top, seed)};
}

// The destination of a rectangle, with a margin on every side that must stay unchanged.
template <class T>
class Rgb {
 public:
  using Pixel = std::array<int, 3>;  // red, green, blue
  static constexpr T kPreset = static_cast<T>(0x5555);
  static constexpr int kRoom = 9;

  explicit Rgb(CfaRect rect)
      : rect_(rect), pitch_(std::max(rect.width, 0) + 2 * kRoom),
        samples_(static_cast<size_t>(3 * pitch_ * (std::max(rect.height, 0) + 2 * kRoom)),
                 kPreset) {}

  T* data() { return samples_.data() + index(rect_.x, rect_.y); }
  int step() const { return 3 * pitch_; }  // in samples
  int stepBytes() const { return step() * int{sizeof(T)}; }

  // Coordinates are the frame's.
  Pixel at(int x, int y) const {
    const T* p = &samples_.at(index(x, y));
    return {p[0], p[1], p[2]};
  }

  // Whether all of `rect` was written, and nothing else.
  bool hasOnly(CfaRect rect) const {
    for (int y = rect_.y - kRoom; y < rect_.y + std::max(rect_.height, 0) + kRoom; ++y)
      for (int x = rect_.x - kRoom; x < rect_.x + pitch_ - kRoom; ++x) {
        const bool isInside =
            rect.x <= x && x < rect.x + rect.width && rect.y <= y && y < rect.y + rect.height;
        if ((at(x, y) == Pixel{kPreset, kPreset, kPreset}) == isInside) return false;
      }
    return true;
  }
  bool isUntouched() const { return hasOnly({rect_.x, rect_.y, 0, 0}); }

 private:
  size_t index(int x, int y) const {
    return static_cast<size_t>(3 * ((y - rect_.y + kRoom) * pitch_ + x - rect_.x + kRoom));
  }

  CfaRect rect_;
  int pitch_;
  std::vector<T> samples_;
};

inline int32_t cfaToRgb(const Mosaic<uint8_t>& m, CfaRect roi, int grid, Rgb<uint8_t>& rgb,
                        int interpolation = 0) {
  return ippiCFAToRGB_8u_C1C3R(m.samples.data(), roi, m.size(), m.width, rgb.data(),
                               rgb.stepBytes(), grid, interpolation);
}
inline int32_t cfaToRgb(const Mosaic<uint16_t>& m, CfaRect roi, int grid, Rgb<uint16_t>& rgb,
                        int interpolation = 0) {
  return ippiCFAToRGB_16u_C1C3R(m.samples.data(), roi, m.size(), 2 * m.width, rgb.data(),
                                rgb.stepBytes(), grid, interpolation);
}
inline int32_t demosaicAhd(const Mosaic<uint8_t>& m, CfaRect roi, int grid, Rgb<uint8_t>& rgb) {
  return ippiDemosaicAHD_8u_C1C3R(m.samples.data(), roi, m.size(), m.width, rgb.data(),
                                  rgb.stepBytes(), grid, nullptr, 0);
}
inline int32_t demosaicAhd(const Mosaic<uint16_t>& m, CfaRect roi, int grid, Rgb<uint16_t>& rgb) {
  return ippiDemosaicAHD_16u_C1C3R(m.samples.data(), roi, m.size(), 2 * m.width, rgb.data(),
                                   rgb.stepBytes(), grid, nullptr, 0);
}

template <class T>
Rgb<T> nearest(const Mosaic<T>& m, int grid, CfaRect roi) {
  Rgb<T> rgb(roi);
  EXPECT_EQ(cfaToRgb(m, roi, grid, rgb), CFA_OK);
  return rgb;
}
template <class T>
Rgb<T> nearest(const Mosaic<T>& m, int grid) {
  return nearest(m, grid, m.all());
}
template <class T>
Rgb<T> homogeneous(const Mosaic<T>& m, int grid, CfaRect roi) {
  Rgb<T> rgb(roi);
  EXPECT_EQ(demosaicAhd(m, roi, grid, rgb), CFA_OK);
  return rgb;
}
template <class T>
Rgb<T> homogeneous(const Mosaic<T>& m, int grid) {
  return homogeneous(m, grid, m.all());
}

// The colour that grid `grid` holds at (x, y), as an index into a pixel. Coordinates may be
// negative.
inline int colourAt(int grid, int x, int y) {
  constexpr const char* kPatterns[4] = {"BGGR", "RGGB", "GBRG", "GRBG"};
  const char c = kPatterns[grid][2 * (y & 1) + (x & 1)];
  return c == 'R' ? 0 : c == 'G' ? 1 : 2;
}

// Calls check(T{}) for both depths.
template <class Check>
void atBothDepths(Check check) {
  check(uint8_t{});
  check(uint16_t{});
}

template <class T>
constexpr int kLargest = std::numeric_limits<T>::max();

}  // namespace vistrel::core::test
