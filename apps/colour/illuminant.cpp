#include "apps/colour/illuminant.h"

namespace vistrel::app {
namespace {

// From XYZ to cone responses: K. M. Lam, "Metamerism and colour constancy", Bradford (1985).
constexpr Matrix3 kBradford{0.8951,  0.2664,  -0.1614,  //
                            -0.7502, 1.7135,  0.0367,   //
                            0.0389,  -0.0685, 1.0296};

}  // namespace

Vector3 xyzOf(const Chromaticity& c) { return {c.x / c.y, 1, (1 - c.x - c.y) / c.y}; }

std::optional<Chromaticity> chromaticityOf(const Vector3& xyz) {
  const double sum = xyz[0] + xyz[1] + xyz[2];
  const Chromaticity c{xyz[0] / sum, xyz[1] / sum};
  if (!(sum > 0 && c.x > 0 && c.y > 0 && c.x + c.y < 1)) return {};
  return c;
}

double temperatureOf(const Chromaticity& c) {
  const double n = (c.x - 0.3320) / (0.1858 - c.y);
  const double kelvins = ((449 * n + 3525) * n + 6823.3) * n + 5520.33;
  if (!(kelvins > 1000)) return 1000;
  return kelvins < 40000 ? kelvins : 40000;
}

std::optional<Matrix3> adaptation(const Chromaticity& from, const Chromaticity& to) {
  const Vector3 a = product(kBradford, xyzOf(from)), b = product(kBradford, xyzOf(to));
  for (size_t i = 0; i < 3; ++i)
    if (!(a[i] > 0 && b[i] > 0)) return {};
  const Matrix3 scaled = product(diagonal({b[0] / a[0], b[1] / a[1], b[2] / a[2]}), kBradford);
  return product(*inverse(kBradford), scaled);
}

Matrix3 srgbFromXyz() {
  const Vector3 r = xyzOf({0.64, 0.33}), g = xyzOf({0.30, 0.60}), b = xyzOf({0.15, 0.06});
  const Matrix3 primaries{r[0], g[0], b[0], r[1], g[1], b[1], r[2], g[2], b[2]};
  const Vector3 luminances = product(*inverse(primaries), xyzOf(kD65));
  return *inverse(product(primaries, diagonal(luminances)));
}

std::optional<double> temperatureOfSource(uint32_t code) {
  constexpr std::pair<uint32_t, double> sources[] = {
      {1, 5500},  {2, 4150},  {3, 2856},  {4, 5500},   // daylight, fluorescent, tungsten, flash
      {9, 5500},  {10, 6500}, {11, 7500},              // fine weather, cloudy, shade
      {12, 6400}, {13, 5050}, {14, 4150},              // fluorescent: daylight, day white, cool
      {15, 3525}, {16, 2925},                          // white, warm
      {17, 2856}, {18, 4874}, {19, 6774},              // A, B, C
      {20, 5503}, {21, 6504}, {22, 7504}, {23, 5003},  // D55, D65, D75, D50
      {24, 3200}};                                     // studio tungsten
  for (const auto& [source, temperature] : sources)
    if (source == code) return temperature;
  return {};
}

}  // namespace vistrel::app
