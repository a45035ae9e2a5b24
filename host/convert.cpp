#include <cstring>
#include <memory>

#include "demosaic/image_functions.h"
#include "host/plan.h"
#include "host/samples.h"
#include "host/status.h"
#include "host/streams.h"

namespace vistrel::host {
namespace {

constexpr int kAlpha = 255;

uint32_t selectorOf(const vistrel_conversion& c) { return c.algorithm | c.threshold << 8; }

// The library gets the region's first sample and the phase there, and so row 0 and column 0.
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c,
              const Samples<uint8_t>& source, void* pixels) {
  return ImgConvert8(id, p.made->code, selectorOf(c), p.phase, c.binning - 1, source.stride(),
                     p.height, 0, 0, p.layout.width, p.layout.height, source.first(), pixels, 8, 0);
}
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c,
              const Samples<uint16_t>& source, void* pixels) {
  return ImgConvert16(id, p.made->code, selectorOf(c), p.phase, c.binning - 1, p.nDstBits,
                      c.lut_mode, source.stride(), p.height, 0, 0, p.layout.width, p.layout.height,
                      source.first(), pixels, p.bits, 0);
}

// These functions take slots, which the pool's ids are, and do not write to the source.
void callAhd(uint32_t id, const Plan& p, const vistrel_conversion& c,
             const Samples<uint8_t>& source, void* pixels) {
  ImageColorDemosaicAHD(id, source.stride(), p.phase, c.binning - 1, p.made->code, 0, 0,
                        p.layout.width, p.layout.height, const_cast<uint8_t*>(source.first()),
                        static_cast<uint8_t*>(pixels));
}
void callAhd(uint32_t id, const Plan& p, const vistrel_conversion& c,
             const Samples<uint16_t>& source, void* pixels) {
  ImageColorDemosaicAHD(id, source.stride(), p.phase, c.binning - 1, p.made->code, c.lut_mode, 0, 0,
                        p.layout.width, p.layout.height, const_cast<uint16_t*>(source.first()),
                        static_cast<uint8_t*>(pixels), p.nDstBits, p.bits);
}

template <class T>
void convertPacked(const Plan& p, const vistrel_frame& frame, const vistrel_conversion& c,
                   void* pixels) {
  const Samples<T> source(p, frame, c.excess);
  StreamLease stream;
  if (p.format->colour) stream.reserve(p.width, p.height);
  if (c.lut_mode == 10) stream.loadTable(c.table, c.table_entries, p.bits);
  if (p.made->channels > p.made->sensed) std::memset(pixels, kAlpha, p.layout.bytes);
  if (p.format->colour && c.algorithm == VISTREL_AHD)
    callAhd(stream.id(), p, c, source, pixels);
  else if (!call(stream.id(), p, c, source, pixels))
    refuse(VISTREL_INTERNAL, "the library refused format {}, algorithm {}", c.format, c.algorithm);
}

void convertInto(const Plan& p, const vistrel_frame& frame, const vistrel_conversion& c,
                 void* pixels) {
  if (frame.bytes_per_sample == 1)
    convertPacked<uint8_t>(p, frame, c, pixels);
  else
    convertPacked<uint16_t>(p, frame, c, pixels);
}

// Rounded luminance of n pixels, in place.
template <class T>
void lumaInPlace(T* samples, size_t n) {
  for (size_t i = 0; i < n; ++i) {
    const T* bgr = samples + 3 * i;
    samples[i] = static_cast<T>((114u * bgr[0] + 587u * bgr[1] + 299u * bgr[2] + 500) / 1000);
  }
}

void convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
             const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  const size_t stride = checkMemory(plan, *frame, image);
  const vistrel_layout& l = plan.layout;
  auto* pixels = static_cast<unsigned char*>(image->pixels);
  const bool aligned = reinterpret_cast<uintptr_t>(pixels) % plan.format->sampleBytes == 0;
  const bool luma = plan.made != plan.format;
  if (stride == l.row_bytes && aligned && !luma)
    return convertInto(plan, *frame, *conversion, pixels);
  const size_t madeBytes = l.bytes * (plan.made->channels / l.channels);
  const auto packed = std::make_unique_for_overwrite<unsigned char[]>(madeBytes);
  convertInto(plan, *frame, *conversion, packed.get());
  const size_t n = size_t{l.width} * l.height;
  if (luma && plan.made->sampleBytes == 1) lumaInPlace(packed.get(), n);
  if (luma && plan.made->sampleBytes == 2)
    lumaInPlace(reinterpret_cast<uint16_t*>(packed.get()), n);
  for (size_t row = 0; row < l.height; ++row)
    std::memcpy(pixels + row * stride, &packed[row * l.row_bytes], l.row_bytes);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion) {
  const bool mono = frame->phase == VISTREL_MONO;
  *conversion = {};
  conversion->format = mono ? IMG_FMT_MONO8 : IMG_FMT_BGR24;
  conversion->algorithm = DM_BILINEAR;
  conversion->binning = 1;
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
