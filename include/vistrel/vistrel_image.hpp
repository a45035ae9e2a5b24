// Images that own their pixels. For C++17.
#ifndef VISTREL_IMAGE_HPP
#define VISTREL_IMAGE_HPP

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "vistrel/vistrel_host.h"
#include "vistrel/vistrel_result.hpp"
#include "vistrel/vistrel_span.hpp"

namespace vistrel {
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
  vistrel_layout layout{};  // its size and format
  Bytes pixels;             // rows from top to bottom, planes one after the other
};

namespace detail {

// Calls `convert` with the image's memory, enlarged if necessary.
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

// The offset of the image's top row if a negative stride puts it highest in memory. If memory is
// too small, any offset works: the call is rejected.
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

}  // namespace v1
}  // namespace vistrel

#endif
