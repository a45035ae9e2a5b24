#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>

#include "host/plan.h"
#include "host/samples.h"
#include "host/status.h"
#include "host/streams.h"
#include "vistrel/image_functions.h"
#include "vistrel/vistrel.h"

namespace vistrel::host {
namespace {

constexpr int kAlpha = 255;

uint32_t selectorOf(const vistrel_conversion& c) { return c.algorithm | c.threshold << 8; }

// The library gets the region's first sample and the phase there, so its region begins at (0, 0).
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c,
              const Samples<uint8_t>& source, void* pixels) {
  return ImgConvert8(id, p.native->code, selectorOf(c), p.phase, c.binning - 1, source.stride(),
                     p.height, 0, 0, p.nativeWidth, p.nativeHeight, source.first(), pixels, 8, 0);
}
uint32_t call(uint32_t id, const Plan& p, const vistrel_conversion& c,
              const Samples<uint16_t>& source, void* pixels) {
  return ImgConvert16(id, p.native->code, selectorOf(c), p.phase, c.binning - 1, p.nDstBits,
                      c.reduction, source.stride(), p.height, 0, 0, p.nativeWidth, p.nativeHeight,
                      source.first(), pixels, p.bits, 0);
}

// These functions take slots, which equal the pool's ids. They do not write to the source.
void callAhd(uint32_t id, const Plan& p, const vistrel_conversion& c,
             const Samples<uint8_t>& source, void* pixels) {
  ImageColorDemosaicAHD(id, source.stride(), p.phase, c.binning - 1, p.native->code, 0, 0,
                        p.nativeWidth, p.nativeHeight, const_cast<uint8_t*>(source.first()),
                        static_cast<uint8_t*>(pixels));
}
void callAhd(uint32_t id, const Plan& p, const vistrel_conversion& c,
             const Samples<uint16_t>& source, void* pixels) {
  ImageColorDemosaicAHD(id, source.stride(), p.phase, c.binning - 1, p.native->code, c.reduction, 0,
                        0, p.nativeWidth, p.nativeHeight, const_cast<uint16_t*>(source.first()),
                        static_cast<uint8_t*>(pixels), p.nDstBits, p.bits);
}

// The library does not report a failed allocation, but the allocation itself sets errno.
template <class Body>
void reportNoMemory(Body body) {
  const int before = errno;
  errno = 0;
  body();
  const bool failed = errno == ENOMEM;
  errno = before;
  if (failed) throw std::bad_alloc();
}

template <class T>
void convertNative(vistrel_stream* callerStream, const Plan& p, const vistrel_frame& frame,
                   const vistrel_conversion& c, void* pixels) {
  std::optional<StreamLease> stream;
  callerStream ? stream.emplace(callerStream) : stream.emplace();
  const Samples<T> source(p, frame, c);
  if (p.format->colour()) stream->reserve(p.width, p.height);
  if (c.reduction == VISTREL_TABLE) stream->loadTable(c.table, c.table_entries, p.bits);
  if (p.native->channels > p.native->sensed()) std::memset(pixels, kAlpha, p.nativeBytes);
  reportNoMemory([&] {
    if (p.format->colour() && c.algorithm == VISTREL_AHD)
      callAhd(stream->id(), p, c, source, pixels);
    else if (!call(stream->id(), p, c, source, pixels))
      reject(VISTREL_INTERNAL, "", "", "the library rejected format {}, algorithm {}", c.format,
             c.algorithm);
  });
}

// Repacks the native image, without its padding, into the caller's rows.
void repack(const Plan& p, const unsigned char* native, unsigned char* pixels, size_t stride) {
  native += p.pad * (p.nativeRowBytes + p.native->pixelBytes());
  for (uint32_t row = 0; row < p.layout.height; ++row) {
    const unsigned char* from = native + row * p.nativeRowBytes;
    unsigned char* const to = pixels + row * stride;
    if (p.repack)
      p.repack(from, p.layout.width, to);
    else if (from != to)
      std::memcpy(to, from, p.layout.row_bytes);
  }
}

void convert(vistrel_stream* callerStream, const vistrel_frame* frame,
             const vistrel_conversion* conversion, const vistrel_image* image) {
  const Plan plan = makePlan(frame, conversion);
  const size_t stride = checkMemory(plan, *frame, image);
  auto* const pixels = static_cast<unsigned char*>(image->pixels);
  const bool aligned = reinterpret_cast<uintptr_t>(pixels) % plan.native->bytes_per_sample == 0;
  const bool fits = stride == plan.nativeRowBytes && plan.nativeBytes == plan.layout.bytes;
  std::unique_ptr<unsigned char[]> copy;
  if (!aligned || !fits) copy = std::make_unique_for_overwrite<unsigned char[]>(plan.nativeBytes);
  unsigned char* const native = copy ? copy.get() : pixels;
  if (frame->bytes_per_sample == 1)
    convertNative<uint8_t>(callerStream, plan, *frame, *conversion, native);
  else
    convertNative<uint16_t>(callerStream, plan, *frame, *conversion, native);
  repack(plan, native, pixels, stride);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

void vistrel_default_conversion(const vistrel_frame* frame, vistrel_conversion* conversion) {
  const bool mono = frame->phase == VISTREL_MONO;
  *conversion = {};
  conversion->format = mono ? VISTREL_MONO8 : VISTREL_BGR24;
  conversion->algorithm = VISTREL_BILINEAR;
  conversion->binning = 1;
}

int32_t vistrel_get_layout(const vistrel_frame* frame, const vistrel_conversion* conversion,
                           vistrel_layout* layout, vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(layout, "layout");
    *layout = makePlan(frame, conversion).layout;
  });
}

int32_t vistrel_convert(const vistrel_frame* frame, const vistrel_conversion* conversion,
                        const vistrel_image* image, vistrel_error* error) {
  return toStatus(error, [&] { convert(nullptr, frame, conversion, image); });
}

int32_t vistrel_stream_convert(vistrel_stream* stream, const vistrel_frame* frame,
                               const vistrel_conversion* conversion, const vistrel_image* image,
                               vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(stream, "stream");
    convert(stream, frame, conversion, image);
  });
}
