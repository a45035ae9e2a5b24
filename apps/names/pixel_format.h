// Raw pixel formats: how samples lie in memory, and what each convention calls that.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// Empty where a convention has no name for it.
struct PixelFormat {
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO
  uint32_t bits;
  uint32_t packing;             // VISTREL_PACKING_...
  std::string pfnc, pfncValue;  // a name, 0x and eight digits
  std::string v4l2, gstreamer, ffmpeg;
};

// All of them: by packing, then bits, then phase.
const std::vector<PixelFormat>& pixelFormats();

// The format that any convention calls so, or of that PFNC value (0x...); else null. The case
// counts where only it tells two V4L2 codes apart.
const PixelFormat* findPixelFormat(std::string_view name);

// The same. Throws Failure (usage) where there is none.
const PixelFormat& parsePixelFormat(std::string_view option, std::string_view text);

// "bytes", "words-le", "words-be", "pfnc", "gige", "mipi".
const char* packingName(uint32_t packing);

}  // namespace vistrel::app
