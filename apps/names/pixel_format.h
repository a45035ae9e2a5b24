// Raw pixel formats: how samples are packed in memory, and the names in each convention.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// A name that a convention lacks is empty.
struct PixelFormat {
  uint32_t phase;  // VISTREL_GRBG to VISTREL_MONO
  uint32_t bits;
  uint32_t packing;             // VISTREL_PACKING_...
  std::string pfnc, pfncValue;  // a name, 0x and eight digits
  std::string v4l2, gstreamer, ffmpeg;
};

// All formats, ordered by packing, then bits, then phase.
const std::vector<PixelFormat>& pixelFormats();

// The format with that name in any convention, or with that PFNC value (0x...); null if there is
// none. Case is ignored, except in V4L2 codes, some of which differ in case alone.
const PixelFormat* findPixelFormat(std::string_view name);

// As above, but throws ProgramError (usage) if there is none.
const PixelFormat& parsePixelFormat(std::string_view option, std::string_view text);

// "bytes", "16bit-le", "16bit-be", "pfnc", "gige", "mipi".
const char* packingName(uint32_t packing);

}  // namespace vistrel::app
