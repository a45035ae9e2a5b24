#include "apps/tools/scene/camera.h"

#include <vector>

#include "apps/tools/scene/exposure.h"
#include "vistrel/vistrel_host.h"

// Only operations that IEEE 754 rounds exactly: no std::pow and the like.
namespace vistrel::app {
namespace {

// By Newton's method, for 0 < v <= 1; from above, it converges monotonically.
double fifthRoot(double v) {
  double root = 1;
  for (double before = 0; root != before;) {
    before = root;
    const double fourth = root * root * root * root;
    root = std::min(root, (4 * root + v / fourth) / 5);
  }
  return root;
}

// The linear light of display colours, in steps of 1/65535.
class LightTable {
 public:
  LightTable() {
    for (int i = 0; i <= kLast; ++i) light_.push_back(linearOf(i / double{kLast}));
  }
  double at(double display) const {
    return light_[static_cast<size_t>(std::clamp(display, 0.0, 1.0) * kLast + 0.5)];
  }

 private:
  static constexpr int kLast = 65535;
  std::vector<double> light_;
};

class Exposure {
 public:
  Exposure(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor,
           const Camera& camera)
      : scene_(scene), width_(width), height_(height), sensor_(sensor), camera_(camera) {}

  uint32_t sampleAt(uint32_t x, uint32_t y) const {
    const double white = levelOf(camera_.white, sensor_.bits);
    const double black = levelOf(camera_.black[y % 2 * 2 + x % 2], sensor_.bits);
    const double signal = noisy(filteredLight(x, y) * lensAt(x, y) * camera_.exposure, x, y);
    return static_cast<uint32_t>(std::clamp(black + signal * (white - black), 0.0, white) + 0.5);
  }

 private:
  double filteredLight(uint32_t x, uint32_t y) const {
    Rgb sum{0, 0, 0};
    probe(scene_, x, y, [&](Rgb colour) {
      sum = sum + Rgb{table_.at(colour.r), table_.at(colour.g), table_.at(colour.b)};
    });
    const Rgb light = sum * (1.0 / (kProbes * kProbes));
    const uint32_t filter = vistrel_colour_at(sensor_.phase, x, y);
    const double* const row = &camera_.matrix[3 * filter];
    return (row[0] * light.r + row[1] * light.g + row[2] * light.b) * camera_.neutral[filter];
  }

  // What the lens lets through: less with the square of the distance from the centre.
  double lensAt(uint32_t x, uint32_t y) const {
    const double u = 2 * (x + 0.5) - width_, v = 2 * (y + 0.5) - height_;
    return 1 - camera_.cornerLoss * (u * u + v * v) / (width_ * width_ + height_ * height_);
  }

  // The variance of the photons' number is the number.
  double noisy(double signal, uint32_t x, uint32_t y) const {
    const double variance = signal + camera_.readNoise * camera_.readNoise;
    return signal + sensor_.noise / 100 * std::sqrt(variance) * normalNoise(sensor_.seed, x, y);
  }

  const Scene& scene_;
  double width_, height_;
  const Sensor& sensor_;
  const Camera& camera_;
  LightTable table_;
};

}  // namespace

double linearOf(double display) {
  if (display <= 0.04045) return display / 12.92;
  const double v = (display + 0.055) / 1.055;
  const double root = fifthRoot(v);
  return v * v * root * root;  // v to the power of 2.4
}

Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor,
             const Camera& camera) {
  const Exposure exposure(scene, width, height, sensor, camera);
  return render(width, height, sensor.bits,
                [&exposure](uint32_t x, uint32_t y) { return exposure.sampleAt(x, y); });
}

}  // namespace vistrel::app
