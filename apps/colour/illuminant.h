// The colour of light: chromaticities, colour temperature, adaptation.
#pragma once

#include <cstdint>
#include <optional>

#include "apps/colour/matrix3.h"

namespace vistrel::app {

// CIE 1931 chromaticity.
struct Chromaticity {
  double x, y;
};

constexpr Chromaticity kD50{0.3457, 0.3585};
constexpr Chromaticity kD65{0.3127, 0.3290};  // as IEC 61966-2-1 gives it for sRGB

// XYZ of Y = 1; and back, nothing if no light has such an XYZ.
Vector3 xyzOf(const Chromaticity& c);
std::optional<Chromaticity> chromaticityOf(const Vector3& xyz);

// The correlated colour temperature in kelvins, by C. S. McCamy, "Correlated color temperature as
// an explicit function of chromaticity coordinates", Color Research & Application 17 (1992).
// Results are limited to 1000 to 40000.
double temperatureOf(const Chromaticity& c);

// From XYZ under one light to XYZ under another, by the linear Bradford transform. Nothing if a
// light has no such adaptation.
std::optional<Matrix3> adaptation(const Chromaticity& from, const Chromaticity& to);

// From XYZ under D65 to linear sRGB, from the primaries of IEC 61966-2-1.
Matrix3 srgbFromXyz();

// The temperature of an EXIF light source: that of a CIE illuminant, or the middle of a range.
std::optional<double> temperatureOfSource(uint32_t code);

}  // namespace vistrel::app
