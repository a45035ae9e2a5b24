#include "host/plan.h"

#include <algorithm>
#include <limits>

#include "common/work_layout.h"
#include "demosaic/algorithms.h"
#include "host/overlap.h"
#include "host/packings.h"
#include "host/planes.h"
#include "host/status.h"
#include "host/turned.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

// The library counts the samples of a frame, a work buffer and a result with 32 bits.
constexpr uint64_t kMaxSamples = std::numeric_limits<uint32_t>::max();
constexpr uint64_t kMaxBytes = std::numeric_limits<size_t>::max() / 2;
constexpr uint64_t kMaxBuffered = std::min(kMaxSamples, kMaxBytes / 2);

bool isWhole(const vistrel_region& r) { return !r.x && !r.y && !r.width && !r.height; }

// Rejects a conversion because of its region or, without one, because of the whole frame.
template <class... Args>
[[noreturn]] void rejectRegion(int32_t status, const vistrel_frame& f, const vistrel_conversion& c,
                               std::string_view reason, Args&&... args) {
  const vistrel_region& r = c.region;
  if (isWhole(r))
    reject(status, "frame", textOf("{}x{}", f.width, f.height), reason,
           std::forward<Args>(args)...);
  reject(status, "conversion.region", textOf("{}x{}+{}+{}", r.width, r.height, r.x, r.y), reason,
         std::forward<Args>(args)...);
}

struct Extent {
  uint64_t width, height;  // sensor pixels, padding included
};

// The padding on each side, in pixels of the result, so that bins keep their places.
uint32_t paddingOf(const vistrel_frame& f, const vistrel_conversion& c) {
  if (c.edges == VISTREL_EDGES_NATIVE || !isMosaic(f)) return 0;
  const uint32_t least = core::findAlgorithm(c.algorithm)->padding;
  return (least + c.binning - 1) / c.binning;
}

Extent placeRegion(Plan& p, const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_region r = regionOf(f, c);
  p.layout.width = r.width / c.binning;
  p.layout.height = r.height / c.binning;
  if (!p.layout.width || !p.layout.height)
    rejectRegion(VISTREL_REGION_TOO_SMALL, f, c, "it contains no whole bin of {}x{} pixels",
                 c.binning, c.binning);
  const uint32_t around = p.pad * c.binning;
  p.x = int64_t{r.x} - around;
  p.y = int64_t{r.y} - around;
  const Extent e{uint64_t{p.layout.width} * c.binning + 2 * around,
                 uint64_t{p.layout.height} * c.binning + 2 * around};
  if (!isMosaic(f)) return e;
  const core::AlgorithmRow& a = *core::findAlgorithm(c.algorithm);
  if (e.width < a.minSize || e.height < a.minSize)
    rejectRegion(VISTREL_REGION_TOO_SMALL, f, c, "algorithm {} needs {}x{} pixels or more", a.name,
                 a.minSize, a.minSize);
  return e;
}

// The engine counts rows and columns with 31 bits, so products of two sides fit 64 bits. With
// pointers of 32 bits, it counts the samples of a few rows with 32.
constexpr uint64_t kMaxSide = sizeof(size_t) == 8 ? 0x7FFFFF00 : 0xFFFF00;

void checkAmounts(const Plan& p, const Extent& e, const vistrel_frame& f,
                  const vistrel_conversion& c) {
  const char* const padding = p.pad ? "with its padding it has" : "it has";
  if (e.width > kMaxSide || e.height > kMaxSide)
    rejectRegion(VISTREL_TOO_LARGE, f, c, "{} more than {} rows or columns", padding, kMaxSide);
  if (e.width * e.height > kMaxSamples)
    rejectRegion(VISTREL_TOO_LARGE, f, c, "{} more than {} samples", padding, kMaxSamples);
  if (p.throughBuffer && (3 * e.width + 18) * (e.height + 6) > kMaxBuffered)
    rejectRegion(VISTREL_TOO_LARGE, f, c, "its raw gray takes a buffer of more than {} samples",
                 kMaxBuffered);
}

// The stride of a single row does not matter.
bool isTooLarge(uint64_t stride, uint32_t rows) { return rows > 1 && stride > kMaxBytes / rows; }

void checkFrameBytes(const vistrel_frame& f) {
  if (isTooLarge(strideOf(f), f.height) || rowBytesOf(f) > kMaxBytes)
    reject(VISTREL_TOO_LARGE, "frame.stride", strideOf(f), "no memory can hold {} such rows",
           f.height);
}

void shapeResult(Plan& p, const vistrel_frame& f, const vistrel_conversion& c) {
  vistrel_layout& l = p.layout;
  if (swapsSides(c)) std::swap(l.width, l.height);
  l.channels = p.format->channels;
  l.bits = p.format->bytes_per_sample == 1 ? 8 : c.finish ? 16 : p.bits;
  checkFrameBytes(f);
  const uint64_t row = minStrideOf(*p.format, l.width);
  if (row > kMaxBytes / p.format->planes / l.height)
    rejectRegion(VISTREL_TOO_LARGE, f, c, "no memory can hold the image");
  l.row_bytes = static_cast<size_t>(row);
  l.bytes = bytesOf(*p.format, planesOf(*p.format, l.width, l.height, l.row_bytes));
  l.frame_bytes = static_cast<size_t>(bytesOf(f));
}

// An image's rows in memory. With a negative stride, the last row has the lowest address.
ByteRows rowsOf(const vistrel_layout& l, const vistrel_image& image, ptrdiff_t stride) {
  const uint64_t distance = stride < 0 ? -static_cast<uint64_t>(stride) : uint64_t(stride);
  const uint64_t below = stride < 0 ? distance * (l.height - 1) : 0;
  const auto first = reinterpret_cast<uintptr_t>(image.pixels);
  if (distance < l.row_bytes)
    reject(VISTREL_BAD_STRIDE, "image.stride", stride, "a row has {}",
           countOf(l.row_bytes, "byte"));
  if (isTooLarge(distance, l.height) || below > first)
    reject(VISTREL_TOO_LARGE, "image.stride", stride, "no memory can hold {} such rows", l.height);
  return {first - static_cast<uintptr_t>(below), distance, l.row_bytes, l.height};
}

}  // namespace

vistrel_region regionOf(const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_region r = isWhole(c.region) ? vistrel_region{0, 0, f.width, f.height} : c.region;
  if (uint64_t{r.x} + r.width > f.width || uint64_t{r.y} + r.height > f.height)
    rejectRegion(VISTREL_BAD_REGION, f, c, "it extends beyond the frame of {}x{}", f.width,
                 f.height);
  if (!r.width || !r.height) rejectRegion(VISTREL_REGION_TOO_SMALL, f, c, "it is empty");
  return r;
}

uint64_t rowBytesOf(const vistrel_frame& f) {
  const uint64_t samples = uint64_t{f.width} * channelsOf(f);
  const auto packing = packingOf(f);
  return packing ? core::packedBytes(*packing, samples) : samples * f.bytes_per_sample;
}

uint64_t strideOf(const vistrel_frame& f) { return f.stride ? f.stride : rowBytesOf(f); }

uint64_t bytesOf(const vistrel_frame& f) { return strideOf(f) * (f.height - 1) + rowBytesOf(f); }

Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion) {
  checkPointer(frame, "frame");
  checkPointer(conversion, "conversion");
  const vistrel_conversion& c = *conversion;
  checkArguments(*frame, c);
  Plan p{};
  p.format = findFormat(c.format);
  p.rawGray = p.format->gray() && c.gray == VISTREL_RAW_GRAY;
  p.throughBuffer = p.rawGray && c.binning > 1;
  p.nativePixelBytes = (p.format->colour() && !p.rawGray ? 3 : 1) * p.format->bytes_per_sample;
  p.bits = workingBits(*frame, c);
  p.sampleBytes = c.finish ? 2 : frame->bytes_per_sample;
  p.pad = paddingOf(*frame, c);
  const Extent extent = placeRegion(p, *frame, c);
  p.phase = vistrel_phase_at(frame->phase, static_cast<uint32_t>(p.x), static_cast<uint32_t>(p.y));
  checkAmounts(p, extent, *frame, c);
  p.width = static_cast<uint32_t>(extent.width);
  p.height = static_cast<uint32_t>(extent.height);
  shapeResult(p, *frame, c);
  return p;
}

void checkSamples(const vistrel_frame& frame) {
  checkPointer(frame.samples, "frame.samples");
  checkFrameBytes(frame);
  if (frame.size < bytesOf(frame))
    reject(VISTREL_SHORT_BUFFER, "frame.size", frame.size, "{}",
           rowsIn(bytesOf(frame), frame.height, strideOf(frame)));
}

namespace {

// All bytes of an image of several planes, and those between their rows. firstRows: of its first
// plane.
ByteRows planesIn(const Plan& plan, const vistrel_image& image, const ByteRows& firstRows) {
  const vistrel_layout& l = plan.layout;
  const Format& format = *plan.format;
  if (image.stride < 0)
    reject(VISTREL_BAD_STRIDE, "image.stride", image.stride, "planes of {} have no negative stride",
           format.name);
  if (firstRows.stride > kMaxBytes / format.planes / l.height)
    reject(VISTREL_TOO_LARGE, "image.stride", image.stride, "no memory can hold {}",
           countOf(l.height, "such row"));
  const auto stride = static_cast<size_t>(firstRows.stride);
  const size_t bytes = bytesOf(format, planesOf(format, l.width, l.height, stride));
  if (image.size < bytes)
    reject(VISTREL_SHORT_BUFFER, "image.size", image.size, "planes of {}, stride {}, take {} bytes",
           countOf(l.height, "row"), firstRows.stride, bytes);
  return {firstRows.lowest, bytes, bytes, 1};
}

}  // namespace

CheckedImage checkImage(const Plan& plan, const vistrel_image* image) {
  checkPointer(image, "image");
  checkPointer(image->pixels, "image.pixels");
  checkReserved("image.reserved", image->reserved);
  const vistrel_layout& l = plan.layout;
  const ptrdiff_t stride = image->stride ? image->stride : static_cast<ptrdiff_t>(l.row_bytes);
  const ByteRows rows = rowsOf(l, *image, stride);
  if (plan.format->planes > 1) return {stride, planesIn(plan, *image, rows)};
  if (image->size < rows.extent())
    reject(VISTREL_SHORT_BUFFER, "image.size", image->size, "{}",
           rowsIn(rows.extent(), l.height, stride));
  return {stride, rows};
}

ptrdiff_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image) {
  checkSamples(frame);
  const auto [stride, rows] = checkImage(plan, image);
  const auto samples = reinterpret_cast<uintptr_t>(frame.samples);
  if (overlap(rows, {samples, strideOf(frame), rowBytesOf(frame), frame.height}))
    reject(VISTREL_OVERLAP, "image.pixels", "", "they overlap the frame's samples");
  return stride;
}

}  // namespace vistrel::host
