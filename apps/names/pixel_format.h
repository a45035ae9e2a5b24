// Raw pixel formats: how samples are packed in memory, and the names in each convention.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vistrel/vistrel_host.h"

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

// Samples of a packing come in groups of whole bytes.
struct SampleGroup {
  uint32_t packing;        // VISTREL_PACKING_...
  uint32_t bits;           // that a sample has at most
  uint32_t pixels, bytes;  // of a group
};

// Ordered by packing, then bits.
inline constexpr SampleGroup kSampleGroups[] = {
    {VISTREL_PACKING_BYTES, 8, 1, 1}, {VISTREL_PACKING_LITTLE, 16, 1, 2},
    {VISTREL_PACKING_BIG, 16, 1, 2},  {VISTREL_PACKING_PFNC, 10, 4, 5},
    {VISTREL_PACKING_PFNC, 12, 2, 3}, {VISTREL_PACKING_GIGE, 10, 2, 3},
    {VISTREL_PACKING_GIGE, 12, 2, 3}, {VISTREL_PACKING_MIPI, 10, 4, 5},
    {VISTREL_PACKING_MIPI, 12, 2, 3}, {VISTREL_PACKING_MIPI, 14, 4, 7},
};

// The group of that format's packing and bits.
const SampleGroup& groupOf(const PixelFormat& format);

// "bytes", "16bit-le", "16bit-be", "pfnc", "gige", "mipi".
const char* packingName(uint32_t packing);

}  // namespace vistrel::app
