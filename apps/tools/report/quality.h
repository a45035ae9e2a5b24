// How near a picture comes to the true one.
#pragma once

#include <array>
#include <vector>

#include "vistrel/vistrel.hpp"

namespace vistrel::app {

// Pixels at each border that do not count: there algorithms have no neighbours.
constexpr uint32_t kBorder = 10;
// Side of SSIM's window.
constexpr uint32_t kWindow = 11;

struct Quality {
  double cpsnr;  // dB; infinite for equal pictures
  double ssim;   // 1 for equal pictures
};

// CPSNR: 10 log10(255^2 / E), E the mean squared error of all pixels and channels. SSIM (Wang,
// Bovik, Sheikh, Simoncelli, 2004): the mean over the channels, by a Gaussian window of 11 x 11
// with deviation 1.5, K1 = 0.01 and K2 = 0.03, where the window lies inside the border.
class Judge {
 public:
  // A BGR24 image of 2 * kBorder + kWindow pixels or more either way.
  explicit Judge(const Image& truth);

  Quality of(const Image& picture) const;  // of the same shape

 private:
  struct Plane {
    std::vector<float> samples, mean, meanOfSquares;
  };

  std::vector<float> planeOf(const Image& image, uint32_t channel) const;
  std::vector<float> blurred(const std::vector<float>& plane) const;
  double ssim(const Plane& truth, const std::vector<float>& picture) const;

  uint32_t width_, height_;  // inside the border
  std::array<Plane, 3> truth_;
};

}  // namespace vistrel::app
