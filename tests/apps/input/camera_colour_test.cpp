// From a camera's colours to sRGB: published values, and cameras whose matrices are known.
#include "apps/input/camera_colour.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vistrel::app {
namespace {

constexpr Chromaticity kA{0.44757, 0.40745};

void expectNear(const Matrix3& actual, const Matrix3& expected, double tolerance) {
  for (size_t i = 0; i < 9; ++i) EXPECT_NEAR(actual[i], expected[i], tolerance) << i;
}

// CSS Color Module Level 4, "Sample code for color conversions": exact ratios.
const Matrix3 kSrgb{12831.0 / 3959,     -329.0 / 214,       -1974.0 / 3959,
                    -851781.0 / 878810, 1648619.0 / 878810, 36519.0 / 878810,
                    705.0 / 12673,      -2585.0 / 12673,    705.0 / 667};

TEST(Matrix3, Inverse) {
  expectNear(*inverse({2, 0, 0, 0, 4, 0, 0, 0, 5}), {.5, 0, 0, 0, .25, 0, 0, 0, .2}, 0);
  // determinant 1
  expectNear(*inverse({1, 2, 3, 0, 1, 4, 5, 6, 0}), {-24, 18, 5, 20, -15, -4, -5, 4, 1}, 1e-12);
  EXPECT_FALSE(inverse({1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_FALSE(inverse(Matrix3{}));
  Matrix3 bad = kIdentity;
  bad[4] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(inverse(bad));
  bad[4] = std::numeric_limits<double>::infinity();
  EXPECT_FALSE(inverse(bad));
}

TEST(Matrix3, Product) {
  const Matrix3 a{1, 2, 3, 4, 5, 6, 7, 8, 9}, b{0, 1, 0, 0, 0, 1, 1, 0, 0};
  EXPECT_EQ(product(a, b), (Matrix3{3, 1, 2, 6, 4, 5, 9, 7, 8}));
  EXPECT_EQ(product(a, Vector3{1, 10, 100}), (Vector3{321, 654, 987}));
}

// CIE 015: the temperatures of its illuminants. McCamy's formula is off by less than 2 K between
// 2856 and 6504 K.
TEST(Illuminant, Temperature) {
  EXPECT_NEAR(temperatureOf(kA), 2856, 2);
  EXPECT_NEAR(temperatureOf({0.34567, 0.35850}), 5003, 3);
  EXPECT_NEAR(temperatureOf({0.33242, 0.34743}), 5503, 2);
  EXPECT_NEAR(temperatureOf({0.31271, 0.32902}), 6504, 2);
  EXPECT_NEAR(temperatureOf({0.29902, 0.31485}), 7504, 5);
  for (const double y : {0.1858, 0.18579999, 0.18580001, 0.9})
    for (const double x : {0.01, 0.332, 0.7}) {
      EXPECT_GE(temperatureOf({x, y}), 1000);
      EXPECT_LE(temperatureOf({x, y}), 40000);
    }
}

// B. Lindbloom, "Chromatic Adaptation": Bradford from D50 to D65.
TEST(Illuminant, Adaptation) {
  const auto d50 = chromaticityOf({0.96422, 1, 0.82521}),
             d65 = chromaticityOf({0.95047, 1, 1.08883});
  expectNear(*adaptation(*d50, *d65),
             {0.9555766, -0.0230393, 0.0631636, -0.0282895, 1.0099416, 0.0210077, 0.0122982,
              -0.0204830, 1.3299098},
             2e-7);
  expectNear(*adaptation(kA, kA), kIdentity, 1e-12);
  EXPECT_FALSE(adaptation({0.9, 0.01}, kD65));
}

TEST(Illuminant, ChromaticityOfXyz) {
  const auto c = chromaticityOf({1, 2, 1});
  EXPECT_EQ(c->x, 0.25);
  EXPECT_EQ(c->y, 0.5);
  EXPECT_FALSE(chromaticityOf({1, -1, 1}));
  EXPECT_FALSE(chromaticityOf({0, 0, 0}));
}

TEST(Illuminant, Srgb) { expectNear(srgbFromXyz(), kSrgb, 1e-9); }

// A camera whose colours are those of sRGB, times `factors`.
Calibration scaledSrgb(const Vector3& factors, std::optional<double> temperature = {}) {
  return {product(diagonal(factors), kSrgb), kIdentity, temperature};
}

using Gains = std::array<uint32_t, 3>;
constexpr std::array<int32_t, 9> kOne{4096, 0, 0, 0, 4096, 0, 0, 0, 4096};

TEST(CameraColour, OfSrgbItself) {
  CameraMetadata m;
  m.neutral = {1, 1, 1};
  m.calibrations = {scaledSrgb({1, 1, 1})};
  const CameraColour colour = cameraColour(m);
  EXPECT_EQ(colour.gains, (Gains{4096, 4096, 4096}));
  EXPECT_EQ(colour.matrix, kOne);
  EXPECT_NEAR(*colour.temperature, 6505.08, 0.01);  // the formula of D65, by hand
  EXPECT_EQ(colour.fault, "");
}

// 1 / 0.625 = 1.6, 6553.6 / 4096
TEST(CameraColour, GainsBalanceTheNeutral) {
  CameraMetadata m;
  m.neutral = {0.5, 1, 0.625};
  EXPECT_EQ(cameraColour(m).gains, (Gains{8192, 4096, 6554}));
  EXPECT_FALSE(cameraColour(m).matrix);
  EXPECT_EQ(cameraColour(m).fault, "");
  m.calibrations = {scaledSrgb({0.5, 1, 0.625})};
  EXPECT_EQ(cameraColour(m).matrix, kOne);
  m.neutral = {0.25, 0.5, 2};
  EXPECT_EQ(cameraColour(m).gains, (Gains{32768, 16384, 4096}));
}

// With 449, 3525, 6823.3 and 5520.33, D65 has n = 0.134777 and 6505.08 K. So the first matrix
// counts (1/6505.08 - 1/7504) / (1/2856 - 1/7504) = 0.094356.
TEST(CameraColour, MatricesAreInterpolated) {
  CameraMetadata m;
  m.calibrations = {scaledSrgb({0.9, 1, 0.4}, 2856), scaledSrgb({0.5, 1, 0.8}, 7504)};
  m.light = kD65;
  const CameraColour byLight = cameraColour(m);
  EXPECT_EQ(byLight.matrix, kOne);
  EXPECT_NEAR((*byLight.gains)[0], 4096 / 0.537742, 0.6);
  EXPECT_EQ((*byLight.gains)[1], 4096u);
  EXPECT_NEAR((*byLight.gains)[2], 4096 / 0.762258, 0.6);
  m.light.reset();
  m.neutral = {0.537742, 1, 0.762258};
  const CameraColour byNeutral = cameraColour(m);
  EXPECT_EQ(byNeutral.matrix, kOne);
  EXPECT_NEAR(*byNeutral.temperature, 6505.08, 0.1);
}

// In either order of the illuminants.
TEST(CameraColour, BeyondBothIlluminantsTheNearerMatrixCounts) {
  const Calibration warm = scaledSrgb({0.9, 1, 0.4}, 2856), cool = scaledSrgb({0.5, 1, 0.8}, 5003);
  for (const auto& both : {std::vector{warm, cool}, std::vector{cool, warm}}) {
    CameraMetadata m;
    m.calibrations = both;
    m.light = kD65;
    EXPECT_EQ(cameraColour(m).gains, (Gains{8192, 4096, 5120}));
  }
}

TEST(CameraColour, WithoutTemperaturesTheFirstMatrixCounts) {
  CameraMetadata m;
  m.calibrations = {scaledSrgb({0.5, 1, 0.8}), scaledSrgb({0.9, 1, 0.4}, 5003)};
  m.light = kD65;
  EXPECT_EQ(cameraColour(m).gains, (Gains{8192, 4096, 5120}));
}

TEST(CameraColour, AnalogBalanceAndIndividualCalibration) {
  CameraMetadata m;
  m.calibrations = {scaledSrgb({1, 1, 1})};
  m.calibrations[0].individual = diagonal({1, 1, 0.5});
  m.analogBalance = {2, 1, 1};
  m.light = kD65;
  EXPECT_EQ(cameraColour(m).gains, (Gains{4096, 8192, 16384}));
  EXPECT_EQ(cameraColour(m).matrix, kOne);
  m.light.reset();
  m.neutral = {2, 1, 0.5};
  EXPECT_EQ(cameraColour(m).matrix, kOne);
}

TEST(CameraColour, WithoutNeutralTheMatrixIsForDaylight) {
  CameraMetadata m;
  m.calibrations = {scaledSrgb({0.5, 1, 0.8})};
  EXPECT_FALSE(cameraColour(m).gains);
  EXPECT_FALSE(cameraColour(m).temperature);
  EXPECT_EQ(cameraColour(m).matrix, kOne);
}

// A camera with much crosstalk, whose colours are known from the scene's.
const Matrix3 kCamera{0.75, -0.15, -0.10, -0.45, 1.25, 0.22, -0.08, 0.20, 0.60};

// Colours that linear sRGB has under D65, as the camera sees them under another light, come back:
// each coefficient is off by at most 1/4096, each gain by 1/8192.
void expectChart(const Chromaticity& light) {
  const Matrix3 toCamera = product(kCamera, product(*adaptation(kD65, light), *inverse(kSrgb)));
  CameraMetadata m;
  m.neutral = product(toCamera, Vector3{1, 1, 1});
  m.calibrations = {{kCamera, kIdentity, {}}};
  const CameraColour colour = cameraColour(m);
  ASSERT_TRUE(colour.gains && colour.matrix) << colour.fault;
  const double brightest = std::max({(*m.neutral)[0], (*m.neutral)[1], (*m.neutral)[2]});
  for (int i = 0; i < 125; ++i) {
    const Vector3 shown{i % 5 / 4.0, i / 5 % 5 / 4.0, i / 25 / 4.0};
    Vector3 seen = product(toCamera, shown);
    for (size_t c = 0; c < 3; ++c) seen[c] *= (*colour.gains)[c] / 4096.0 / brightest;
    Matrix3 matrix;
    std::copy(colour.matrix->begin(), colour.matrix->end(), matrix.begin());
    const Vector3 result = product(matrix, seen);
    for (size_t c = 0; c < 3; ++c) EXPECT_NEAR(result[c] / 4096, shown[c], 0.001) << i << " " << c;
  }
}

TEST(CameraColour, ChartUnderDaylight) { expectChart(kD65); }
TEST(CameraColour, ChartUnderTungsten) { expectChart(kA); }
TEST(CameraColour, ChartInTheShade) { expectChart({0.29902, 0.31485}); }

TEST(CameraColour, RowsSumToOneExactly) {
  for (int i = 1; i < 200; ++i) {
    CameraMetadata m;
    m.neutral = {0.3 + 0.003 * i, 1, 0.9 - 0.002 * i};
    m.calibrations = {{kCamera, kIdentity, {}}};
    const CameraColour colour = cameraColour(m);
    ASSERT_TRUE(colour.matrix) << colour.fault;
    for (size_t row = 0; row < 9; row += 3)
      EXPECT_EQ((*colour.matrix)[row] + (*colour.matrix)[row + 1] + (*colour.matrix)[row + 2],
                4096);
  }
}

TEST(CameraColour, Faults) {
  CameraMetadata m;
  m.neutral = {1, 1, 1};
  m.calibrations = {{{1, 0, 0, 0, -1, 0, 0, 0, 1}, kIdentity, {}}};
  EXPECT_EQ(cameraColour(m).fault, "no light gives the neutral");
  EXPECT_FALSE(cameraColour(m).matrix);
  EXPECT_EQ(cameraColour(m).gains, (Gains{4096, 4096, 4096}));
  m.neutral.reset();
  EXPECT_EQ(cameraColour(m).fault, "the light is beyond what the matrices describe");
  m.light = Chromaticity{0.9, 0.01};
  m.calibrations = {scaledSrgb({1, 1, 1})};
  EXPECT_EQ(cameraColour(m).fault, "the light is beyond what the matrices describe");
  // gains beyond 16
  m.light = kD65;
  m.calibrations = {scaledSrgb({0.05, 1, 1})};
  EXPECT_EQ(cameraColour(m).fault, "the light is beyond what the matrices describe");
  // Red and green differ by little: green is 1 / own of what its filter sees, less the rest of red.
  m.light.reset();
  const auto faultOf = [&m](double own) {
    m.calibrations = {{product({1, 0, 0, 1 - own, own, 0, 0, 0, 1}, kSrgb), kIdentity, {}}};
    return cameraColour(m).fault;
  };
  for (const double own : {0.01, 0.2})  // 100 and -99, 5 and -4
    EXPECT_EQ(faultOf(own), "the coefficients of a row would add up to 8 or more") << own;
  EXPECT_EQ(faultOf(0.25), "");  // 4 and -3
}

}  // namespace
}  // namespace vistrel::app
