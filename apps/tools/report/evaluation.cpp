#include "apps/tools/report/evaluation.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include "apps/error.h"
#include "apps/names/phase_names.h"

namespace vistrel::app {
namespace {

// Demosaics into `picture` and returns the time in nanoseconds.
double demosaic(const vistrel_frame& frame, const AlgorithmChoice& algorithm, Image& picture) {
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.algorithm = algorithm.row->code;
  conversion.threshold = algorithm.threshold;
  const auto begin = std::chrono::steady_clock::now();
  convertInto(frame, conversion, picture);
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count();
}

}  // namespace

std::vector<uint8_t> mosaicOf(const Image& reference, uint32_t phase) {
  const vistrel_layout& l = reference.layout;
  std::vector<uint8_t> mosaic;
  mosaic.reserve(size_t{l.width} * l.height);
  for (uint32_t y = 0; y < l.height; ++y)
    for (uint32_t x = 0; x < l.width; ++x)
      mosaic.push_back(reference.pixels[y * l.row_bytes + size_t{x} * 3 + channelAt(phase, x, y)]);
  return mosaic;
}

void checkReference(const Image& reference) {
  constexpr uint32_t kMin = 2 * kBorder + kWindow;
  const vistrel_layout& l = reference.layout;
  if (l.width < kMin || l.height < kMin)
    throwError(kRejected,
               "{}x{} pixels: at least {}x{} are needed, since {} at each border do not count and "
               "SSIM's window has {}",
               l.width, l.height, kMin, kMin, kBorder, kWindow);
}

std::vector<Score> evaluateAll(const Image& reference,
                               const std::vector<AlgorithmChoice>& algorithms) {
  const Evaluator evaluator(reference);
  const uint32_t width = reference.layout.width, height = reference.layout.height;
  std::vector<Score> scores(algorithms.size());
  std::vector<double> fastest(algorithms.size(), std::numeric_limits<double>::infinity());
  Image picture;
  for (uint32_t phase = 0; phase < kBayerPhases; ++phase) {
    const std::vector<uint8_t> mosaic = mosaicOf(reference, phase);
    const vistrel_frame frame = frameOf(mosaic, width, height, phase);
    for (size_t i = 0; i < algorithms.size(); ++i) {
      for (int run = 0; run < kRuns; ++run)
        fastest[i] = std::min(fastest[i], demosaic(frame, algorithms[i], picture));
      const Quality quality = evaluator.of(picture);
      scores[i].cpsnr += quality.cpsnr / kBayerPhases;
      scores[i].ssim += quality.ssim / kBayerPhases;
      scores[i].nsPerPixel = fastest[i] / (double{1} * width * height);
    }
  }
  return scores;
}

}  // namespace vistrel::app
