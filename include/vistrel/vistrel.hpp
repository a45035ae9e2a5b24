// libvistrelhost for C++17: the functions of vistrel_host.h with owned memory. Header only. Each
// function comes twice: `tryX` returns a Result and throws nothing, `x` returns the value or throws
// Error.
#ifndef VISTREL_HPP
#define VISTREL_HPP

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "vistrel/vistrel_host.h"
#include "vistrel/vistrel_result.hpp"
#include "vistrel/vistrel_span.hpp"

namespace vistrel {
// Classes that change get a new namespace, so that both versions may be in one program.
inline namespace v1 {

namespace detail {

// Leaves new elements uninitialised where a vector sets them to 0.
template <class T>
struct Uninitialized : std::allocator<T> {
  template <class U>
  struct rebind {
    using other = Uninitialized<U>;
  };
  Uninitialized() = default;
  template <class U>
  Uninitialized(const Uninitialized<U>&) noexcept {}

  template <class U, class... Args>
  void construct(U* at, Args&&... args) {
    if constexpr (sizeof...(Args))
      ::new (static_cast<void*>(at)) U(std::forward<Args>(args)...);
    else
      ::new (static_cast<void*>(at)) U;
  }
};

}  // namespace detail

// A vector whose resize() leaves new bytes uninitialised.
using Bytes = std::vector<uint8_t, detail::Uninitialized<uint8_t>>;

// An image. Its rows have no padding; samples of more than 8 bits take two bytes each.
struct Image {
  vistrel_layout layout{};
  Bytes pixels;
};

namespace detail {

// Calls `convert` with the image's memory, which becomes large enough.
template <class Convert>
Result<vistrel_layout> remakeImage(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                   Image& result, Convert convert) noexcept {
  return attempt<vistrel_layout>([&](vistrel_layout& layout, vistrel_error* error) {
    if (const int32_t rejected = vistrel_get_layout(&frame, &conversion, &layout, error))
      return rejected;
    result.layout = layout;
    if (layout.bytes > result.pixels.capacity()) result.pixels.clear();  // so that none is copied
    result.pixels.resize(layout.bytes);
    return convert({result.pixels.data(), result.pixels.size(), 0, {}}, error);
  });
}

// Calls `convert` with memory of the image's size.
template <class Convert>
Result<Image> makeImage(const vistrel_frame& frame, const vistrel_conversion& conversion,
                        Convert convert) noexcept {
  Image image;
  const auto made = remakeImage(frame, conversion, image, convert);
  if (!made) return made.error();
  return image;
}

// Where the picture's first row begins if a negative stride puts it highest in memory. In too
// little memory anywhere will do, since the conversion is rejected.
inline size_t startOfFirstRow(const vistrel_layout& layout, size_t size,
                              ptrdiff_t stride) noexcept {
  const size_t distance = size_t{0} - static_cast<size_t>(stride), above = layout.height - 1;
  return above && distance > size / above ? 0 : distance * above;
}

// Calls `convert` with the caller's memory.
template <class Convert>
Result<vistrel_layout> fillImage(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                 Span<uint8_t> pixels, ptrdiff_t stride, Convert convert) noexcept {
  return attempt<vistrel_layout>([&](vistrel_layout& layout, vistrel_error* error) {
    if (const int32_t rejected = vistrel_get_layout(&frame, &conversion, &layout, error))
      return rejected;
    const size_t first = stride < 0 ? startOfFirstRow(layout, pixels.size(), stride) : 0;
    return convert({pixels.data() + first, pixels.size(), stride, {}}, error);
  });
}

}  // namespace detail

// A frame of the caller's samples, in rows without padding: bytes of 8 significant bits, or 16-bit
// samples whose lowest `bits` are significant. `phase` is VISTREL_GRBG to VISTREL_MONO.
inline vistrel_frame frameOf(Span<const uint8_t> samples, uint32_t width, uint32_t height,
                             uint32_t phase) {
  return {samples.data(), samples.size(), 0, width, height, 1, 8, phase, VISTREL_LOW_BITS, 0, {}};
}
inline vistrel_frame frameOf(Span<const uint16_t> samples, uint32_t width, uint32_t height,
                             uint32_t bits, uint32_t phase) {
  return {samples.data(), samples.size() * 2, 0, width, height, 2, bits,
          phase,          VISTREL_LOW_BITS,   0, {}};
}
// The conversion of vistrel_default_conversion, to change where needed.
inline vistrel_conversion defaultConversion(const vistrel_frame& frame) {
  vistrel_conversion conversion{};
  vistrel_default_conversion(&frame, &conversion);
  return conversion;
}

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

namespace detail {

// Convert on a stream, or on any. The arguments must outlive the function objects.
inline auto onStream(vistrel_stream* stream, const vistrel_frame& frame,
                     const vistrel_conversion& conversion) noexcept {
  return [stream, &frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_stream_convert(stream, &frame, &conversion, &image, error);
  };
}
inline auto onAnyStream(const vistrel_frame& frame, const vistrel_conversion& conversion) noexcept {
  return [&frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_convert(&frame, &conversion, &image, error);
  };
}

}  // namespace detail

// Converts `frame` into a new image.
inline Result<Image> tryConvert(const vistrel_frame& frame,
                                const vistrel_conversion& conversion) noexcept {
  return detail::makeImage(frame, conversion, detail::onAnyStream(frame, conversion));
}
inline Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryConvert(frame, conversion).value();
}

// Converts `frame` into `image`, whose memory is used again if it is large enough. After a
// rejection its pixels are unspecified. Returns the layout.
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
// With a negative stride the last row is the first in `pixels`. Returns the layout.
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

// Holds one of the process's VISTREL_MAX_STREAMS streams for as long as it lives. It may be moved,
// and used by one thread at a time.
class Stream {
 public:
  Stream() = default;  // holds none
  Stream(Stream&& other) noexcept : stream_(std::exchange(other.stream_, nullptr)) {}
  Stream& operator=(Stream&& other) noexcept {
    if (this != &other) release();
    std::swap(stream_, other.stream_);
    return *this;
  }
  ~Stream() { release(); }

  // `wait` is VISTREL_WAIT or VISTREL_NO_WAIT.
  static Result<Stream> tryAcquire(uint32_t wait = VISTREL_WAIT) noexcept {
    return detail::attempt<Stream>([&](Stream& stream, vistrel_error* error) {
      return vistrel_stream_acquire(wait, &stream.stream_, error);
    });
  }
  static Stream acquire(uint32_t wait = VISTREL_WAIT) { return tryAcquire(wait).value(); }

  explicit operator bool() const noexcept { return stream_; }
  // For the functions of vistrel_host.h; null if it holds none. It stays the stream's.
  vistrel_stream* handle() const noexcept { return stream_; }
  // From now on it holds none.
  void release() noexcept {
    if (stream_) vistrel_stream_release(std::exchange(stream_, nullptr), nullptr);
  }
  // Frees the memory that the stream keeps.
  void trim() noexcept {
    if (stream_) vistrel_stream_trim(stream_, nullptr);
  }

  // Like the functions of the same names.
  Result<Image> tryConvert(const vistrel_frame& frame,
                           const vistrel_conversion& conversion) noexcept {
    return detail::makeImage(frame, conversion, detail::onStream(stream_, frame, conversion));
  }
  Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
    return tryConvert(frame, conversion).value();
  }
  Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion,
                                        Image& image) noexcept {
    return detail::remakeImage(frame, conversion, image,
                               detail::onStream(stream_, frame, conversion));
  }
  vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Image& image) {
    return tryConvertInto(frame, conversion, image).value();
  }
  Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion, Span<uint8_t> pixels,
                                        ptrdiff_t stride = 0) noexcept {
    return detail::fillImage(frame, conversion, pixels, stride,
                             detail::onStream(stream_, frame, conversion));
  }
  vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Span<uint8_t> pixels, ptrdiff_t stride = 0) {
    return tryConvertInto(frame, conversion, pixels, stride).value();
  }

 private:
  vistrel_stream* stream_ = nullptr;
};

// Red, green, blue in 1/4096: see vistrel_measure_gains.
using Gains = std::array<uint32_t, 3>;

inline Result<Gains> tryMeasureGains(const vistrel_frame& frame,
                                     const vistrel_conversion& conversion) noexcept {
  return detail::attempt<Gains>([&](Gains& gains, vistrel_error* error) {
    return vistrel_measure_gains(&frame, &conversion, gains.data(), error);
  });
}
inline Gains measureGains(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryMeasureGains(frame, conversion).value();
}

namespace detail {

inline Result<uint32_t> parsed(int32_t (*parse)(const char*, uint32_t*, vistrel_error*),
                               const char* name) noexcept {
  return attempt<uint32_t>(
      [&](uint32_t& code, vistrel_error* error) { return parse(name, &code, error); });
}

}  // namespace detail

// Codes of phases, formats, algorithms and packings by name, in lower or upper case.
inline Result<uint32_t> tryParsePhase(const char* name) noexcept {
  return detail::parsed(vistrel_parse_phase, name);
}
inline uint32_t parsePhase(const char* name) { return tryParsePhase(name).value(); }
inline Result<uint32_t> tryParseFormat(const char* name) noexcept {
  return detail::parsed(vistrel_parse_format, name);
}
inline uint32_t parseFormat(const char* name) { return tryParseFormat(name).value(); }
inline Result<uint32_t> tryParseAlgorithm(const char* name) noexcept {
  return detail::parsed(vistrel_parse_algorithm, name);
}
inline uint32_t parseAlgorithm(const char* name) { return tryParseAlgorithm(name).value(); }
inline Result<uint32_t> tryParsePacking(const char* name) noexcept {
  return detail::parsed(vistrel_parse_packing, name);
}
inline uint32_t parsePacking(const char* name) { return tryParsePacking(name).value(); }

// A packed frame of the caller's bytes, without padding; `packing` is VISTREL_PACKING_...
inline vistrel_packed packedOf(Span<const uint8_t> bytes, uint32_t width, uint32_t height,
                               uint32_t packing, uint32_t bits) {
  return {bytes.data(), bytes.size(), 0, width, height, packing, bits, 0, {}};
}

namespace detail {

// Rejects an unknown phase as a conversion does.
inline int32_t checkPhase(const vistrel_frame& shape, vistrel_error* error) noexcept {
  if (vistrel_phase_name(shape.phase)) return VISTREL_OK;
  const vistrel_conversion conversion = defaultConversion(shape);
  vistrel_layout layout;
  return vistrel_get_layout(&shape, &conversion, &layout, error);
}

}  // namespace detail

// A frame that owns its samples.
class OwnedFrame {
 public:
  OwnedFrame() = default;

  // Refers to the samples: valid while this frame lives and is not moved from, so not of a
  // temporary.
  vistrel_frame get() const&& = delete;
  vistrel_frame get() const& noexcept {
    vistrel_frame frame = shape_;
    frame.samples = samples_.data();
    frame.size = samples_.size();
    return frame;
  }

 private:
  friend Result<OwnedFrame> tryUnpack(const vistrel_packed& packed, uint32_t phase) noexcept;

  vistrel_frame shape_{};
  Bytes samples_;
};

// The samples of a packed frame, as a frame of that phase.
inline Result<OwnedFrame> tryUnpack(const vistrel_packed& packed, uint32_t phase) noexcept {
  return detail::attempt<OwnedFrame>([&](OwnedFrame& frame, vistrel_error* error) {
    vistrel_packed_layout layout{};
    if (const int32_t rejected = vistrel_get_packed_layout(&packed, &layout, error))
      return rejected;
    vistrel_frame& shape = frame.shape_;
    shape.width = packed.width;
    shape.height = packed.height;
    shape.bytes_per_sample = layout.bytes_per_sample;
    shape.bits = packed.bits;
    shape.phase = phase;
    if (const int32_t rejected = detail::checkPhase(shape, error)) return rejected;
    frame.samples_.resize(layout.unpacked_bytes);
    return vistrel_unpack(&packed, frame.samples_.data(), frame.samples_.size(), error);
  });
}
inline OwnedFrame unpack(const vistrel_packed& packed, uint32_t phase) {
  return tryUnpack(packed, phase).value();
}

// The sizes of a packed frame and of its samples. Reads no byte of it.
inline Result<vistrel_packed_layout> tryPackedLayoutOf(const vistrel_packed& packed) noexcept {
  return detail::attempt<vistrel_packed_layout>(
      [&](vistrel_packed_layout& layout, vistrel_error* error) {
        return vistrel_get_packed_layout(&packed, &layout, error);
      });
}
inline vistrel_packed_layout packedLayoutOf(const vistrel_packed& packed) {
  return tryPackedLayoutOf(packed).value();
}

// Unpacks a packed frame into `samples`, the bytes that vistrel_unpack writes. Returns the layout.
inline Result<vistrel_packed_layout> tryUnpackInto(const vistrel_packed& packed,
                                                   Span<uint8_t> samples) noexcept {
  return detail::attempt<vistrel_packed_layout>(
      [&](vistrel_packed_layout& layout, vistrel_error* error) {
        if (const int32_t rejected = vistrel_get_packed_layout(&packed, &layout, error))
          return rejected;
        return vistrel_unpack(&packed, samples.data(), samples.size(), error);
      });
}
inline vistrel_packed_layout unpackInto(const vistrel_packed& packed, Span<uint8_t> samples) {
  return tryUnpackInto(packed, samples).value();
}

// Sets the level, as vistrel_set_level does. Returns the previous one.
inline Result<size_t> trySetLevel(size_t level) noexcept {
  return detail::attempt<size_t>([&](size_t& before, vistrel_error* error) {
    before = vistrel_level();
    return vistrel_set_level(level, error);
  });
}
inline size_t setLevel(size_t level) { return trySetLevel(level).value(); }

}  // namespace v1
}  // namespace vistrel

#endif
