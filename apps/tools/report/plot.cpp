#include "apps/tools/report/plot.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vistrel::app {
namespace {

constexpr Paint kPaper{250, 249, 245}, kInk{32, 36, 44}, kPale{205, 206, 208}, kBand{240, 239, 233};
constexpr Paint kPicture{120, 160, 205}, kMean{176, 38, 38};
constexpr int kScale = 2, kRow = 44, kPlotMargin = 28;
constexpr int kLeft = 250, kPlotWidth = 900, kRight = 320;

// An axis between whole decibels.
struct Axis {
  int min, max, step;
  int top, bottom;  // of the plot

  double x(double cpsnr) const { return kLeft + kPlotWidth * (cpsnr - min) / (max - min); }
};

Axis axisOf(const std::vector<Evaluation>& evaluations, int top, size_t rows) {
  double min = 100, max = 0;
  for (const Evaluation& evaluation : evaluations)
    for (const Score& s : evaluation.scores)
      if (std::isfinite(s.cpsnr)) min = std::min(min, s.cpsnr), max = std::max(max, s.cpsnr);
  const int step = max - min > 30 ? 5 : max - min > 10 ? 2 : 1;
  const int first = static_cast<int>(std::floor(std::min(min, max) / step)) * step;
  const int last = std::max(first + step, static_cast<int>(std::ceil(max / step)) * step);
  return {first, last, step, top, top + static_cast<int>(rows) * kRow};
}

void centred(Canvas& canvas, double x, int y, const std::string& line, Paint paint) {
  canvas.text(static_cast<int>(x) - Canvas::textWidth(kScale, line) / 2, y, kScale, line, paint);
}

void drawAxis(Canvas& canvas, const Axis& axis) {
  for (int value = axis.min; value <= axis.max; value += axis.step) {
    const int x = static_cast<int>(axis.x(value));
    canvas.box(x, axis.top, 1, axis.bottom - axis.top + 6, kPale);
    centred(canvas, x, axis.bottom + 12, fmt::to_string(value), kInk);
  }
  centred(canvas, kLeft + kPlotWidth / 2, axis.bottom + 38,
          fmt::format("CPSNR in dB, {} pixels at each border excluded", kBorder), kInk);
}

void drawRow(Canvas& canvas, const Axis& axis, int y, const std::string& label, size_t algorithm,
             const std::vector<Evaluation>& evaluations, const Score& mean) {
  const int textTop = y - Canvas::textHeight(kScale) / 2;
  canvas.text(kLeft - 20 - Canvas::textWidth(kScale, label), textTop, kScale, label, kInk);
  for (const Evaluation& evaluation : evaluations)
    if (const double cpsnr = evaluation.scores[algorithm].cpsnr; std::isfinite(cpsnr))
      canvas.disc(axis.x(cpsnr), y, 4, kPicture);
  if (std::isfinite(mean.cpsnr)) canvas.disc(axis.x(mean.cpsnr), y, 7, kMean);
  canvas.text(kLeft + kPlotWidth + 24, textTop, kScale,
              fmt::format("{:6.2f}  {:6.4f}  {:6.2f}", mean.cpsnr, mean.ssim, mean.nsPerPixel),
              kInk);
}

void drawHead(Canvas& canvas, size_t pictures) {
  canvas.text(
      kPlotMargin, kPlotMargin, kScale + 1,
      fmt::format("Demosaicing: {} picture{} in four phases", pictures, pictures == 1 ? "" : "s"),
      kInk);
  const int y = kPlotMargin + 44;
  canvas.disc(kLeft + 6, y + 7, 4, kPicture);
  canvas.text(kLeft + 20, y, kScale, "one picture", kInk);
  canvas.disc(kLeft + 206, y + 7, 7, kMean);
  canvas.text(kLeft + 222, y, kScale, "mean", kInk);
  canvas.text(kLeft + kPlotWidth + 24, y, kScale, "    dB    SSIM   ns/px", kInk);
}

}  // namespace

std::vector<Score> meanOf(const std::vector<Evaluation>& evaluations) {
  std::vector<Score> mean(evaluations.empty() ? 0 : evaluations[0].scores.size());
  const auto n = static_cast<double>(evaluations.size());
  for (const Evaluation& evaluation : evaluations)
    for (size_t i = 0; i < mean.size(); ++i) {
      mean[i].cpsnr += evaluation.scores[i].cpsnr / n;
      mean[i].ssim += evaluation.scores[i].ssim / n;
      mean[i].nsPerPixel += evaluation.scores[i].nsPerPixel / n;
    }
  return mean;
}

Canvas plotOf(const std::vector<Evaluation>& evaluations,
              const std::vector<AlgorithmChoice>& algorithms) {
  const std::vector<Score> mean = meanOf(evaluations);
  std::vector<size_t> order(algorithms.size());
  std::iota(order.begin(), order.end(), size_t{0});
  std::stable_sort(order.begin(), order.end(),
                   [&mean](size_t a, size_t b) { return mean[a].cpsnr > mean[b].cpsnr; });
  const Axis axis = axisOf(evaluations, kPlotMargin + 76, order.size());
  Canvas canvas(kLeft + kPlotWidth + kRight,
                static_cast<uint32_t>(axis.bottom + 38 + 14 + kPlotMargin), kPaper);
  for (size_t row = 0; row < order.size(); row += 2)
    canvas.box(kLeft, axis.top + static_cast<int>(row) * kRow, kPlotWidth, kRow, kBand);
  drawHead(canvas, evaluations.size());
  drawAxis(canvas, axis);
  for (size_t row = 0; row < order.size(); ++row)
    drawRow(canvas, axis, axis.top + static_cast<int>(row) * kRow + kRow / 2,
            labelOf(algorithms[order[row]]), order[row], evaluations, mean[order[row]]);
  return canvas;
}

}  // namespace vistrel::app
