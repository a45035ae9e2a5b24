// Unpacks packed frames.
#include <limits>

#include "host/overlap.h"
#include "host/packings.h"
#include "host/status.h"

namespace vistrel::host {
namespace {

using Byte = unsigned char;

constexpr uint64_t kMaxBytes = std::numeric_limits<size_t>::max() / 2;

struct PackedFrame {
  core::Packing packing;
  uint64_t samples, rows;  // samples of a row; rows without gaps count as one
  size_t rowBytes, stride, bytes;
  size_t sampleBytes, unpackedBytes;  // of one sample, of all samples
};

// Checks each field by itself.
void checkPacked(const vistrel_packed& p) {
  if (!p.width) reject(VISTREL_BAD_SIZE, "packed.width", 0, "a packed frame has at least 1 column");
  if (!p.height) reject(VISTREL_BAD_SIZE, "packed.height", 0, "a packed frame has at least 1 row");
  if (p.continuous > 1)
    reject(VISTREL_BAD_CONTINUOUS, "packed.continuous", p.continuous, "0 and 1 are allowed");
  if (p.continuous && p.stride)
    reject(VISTREL_BAD_STRIDE, "packed.stride", p.stride,
           "continuous rows have no stride; only 0 is allowed");
  checkReserved("packed.reserved", p.reserved);
}

[[noreturn]] void rejectSize(const vistrel_packed& p) {
  reject(VISTREL_TOO_LARGE, "packed", textOf("{}x{}", p.width, p.height),
         "no memory can hold its samples");
}

PackedFrame measure(const vistrel_packed* packed) {
  checkPointer(packed, "packed");
  const vistrel_packed& p = *packed;
  checkPacked(p);
  const uint64_t all = uint64_t{p.width} * p.height;
  PackedFrame f{};
  f.packing = findPacking(p.packing, p.bits, "packed", "BYTES (0)");
  f.samples = p.continuous ? all : p.width;
  f.rows = p.continuous ? 1 : p.height;
  f.sampleBytes = core::sampleBytes(f.packing);
  if (all > kMaxBytes / f.sampleBytes) rejectSize(p);
  f.unpackedBytes = static_cast<size_t>(all * f.sampleBytes);
  f.rowBytes = static_cast<size_t>(core::packedBytes(f.packing, f.samples));
  f.stride = p.stride ? p.stride : f.rowBytes;
  if (f.stride < f.rowBytes)
    reject(VISTREL_BAD_STRIDE, "packed.stride", p.stride, "a row of {} has {}",
           countOf(p.width, "sample"), countOf(f.rowBytes, "byte"));
  if (f.rows > 1 && f.stride > kMaxBytes / f.rows)
    reject(VISTREL_TOO_LARGE, "packed.stride", f.stride, "no memory can hold {} such rows", f.rows);
  f.bytes = static_cast<size_t>(f.stride * (f.rows - 1) + f.rowBytes);
  return f;
}

void checkMemory(const PackedFrame& f, const vistrel_packed& p, const void* samples, size_t size) {
  checkPointer(p.bytes, "packed.bytes");
  checkPointer(samples, "samples");
  if (p.size < f.bytes)
    reject(VISTREL_SHORT_BUFFER, "packed.size", p.size, "{}",
           p.continuous ? textOf("{}x{} samples take {} bytes", p.width, p.height, f.bytes)
                        : rowsIn(f.bytes, f.rows, f.stride));
  if (size < f.unpackedBytes)
    reject(VISTREL_SHORT_BUFFER, "size", size, "{}x{} samples take {} bytes", p.width, p.height,
           f.unpackedBytes);
  const auto from = reinterpret_cast<uintptr_t>(p.bytes), to = reinterpret_cast<uintptr_t>(samples);
  if (overlap({from, f.stride, f.rowBytes, f.rows}, {to, f.unpackedBytes, f.unpackedBytes, 1}))
    reject(VISTREL_OVERLAP, "samples", "", "they overlap the packed bytes");
}

void unpack(const vistrel_packed* packed, void* samples, size_t size) {
  const PackedFrame f = measure(packed);
  checkMemory(f, *packed, samples, size);
  const auto* from = static_cast<const Byte*>(packed->bytes);
  auto* to = static_cast<Byte*>(samples);
  const auto rowSamples = static_cast<size_t>(f.samples);
  const core::UnpackRow unpackRow = core::unpackRowOf(f.packing);
  for (uint64_t row = 0; row < f.rows; ++row, to += rowSamples * f.sampleBytes)
    unpackRow(from + row * f.stride, rowSamples, to);
}

}  // namespace
}  // namespace vistrel::host

using namespace vistrel::host;

int32_t vistrel_get_packed_layout(const vistrel_packed* packed, vistrel_packed_layout* layout,
                                  vistrel_error* error) {
  return toStatus(error, [&] {
    checkPointer(layout, "layout");
    const PackedFrame f = measure(packed);
    *layout = {f.rowBytes, f.bytes, f.unpackedBytes, static_cast<uint32_t>(f.sampleBytes), {}};
  });
}

int32_t vistrel_unpack(const vistrel_packed* packed, void* samples, size_t size,
                       vistrel_error* error) {
  return toStatus(error, [&] { unpack(packed, samples, size); });
}
