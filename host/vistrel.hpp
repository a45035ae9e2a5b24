// libvistrelhost for C++17: the functions of vistrel_host.h with exceptions in
// place of status codes, and memory that frees itself. Header only.
#ifndef VISTREL_HPP
#define VISTREL_HPP

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "host/vistrel_host.h"

namespace vistrel {

// A refusal: status() is its VISTREL_... code, what() its text.
class Error : public std::runtime_error {
 public:
  explicit Error(const vistrel_error& error)
      : std::runtime_error(error.text), status_(error.status) {}
  int32_t status() const noexcept { return status_; }

 private:
  int32_t status_;
};

// A finished image. Rows are packed; samples of more than 8 bits are words.
struct Image {
  vistrel_layout layout{};
  std::vector<uint8_t> pixels;
};

// A frame of packed samples that stay the caller's: bytes of 8 significant bits,
// or words of `bits` of them, the lowest. `phase` is BAYER_... or VISTREL_MONO.
inline vistrel_frame frameOf(const uint8_t* samples, uint32_t width, uint32_t height,
                             uint32_t phase) {
  return {samples, size_t{width} * height, 0, width, height, 1, 8, phase, VISTREL_LOW_BITS, {}};
}
inline vistrel_frame frameOf(const uint16_t* samples, uint32_t width, uint32_t height,
                             uint32_t bits, uint32_t phase) {
  return {samples, size_t{width} * height * 2, 0, width, height, 2, bits,
          phase,   VISTREL_LOW_BITS,           {}};
}

// The conversion of vistrel_default_conversion, to be changed where needed.
inline vistrel_conversion defaultConversion(const vistrel_frame& frame) {
  vistrel_conversion conversion{};
  vistrel_default_conversion(&frame, &conversion);
  return conversion;
}

// The shape that `conversion` gives `frame`. Reads no sample. Throws Error.
inline vistrel_layout layoutOf(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  vistrel_layout layout{};
  vistrel_error error{};
  if (vistrel_get_layout(&frame, &conversion, &layout, &error)) throw Error(error);
  return layout;
}

// Converts `frame` into memory of its own. Throws Error, and std::bad_alloc
// where there is no memory for the image.
inline Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  Image result{layoutOf(frame, conversion), {}};
  result.pixels.resize(result.layout.bytes);
  const vistrel_image image{result.pixels.data(), result.pixels.size(), 0};
  vistrel_error error{};
  if (vistrel_convert(&frame, &conversion, &image, &error)) throw Error(error);
  return result;
}

}  // namespace vistrel

#endif
