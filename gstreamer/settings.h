// What users set.
#pragma once

#include <string>
#include <vector>

#include "apps/look/look.h"
#include "gstreamer/caps.h"
#include "gstreamer/formats.h"
#include "gstreamer/white_balance.h"

namespace vistrel::gstreamer {

// Without changes, those of vistrel_default_conversion.
struct Settings {
  uint32_t method = VISTREL_BILINEAR;
  uint32_t threshold = 0;  // for VISTREL_EDGE
  uint32_t edges = VISTREL_EDGES_NATIVE;
  uint32_t binning = 1;
  uint32_t binMode = VISTREL_BIN_SUM;
  std::string region;  // WxH+X+Y; empty: the whole frame

  uint32_t window = 0;
  uint32_t curve = 0;           // a number of apps/names/curve_names.h; 0: none
  std::vector<uint16_t> table;  // empty: none

  std::string look;  // as parseLook takes it; empty: linear and exact
  std::string black, gains, matrix;
  uint32_t white = 0;   // 0: not given
  double exposure = 0;  // 0: not given

  uint32_t balance = 0;  // a BalanceMode
  double balanceTime = 1;

  uint32_t bits = 0;
  uint32_t stride = 0;
  uint32_t excess = VISTREL_REJECT;
  uint32_t threads = 1;  // 0: one a processor

  bool operator==(const Settings&) const = default;
};

// What the settings say about the look, apart from its exposure. Throws ProgramError.
app::LookChoice lookChoiceOf(const Settings& settings);

// Throws ProgramError.
Shape shapeOf(const Settings& settings);

// What has no effect on frames of this format, and why.
std::vector<std::string> unusedSettings(const Settings& settings, const RawFormat& format);

// All but what depends on frames and on the look. It refers to the settings.
void apply(const Settings& settings, vistrel_conversion& conversion);

}  // namespace vistrel::gstreamer
