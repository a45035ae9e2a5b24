// The camera's frames of the test scene, and what their tags say about undoing the camera.
#include "apps/tools/scene/camera.h"

#include <gtest/gtest.h>
#include <tiffio.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <nlohmann/json.hpp>

#include "tests/apps/patches.h"
#include "tests/apps/program.h"

namespace vistrel {
namespace {

using Colour = std::array<double, 3>;

constexpr uint32_t kSceneWidth = 1536, kSceneHeight = 1024;

// The camera, as its documentation describes it: 12 bits, RGGB.
constexpr double kMix[3][3] = {{0.70, 0.25, 0.05}, {0.15, 0.70, 0.15}, {0.03, 0.22, 0.75}};
constexpr Colour kNeutral{0.75, 1, 0.4375};
constexpr double kCameraBlack[4] = {252, 256, 257, 261}, kWhite = 3840, kReadNoise = 0.04;

size_t placeOf(uint32_t x, uint32_t y) { return y % 2 * 2 + x % 2; }
size_t filterOf(uint32_t x, uint32_t y) { return y % 2 + x % 2; }  // of RGGB

double lightOf(double display) {
  return display <= 0.04045 ? display / 12.92 : std::pow((display + 0.055) / 1.055, 2.4);
}

// The light that reaches the sensor: white light in the centre of the frame is 1.25.
Colour lightAt(const Patch& patch, double x, double y) {
  const double u = x - kSceneWidth / 2.0, v = y - kSceneHeight / 2.0;
  const double corner = std::hypot(kSceneWidth / 2.0, kSceneHeight / 2.0);
  const double lens = 1 - 0.3 * (u * u + v * v) / (corner * corner);
  Colour light{};
  for (size_t c = 0; c < 3; ++c) light[c] = 1.25 * lens * lightOf(patch.colour[c]);
  return light;
}

// The sensor clips the green of this patch alone.
bool isClipped(const Patch& patch) { return patch.name == "gray-1"; }

// The signal of a filter, in parts of what the sensor clips at.
double signalOf(const Colour& light, size_t filter) {
  const double* const mix = kMix[filter];
  return kNeutral[filter] * (mix[0] * light[0] + mix[1] * light[1] + mix[2] * light[2]);
}

template <class Visit>
void forEachPixel(const Patch& p, const Visit& visit) {
  for (uint32_t y = p.box.y; y < p.box.y + p.box.height; ++y)
    for (uint32_t x = p.box.x; x < p.box.x + p.box.width; ++x) visit(x, y);
}

// The samples of a 16-bit PGM.
std::vector<uint32_t> wordsOf(const std::string& file) {
  std::vector<uint32_t> words;
  for (size_t i = file.size() - size_t{kSceneWidth} * kSceneHeight * 2; i < file.size(); i += 2)
    words.push_back(static_cast<uint32_t>(static_cast<uint8_t>(file[i]) << 8 |
                                          static_cast<uint8_t>(file[i + 1])));
  return words;
}

struct SceneCamera : ::testing::Test {
  Scratch scratch;
  const std::vector<Patch> chart = readPatches(VISTREL_CHART);

  std::vector<uint32_t> scene(const std::string& options) const {
    EXPECT_EQ(scratch.vistrel("scene -o out.pgm " + options).err, "");
    return wordsOf(scratch.read("out.pgm"));
  }
};

TEST_F(SceneCamera, ChartListsThePatchesOfTheScene) {
  ASSERT_EQ(chart.size(), 24u);
  EXPECT_EQ(std::ranges::count_if(chart, &Patch::isNeutral), 6);
  const std::vector<uint32_t> samples = scene("--noise 0 --bits 16");
  for (const Patch& patch : chart)
    forEachPixel(patch, [&](uint32_t x, uint32_t y) {
      ASSERT_NEAR(samples[y * kSceneWidth + x], 65535 * patch.colour[filterOf(x, y)], 0.51)
          << patch.name << " " << x << "," << y;
    });
}

TEST_F(SceneCamera, LightIsThatOfSrgb) {
  for (int i = 0; i <= 10000; ++i)
    ASSERT_NEAR(app::linearOf(i / 10000.0), lightOf(i / 10000.0), 1e-14) << i;
}

// Rounding takes half a step; the light of a display colour, which is rounded to 16 bits, is off by
// another tenth at most.
TEST_F(SceneCamera, RecordsMixedLightAboveItsBlackLevels) {
  for (const std::string phase : {"rggb", "gbrg"}) {
    const std::vector<uint32_t> samples = scene("--camera --noise 0 --phase " + phase);
    for (const Patch& patch : chart)
      forEachPixel(patch, [&](uint32_t x, uint32_t y) {
        const size_t filter = std::string("rgb").find(phase[placeOf(x, y)]);
        const double signal = signalOf(lightAt(patch, x + 0.5, y + 0.5), filter);
        const double black = kCameraBlack[placeOf(x, y)];
        const double sample = std::min(black + signal * (kWhite - black), kWhite);
        ASSERT_NEAR(samples[y * kSceneWidth + x], sample, 0.6)
            << phase << " " << patch.name << " " << x << "," << y;
      });
  }
}

TEST_F(SceneCamera, ClipsHighlights) {
  const std::vector<uint32_t> samples = scene("--camera");
  EXPECT_EQ(*std::ranges::max_element(samples), kWhite);
  const auto clipped = std::ranges::count(samples, static_cast<uint32_t>(kWhite));
  EXPECT_GT(clipped, 5000);
  EXPECT_LT(clipped, 80000);  // five percent
  for (const Patch& patch : chart)
    forEachPixel(patch, [&](uint32_t x, uint32_t y) {
      ASSERT_EQ(samples[y * kSceneWidth + x] == kWhite, isClipped(patch) && filterOf(x, y) == 1)
          << patch.name << " " << x << "," << y;
    });
}

// Photon noise of 1 % at full scale, plus read noise.
TEST_F(SceneCamera, HasTheNoiseOfLightAndElectronics) {
  const std::vector<uint32_t> clean = scene("--camera --noise 0"),
                              noisy = scene("--camera --noise 1");
  for (const Patch& patch : chart) {
    if (!patch.isNeutral() || isClipped(patch)) continue;
    double squares = 0, expected = 0;
    forEachPixel(patch, [&](uint32_t x, uint32_t y) {
      const size_t at = y * kSceneWidth + x;
      const double error = static_cast<double>(noisy[at]) - clean[at];
      const double range = kWhite - kCameraBlack[placeOf(x, y)];
      const double signal = (clean[at] - kCameraBlack[placeOf(x, y)]) / range;
      squares += error * error;
      expected += range * range * 1e-4 * (signal + kReadNoise * kReadNoise) + 1.0 / 12;
    });
    EXPECT_NEAR(squares / expected, 1, 0.15) << patch.name;  // 2880 samples: five deviations
  }
}

TEST_F(SceneCamera, IsTheSameEveryTimeInEveryFile) {
  const auto render = [this](const std::string& options) {
    EXPECT_EQ(scratch.vistrel("scene --camera -s 96x64 -o " + options).err, "");
    return scratch.read("out.pgm");
  };
  const std::string frame = render("out.pgm");
  EXPECT_EQ(render("out.pgm --seed 1"), frame);
  EXPECT_NE(render("out.pgm --seed 2"), frame);
  render("in.dng");
  EXPECT_EQ(scratch.vistrel("unpack in.dng -o unpacked.pgm").status, 0);
  EXPECT_EQ(scratch.read("unpacked.pgm"), frame);
}

TEST_F(SceneCamera, LevelsSuitTheBits) {
  const struct {
    int bits;
    std::array<int, 4> black;  // 252, 256, 257, 261 of 12 bits
    int white;
  } cases[] = {{8, {15, 16, 16, 16}, 240},
               {10, {63, 64, 64, 65}, 960},
               {16, {4032, 4096, 4112, 4176}, 61440}};
  for (const auto& c : cases) {
    const std::string options = "scene --camera -s 64x48 -o in.dng --bits ";
    EXPECT_EQ(scratch.vistrel(options + std::to_string(c.bits)).err, "");
    const auto info = nlohmann::json::parse(scratch.vistrel("info --json in.dng").out);
    EXPECT_EQ(info["bits"], c.bits);
    EXPECT_EQ(info["black_level"], nlohmann::json(c.black));
    EXPECT_EQ(info["white_level"], c.white);
  }
}

TEST_F(SceneCamera, NeedsColourFilters) {
  EXPECT_EQ(scratch.vistrel("scene --camera --phase mono -o out.pgm").err,
            "vistrel: --phase mono: --camera needs colour filters\n");
  EXPECT_EQ(scratch.vistrel("scene --phase mono -o out.dng").err,
            "vistrel: --phase mono: a .dng needs colour filters\n");
  EXPECT_TRUE(scratch.names().empty());
}

using Matrix = std::array<Colour, 3>;

// By Cramer's rule.
Matrix inverseOf(const Matrix& m) {
  Matrix result{};
  double determinant = 0;
  for (size_t r = 0; r < 3; ++r)
    for (size_t c = 0; c < 3; ++c) {
      const size_t r1 = (r + 1) % 3, r2 = (r + 2) % 3, c1 = (c + 1) % 3, c2 = (c + 2) % 3;
      result[c][r] = m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
      if (r == 0) determinant += m[0][c] * result[c][0];
    }
  for (Colour& row : result)
    for (double& v : row) v /= determinant;
  return result;
}

// A DNG, read through libtiff.
struct DngFrame {
  std::vector<uint16_t> samples;
  std::array<double, 4> black;
  double white;
  Colour neutral;
  Matrix toSrgb;  // from balanced camera colours to linear sRGB

  explicit DngFrame(const std::filesystem::path& path) {
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
    samples.resize(size_t{kSceneWidth} * kSceneHeight);
    for (uint32_t y = 0; y < kSceneHeight; ++y)
      EXPECT_EQ(TIFFReadScanline(tiff.get(), &samples[y * kSceneWidth], y, 0), 1);
    const auto values = [&tiff](uint32_t tag, auto type) {
      uint16_t count = 0;
      decltype(type)* from = nullptr;
      EXPECT_TRUE(TIFFGetField(tiff.get(), tag, &count, &from));
      return std::vector<double>(from, from + count);
    };
    std::ranges::copy(values(TIFFTAG_BLACKLEVEL, float{}), black.begin());
    white = values(TIFFTAG_WHITELEVEL, uint32_t{})[0];
    std::ranges::copy(values(TIFFTAG_ASSHOTNEUTRAL, float{}), neutral.begin());
    toSrgb = matrixOf(values(TIFFTAG_COLORMATRIX1, float{}));
  }

  // Gray in daylight becomes gray, so each row of the matrix that is inverted has the sum 1.
  static Matrix matrixOf(const std::vector<double>& cameraOfXyz) {
    constexpr double kXyzOfSrgb[3][3] = {{0.4123908, 0.3575843, 0.1804808},
                                         {0.2126390, 0.7151687, 0.0721923},
                                         {0.0193308, 0.1191948, 0.9505322}};
    Matrix cameraOfSrgb{};
    for (size_t r = 0; r < 3; ++r) {
      for (size_t c = 0; c < 3; ++c)
        for (size_t k = 0; k < 3; ++k)
          cameraOfSrgb[r][c] += cameraOfXyz[3 * r + k] * kXyzOfSrgb[k][c];
      const double sum = cameraOfSrgb[r][0] + cameraOfSrgb[r][1] + cameraOfSrgb[r][2];
      for (double& v : cameraOfSrgb[r]) v /= sum;
    }
    return inverseOf(cameraOfSrgb);
  }

  // The mean of a patch in linear sRGB.
  Colour colourOf(const Patch& patch) const {
    Colour balanced{}, count{};
    forEachPixel(patch, [&](uint32_t x, uint32_t y) {
      const size_t place = placeOf(x, y), filter = filterOf(x, y);
      balanced[filter] +=
          (samples[y * kSceneWidth + x] - black[place]) / (white - black[place]) / neutral[filter];
      ++count[filter];
    });
    Colour colour{};
    for (size_t c = 0; c < 3; ++c)
      for (size_t k = 0; k < 3; ++k) colour[c] += toSrgb[c][k] * balanced[k] / count[k];
    return colour;
  }
};

// The deviation of the mean of a patch, in each channel.
Colour deviationOf(const Patch& patch, const Colour& light, const Matrix& toSrgb) {
  Colour deviation{};
  for (size_t c = 0; c < 3; ++c) {
    double variance = 0;
    for (size_t k = 0; k < 3; ++k) {
      const double count = patch.box.width * patch.box.height / (k == 1 ? 2.0 : 4.0);
      const double one = 0.005 * std::sqrt(signalOf(light, k) + kReadNoise * kReadNoise);
      variance += std::pow(toSrgb[c][k] * one / kNeutral[k], 2) / count;
    }
    deviation[c] = std::sqrt(variance);
  }
  return deviation;
}

// Black levels, neutral and matrix of the tags give the light of every patch, so grays are neutral.
// A thousandth more than the noise: the light falls off towards the corners, and the filters of a
// block are not in the same place.
TEST_F(SceneCamera, TagsUndoTheCamera) {
  ASSERT_EQ(scratch.vistrel("scene --camera -o in.dng").err, "");
  const DngFrame frame(scratch / "in.dng");
  double lightest = 1;
  for (const Patch& patch : chart) {
    if (isClipped(patch)) continue;
    const Colour light =
        lightAt(patch, patch.box.x + patch.box.width / 2.0, patch.box.y + patch.box.height / 2.0);
    const Colour colour = frame.colourOf(patch);
    const Colour deviation = deviationOf(patch, light, frame.toSrgb);
    for (size_t c = 0; c < 3; ++c)
      EXPECT_NEAR(colour[c], light[c], 5 * deviation[c] + 0.001 * light[c] + 1e-5)
          << patch.name << " " << c;
    if (!patch.isNeutral()) continue;
    for (const size_t c : {size_t{0}, size_t{2}})
      EXPECT_NEAR(colour[c], colour[1],
                  5 * std::hypot(deviation[c], deviation[1]) + 0.001 * light[1])
          << patch.name << " " << c;
    EXPECT_LT(colour[1], lightest) << patch.name;
    lightest = colour[1];
  }
}

}  // namespace
}  // namespace vistrel
