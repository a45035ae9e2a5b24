#include "apps/tools/scene/sensor.h"

#include "apps/tools/scene/exposure.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

Rgb average(const Scene& scene, uint32_t x, uint32_t y) {
  Rgb sum{0, 0, 0};
  probe(scene, x, y, [&sum](Rgb colour) { sum = sum + colour; });
  return sum * (1.0 / (kProbes * kProbes));
}

double filtered(Rgb light, uint32_t phase, uint32_t x, uint32_t y) {
  if (phase == VISTREL_MONO) return luma(light);
  const double channels[] = {light.r, light.g, light.b};
  return channels[vistrel_colour_at(phase, x, y)];
}

// Shot noise: the deviation grows with the square root of the light, above a floor.
double noisy(double light, const Sensor& sensor, uint32_t x, uint32_t y) {
  const double deviation = sensor.noise / 100 * std::sqrt(std::max(light, 0.02));
  return light + deviation * normalNoise(sensor.seed, x, y);
}

}  // namespace

Image expose(const Scene& scene, uint32_t width, uint32_t height, const Sensor& sensor) {
  const double fullScale = (1 << sensor.bits) - 1;
  return render(width, height, sensor.bits, [&](uint32_t x, uint32_t y) {
    const double light = filtered(average(scene, x, y), sensor.phase, x, y);
    return std::clamp(noisy(light, sensor, x, y), 0.0, 1.0) * fullScale + 0.5;
  });
}

}  // namespace vistrel::app
