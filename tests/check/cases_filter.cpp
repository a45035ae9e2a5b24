// The 3x3 filters, in place over finished images.
#include <cstring>

#include "tests/check/conversion.h"
#include "tests/check/fill.h"
#include "tests/check/groups.h"
#include "tests/check/sandbox.h"
#include "tests/reference/filter.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

// `a` selects the filter. Gray formats accept the first two in place of a pointer.
enum Filter : uint32_t { kBox, kFiveTaps, kRecord };

bool is16Bit(uint32_t format) { return format == IMG_FMT_MONO16 || format == IMG_FMT_GRAY16; }
bool is8Bit(uint32_t format) { return format == IMG_FMT_MONO8 || format == IMG_FMT_GRAY8; }

Raster rasterOf(const Call& call) {
  if (is16Bit(call.format)) return {2, 1, call.roiWidth};
  if (is8Bit(call.format)) return {1, 1, call.roiWidth};
  return {1, call.format == IMG_FMT_BGR24 ? 3u : 4u, call.roiWidth};
}

Layout layoutOf(const Call& call) {
  const Raster raster = rasterOf(call);
  Layout layout;
  layout.pixels = uint64_t{call.roiWidth} * call.roiHeight;
  layout.source = Shape::contiguous(call.a == kRecord ? sizeof(_FLT_3X3) : 0);
  layout.workBytes = static_cast<size_t>(raster.sampleBytes * raster.channels * layout.pixels);
  layout.destination = Shape::contiguous(layout.workBytes);
  layout.destinationRaster = layout.workRaster = raster;
  layout.stream = FrameSize{call.roiWidth, call.roiHeight};
  return layout;
}

int32_t weight(Random& random, uint32_t kind) {
  const int32_t small = static_cast<int32_t>(random.below(19)) - 9;
  switch (kind) {
    case 0: return random.oneIn(3) ? 1 : 0;
    case 1: return small * 100000;
    case 2: return static_cast<int32_t>(random.word());  // sums wrap
    default: return small;
  }
}

// Sums that wrap get no divisor of -1: the lowest one has no negative.
void fillRecordAndImage(const Call& call, const Layout& layout, const Memory& memory) {
  fillWithFrame(memory.destination, call, layout.destinationRaster.sampleBytes, call.srcBits);
  if (call.a != kRecord) return;
  Random random(call.seed + 7);
  const uint32_t kind = random.below(5);
  _FLT_3X3 record;
  for (int32_t& w : record.anWeights) w = weight(random, kind);
  record.nDivisor = static_cast<int32_t>(random.pick({1, 1, 2, 3, 9, 16, 1000, 0x7FFFFFFF}));
  if (random.oneIn(4)) record.nDivisor = kind == 2 ? -2 : -record.nDivisor;
  std::memcpy(memory.source.begin, &record, sizeof record);
}

// Below these sizes the counts of a filter wrap.
void settleSize(Call& call) {
  if (call.a == kFiveTaps && call.roiWidth == 1) call.roiWidth = 2;
  if (call.a == kFiveTaps && call.roiHeight == 1) call.roiHeight = 2;
  if (call.a == kBox && is16Bit(call.format) && call.roiWidth == 1) call.roiWidth = 2;
}

Call drawOne(Draw& draw) {
  Call call;
  draw.size(call, false);
  call.binning = 0;
  draw.memory(call, true);
  call.format = draw.oddly(10) ? draw.pick({7, 8, 77, 0xFFFFFFFF}) : draw.below(7);
  call.srcBits = is16Bit(call.format) ? draw.pick({10, 10, 12, 16}) : 8;
  const bool gray = is16Bit(call.format) || is8Bit(call.format);
  call.a = gray ? draw.below(3) : uint32_t{kRecord};
  settleSize(call);
  return call;
}

template <class Function>
Subject::Run filtering(Function function) {
  return [function](const Call& c, const Memory& m) -> uint64_t {
    const auto* const record = c.a == kRecord ? m.source.as<const _FLT_3X3>()
                                              : reinterpret_cast<const _FLT_3X3*>(uintptr_t{c.a});
    return function(idOf(c), record, c.format, c.roiWidth, c.roiHeight, m.destination.as());
  };
}

}  // namespace

void addFilter(Catalogue& all) {
  all.add("filter",
          {"ImgFilter",
           layoutOf,
           {filtering(ImgFilter), filtering(reference::ImgFilter)},
           fillRecordAndImage},
          drawOne);
}

}  // namespace vistrel::core::check
