#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include "bench/filter.h"
#include "bench/peers.h"

namespace vistrel::core::bench {

namespace {

cv::Size sizeOf(const Frame& frame) {
  return {static_cast<int>(frame.size.width), static_cast<int>(frame.size.height)};
}

cv::Mat samples8Of(const Frame& frame) { return {sizeOf(frame), CV_8UC1, frame.samples8.get()}; }
cv::Mat samples16Of(const Frame& frame) { return {sizeOf(frame), CV_16UC1, frame.samples16.get()}; }

double scaleTo8Bits(const Frame& frame) { return 1.0 / (1 << (frame.significantBits - 8)); }

cv::Size binned(const cv::Mat& image, unsigned factor) {
  const int n = static_cast<int>(factor);
  return {image.cols / n, image.rows / n};
}

// Whole blocks only: for a ratio that is not an integer, resize is slow.
cv::Mat wholeBlocks(const cv::Mat& image, unsigned factor) {
  const cv::Size size = binned(image, factor) * static_cast<int>(factor);
  return image(cv::Rect({0, 0}, size));
}

template <class Run>
Task task(Run run, const cv::Mat& result, const Layout& layout) {
  cv::setNumThreads(1);
  return {run,
          {result.data, static_cast<unsigned>(result.cols), static_cast<unsigned>(result.rows),
           layout, 8}};
}

}  // namespace

void openCvThreads(int threads) { cv::setNumThreads(threads); }

Task openCvBilinear(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), result(source.size(), CV_8UC3);
  return task([=] { cv::cvtColor(source, result, cv::COLOR_BayerRGGB2BGR); }, result, kBgr24);
}

Task openCvVariableGradients(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), result(source.size(), CV_8UC3);
  return task([=] { cv::cvtColor(source, result, cv::COLOR_BayerRGGB2BGR_VNG); }, result, kBgr24);
}

Task openCvBilinearBgra(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), result(source.size(), CV_8UC4);
  return task([=] { cv::cvtColor(source, result, cv::COLOR_BayerRGGB2BGRA); }, result, kBgra32);
}

Task openCvBilinearGray(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), colour(source.size(), CV_8UC3);
  const cv::Mat result(source.size(), CV_8UC1);
  return task(
      [=] {
        cv::cvtColor(source, colour, cv::COLOR_BayerRGGB2BGR);
        cv::cvtColor(colour, result, cv::COLOR_BGR2GRAY);
      },
      result, kMono8);
}

Task openCvBilinearArea(const Conversion& c, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), colour(source.size(), CV_8UC3);
  const cv::Mat blocks = wholeBlocks(colour, c.factor), result(binned(colour, c.factor), CV_8UC3);
  return task(
      [=] {
        cv::cvtColor(source, colour, cv::COLOR_BayerRGGB2BGR);
        cv::resize(blocks, result, result.size(), 0, 0, cv::INTER_AREA);
      },
      result, kBgr24);
}

Task openCvEdgeAware(const Conversion& c, const Frame& frame) {
  const bool is16Bit = c.depth == 16;
  const cv::Mat source = is16Bit ? samples16Of(frame) : samples8Of(frame);
  const cv::Mat result(source.size(), is16Bit ? CV_16UC3 : CV_8UC3);
  Task made = task([=] { cv::cvtColor(source, result, cv::COLOR_BayerRGGB2BGR_EA); }, result,
                   is16Bit ? kBgr48 : kBgr24);
  if (is16Bit) made.picture.bits = frame.significantBits;
  return made;
}

Task openCvCopy(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), result(source.size(), CV_8UC1);
  return task([=] { source.copyTo(result); }, result, kMono8);
}

Task openCvArea(const Conversion& c, const Frame& frame) {
  const cv::Mat source = wholeBlocks(samples8Of(frame), c.factor);
  const cv::Mat result(binned(source, c.factor), CV_8UC1);
  return task([=] { cv::resize(source, result, result.size(), 0, 0, cv::INTER_AREA); }, result,
              kMono8);
}

Task openCvConvert(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples16Of(frame), result(source.size(), CV_8UC1);
  const double scale = scaleTo8Bits(frame);
  return task([=] { source.convertTo(result, CV_8U, scale); }, result, kMono8);
}

Task openCvAreaConvert(const Conversion& c, const Frame& frame) {
  const cv::Mat source = wholeBlocks(samples16Of(frame), c.factor);
  const cv::Mat means(binned(source, c.factor), CV_16UC1), result(means.size(), CV_8UC1);
  const double scale = scaleTo8Bits(frame);
  return task(
      [=] {
        cv::resize(source, means, means.size(), 0, 0, cv::INTER_AREA);
        means.convertTo(result, CV_8U, scale);
      },
      result, kMono8);
}

Task openCvTable(const Conversion&, const Frame& frame) {
  const cv::Mat source = samples8Of(frame), result(source.size(), CV_8UC1);
  cv::Mat table(1, 256, CV_8UC1);
  for (int i = 0; i < 256; ++i)
    table.at<uint8_t>(i) = cv::saturate_cast<uint8_t>(255 * toneCurve((i + 0.5) / 256));
  return task([=] { cv::LUT(source, table, result); }, result, kMono8);
}

namespace {

// The weights of a filter's taps around the centre.
cv::Mat kernelOf(uint32_t filter) {
  const std::vector<float> gauss = {1, 2, 1, 2, 4, 2, 1, 2, 1};
  if (filter == kGauss) return cv::Mat(gauss).reshape(1, 3) / kGaussDivisor;
  cv::Mat kernel = cv::Mat::zeros(5, 5, CV_32F);
  const cv::Point taps[] = {{2, 0}, {0, 2}, {2, 2}, {4, 2}, {2, 4}};
  for (const cv::Point& tap : taps) kernel.at<float>(tap) = 0.2f;
  return kernel;
}

}  // namespace

Task openCvFilter(const Conversion& c, const Frame& frame) {
  const Layout layout = imageLayout(c);
  const bool is16Bit = layout.sampleBytes == 2;
  const int type = CV_MAKETYPE(is16Bit ? CV_16U : CV_8U, static_cast<int>(layout.channels));
  const auto samples = makeImage(c, frame);
  const cv::Mat image(sizeOf(frame), type, samples.get()), result(image.size(), type);
  const cv::Mat kernel = kernelOf(c.algorithmCode);
  const auto run = [=, kept = samples] {
    if (c.algorithmCode == kBox)
      cv::boxFilter(image, result, -1, {2, 2}, {0, 0});
    else
      cv::filter2D(image, result, -1, kernel);
  };
  Task made = task(run, result, layout);
  if (is16Bit) made.picture.bits = c.significantBits;
  return made;
}

}  // namespace vistrel::core::bench
