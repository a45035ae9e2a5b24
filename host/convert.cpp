#include <cstring>
#include <memory>

#include "host/plan.h"
#include "host/samples.h"
#include "host/status.h"
#include "host/streams.h"

namespace vistrel::host {
namespace {

constexpr int kAlpha = 255;

// The library gets the region's first sample and the phase there, and so row 0 and column 0.
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c, uint32_t /*bits*/,
              const Samples<uint8_t>& source, void* pixels) {
  return ImgConvert8(id, c.format, c.algorithm, p.phase, c.binning - 1, source.stride(), p.height,
                     0, 0, p.layout.width, p.layout.height, source.first(), pixels, 8, 0);
}
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c, uint32_t bits,
              const Samples<uint16_t>& source, void* pixels) {
  return ImgConvert16(id, c.format, c.algorithm, p.phase, c.binning - 1, p.nDstBits, c.lut_mode,
                      source.stride(), p.height, 0, 0, p.layout.width, p.layout.height,
                      source.first(), pixels, bits, 0);
}

template <class T>
void convertPacked(const Plan& p, const vistrel_frame& frame, const vistrel_conversion& c,
                   void* pixels) {
  const Samples<T> source(p, frame, c.excess);
  StreamLease stream;
  if (p.format->colour) stream.reserve(p.width, p.height);
  if (p.layout.channels > p.format->sensed) std::memset(pixels, kAlpha, p.layout.bytes);
  if (!call(stream.id(), p, c, frame.bits, source, pixels))
    refuse(VISTREL_INTERNAL, "the library refused format {}, algorithm {}", c.format, c.algorithm);
}

void convertInto(const Plan& p, const vistrel_frame& frame, const vistrel_conversion& c,
                 void* pixels) {
  if (frame.bytes_per_sample == 1)
    convertPacked<uint8_t>(p, frame, c, pixels);
  else
    convertPacked<uint16_t>(p, frame, c, pixels);
}

void convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
             const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  const size_t stride = checkMemory(plan, *frame, image);
  const vistrel_layout& l = plan.layout;
  auto* pixels = static_cast<unsigned char*>(image->pixels);
  const bool aligned = reinterpret_cast<uintptr_t>(pixels) % plan.format->sampleBytes == 0;
  if (stride == l.row_bytes && aligned) return convertInto(plan, *frame, *conversion, pixels);
  const auto packed = std::make_unique_for_overwrite<unsigned char[]>(l.bytes);
  convertInto(plan, *frame, *conversion, packed.get());
  for (size_t row = 0; row < l.height; ++row)
    std::memcpy(pixels + row * stride, &packed[row * l.row_bytes], l.row_bytes);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion) {
  const bool mono = frame->phase == VISTREL_MONO;
  *conversion = {static_cast<uint32_t>(mono ? IMG_FMT_MONO8 : IMG_FMT_BGR24),
                 DM_BILINEAR,
                 1,
                 0,
                 VISTREL_REFUSE,
                 nullptr};
}

int32_t vistrel_get_layout(const vistrel_frame* frame, const vistrel_conversion* conversion,
                           vistrel_layout* layout, vistrel_error* error) {
  return guarded(error, [&] {
    if (!layout) refuse(VISTREL_NULL_POINTER, "layout is null");
    *layout = makePlan(frame, conversion).layout;
  });
}

int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error) {
  return guarded(error, [&] { convert(frame, conversion, image); });
}
