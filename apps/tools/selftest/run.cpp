#include "apps/tools/selftest/run.h"

#include <cstring>
#include <iterator>
#include <optional>

#include "apps/tools/selftest/cases.h"
#include "vistrel/vistrel.hpp"

namespace vistrel::app::selftest {
namespace {

// In the order of allCases().
constexpr uint64_t kGolden[] = {
#include "apps/tools/selftest/golden.inl"
};

vistrel_conversion conversionOf(const Case& c, const vistrel_frame& frame) {
  vistrel_conversion conversion = defaultConversion(frame);
  conversion.algorithm = c.code;
  conversion.threshold = c.threshold;
  conversion.binning = c.binning;
  const bool mono = c.phase == VISTREL_MONO;
  if (c.reduction != kAllBits)
    conversion.reduction = c.reduction;
  else if (c.bits > 8)
    conversion.format = mono ? VISTREL_MONO16 : VISTREL_BGR48;
  return conversion;
}

uint64_t hashOfResult(const Case& c) {
  const std::vector<uint16_t> samples16 = testFrame(c.bits);
  const std::vector<uint8_t> bytes(samples16.begin(), samples16.end());
  const vistrel_frame frame = c.bits > 8 ? frameOf(samples16, kWidth, kHeight, c.bits, c.phase)
                                         : frameOf(bytes, kWidth, kHeight, c.phase);
  vistrel_conversion conversion = conversionOf(c, frame);
  std::optional<Finishing> finishing;
  if (c.finish) finishing.emplace(c, conversion);
  const Image image = convert(frame, conversion);
  if (image.layout.bits <= 8) return hashOf(image.pixels.data(), image.pixels.size());
  std::vector<uint16_t> samples(image.pixels.size() / 2);
  std::memcpy(samples.data(), image.pixels.data(), image.pixels.size());
  return hashOf(samples.data(), samples.size());
}

}  // namespace

Summary run() {
  const std::vector<Case> cases = allCases();
  Summary summary{{}, cases.size(), {}};
  const size_t before = vistrel_level();
  for (size_t level = 0; const char* name = vistrel_level_name(level); ++level) {
    setLevel(level);
    summary.levels.push_back(name);
    for (size_t i = 0; i < cases.size(); ++i) {
      const uint64_t expected = i < std::size(kGolden) ? kGolden[i] : 0;
      const uint64_t got = hashOfResult(cases[i]);
      if (got != expected) summary.differences.push_back({nameOf(cases[i]), name, expected, got});
    }
  }
  setLevel(before);
  return summary;
}

}  // namespace vistrel::app::selftest
