// Runs the selftest's conversions through the reference implementation. Without an argument it
// writes the hashes; with the name of a file it checks that file.
#include <fmt/format.h>

#include <fstream>
#include <optional>
#include <sstream>

#include "apps/tools/selftest/cases.h"
#include "tests/reference/convert.h"
#include "tests/reference/demosaic.h"
#include "tests/reference/host.h"
#include "tests/reference/registry.h"
#include "vistrel/vistrel_host.h"

namespace {

using namespace vistrel::app::selftest;

constexpr uint32_t kStream = 1;

uint32_t channelsOf(const Case& c) { return c.phase == VISTREL_MONO ? 1 : 3; }
size_t samplesOf(const Case& c) {
  return size_t{kWidth / c.binning} * (kHeight / c.binning) * channelsOf(c);
}

uint64_t hashOfBytes(const Case& c) {
  const std::vector<uint16_t> samples = testFrame(c.bits);
  const std::vector<uint8_t> frame(samples.begin(), samples.end());
  std::vector<uint8_t> image(samplesOf(c));
  const uint32_t format = c.phase == VISTREL_MONO ? VISTREL_MONO8 : VISTREL_BGR24;
  const uint32_t width = kWidth / c.binning, height = kHeight / c.binning;
  if (c.code == VISTREL_AHD)
    reference::ImageColorDemosaicAHD(reference::ID2Index(kStream), kWidth, c.phase, c.binning - 1,
                                     format, 0, 0, width, height, frame.data(), image.data());
  else
    reference::ImgConvert8(kStream, format, c.code | c.threshold << 8, c.phase, c.binning - 1,
                           kWidth, kHeight, 0, 0, width, height, frame.data(), image.data(), 8, 0);
  return hashOf(image.data(), image.size());
}

// `Sample` is that of the result: 8 bits with a window or a curve.
template <class Sample>
uint64_t hashOf16Bit(const Case& c, uint32_t format, uint32_t lutMode) {
  const std::vector<uint16_t> frame = testFrame(c.bits);
  std::vector<Sample> image(samplesOf(c));
  const uint32_t dstBits = (sizeof(Sample) == 1 ? 8 : c.bits) * channelsOf(c);
  const uint32_t width = kWidth / c.binning, height = kHeight / c.binning;
  if (c.code == VISTREL_AHD)
    reference::ImageColorDemosaicAHD(reference::ID2Index(kStream), kWidth, c.phase, c.binning - 1,
                                     format, lutMode, 0, 0, width, height, frame.data(),
                                     reinterpret_cast<uint8_t*>(image.data()), dstBits, c.bits);
  else
    reference::ImgConvert16(kStream, format, c.code | c.threshold << 8, c.phase, c.binning - 1,
                            dstBits, lutMode, kWidth, kHeight, 0, 0, width, height, frame.data(),
                            image.data(), c.bits, 0);
  return hashOf(image.data(), image.size());
}

// By the reference of the host layer.
uint64_t hashOfHost(const Case& c) {
  const std::vector<uint16_t> samples = testFrame(c.bits);
  const std::vector<uint8_t> bytes(samples.begin(), samples.end());
  vistrel_frame frame{};
  frame.width = kWidth, frame.height = kHeight, frame.bits = c.bits, frame.phase = c.phase;
  frame.bytes_per_sample = c.bits > 8 ? 2 : 1;
  frame.samples = c.bits > 8 ? static_cast<const void*>(samples.data()) : bytes.data();
  vistrel_conversion conversion{};
  conversion.algorithm = c.code, conversion.binning = c.binning;
  conversion.format = c.bits == 8 || c.reduction != kAllBits ? VISTREL_BGR24 : VISTREL_BGR48;
  conversion.reduction = c.reduction == kAllBits ? uint32_t{VISTREL_WINDOW_HIGH} : c.reduction;
  std::optional<Finishing> finishing;
  if (c.finish) finishing.emplace(c, conversion);
  const auto [width, height] = reference::hostImageSize(frame, conversion);
  const size_t row = reference::hostImageRowBytes(conversion.format, width);
  std::vector<uint16_t> image((row * height + 1) / 2);
  reference::hostConvert(frame, conversion, {image.data(), row * height, 0, {}});
  if (reference::hostSampleBytes(conversion.format) == 2)
    return hashOf(image.data(), row * height / 2);
  return hashOf(reinterpret_cast<const uint8_t*>(image.data()), row * height);
}

uint64_t hashOfCase(const Case& c) {
  if (c.finish || c.code == VISTREL_DIRECTIONAL) return hashOfHost(c);
  if (c.bits == 8) return hashOfBytes(c);
  const bool mono = c.phase == VISTREL_MONO;
  if (c.reduction == kAllBits)
    return hashOf16Bit<uint16_t>(c, mono ? VISTREL_MONO16 : VISTREL_BGR48, 0);
  return hashOf16Bit<uint8_t>(c, mono ? VISTREL_MONO8 : VISTREL_BGR24, c.reduction);
}

std::string golden() {
  std::string text =
      "// clang-format off\n"
      "// Made by selftest_golden from the reference. In the order of allCases().\n";
  for (const Case& c : allCases())
    text += fmt::format("0x{:016X},  // {}\n", hashOfCase(c), nameOf(c));
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  reference::g_bIsSSE = 0;
  reference::ImgLoadDriver();
  if (!reference::ImgInitialize(kStream, kWidth, kHeight)) return 2;
  const std::string text = golden();
  if (argc == 1) {
    fmt::print("{}", text);
    return 0;
  }
  std::ostringstream file;
  file << std::ifstream(argv[1]).rdbuf();
  const bool equal = file.str() == text;
  fmt::print("{} is {}what the reference gives\n", argv[1], equal ? "" : "not ");
  return equal ? 0 : 1;
}
