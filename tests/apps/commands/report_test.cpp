// Scores compared with a plain computation, errors, and published figures if the images are
// available.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

#include "vistrel/vistrel_host.h"

#include "tests/apps/pictures.h"
#include "tests/apps/program.h"
#include "tests/real_frames.h"

namespace vistrel {
namespace {

using Json = nlohmann::json;

constexpr uint32_t kWidth = 44, kHeight = 37, kBorder = 10;
const std::vector<std::string> kPhases{"grbg", "bggr", "rggb", "gbrg"};

// Colours that are smooth enough for a meaningful SSIM.
uint32_t texture(uint32_t x, uint32_t y) {
  return 20 + (x * 3 + y * 2) % 40 + (x % 7 < 3 ? 50 : 0) + (x * y) % 11;
}

double cpsnr(const Picture& a, const Picture& b) {
  double sum = 0;
  int n = 0;
  for (uint32_t y = kBorder; y < a.height - kBorder; ++y)
    for (uint32_t x = kBorder; x < a.width - kBorder; ++x)
      for (uint32_t c = 0; c < 3; ++c, ++n) sum += std::pow(a.at(x, y, c) - b.at(x, y, c), 2);
  return 10 * std::log10(255 * 255 / (sum / n));
}

// SSIM of one window, from deviations from its means.
double ssimAt(const Picture& a, const Picture& b, uint32_t left, uint32_t top, uint32_t c) {
  double weights = 0, meanA = 0, meanB = 0, varA = 0, varB = 0, both = 0;
  const auto visit = [&](const std::function<void(double w, double a, double b)>& f) {
    for (int j = -5; j <= 5; ++j)
      for (int i = -5; i <= 5; ++i)
        f(std::exp(-(i * i + j * j) / 4.5), a.at(left + 5 + i, top + 5 + j, c),
          b.at(left + 5 + i, top + 5 + j, c));
  };
  visit([&](double w, double p, double q) { weights += w, meanA += w * p, meanB += w * q; });
  meanA /= weights, meanB /= weights;
  visit([&](double w, double p, double q) {
    varA += w * (p - meanA) * (p - meanA) / weights;
    varB += w * (q - meanB) * (q - meanB) / weights;
    both += w * (p - meanA) * (q - meanB) / weights;
  });
  return (2 * meanA * meanB + 6.5025) * (2 * both + 58.5225) /
         ((meanA * meanA + meanB * meanB + 6.5025) * (varA + varB + 58.5225));
}

double ssim(const Picture& a, const Picture& b) {
  double sum = 0;
  int n = 0;
  for (uint32_t y = kBorder; y + 11 <= a.height - kBorder; ++y)
    for (uint32_t x = kBorder; x + 11 <= a.width - kBorder; ++x)
      for (uint32_t c = 0; c < 3; ++c, ++n) sum += ssimAt(a, b, x, y, c);
  return sum / n;
}

// The check sum of a chunk of a PNG, bit by bit.
std::string crcOf(const std::string& chunk) {
  uint32_t crc = ~0u;
  for (const char c : chunk) {
    crc ^= static_cast<unsigned char>(c);
    for (int bit = 0; bit < 8; ++bit) crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320 : 0);
  }
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(~crc >> shift);
  return bytes;
}

struct Report : ::testing::Test {
  Scratch scratch;

  // A full-colour picture made from a mosaic. Binning keeps an algorithm from reproducing it
  // exactly.
  void writePicture(const std::string& name, uint32_t width = kWidth, uint32_t height = kHeight,
                    const std::function<uint32_t(uint32_t, uint32_t)>& sample = texture) const {
    scratch.write("made.pgm", pgm(2 * width, 2 * height, 255, sample));
    ASSERT_EQ(scratch.vistrel("convert made.pgm --phase rggb --bin 2 -o " + name).status, 0);
  }
  Json scores(const std::string& options) const {
    const Finished result = scratch.vistrel("report --json out.json --reference " + options);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.status, 0);
    return Json::parse(scratch.read("out.json"));
  }
  void expectFailure(const std::string& options, int status, const std::string& text) const {
    const auto before = scratch.names();
    const Finished result = scratch.vistrel("report " + options);
    EXPECT_EQ(result.status, status) << options;
    EXPECT_EQ(result.err, "vistrel: " + text + "\n");
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(scratch.names(), before);
  }
};

TEST_F(Report, ScoresAreThoseOfAPlainComputation) {
  writePicture("true.png");
  const Picture reference = readPng(scratch / "true.png");
  const Json json = scores("true.png -a bilinear -a ahd");
  for (size_t a = 0; a < 2; ++a) {
    const std::string name = a ? "ahd" : "bilinear";
    double expectedCpsnr = 0, expectedSsim = 0;
    for (const std::string& phase : kPhases) {
      scratch.write(
          "m.pgm", pgm(kWidth, kHeight, 255, [&](uint32_t x, uint32_t y) {
            return reference.at(
                x, y, static_cast<uint32_t>(std::string("rgb").find(phase[2 * (y % 2) + x % 2])));
          }));
      ASSERT_EQ(scratch.vistrel("convert m.pgm -o m.png -a " + name + " --phase " + phase).status,
                0);
      const Picture picture = readPng(scratch / "m.png");
      expectedCpsnr += cpsnr(reference, picture) / 4;
      expectedSsim += ssim(reference, picture) / 4;
    }
    const Json& score = json["pictures"][0]["scores"][a];
    EXPECT_EQ(score["algorithm"], name);
    EXPECT_NEAR(score["cpsnr_db"].get<double>(), expectedCpsnr, 1e-9);
    EXPECT_NEAR(score["ssim"].get<double>(), expectedSsim, 1e-5);  // the program uses floats
    EXPECT_GT(score["ns_per_pixel"].get<double>(), 0);
  }
}

TEST_F(Report, MeansAreOverThePictures) {
  writePicture("a.png");
  writePicture("b.png", 61, 50, [](uint32_t x, uint32_t y) { return (x * 5 + y * 9) % 120; });
  const Json json = scores("a.png b.png -a laroche -o .");
  EXPECT_EQ(json["pictures"][1]["name"], "b");
  EXPECT_EQ(json["pictures"][1]["width"], 61);
  EXPECT_EQ(json["border_pixels"], 10);
  for (const char* key : {"cpsnr_db", "ssim", "ns_per_pixel"}) {
    const double a = json["pictures"][0]["scores"][0][key],
                 b = json["pictures"][1]["scores"][0][key];
    EXPECT_NEAR(json["mean"][0][key].get<double>(), (a + b) / 2, 1e-9) << key;
  }
}

TEST_F(Report, PrintsATableAndDrawsThePlot) {
  writePicture("a.png");
  const Finished result = scratch.vistrel("report --reference a.png -o .");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.out.substr(0, 53), "a                        CPSNR dB     SSIM  ns/pixel\n");
  size_t place = 0;
  for (size_t i = 0; const vistrel_algorithm* a = vistrel_algorithm_at(i); ++i)
    ASSERT_NE(place = result.out.find(std::string("\n  ") + a->name, place), std::string::npos);
  const Picture plot = readPng(scratch / "report.png");
  size_t marks = 0, discs = 1;  // the colour of means; one disc in the legend, one per algorithm
  for (size_t i = 0; i < plot.samples.size(); i += 3)
    marks += plot.samples[i] == 176 && plot.samples[i + 1] == 38 && plot.samples[i + 2] == 38;
  while (vistrel_algorithm_at(discs - 1)) ++discs;
  // A disc of radius 7 with soft edges.
  EXPECT_GE(marks, 120 * discs);
  EXPECT_LE(marks, 154 * discs);
}

TEST_F(Report, EqualPicturesHaveNoError) {
  writePicture("flat.png", 40, 40, [](uint32_t, uint32_t) { return 90; });
  const Json json = scores("flat.png -a bilinear -o .");
  EXPECT_TRUE(json["mean"][0]["cpsnr_db"].is_null());
  EXPECT_NEAR(json["mean"][0]["ssim"].get<double>(), 1, 1e-6);
  EXPECT_EQ(readPng(scratch / "report.png").channels, 3u);
}

TEST_F(Report, Errors) {
  expectFailure("--reference no.png", 4, "no.png: cannot be read: No such file or directory");
  expectFailure("--reference no.png -o no", 4, "-o no: there is no such folder");
  scratch.write("text.png", "no picture");
  expectFailure("--reference text.png", 3, "text.png: PNG: Not a PNG file");
  scratch.write("in.pgm", pgm(40, 40, 255, texture));
  ASSERT_EQ(scratch.vistrel("convert in.pgm --phase mono -o gray.png").status, 0);
  expectFailure("--reference gray.png", 3,
                "gray.png: a PNG of 1 channels of 8 bits: three of 8, red, green and blue, are "
                "expected");
  writePicture("small.png", 30, 31);
  expectFailure(
      "--reference small.png --json out.json", 3,
      "small.png: 30x31 pixels: at least 31x31 are needed, since 10 at each border do not "
      "count and SSIM's window has 11");
  writePicture("report.png");
  expectFailure("--reference report.png -o .", 2,
                "-o ./report.png: it is the same file as the input report.png");
  expectFailure("--reference report.png --json report.png", 2,
                "--json report.png: it is the same file as the input report.png");
  // A header of 60000 x 60000 pixels, its check sum, and the beginning of their data.
  const std::string huge("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\xEA\x60\0\0\xEA\x60\x08\x02\0\0\0", 29);
  scratch.write("huge.png", huge + crcOf(huge.substr(12)) + std::string("\0\0\0\x20IDAT", 8));
  expectFailure("--reference huge.png", 3,
                "huge.png: the file is too short: 60000x60000 pixels do not fit its 41 bytes");
  scratch.write("cut.png", scratch.read("report.png").substr(0, 600));
  expectFailure("--reference cut.png -o .", 3, "cut.png: PNG: the file is too short");
}

TEST_F(Report, WriteErrorsAreReported) {
  writePicture("a.png");
  const Finished result = scratch.vistrel("report --reference a.png --json no/out.json");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.err, "vistrel: no/out.json cannot be written: No such file or directory\n");
}

TEST_F(Report, ContinuesWithTheOthers) {
  writePicture("a.png");
  const Finished result = scratch.vistrel("report --json out.json --reference no.png a.png");
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err, "vistrel: no.png: cannot be read: No such file or directory\n");
  EXPECT_EQ(Json::parse(scratch.read("out.json"))["pictures"].size(), 1u);
}

// Published figures for the eight images, with one phase: plain AHD has 37.47 dB, colour
// differences along edges 34.1 with some smoothing.
TEST_F(Report, KodakPicturesScoreAsTheMethodsShould) {
  const auto pictures = framesIn("kodak");
  if (pictures.empty()) GTEST_SKIP() << "VISTREL_DATA names no folder with kodak/";
  std::string list;
  for (const auto& picture : pictures) list += picture.string() + " ";
  const Json mean = scores(list + "-a ahd -a edge")["mean"];
  EXPECT_NEAR(mean[0]["cpsnr_db"].get<double>(), 37.5, 0.1);
  EXPECT_NEAR(mean[1]["cpsnr_db"].get<double>(), 34.1, 0.5);
}

}  // namespace
}  // namespace vistrel
