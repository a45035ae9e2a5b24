// How close a picture comes to the reference image.
#pragma once

#include <array>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Pixels at each border that do not count, since algorithms lack neighbours there.
constexpr uint32_t kBorder = 10;
// Width and height of SSIM's window.
constexpr uint32_t kWindow = 11;

struct Quality {
  double cpsnr;  // dB; infinite if the pictures are equal
  double ssim;   // 1 if the pictures are equal
};

// CPSNR is 10 log10(255^2 / E), where E is the mean squared error over all pixels and channels.
// SSIM (Wang, Bovik, Sheikh, Simoncelli, 2004) is the mean over the channels, with a Gaussian
// window of 11 x 11, standard deviation 1.5, K1 = 0.01 and K2 = 0.03, at all positions where the
// window lies inside the border.
class Evaluator {
 public:
  // `reference` is a BGR24 image, at least 2 * kBorder + kWindow pixels wide and high.
  explicit Evaluator(const Image& reference);

  Quality of(const Image& picture) const;  // of the same shape

 private:
  struct Plane {
    std::vector<float> samples, mean, meanOfSquares;
  };

  std::vector<float> planeOf(const Image& image, uint32_t channel) const;
  std::vector<float> blurred(const std::vector<float>& plane) const;
  double ssim(const Plane& reference, const std::vector<float>& picture) const;

  uint32_t width_, height_;  // inside the border
  std::array<Plane, 3> reference_;
};

}  // namespace vistrel::app
