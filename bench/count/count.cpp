// vistrel-count SIDE ROW TIMES: runs a conversion of a 1080p frame that often, and nothing else
// that depends on TIMES. So the difference of two runs counts the instructions of a conversion.
// SIDE is a level of ours, opencv or dc1394. Without arguments, prints the rows and their peers.
#include <dc1394/dc1394.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <string_view>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace {

constexpr unsigned kWidth = 1920, kHeight = 1080;

struct Row {
  const char* name;
  uint32_t algorithm, format;
  uint32_t bits = 8;  // 8: bytes
  uint32_t binning = 1, packing = 0;
  int openCv = 0;  // the code of cv::cvtColor
  int dc1394 = -1;
};
constexpr Row kRows[] = {
    {"bilinear8/BGR24", VISTREL_BILINEAR, VISTREL_BGR24, 8, 1, 0, cv::COLOR_BayerRGGB2BGR,
     DC1394_BAYER_METHOD_BILINEAR},
    {"bilinear8/BGRA32", VISTREL_BILINEAR, VISTREL_BGRA32, 8, 1, 0, cv::COLOR_BayerRGGB2BGRA},
    {"bilinear8/GRAY8", VISTREL_BILINEAR, VISTREL_GRAY8},
    {"bilinear8/NV12", VISTREL_BILINEAR, VISTREL_NV12},
    {"bilinear8/I444", VISTREL_BILINEAR, VISTREL_I444},
    {"bilinear8/BGR24/2x2", VISTREL_BILINEAR, VISTREL_BGR24, 8, 2},
    {"bilinear12/BGR24", VISTREL_BILINEAR, VISTREL_BGR24, 12},
    {"bilinear12p/BGR24", VISTREL_BILINEAR, VISTREL_BGR24, 12, 1, VISTREL_PACKING_PFNC},
    {"bilinear12/BGR48", VISTREL_BILINEAR, VISTREL_BGR48, 12, 1, 0, 0,
     DC1394_BAYER_METHOD_BILINEAR},
    {"bilinear12/planar48", VISTREL_BILINEAR, VISTREL_RGB48_PLANAR, 12},
    {"near8/BGR24", VISTREL_NEAR, VISTREL_BGR24, 8, 1, 0, cv::COLOR_BayerRGGB2BGR_EA},
    {"edge8/BGR24", VISTREL_EDGE, VISTREL_BGR24, 8, 1, 0, 0, DC1394_BAYER_METHOD_EDGESENSE},
    {"laroche8/BGR24", VISTREL_LAROCHE, VISTREL_BGR24, 8, 1, 0, 0, DC1394_BAYER_METHOD_HQLINEAR},
    {"hamilton8/BGR24", VISTREL_HAMILTON, VISTREL_BGR24, 8, 1, 0, 0, DC1394_BAYER_METHOD_HQLINEAR},
    {"grouping8/BGR24", VISTREL_GROUPING, VISTREL_BGR24},
    {"vng8/BGR24", VISTREL_VNG, VISTREL_BGR24, 8, 1, 0, cv::COLOR_BayerRGGB2BGR_VNG,
     DC1394_BAYER_METHOD_VNG},
    {"cok8/BGR24", VISTREL_COK, VISTREL_BGR24},
    {"kimmel8/BGR24", VISTREL_KIMMEL, VISTREL_BGR24},
    {"ahd8/BGR24", VISTREL_AHD, VISTREL_BGR24},
    {"directional8/BGR24", VISTREL_DIRECTIONAL, VISTREL_BGR24},
};

[[noreturn]] void fail(const char* text) {
  std::fprintf(stderr, "vistrel-count: %s\n", text);
  std::exit(1);
}

// Slopes with noise, of 16 bits a sample.
std::vector<uint8_t> scene(uint32_t bits, uint32_t packing) {
  std::vector<uint8_t> bytes(2 * kWidth * kHeight);
  uint32_t random = 1;
  for (size_t i = 0; i < kWidth * kHeight; ++i) {
    random = random * 1664525 + 1013904223;
    const auto x = static_cast<uint32_t>(i % kWidth), y = static_cast<uint32_t>(i / kWidth);
    const uint32_t light = 20000 + 10 * x + 8 * y + (random >> 21);
    const auto sample = static_cast<uint16_t>(light >> (16 - bits));
    if (bits == 8 || packing != 0)
      bytes[i] = static_cast<uint8_t>(sample);
    else
      std::memcpy(&bytes[2 * i], &sample, 2);
  }
  return bytes;
}

void setLevel(std::string_view name) {
  size_t level = 0;
  for (; vistrel_level_name(level); ++level)
    if (name == vistrel_level_name(level)) {
      vistrel_set_level(level, nullptr);
      return;
    }
  fail("no such side");
}

std::function<void()> ours(const Row& row, std::vector<uint8_t>& samples,
                           std::vector<uint8_t>& pixels) {
  vistrel_frame frame{};
  frame.samples = samples.data();
  frame.size = samples.size();
  frame.width = kWidth;
  frame.height = kHeight;
  frame.bytes_per_sample = row.bits == 8 ? 1 : 2;
  frame.bits = row.bits;
  frame.phase = VISTREL_RGGB;
  frame.packing = row.packing;
  vistrel_conversion conversion{};
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = row.format;
  conversion.algorithm = row.algorithm;
  conversion.threshold = row.algorithm == VISTREL_EDGE ? 100 : 0;
  conversion.binning = row.binning;
  vistrel_stream* stream = nullptr;
  vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, nullptr);
  vistrel_image image{};
  image.pixels = pixels.data();
  image.size = pixels.size();
  return [=] {
    vistrel_error error{};
    if (vistrel_stream_convert(stream, &frame, &conversion, &image, &error)) fail(error.text);
  };
}

std::function<void()> openCv(const Row& row, std::vector<uint8_t>& samples,
                             std::vector<uint8_t>& pixels) {
  if (row.openCv == 0) fail("OpenCV has no such conversion");
  cv::setNumThreads(1);
  const int type = row.format == VISTREL_BGRA32 ? CV_8UC4 : CV_8UC3;
  const cv::Mat source(kHeight, kWidth, CV_8UC1, samples.data());
  const cv::Mat result(kHeight, kWidth, type, pixels.data());
  return [=] { cv::cvtColor(source, result, row.openCv); };
}

std::function<void()> dc1394(const Row& row, std::vector<uint8_t>& samples,
                             std::vector<uint8_t>& pixels) {
  if (row.dc1394 < 0) fail("libdc1394 has no such conversion");
  const auto method = static_cast<dc1394bayer_method_t>(row.dc1394);
  void *const from = samples.data(), *const to = pixels.data();
  if (row.bits == 8)
    return [=] {
      dc1394_bayer_decoding_8bit(static_cast<uint8_t*>(from), static_cast<uint8_t*>(to), kWidth,
                                 kHeight, DC1394_COLOR_FILTER_RGGB, method);
    };
  return [=] {
    dc1394_bayer_decoding_16bit(static_cast<uint16_t*>(from), static_cast<uint16_t*>(to), kWidth,
                                kHeight, DC1394_COLOR_FILTER_RGGB, method, row.bits);
  };
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    for (const Row& row : kRows)
      std::printf("%s%s%s\n", row.name, row.openCv ? " opencv" : "",
                  row.dc1394 >= 0 ? " dc1394" : "");
    return 0;
  }
  const std::string_view side = argv[1];
  for (const Row& row : kRows) {
    if (argv[2] != std::string_view(row.name)) continue;
    std::vector<uint8_t> samples = scene(row.bits, row.packing);
    std::vector<uint8_t> pixels(8 * kWidth * kHeight);
    std::function<void()> run;
    if (side == "opencv") {
      run = openCv(row, samples, pixels);
    } else if (side == "dc1394") {
      run = dc1394(row, samples, pixels);
    } else {
      setLevel(side);
      run = ours(row, samples, pixels);
    }
    for (int i = std::atoi(argv[3]); i > 0; --i) run();
    return 0;
  }
  fail("no such row");
}
