// Raw pixel formats: how samples are packed in memory, and the names in each convention.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vistrel::app {

// A name that a convention lacks is empty.
struct PixelFormat {
  std::optional<uint32_t> phase;  // VISTREL_GRBG to VISTREL_MONO; none if the names leave it open
  uint32_t bits;
  uint32_t packing;                // VISTREL_PACKING_...
  std::string pfnc, pfncValue;     // a name, 0x and eight digits
  std::string v4l2Code, v4l2Name;  // four characters; what follows V4L2_PIX_FMT_
  std::string libcamera, gstreamer, ffmpeg;
  std::string mipi;  // the data type of CSI-2, which leaves the phase open
};

// All formats, ordered by packing, then bits, then phase; those without a phase come last.
const std::vector<PixelFormat>& pixelFormats();

// The format with that name in any convention, or with that PFNC value (0x...); null if there is
// none. Case is ignored, except in V4L2 codes, some of which differ in case alone. V4L2 names may
// begin with V4L2_PIX_FMT_.
const PixelFormat* findPixelFormat(std::string_view name);

// Those of its names whose case is ignored.
std::vector<std::string> namesOf(const PixelFormat& format);

// Like findPixelFormat, but throws ProgramError (usage), with the nearest name, if there is none.
const PixelFormat& parsePixelFormat(std::string_view option, std::string_view text);

// Whether each sample takes two whole bytes, whatever its bits.
bool are16Bit(uint32_t packing);

// Samples come in groups of whole bytes.
struct SampleGroup {
  uint32_t pixels, bytes;
};
SampleGroup groupOf(uint32_t packing, uint32_t bits);

// What the program calls a packing: "16bit-le", and in a title.
struct PackingNames {
  const char* name;
  const char* title;
};
const PackingNames& packingNames(uint32_t packing);

}  // namespace vistrel::app
