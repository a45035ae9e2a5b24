#include <fmt/format.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <vector>

#include "bench/buffer.h"
#include "bench/task.h"
#include "vistrel/vistrel_host.h"

namespace vistrel::core::bench {

namespace {

struct Format {
  const char* name;
  Layout layout;
};

Format formatOf(uint32_t format) {
  switch (format) {
    case VISTREL_MONO8: return {"MONO8", kMono8};
    case VISTREL_MONO16: return {"MONO16", kMono16};
    case VISTREL_BGR24: return {"BGR24", kBgr24};
    case VISTREL_RGB24: return {"RGB24", kRgb24};
    case VISTREL_BGRA32: return {"BGRA32", kBgra32};
    case VISTREL_RGBA32: return {"RGBA32", kRgba32};
    case VISTREL_GRAY8: return {"GRAY8", kMono8};
    case VISTREL_BGR48: return {"BGR48", kBgr48};
    default: throw std::invalid_argument(fmt::format("no format {}", format));
  }
}

std::vector<uint16_t> toneTable(unsigned significantBits) {
  std::vector<uint16_t> table(size_t{1} << significantBits);
  const auto entries = static_cast<double>(table.size());
  for (size_t i = 0; i < table.size(); ++i)
    table[i] = static_cast<uint16_t>(
        std::lround(255 * toneCurve((static_cast<double>(i) + 0.5) / entries)));
  return table;
}

// Throws the text of a rejection.
void expectDone(int32_t status, const vistrel_error& error) {
  if (status != VISTREL_OK) throw std::runtime_error(error.text);
}

// All that a conversion needs, so that running it does nothing else.
struct HostCall {
  vistrel_stream* stream = nullptr;
  vistrel_frame frame{};
  vistrel_conversion conversion{};
  vistrel_layout layout{};
  vistrel_image image{};
  std::vector<uint16_t> table;
  Buffer<uint8_t> memory;
  vistrel_error error{};

  HostCall(const Conversion& c, const Frame& source) {
    expectDone(vistrel_stream_acquire(VISTREL_NO_WAIT, &stream, &error), error);
    frame.samples =
        c.depth == 8 ? static_cast<const void*>(source.samples8.get()) : source.samples16.get();
    frame.width = source.size.width;
    frame.height = source.size.height;
    frame.bytes_per_sample = c.depth / 8;
    frame.bits = c.depth == 8 ? 8 : c.significantBits;
    frame.size = size_t{frame.width} * frame.height * frame.bytes_per_sample;
    frame.phase = c.format == VISTREL_MONO8 ? VISTREL_MONO : VISTREL_RGGB;
    vistrel_default_conversion(&frame, &conversion);
    conversion.format = c.format;
    conversion.algorithm = c.algorithmCode;
    conversion.threshold = c.threshold;
    conversion.binning = c.factor;
    conversion.reduction = c.reduction;
    conversion.excess = VISTREL_MASK;
    if (c.reduction == VISTREL_TABLE) {
      table = toneTable(c.significantBits);
      conversion.table = table.data();
      conversion.table_entries = static_cast<uint32_t>(table.size());
    }
    expectDone(vistrel_get_layout(&frame, &conversion, &layout, &error), error);
    memory = allocate<uint8_t>(layout.bytes);
    image.pixels = memory.get();
    image.size = layout.bytes;
  }
  ~HostCall() { vistrel_stream_release(stream, nullptr); }
  HostCall(const HostCall&) = delete;
  HostCall& operator=(const HostCall&) = delete;

  void run() {
    expectDone(vistrel_stream_convert(stream, &frame, &conversion, &image, &error), error);
  }
};

}  // namespace

double toneCurve(double light) { return std::pow(light, 1 / 2.2); }

std::string Conversion::name() const {
  return fmt::format("{}{}/{}/{}x{}{}", algorithm, depth, formatOf(format).name, factor, factor,
                     reduction == VISTREL_TABLE ? "/table" : "");
}

Task makeOurs(const Conversion& c, const Frame& frame) {
  const auto call = std::make_shared<HostCall>(c, frame);
  const Picture picture{call->memory.get(), call->layout.width, call->layout.height,
                        formatOf(c.format).layout, call->layout.bits};
  return {[call] { call->run(); }, picture};
}

}  // namespace vistrel::core::bench
