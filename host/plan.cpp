#include "host/plan.h"

#include <limits>

#include "host/status.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

// The library numbers samples with 32 bits, in a frame, a work buffer and a result.
constexpr uint64_t kMostSamples = std::numeric_limits<uint32_t>::max();
constexpr uint64_t kMostBytes = std::numeric_limits<size_t>::max() / 2;

// Wide enough for every algorithm's reach.
constexpr uint32_t kLeastPadding = 8;

uint64_t rowBytes(const vistrel_frame& f) { return uint64_t{f.width} * f.bytes_per_sample; }

struct Extent {
  uint64_t width, height;  // sensor pixels, padding included
};

// On each side, in pixels of the result, so that bins stay what they are.
uint32_t paddingOf(const Format& format, const vistrel_conversion& c) {
  if (c.edges == VISTREL_EDGES_NATIVE || !format.colour()) return 0;
  return (kLeastPadding + c.binning - 1) / c.binning;
}

Extent placeRegion(Plan& p, const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_region r = c.region ? *c.region : vistrel_region{0, 0, f.width, f.height};
  const auto text = fmt::format("region {}x{}+{}+{}", r.width, r.height, r.x, r.y);
  if (uint64_t{r.x} + r.width > f.width || uint64_t{r.y} + r.height > f.height)
    refuse(VISTREL_BAD_REGION, "{}: it leaves the frame of {}x{}", text, f.width, f.height);
  p.layout.width = r.width / c.binning;
  p.layout.height = r.height / c.binning;
  if (!p.layout.width || !p.layout.height)
    refuse(VISTREL_REGION_TOO_SMALL, "{}: not one whole bin of {}x{} pixels is in it", text,
           c.binning, c.binning);
  const uint32_t around = p.pad * c.binning;
  p.x = int64_t{r.x} - around;
  p.y = int64_t{r.y} - around;
  const Extent e{uint64_t{p.layout.width} * c.binning + 2 * around,
                 uint64_t{p.layout.height} * c.binning + 2 * around};
  if (!p.format->colour()) return e;
  const vistrel_algorithm& a = *findAlgorithm(c.algorithm);
  if (e.width < a.min_size || e.height < a.min_size)
    refuse(VISTREL_REGION_TOO_SMALL, "{}: algorithm {} needs {}x{} pixels or more", text, a.name,
           a.min_size, a.min_size);
  return e;
}

void checkAmounts(const Plan& p, const Extent& e, uint32_t binning) {
  const auto limit = [&e](const char* what, uint64_t samples) {
    if (samples > kMostSamples)
      refuse(VISTREL_TOO_LARGE, "region of {}x{} pixels: {} has {} samples, {} are allowed",
             e.width, e.height, what, samples, kMostSamples);
  };
  // In this order no product leaves 64 bits: a side has less than 2^32 + 18 samples.
  limit("it", e.width * e.height);
  limit("the image", e.width / binning * (e.height / binning) * p.made->channels);
  if (p.format->colour()) limit("the work buffer", (3 * e.width + 18) * (e.height + 6));
}

void shapeMade(Plan& p, const Extent& e, uint32_t binning) {
  checkAmounts(p, e, binning);
  p.width = static_cast<uint32_t>(e.width);
  p.height = static_cast<uint32_t>(e.height);
  p.madeWidth = p.width / binning;
  p.madeHeight = p.height / binning;
  const uint64_t row = uint64_t{p.madeWidth} * p.made->pixelBytes();
  if (row > kMostBytes / p.madeHeight)
    refuse(VISTREL_TOO_LARGE, "region of {}x{} pixels: no memory is that large", p.width, p.height);
  p.madeRowBytes = static_cast<size_t>(row);
  p.madeBytes = p.madeRowBytes * p.madeHeight;
}

void shapeResult(Plan& p, const vistrel_frame& f) {
  vistrel_layout& l = p.layout;
  l.channels = p.format->channels;
  l.bits = p.format->bytes_per_sample == 2 ? p.bits : 8;
  p.nDstBits = l.bits * p.made->sensed();
  const uint64_t row = uint64_t{l.width} * p.format->pixelBytes();
  if (strideOf(f) > kMostBytes / f.height || row > kMostBytes / l.height)
    refuse(VISTREL_TOO_LARGE, "frame of {}x{} pixels, stride {}: no memory is that large", f.width,
           f.height, strideOf(f));
  l.row_bytes = static_cast<size_t>(row);
  l.bytes = l.row_bytes * l.height;
  l.frame_bytes = static_cast<size_t>(bytesOf(f));
  // Each has less than 2^35 bytes.
  const uint64_t buffer =
      p.format->colour() ? 2 * (3 * uint64_t{p.width} + 18) * (uint64_t{p.height} + 6) : 0;
  const uint64_t working =
      buffer + uint64_t{p.width} * p.height * f.bytes_per_sample + uint64_t{p.madeBytes};
  if (working > kMostBytes)
    refuse(VISTREL_TOO_LARGE, "region of {}x{} pixels: it takes {} bytes of working memory",
           p.width, p.height, working);
  l.working_bytes = static_cast<size_t>(working);
}

}  // namespace

uint64_t strideOf(const vistrel_frame& f) { return f.stride ? f.stride : rowBytes(f); }

uint64_t bytesOf(const vistrel_frame& f) { return strideOf(f) * (f.height - 1) + rowBytes(f); }

Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion) {
  if (!frame) refuse(VISTREL_NULL_POINTER, "frame is null");
  if (!conversion) refuse(VISTREL_NULL_POINTER, "conversion is null");
  const vistrel_conversion& c = *conversion;
  checkArguments(*frame, c);
  Plan p{};
  p.format = findFormat(c.format);
  const bool own = p.format->gray() && c.gray == VISTREL_RAW_GRAY;
  p.made = own ? p.format : findFormat(p.format->made);
  p.finish = own ? nullptr : p.format->finish;
  p.bits = workingBits(*frame, c);
  p.pad = paddingOf(*p.format, c);
  const Extent extent = placeRegion(p, *frame, c);
  p.phase = vistrel_phase_at(frame->phase, static_cast<uint32_t>(p.x), static_cast<uint32_t>(p.y));
  p.readsBeside = p.format->colour() && isCompact(c.algorithm);
  shapeMade(p, extent, c.binning);
  shapeResult(p, *frame);
  return p;
}

void checkSamples(const vistrel_frame& frame) {
  if (!frame.samples) refuse(VISTREL_NULL_POINTER, "frame->samples is null");
  if (strideOf(frame) > kMostBytes / frame.height)
    refuse(VISTREL_TOO_LARGE, "frame of {}x{} pixels, stride {}: no memory is that large",
           frame.width, frame.height, strideOf(frame));
  if (frame.size < bytesOf(frame))
    refuse(VISTREL_SHORT_BUFFER, "frame->size {}: {} rows of stride {} take {} bytes", frame.size,
           frame.height, strideOf(frame), bytesOf(frame));
}

size_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image) {
  checkSamples(frame);
  if (!image) refuse(VISTREL_NULL_POINTER, "image is null");
  if (!image->pixels) refuse(VISTREL_NULL_POINTER, "image->pixels is null");
  const vistrel_layout& l = plan.layout;
  const size_t stride = image->stride ? image->stride : l.row_bytes;
  if (stride < l.row_bytes || stride > kMostBytes / l.height)
    refuse(VISTREL_BAD_STRIDE, "image->stride {}: a row has {} bytes", stride, l.row_bytes);
  const size_t imageBytes = stride * (l.height - 1) + l.row_bytes;
  if (image->size < imageBytes)
    refuse(VISTREL_SHORT_BUFFER, "image->size {}: {} rows of stride {} take {} bytes", image->size,
           l.height, stride, imageBytes);
  if (overlap(frame.samples, l.frame_bytes, image->pixels, imageBytes))
    refuse(VISTREL_OVERLAP, "image->pixels: it overlaps the frame's samples");
  return stride;
}

}  // namespace vistrel::host
