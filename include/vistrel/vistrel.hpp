// libvistrelhost for C++17: the functions of vistrel_host.h with owned memory. Header only. Each
// function comes twice: `tryX` returns a Result and throws nothing, `x` returns the value or throws
// Error.
#ifndef VISTREL_HPP
#define VISTREL_HPP

#include <array>
#include <cstdint>
#include <exception>
#include <new>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "vistrel/vistrel_host.h"

namespace vistrel {

// A rejection: status() is its VISTREL_... code, what() its text; the others return parts of it.
class Error : public std::exception {
 public:
  explicit Error(const vistrel_error& error) noexcept : error_(error) {}
  int32_t status() const noexcept { return error_.status; }
  const char* what() const noexcept override { return error_.text; }
  const char* argument() const noexcept { return error_.argument; }
  const char* value() const noexcept { return error_.value; }
  const char* reason() const noexcept { return error_.reason; }

 private:
  vistrel_error error_;
};

// A value or an error. With an error, value() throws it, and * and -> must not be used. *, value()
// and error() of a temporary result return by value, so that no reference dangles.
template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : either_(std::move(value)) {}
  Result(const Error& error) : either_(error) {}

  explicit operator bool() const noexcept { return either_.index() == 0; }
  T& operator*() & noexcept { return *std::get_if<0>(&either_); }
  const T& operator*() const& noexcept { return *std::get_if<0>(&either_); }
  T operator*() && noexcept { return std::move(*std::get_if<0>(&either_)); }
  T* operator->() noexcept { return std::get_if<0>(&either_); }
  const T* operator->() const noexcept { return std::get_if<0>(&either_); }
  const Error& error() const& noexcept { return *std::get_if<1>(&either_); }
  Error error() && noexcept { return *std::get_if<1>(&either_); }
  T value() && {
    if (!*this) throw *std::get_if<1>(&either_);
    return std::move(*std::get_if<0>(&either_));
  }
  const T& value() const& {
    if (!*this) throw error();
    return **this;
  }

 private:
  std::variant<T, Error> either_;
};

namespace detail {

template <class Container>
using DataOf = decltype(std::declval<Container&>().data());

// Whether a `Container &&` is a temporary whose elements die with it: unlike a view's elements,
// those of an owner are const if the owner is.
template <class Container>
constexpr bool diesWithItsElements =
    !std::is_reference_v<Container> &&
    !std::is_same_v<DataOf<std::remove_const_t<Container>>, DataOf<const Container>>;

}  // namespace detail

// A view of the caller's elements.
template <class T>
class Span {
 public:
  Span() = default;
  Span(T* first, size_t count) noexcept : first_(first), count_(count) {}
  // Views a vector, an array, a string or another span; a temporary only if it is a view itself.
  template <class Container, class Data = detail::DataOf<Container>,
            class = std::enable_if_t<std::is_convertible_v<Data, T*> &&
                                     !detail::diesWithItsElements<Container>>>
  Span(Container&& container) noexcept : Span(container.data(), container.size()) {}
  template <size_t n>
  Span(T (&array)[n]) noexcept : Span(array, n) {}

  T* data() const noexcept { return first_; }
  size_t size() const noexcept { return count_; }
  T* begin() const noexcept { return first_; }
  T* end() const noexcept { return first_ + count_; }
  T& operator[](size_t i) const noexcept { return first_[i]; }

 private:
  T* first_ = nullptr;
  size_t count_ = 0;
};

namespace detail {

// The value that `work` fills in, or the error that it reports.
template <class T, class Work>
Result<T> attempt(Work work) noexcept {
  try {
    T value{};
    vistrel_error error{};
    if (work(value, &error) == VISTREL_OK) return value;
    return Error(error);
  } catch (const std::bad_alloc&) {
    return Error({VISTREL_NO_MEMORY, "", "", "out of memory", "out of memory", {}});
  }
}

}  // namespace detail

// An image. Its rows have no padding; samples of more than 8 bits take two bytes each.
struct Image {
  vistrel_layout layout{};
  std::vector<uint8_t> pixels;
};

namespace detail {

// Calls `convert` with memory of the image's size.
template <class Convert>
Result<Image> makeImage(const vistrel_frame& frame, const vistrel_conversion& conversion,
                        Convert convert) noexcept {
  return attempt<Image>([&](Image& result, vistrel_error* error) {
    if (const int32_t rejected = vistrel_get_layout(&frame, &conversion, &result.layout, error))
      return rejected;
    result.pixels.resize(result.layout.bytes);
    const vistrel_image image{result.pixels.data(), result.pixels.size(), 0};
    return convert(image, error);
  });
}

// Calls `convert` with the caller's memory.
template <class Convert>
Result<vistrel_layout> fillImage(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                 const vistrel_image& image, Convert convert) noexcept {
  return attempt<vistrel_layout>([&](vistrel_layout& layout, vistrel_error* error) {
    if (const int32_t rejected = vistrel_get_layout(&frame, &conversion, &layout, error))
      return rejected;
    return convert(image, error);
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
// The same, of width * height samples.
inline vistrel_frame frameOf(const uint8_t* samples, uint32_t width, uint32_t height,
                             uint32_t phase) {
  return frameOf({samples, size_t{width} * height}, width, height, phase);
}
inline vistrel_frame frameOf(const uint16_t* samples, uint32_t width, uint32_t height,
                             uint32_t bits, uint32_t phase) {
  return frameOf({samples, size_t{width} * height}, width, height, bits, phase);
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

// Converts `frame` into a new image.
inline Result<Image> tryConvert(const vistrel_frame& frame,
                                const vistrel_conversion& conversion) noexcept {
  return detail::makeImage(frame, conversion,
                           [&](const vistrel_image& image, vistrel_error* error) {
                             return vistrel_convert(&frame, &conversion, &image, error);
                           });
}
inline Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
  return tryConvert(frame, conversion).value();
}

// Converts `frame` into `pixels`, with `stride` bytes from row to row; 0: rows have no padding.
// Returns the layout.
inline Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                             const vistrel_conversion& conversion,
                                             Span<uint8_t> pixels, size_t stride = 0) noexcept {
  return detail::fillImage(frame, conversion, {pixels.data(), pixels.size(), stride},
                           [&](const vistrel_image& image, vistrel_error* error) {
                             return vistrel_convert(&frame, &conversion, &image, error);
                           });
}
inline vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                                  Span<uint8_t> pixels, size_t stride = 0) {
  return tryConvertInto(frame, conversion, pixels, stride).value();
}

namespace detail {

// Converts on a stream. The arguments must outlive the function object.
inline auto onStream(vistrel_stream* stream, const vistrel_frame& frame,
                     const vistrel_conversion& conversion) noexcept {
  return [stream, &frame, &conversion](const vistrel_image& image, vistrel_error* error) {
    return vistrel_stream_convert(stream, &frame, &conversion, &image, error);
  };
}

}  // namespace detail

// Holds one of the process's VISTREL_MAX_STREAMS streams for as long as it lives. It may be moved,
// and used by one thread at a time.
class Stream {
 public:
  Stream() = default;  // holds none
  Stream(Stream&& other) noexcept : stream_(std::exchange(other.stream_, nullptr)) {}
  Stream& operator=(Stream&& other) noexcept {
    std::swap(stream_, other.stream_);
    return *this;
  }
  ~Stream() {
    if (stream_) vistrel_stream_release(stream_, nullptr);
  }

  // `wait` is VISTREL_WAIT or VISTREL_NO_WAIT.
  static Result<Stream> tryAcquire(uint32_t wait = VISTREL_WAIT) noexcept {
    return detail::attempt<Stream>([&](Stream& stream, vistrel_error* error) {
      return vistrel_stream_acquire(wait, &stream.stream_, error);
    });
  }
  static Stream acquire(uint32_t wait = VISTREL_WAIT) { return tryAcquire(wait).value(); }

  // Like the functions of the same names.
  Result<Image> tryConvert(const vistrel_frame& frame,
                           const vistrel_conversion& conversion) noexcept {
    return detail::makeImage(frame, conversion, detail::onStream(stream_, frame, conversion));
  }
  Image convert(const vistrel_frame& frame, const vistrel_conversion& conversion) {
    return tryConvert(frame, conversion).value();
  }
  Result<vistrel_layout> tryConvertInto(const vistrel_frame& frame,
                                        const vistrel_conversion& conversion, Span<uint8_t> pixels,
                                        size_t stride = 0) noexcept {
    return detail::fillImage(frame, conversion, {pixels.data(), pixels.size(), stride},
                             detail::onStream(stream_, frame, conversion));
  }
  vistrel_layout convertInto(const vistrel_frame& frame, const vistrel_conversion& conversion,
                             Span<uint8_t> pixels, size_t stride = 0) {
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

// VISTREL_GRBG to VISTREL_MONO by name, in lower or upper case.
inline Result<uint32_t> tryParsePhase(const char* name) noexcept {
  return detail::attempt<uint32_t>([&](uint32_t& phase, vistrel_error* error) {
    return vistrel_parse_phase(name, &phase, error);
  });
}
inline uint32_t parsePhase(const char* name) { return tryParsePhase(name).value(); }

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
  std::vector<uint8_t> samples_;
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

}  // namespace vistrel

#endif
