#include "apps/names/phase_names.h"

#include "vistrel/vistrel_host.h"

namespace vistrel::app {
namespace {

constexpr PhaseNames kPhaseNames[kPhases] = {
    {VISTREL_GRBG,
     "VISTREL_GRBG",
     "grbg",
     "GR/BG",
     "BayerGR",
     "COLOR_BayerGB2BGR",
     "GRBG",
     "01 00 02 01",
     {1, 0}},
    {VISTREL_BGGR,
     "VISTREL_BGGR",
     "bggr",
     "BG/GR",
     "BayerBG",
     "COLOR_BayerRG2BGR",
     "BGGR",
     "02 01 01 00",
     {0, 0}},
    {VISTREL_RGGB,
     "VISTREL_RGGB",
     "rggb",
     "RG/GB",
     "BayerRG",
     "COLOR_BayerBG2BGR",
     "RGGB",
     "00 01 01 02",
     {1, 1}},
    {VISTREL_GBRG,
     "VISTREL_GBRG",
     "gbrg",
     "GB/RG",
     "BayerGB",
     "COLOR_BayerGR2BGR",
     "GBRG",
     "01 02 00 01",
     {0, 1}},
    {VISTREL_MONO, "VISTREL_MONO", "mono", nullptr, "Mono", nullptr, nullptr, nullptr, {}},
};

}  // namespace

const PhaseNames& phaseNames(uint32_t phase) { return kPhaseNames[phase]; }

uint32_t phaseOfBlock(const std::array<uint32_t, 4>& colours) {
  uint32_t phase = 0;
  const auto at = [&phase](uint32_t x, uint32_t y) { return vistrel_colour_at(phase, x, y); };
  while (phase < kBayerPhases && colours != std::array{at(0, 0), at(1, 0), at(0, 1), at(1, 1)})
    ++phase;
  return phase;
}

uint32_t channelAt(uint32_t phase, uint32_t x, uint32_t y) {
  return VISTREL_BLUE - vistrel_colour_at(phase, x, y);
}

}  // namespace vistrel::app
