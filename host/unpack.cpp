// Packed dumps to samples.
#include <limits>

#include "host/packings.h"
#include "host/status.h"

namespace vistrel::host {
namespace {

using Byte = unsigned char;

constexpr uint64_t kMostBytes = std::numeric_limits<size_t>::max() / 2;

struct Dump {
  const Packing* packing;
  uint64_t samples, rows;  // of a row; rows without a byte boundary between them are one
  size_t rowBytes, stride, bytes;
  size_t sampleBytes, unpacked;  // of one, and of all of them in the caller's memory
};

[[noreturn]] void refuseSize(const vistrel_packed& p) {
  refuse(VISTREL_TOO_LARGE, "dump of {}x{} pixels, stride {}: no memory is that large", p.width,
         p.height, p.stride);
}

Dump measure(const vistrel_packed* packed) {
  if (!packed) refuse(VISTREL_NULL_POINTER, "packed is null");
  const vistrel_packed& p = *packed;
  if (!p.width) refuse(VISTREL_BAD_SIZE, "width 0: a dump has 1 column or more");
  if (!p.height) refuse(VISTREL_BAD_SIZE, "height 0: a dump has 1 row or more");
  if (p.continuous > 1)
    refuse(VISTREL_BAD_STRIDE, "continuous {}: 0 and 1 are allowed", p.continuous);
  if (p.continuous && p.stride)
    refuse(VISTREL_BAD_STRIDE, "stride {}: a continuous dump has no stride; 0 is allowed",
           p.stride);
  checkReserved("packed->reserved", p.reserved);
  const uint64_t all = uint64_t{p.width} * p.height;
  Dump d{&findPacking(p.packing, p.bits), p.width, p.height, 0, 0, 0, 1, 0};
  if (p.continuous) d.samples = all, d.rows = 1;
  d.sampleBytes = p.packing == VISTREL_PACKING_BYTES ? 1 : 2;
  if (all > kMostBytes / d.sampleBytes) refuseSize(p);
  d.unpacked = static_cast<size_t>(all * d.sampleBytes);
  // Eight samples have storedBits bytes. At most two bytes a sample, so it fits.
  const uint64_t stored = d.packing->storedBits;
  d.rowBytes = static_cast<size_t>(d.samples / 8 * stored + (d.samples % 8 * stored + 7) / 8);
  d.stride = p.stride ? p.stride : d.rowBytes;
  if (d.stride < d.rowBytes)
    refuse(VISTREL_BAD_STRIDE, "stride {}: a row of {} samples has {} bytes", p.stride, p.width,
           d.rowBytes);
  if (d.stride > kMostBytes / d.rows) refuseSize(p);
  d.bytes = static_cast<size_t>(d.stride * (d.rows - 1) + d.rowBytes);
  return d;
}

void unpack(const vistrel_packed* packed, void* samples, size_t size) {
  const Dump d = measure(packed);
  if (!packed->bytes) refuse(VISTREL_NULL_POINTER, "packed->bytes is null");
  if (!samples) refuse(VISTREL_NULL_POINTER, "samples is null");
  if (packed->size < d.bytes)
    refuse(VISTREL_SHORT_BUFFER, "packed->size {}: {} rows of {} bytes, stride {}, take {} bytes",
           packed->size, d.rows, d.rowBytes, d.stride, d.bytes);
  if (size < d.unpacked)
    refuse(VISTREL_SHORT_BUFFER, "size {}: {}x{} samples take {} bytes", size, packed->width,
           packed->height, d.unpacked);
  if (overlap(packed->bytes, d.bytes, samples, d.unpacked))
    refuse(VISTREL_OVERLAP, "samples: they overlap the packed bytes");
  const auto* from = static_cast<const Byte*>(packed->bytes);
  auto* to = static_cast<Byte*>(samples);
  const size_t rowUnpacked = static_cast<size_t>(d.samples) * d.sampleBytes;
  for (uint64_t row = 0; row < d.rows; ++row)
    d.packing->unpackRow(from + row * d.stride, d.samples, to + row * rowUnpacked);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_get_packed_layout(const vistrel_packed* packed, vistrel_packed_layout* layout,
                                  vistrel_error* error) {
  return guarded(error, [&] {
    if (!layout) refuse(VISTREL_NULL_POINTER, "layout is null");
    const Dump d = measure(packed);
    *layout = {d.rowBytes, d.bytes, static_cast<uint32_t>(d.sampleBytes), d.unpacked};
  });
}

int32_t vistrel_unpack(const vistrel_packed* packed, void* samples, size_t size,
                       vistrel_error* error) {
  return guarded(error, [&] { unpack(packed, samples, size); });
}
