#include "apps/tools/report/evaluation.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "apps/error.h"
#include "apps/names/phase_names.h"

namespace vistrel::app {
namespace {

constexpr uint32_t kBayerPhases = 4;

// Demosaics into `picture`; returns the nanoseconds that it took.
double demosaic(const vistrel_frame& frame, const Algorithm& algorithm, Image& picture) {
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.algorithm = algorithm.row->code;
  conversion.threshold = algorithm.threshold;
  const auto begin = std::chrono::steady_clock::now();
  convertInto(frame, conversion, picture.pixels);
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

std::vector<uint8_t> mosaicOf(const Image& truth, uint32_t phase) {
  const vistrel_layout& l = truth.layout;
  std::vector<uint8_t> mosaic;
  mosaic.reserve(size_t{l.width} * l.height);
  for (uint32_t y = 0; y < l.height; ++y)
    for (uint32_t x = 0; x < l.width; ++x)
      mosaic.push_back(truth.pixels[y * l.row_bytes + size_t{x} * 3 + channelAt(phase, x, y)]);
  return mosaic;
}

void checkTruth(const Image& truth) {
  constexpr uint32_t kLeast = 2 * kBorder + kWindow;
  const vistrel_layout& l = truth.layout;
  if (l.width < kLeast || l.height < kLeast)
    fail(kRejected,
         "{}x{} pixels: {}x{} or more are needed, as {} at each border do not count and SSIM's "
         "window has {}",
         l.width, l.height, kLeast, kLeast, kBorder, kWindow);
}

std::vector<Score> tryAll(const Image& truth, const std::vector<Algorithm>& algorithms) {
  const Judge judge(truth);
  const uint32_t width = truth.layout.width, height = truth.layout.height;
  std::vector<Score> scores(algorithms.size());
  std::vector<double> fastest(algorithms.size(), std::numeric_limits<double>::infinity());
  Image picture{truth.layout, std::vector<uint8_t>(truth.layout.bytes)};
  for (uint32_t phase = 0; phase < kBayerPhases; ++phase) {
    const std::vector<uint8_t> mosaic = mosaicOf(truth, phase);
    const vistrel_frame frame = frameOf(mosaic.data(), width, height, phase);
    for (size_t i = 0; i < algorithms.size(); ++i) {
      for (int run = 0; run < kRuns; ++run)
        fastest[i] = std::min(fastest[i], demosaic(frame, algorithms[i], picture));
      const Quality quality = judge.of(picture);
      scores[i].cpsnr += quality.cpsnr / kBayerPhases;
      scores[i].ssim += quality.ssim / kBayerPhases;
      scores[i].nsPerPixel = fastest[i] / (double{1} * width * height);
    }
  }
  return scores;
}

}  // namespace vistrel::app
