#include <algorithm>
#include <stdexcept>

#include "bench/filter.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::bench {

namespace {

constexpr uint32_t kStream = 1;

// The weights, or the pointer value of a fixed filter.
const _FLT_3X3* recordOf(uint32_t filter) {
  static constexpr _FLT_3X3 kRecord = {kGaussDivisor, {1, 2, 1, 2, 4, 2, 1, 2, 1}};
  return filter == kGauss ? &kRecord : reinterpret_cast<const _FLT_3X3*>(uintptr_t{filter});
}

// Gives all pixels and channels of a 2 x 2 block the sample of one site, since only some filters
// mix neighbouring channels.
template <class T>
Buffer<uint8_t> imageOf(const FrameSize& size, const T* samples, unsigned channels) {
  auto image = allocate<uint8_t>(size.pixels() * channels * sizeof(T));
  T* pixel = reinterpret_cast<T*>(image.get());
  for (unsigned y = 0; y < size.height; ++y)
    for (unsigned x = 0; x < size.width; ++x, pixel += channels)
      std::fill_n(pixel, channels, samples[size_t{y & ~1u} * size.width + (x & ~1u)]);
  return image;
}

}  // namespace

Layout imageLayout(const Conversion& c) {
  return c.format == IMG_FMT_BGR24 ? kBgr24 : c.depth == 8 ? kMono8 : kMono16;
}

Buffer<uint8_t> makeImage(const Conversion& c, const Frame& frame) {
  const unsigned channels = imageLayout(c).channels;
  return c.depth == 8 ? imageOf(frame.size, frame.samples8.get(), channels)
                      : imageOf(frame.size, frame.samples16.get(), channels);
}

Task makeFilter(const Conversion& c, const Frame& frame) {
  const FrameSize size = frame.size;
  const auto image = makeImage(c, frame);
  if (!ImgInitialize(kStream, size.width, size.height)) throw std::bad_alloc();
  const auto run = [=] {
    ImgFilter(kStream, recordOf(c.algorithmCode), c.format, size.width, size.height, image.get());
  };
  return {
      run,
      {image.get(), size.width, size.height, imageLayout(c), c.depth == 8 ? 8 : c.significantBits}};
}

}  // namespace vistrel::core::bench
