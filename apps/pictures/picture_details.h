// What a writer knows about a picture besides its samples.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "apps/pictures/dng_camera.h"

namespace vistrel::app {

// How values follow from light.
struct Encoding {
  enum Kind { kUnknown, kPower, kSrgb } kind = kUnknown;
  double exponent = 1;  // of kPower: the value is light to this power
};

constexpr Encoding kLinearLight{Encoding::kPower, 1};

// The camera and its settings, as far as they are known.
struct Shot {
  std::optional<std::string> make, model;
  std::optional<std::string> date;                                 // 2026-11-22T18:06:29
  std::optional<double> exposureTime, iso, aperture, focalLength;  // s, f-number, mm

  bool operator==(const Shot&) const = default;
};

// How many pixels share a JPEG's chroma.
enum class Chroma { k444, k422, k420 };

struct Compression {
  std::optional<int> level;  // of deflate, 0 to 9
  bool lzw = false;          // of a TIFF, in place of deflate
  int quality = 90;          // of a JPEG, 1 to 100
  Chroma chroma = Chroma::k444;
};

// Every writer says what its format can hold.
struct PictureDetails {
  Encoding encoding{};
  std::string command{};  // that makes the same picture; may be empty
  Shot shot{};
  std::optional<DngCamera> camera{};  // of a raw frame; nothing for a developed picture
  Compression compression{};
};

}  // namespace vistrel::app
