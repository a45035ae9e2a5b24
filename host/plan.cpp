#include "host/plan.h"

#include <limits>

#include "host/status.h"
#include "host/validate.h"

namespace vistrel::host {
namespace {

// The library numbers samples with 32 bits, in a frame, a work buffer and a result.
constexpr uint64_t kMostSamples = std::numeric_limits<uint32_t>::max();
constexpr uint64_t kMostBytes = std::numeric_limits<size_t>::max() / 2;

uint64_t rowBytes(const vistrel_frame& f) { return uint64_t{f.width} * f.bytes_per_sample; }

void placeRegion(Plan& p, const vistrel_frame& f, const vistrel_conversion& c) {
  const vistrel_region r = c.region ? *c.region : vistrel_region{0, 0, f.width, f.height};
  const auto text = fmt::format("region {}x{}+{}+{}", r.width, r.height, r.x, r.y);
  if (uint64_t{r.x} + r.width > f.width || uint64_t{r.y} + r.height > f.height)
    refuse(VISTREL_BAD_REGION, "{}: it leaves the frame of {}x{}", text, f.width, f.height);
  p.x = r.x;
  p.y = r.y;
  p.width = r.width - r.width % c.binning;
  p.height = r.height - r.height % c.binning;
  if (!p.width || !p.height)
    refuse(VISTREL_REGION_TOO_SMALL, "{}: not one whole bin of {}x{} pixels is in it", text,
           c.binning, c.binning);
  if (!p.format->colour) return;
  const vistrel_algorithm& a = *findAlgorithm(c.algorithm);
  if (p.width < a.minimal_size || p.height < a.minimal_size)
    refuse(VISTREL_REGION_TOO_SMALL, "{}: algorithm {} needs {}x{} pixels or more", text, a.name,
           a.minimal_size, a.minimal_size);
}

const Format* madeFor(const Format& format, const vistrel_conversion& c) {
  if (!isGray(format) || c.gray == VISTREL_RAW_GRAY) return &format;
  return findFormat(format.sampleBytes == 2 ? IMG_FMT_BGR48 : IMG_FMT_BGR24);
}

void checkAmounts(const Plan& p) {
  const auto limit = [&p](const char* what, uint64_t samples) {
    if (samples > kMostSamples)
      refuse(VISTREL_TOO_LARGE, "region of {}x{} pixels: {} has {} samples, {} are allowed",
             p.width, p.height, what, samples, kMostSamples);
  };
  // In this order no product leaves 64 bits.
  limit("it", uint64_t{p.width} * p.height);
  limit("the image", uint64_t{p.layout.width} * p.layout.height * p.made->channels);
  if (p.format->colour)
    limit("the work buffer", (3 * uint64_t{p.width} + 18) * (uint64_t{p.height} + 6));
}

void shapeResult(Plan& p, const vistrel_frame& f, uint32_t binning) {
  vistrel_layout& l = p.layout;
  l.width = p.width / binning;
  l.height = p.height / binning;
  l.channels = p.format->channels;
  l.bits = p.format->sampleBytes == 2 ? p.bits : 8;
  p.nDstBits = l.bits * p.made->sensed;
  checkAmounts(p);
  const uint64_t row = uint64_t{l.width} * l.channels * p.format->sampleBytes;
  if (p.sourceStride > kMostBytes / f.height || row > kMostBytes / l.height)
    refuse(VISTREL_TOO_LARGE, "frame of {}x{} pixels, stride {}: no memory is that large", f.width,
           f.height, p.sourceStride);
  l.row_bytes = static_cast<size_t>(row);
  l.bytes = l.row_bytes * l.height;
}

}  // namespace

Plan makePlan(const vistrel_frame* frame, const vistrel_conversion* conversion) {
  if (!frame) refuse(VISTREL_NULL_POINTER, "frame is null");
  if (!conversion) refuse(VISTREL_NULL_POINTER, "conversion is null");
  checkArguments(*frame, *conversion);
  Plan p{};
  p.format = findFormat(conversion->format);
  p.made = madeFor(*p.format, *conversion);
  p.bits = workingBits(*frame, *conversion);
  p.sourceStride = frame->stride ? frame->stride : rowBytes(*frame);
  placeRegion(p, *frame, *conversion);
  p.phase = vistrel_phase_at(frame->phase, p.x, p.y);
  p.readsBeside = p.format->colour && isCompact(conversion->algorithm);
  shapeResult(p, *frame, conversion->binning);
  return p;
}

size_t checkMemory(const Plan& plan, const vistrel_frame& frame, const vistrel_image* image) {
  if (!frame.samples) refuse(VISTREL_NULL_POINTER, "frame->samples is null");
  if (!image) refuse(VISTREL_NULL_POINTER, "image is null");
  if (!image->pixels) refuse(VISTREL_NULL_POINTER, "image->pixels is null");
  const uint64_t frameBytes = plan.sourceStride * (frame.height - 1) + rowBytes(frame);
  if (frame.size < frameBytes)
    refuse(VISTREL_SHORT_BUFFER, "frame->size {}: {} rows of stride {} take {} bytes", frame.size,
           frame.height, plan.sourceStride, frameBytes);
  const vistrel_layout& l = plan.layout;
  const size_t stride = image->stride ? image->stride : l.row_bytes;
  if (stride < l.row_bytes || stride > kMostBytes / l.height)
    refuse(VISTREL_BAD_STRIDE, "image->stride {}: a row has {} bytes", stride, l.row_bytes);
  const size_t imageBytes = stride * (l.height - 1) + l.row_bytes;
  if (image->size < imageBytes)
    refuse(VISTREL_SHORT_BUFFER, "image->size {}: {} rows of stride {} take {} bytes", image->size,
           l.height, stride, imageBytes);
  if (overlap(frame.samples, frameBytes, image->pixels, imageBytes))
    refuse(VISTREL_OVERLAP, "image->pixels: it overlaps the frame's samples");
  return stride;
}

}  // namespace vistrel::host
