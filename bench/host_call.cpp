#include "bench/host_call.h"

#include <cmath>
#include <stdexcept>

namespace vistrel::core::bench {

namespace {

// Throws the text of a rejection.
void expectDone(int32_t status, const vistrel_error& error) {
  if (status != VISTREL_OK) throw std::runtime_error(error.text);
}

std::vector<uint16_t> toneTable(unsigned significantBits) {
  std::vector<uint16_t> table(size_t{1} << significantBits);
  const auto entries = static_cast<double>(table.size());
  for (size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<uint16_t>(
        std::lround(255 * toneCurve((static_cast<double>(i) + 0.5) / entries)));
  return table;
}

vistrel_frame frameOf(const Conversion& c, const Frame& source) {
  vistrel_frame frame{};
  frame.samples =
      c.depth == 8 ? static_cast<const void*>(source.samples8.get()) : source.samples16.get();
  frame.width = source.size.width;
  frame.height = source.size.height;
  frame.bytes_per_sample = c.depth / 8;
  frame.bits = c.depth == 8 ? 8 : c.significantBits;
  frame.size = source.size.pixels() * frame.bytes_per_sample;
  frame.phase = c.format == VISTREL_MONO8 ? VISTREL_MONO : VISTREL_RGGB;
  return frame;
}

}  // namespace

double toneCurve(double light) { return std::pow(light, 1 / 2.2); }

HostCall::HostCall(const Conversion& c, const Frame& source, const Change& change)
    : frame(frameOf(c, source)) {
  vistrel_error error{};
  expectDone(vistrel_stream_acquire(VISTREL_NO_WAIT, &stream_, &error), error);
  vistrel_default_conversion(&frame, &conversion);
  conversion.format = c.format;
  conversion.algorithm = c.algorithmCode;
  conversion.threshold = c.threshold;
  conversion.binning = c.factor;
  conversion.reduction = c.reduction;
  conversion.excess = VISTREL_MASK;
  if (c.reduction == VISTREL_TABLE) {
    table_ = toneTable(c.significantBits);
    conversion.table = table_.data();
    conversion.table_entries = static_cast<uint32_t>(table_.size());
  }
  if (change) change(*this);
  expectDone(vistrel_get_layout(&frame, &conversion, &layout, &error), error);
  const size_t bytes = layout.bytes + layout.height * padding;
  memory = allocate<uint8_t>(bytes);
  image.pixels = memory.get();
  image.size = bytes;
  if (padding > 0) image.stride = static_cast<ptrdiff_t>(layout.row_bytes + padding);
}

HostCall::~HostCall() { vistrel_stream_release(stream_, nullptr); }

void HostCall::run() {
  vistrel_error error{};
  expectDone(vistrel_stream_convert(stream_, &frame, &conversion, &image, &error), error);
}

}  // namespace vistrel::core::bench
