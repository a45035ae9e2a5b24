// Filters of finished pixels.
#include "frontend/filter/filter.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "host/overlap.h"
#include "host/status.h"
#include "host/streams.h"
#include "host/tables.h"

namespace vistrel::host {
namespace {

// The library counts the bytes of an image with 32 bits.
constexpr uint64_t kMaxImageBytes = std::numeric_limits<uint32_t>::max();
constexpr uint64_t kMaxBytes = std::numeric_limits<size_t>::max() / 2;

// Rows of pixels in the caller's memory.
struct PixelMemory {
  unsigned char* first;
  size_t stride, rowBytes, rows;

  size_t bytes() const { return stride * (rows - 1) + rowBytes; }
  ByteRows byteRows() const { return {reinterpret_cast<uintptr_t>(first), stride, rowBytes, rows}; }
  // Whether the library can filter the rows in place.
  bool isPlain(size_t alignment) const {
    return stride == rowBytes && reinterpret_cast<uintptr_t>(first) % alignment == 0;
  }
  void copyTo(const PixelMemory& other) const {
    for (size_t y = 0; y < rows; ++y)
      std::memmove(other.first + y * other.stride, first + y * stride, rowBytes);
  }
};

bool isFilterable(const Format& f) {
  return f.planes == 1 && (f.channels == 1 || f.bytes_per_sample == 1);
}

const Format& formatOf(const vistrel_picture& p) {
  const Format* const format = findFormat(p.format);
  if (!format || !isFilterable(*format))
    reject(VISTREL_BAD_FORMAT, "picture.format", p.format, "{} are allowed",
           formatList(isFilterable));
  return *format;
}

struct Size {
  uint32_t width, height;
};

// The smallest size that a filter changes.
Size minSize(const Format& format, uint32_t filter) {
  if (filter == VISTREL_FILTER_BOX) return {format.bytes_per_sample == 1 ? 2u : 4u, 2};
  return filter == VISTREL_FILTER_FIVE ? Size{5, 5} : Size{3, 3};
}

void checkSettings(const vistrel_filter_settings& s, const Format& format) {
  if (s.filter > VISTREL_FILTER_FIVE)
    reject(VISTREL_BAD_FILTER, "filter_settings.filter", s.filter,
           "0 (weights), 1 (box) and 2 (five) are allowed");
  if (s.filter != VISTREL_FILTER_WEIGHTS && format.channels > 1)
    reject(VISTREL_BAD_FILTER, "filter_settings.filter", s.filter,
           "it is for pixels of one channel; {} has {}", format.name, format.channels);
  if (s.filter == VISTREL_FILTER_WEIGHTS && s.divisor == 0)
    reject(VISTREL_BAD_FILTER, "filter_settings.divisor", 0, "any other is allowed");
  checkReserved("filter_settings.reserved", s.reserved);
}

void checkSize(const vistrel_picture& p, const Format& format, uint32_t filter) {
  const Size min = minSize(format, filter);
  if (p.width < min.width || p.height < min.height)
    reject(VISTREL_BAD_SIZE, "picture", textOf("{}x{}", p.width, p.height),
           "this filter needs {}x{} pixels or more", min.width, min.height);
  if (uint64_t{p.width} * format.pixelBytes() > kMaxImageBytes / p.height)
    reject(VISTREL_TOO_LARGE, "picture", textOf("{}x{}", p.width, p.height),
           "it has more than {} bytes", kMaxImageBytes);
  checkReserved("picture.reserved", p.reserved);
}

// structure: the struct with these fields.
PixelMemory memoryOf(std::string_view structure, const void* pixels, size_t size, size_t stride,
                     const vistrel_picture& p, const Format& format) {
  const auto name = [&](const char* field) { return textOf("{}.{}", structure, field); };
  checkPointer(pixels, name("pixels"));
  const size_t rowBytes = size_t{p.width} * format.pixelBytes();
  if (stride && stride < rowBytes)
    reject(VISTREL_BAD_STRIDE, name("stride"), stride, "a row has {}", countOf(rowBytes, "byte"));
  if (stride > kMaxBytes / p.height)
    reject(VISTREL_TOO_LARGE, name("stride"), stride, "no memory can hold {}",
           countOf(p.height, "such row"));
  const PixelMemory memory{static_cast<unsigned char*>(const_cast<void*>(pixels)),
                           stride ? stride : rowBytes, rowBytes, p.height};
  if (size < memory.bytes())
    reject(VISTREL_SHORT_BUFFER, name("size"), size, "{}",
           rowsIn(memory.bytes(), p.height, memory.stride));
  return memory;
}

// The library's format with as many bytes per pixel.
uint32_t libraryFormat(const Format& format) {
  if (format.channels == 1) return format.bytes_per_sample == 1 ? VISTREL_GRAY8 : VISTREL_GRAY16;
  return format.channels == 3 ? VISTREL_BGR24 : VISTREL_ARGB32;
}

// The library recognises a fixed filter by the value of a pointer, which it does not dereference.
void run(void* copy, const vistrel_filter_settings& s, const Format& format,
         const vistrel_picture& p, void* pixels) {
  _FLT_3X3 weighted{s.divisor, {}};
  std::copy_n(s.weights, 9, weighted.anWeights);
  const uintptr_t fixed = s.filter == VISTREL_FILTER_BOX ? 0 : 1;
  const auto* const filter =
      s.filter == VISTREL_FILTER_WEIGHTS ? &weighted : reinterpret_cast<const _FLT_3X3*>(fixed);
  core::filterImage(copy, filter, libraryFormat(format), p.width, p.height, pixels);
}

void filter(const vistrel_picture* picture, const vistrel_filter_settings* settings,
            const vistrel_image* image) {
  checkPointer(picture, "picture");
  checkPointer(settings, "filter_settings");
  checkPointer(image, "image");
  checkReserved("image.reserved", image->reserved);
  if (image->stride < 0)
    reject(VISTREL_BAD_STRIDE, "image.stride", image->stride, "filters take no negative stride");
  const Format& format = formatOf(*picture);
  checkSettings(*settings, format);
  checkSize(*picture, format, settings->filter);
  const auto memory = [&](std::string_view name, const auto& of) {
    return memoryOf(name, of.pixels, of.size, static_cast<size_t>(of.stride), *picture, format);
  };
  const PixelMemory from = memory("picture", *picture), to = memory("image", *image);
  const bool inPlace = from.first == to.first && from.stride == to.stride;
  if (!inPlace && overlap(from.byteRows(), to.byteRows()))
    reject(VISTREL_OVERLAP, "image.pixels", "", "they overlap the picture's pixels");
  const size_t bytes = from.rowBytes * from.rows, copyBytes = (bytes + 127) / 64 * 64;
  const bool isPlain = to.isPlain(format.bytes_per_sample);
  StreamLease stream;
  auto* const copy =
      static_cast<unsigned char*>(stream.scratch(isPlain ? copyBytes : copyBytes + bytes));
  const PixelMemory plain =
      isPlain ? to : PixelMemory{copy + copyBytes, to.rowBytes, to.rowBytes, to.rows};
  if (plain.first != from.first) from.copyTo(plain);
  run(copy, *settings, format, *picture, plain.first);
  if (!isPlain) plain.copyTo(to);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_filter(const vistrel_picture* picture,
                       const vistrel_filter_settings* filter_settings, const vistrel_image* image,
                       vistrel_error* error) {
  return toStatus(error, [&] { filter(picture, filter_settings, image); });
}
