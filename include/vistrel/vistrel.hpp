// libvistrelhost for C++17: the functions of vistrel_host.h with owned memory. Header only. Each
// function comes twice: `tryX` returns a Result and throws nothing, `x` returns the value or throws
// Error. Where exceptions are disabled, `x` ends the program instead, and so does running out of
// memory for an Image or an OwnedFrame.
#ifndef VISTREL_HPP
#define VISTREL_HPP

#include <array>

#include "vistrel/vistrel_finish.hpp"
#include "vistrel/vistrel_frame.hpp"
#include "vistrel/vistrel_names.hpp"
#include "vistrel/vistrel_stream.hpp"

namespace vistrel {
// Classes that change get a new namespace, so that one program may contain both versions.
inline namespace v1 {

// The shape of the result, and all sizes. Reads no samples.
inline Result<vistrel_layout> tryLayoutOf(const vistrel_frame& frame,
                                          const vistrel_conversion& conversion) noexcept {
  return detail::attempt<vistrel_layout>([&](vistrel_layout& layout, vistrel_error* error) {
    return vistrel_get_layout(&frame, &conversion, &layout, error);
  });
}
inline vistrel_layout layoutOf(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryLayoutOf(frame, conversion).value();
}

// Converts `frame` into a new image.
inline Result<Image> tryConvert(const vistrel_frame& frame,
                                const vistrel_conversion& conversion) noexcept {
  return detail::makeImage(frame, conversion, detail::onAnyStream(frame, conversion));
}
inline Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryConvert(frame, conversion).value();
}

// Converts `frame` into `image`, whose memory is reused if it is large enough. After a rejection,
// its pixels are unspecified. Returns the layout.
inline Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                             const vistrel_conversion& conversion,
                                             Image& image) noexcept {
  return detail::remakeImage(frame, conversion, image, detail::onAnyStream(frame, conversion));
}
inline vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                  Image& image) {
  return tryConvertInto(frame, conversion, image).value();
}

// Converts `frame` into `pixels`, with `stride` bytes from row to row; 0: rows have no padding.
// With a negative stride, the last row is first in `pixels`. Returns the layout.
inline Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                             const vistrel_conversion& conversion,
                                             Span<uint8_t> pixels, ptrdiff_t stride = 0) noexcept {
  return detail::fillImage(frame, conversion, pixels, stride,
                           detail::onAnyStream(frame, conversion));
}
inline vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                  Span<uint8_t> pixels, ptrdiff_t stride = 0) {
  return tryConvertInto(frame, conversion, pixels, stride).value();
}

// Red, green, blue in 1/4096: see vistrel_measure_gains.
using Gains = std::array<uint32_t, 3>;

// The gains that make the means of the three colours equal.
inline Result<Gains> tryMeasureGains(const vistrel_frame& frame,
                                     const vistrel_conversion& conversion) noexcept {
  return detail::attempt<Gains>([&](Gains& gains, vistrel_error* error) {
    return vistrel_measure_gains(&frame, &conversion, gains.data(), error);
  });
}
inline Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryMeasureGains(frame, conversion).value();
}

// The caller's finished pixels, in rows without padding, to be filtered. `format` has a single
// plane.
inline vistrel_picture pictureOf(Span<const uint8_t> pixels, uint32_t width, uint32_t height,
                                 uint32_t format) {
  return {pixels.data(), pixels.size(), 0, width, height, format, {}};
}
vistrel_picture pictureOf(const Image&& image, uint32_t format) = delete;
inline vistrel_picture pictureOf(const Image& image, uint32_t format) {
  return pictureOf(image.pixels, image.layout.width, image.layout.height, format);
}

// Filters `picture` into `pixels`, which may be the picture's own, with `stride` bytes from row to
// row; 0: rows have no padding. Returns `pixels`.
inline Result<Span<uint8_t>> tryFilterInto(const vistrel_picture& picture,
                                           const vistrel_filter_settings& settings,
                                           Span<uint8_t> pixels, ptrdiff_t stride = 0) noexcept {
  return detail::attempt<Span<uint8_t>>([&](Span<uint8_t>& filtered, vistrel_error* error) {
    filtered = pixels;
    const vistrel_image image{pixels.data(), pixels.size(), stride, {}};
    return vistrel_filter(&picture, &settings, &image, error);
  });
}
inline Span<uint8_t> filterInto(const vistrel_picture& picture,
                                const vistrel_filter_settings& settings, Span<uint8_t> pixels,
                                ptrdiff_t stride = 0) {
  return tryFilterInto(picture, settings, pixels, stride).value();
}

}  // namespace v1
}  // namespace vistrel

#endif
