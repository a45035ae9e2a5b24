#include "gstreamer/row_pairs.h"

#include <algorithm>

namespace vistrel::gstreamer {
namespace {

// The packing of a frame whose samples may be in the machine's byte order.
uint32_t packingOf(const vistrel_frame& frame) {
  if (frame.packing) return frame.packing;
  return frame.bytes_per_sample == 1 ? VISTREL_PACKING_BYTES : VISTREL_PACKING_LITTLE;
}

// Rows of a frame, as if they were all of it.
vistrel_packed rowsAt(const vistrel_frame& frame, uint32_t y, uint32_t rows) {
  vistrel_packed part{};
  const size_t offset = std::min(y * frame.stride, frame.size);
  part.bytes = static_cast<const uint8_t*>(frame.samples) + offset;
  part.size = frame.size - offset;
  part.stride = frame.stride;
  part.width = frame.width;
  part.height = rows;
  part.packing = packingOf(frame);
  part.bits = frame.bits;
  return part;
}

}  // namespace

vistrel_frame rowPairsOf(const vistrel_frame& frame, const vistrel_region& region, size_t samples,
                         Bytes& memory) {
  const uint32_t rows = std::min(frame.height, 2u), last = frame.height / rows - 1;
  const uint32_t top = std::min((region.y + rows - 1) / rows, last);
  const uint32_t end = std::max((region.y + region.height) / rows, top + 1);
  const size_t rowSamples = size_t{rows} * frame.width;
  const auto count = static_cast<uint32_t>(std::clamp<size_t>(samples / rowSamples, 1, end - top));
  vistrel_frame part = frame;
  part.packing = 0;
  part.stride = 0;
  part.height = rows * count;
  const size_t bytes = rowSamples * frame.bytes_per_sample;
  memory.resize(bytes * count);
  part.samples = memory.data();
  part.size = memory.size();
  for (uint32_t i = 0; i < count; ++i) {
    const auto pair =
        static_cast<uint32_t>(top + (uint64_t{2} * i + 1) * (end - top) / (2 * count));
    unpackInto(rowsAt(frame, rows * pair, rows), {memory.data() + i * bytes, bytes});
  }
  return part;
}

}  // namespace vistrel::gstreamer
