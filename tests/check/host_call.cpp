#include "tests/check/host_call.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "tests/check/fill.h"
#include "tests/check/pattern.h"
#include "tests/check/random.h"
#include "tests/reference/host.h"

namespace vistrel::core::check {
namespace {

vistrel_frame frameOf(const Call& c) {
  vistrel_frame f{};
  f.width = c.imgWidth, f.height = c.imgHeight;
  f.bytes_per_sample = c.sampleBytes, f.bits = c.srcBits;
  f.phase = c.bayer;
  f.alignment = c.highBits;
  f.packing = c.packing;
  return f;
}

vistrel_conversion conversionOf(const Call& c) {
  vistrel_conversion v{};
  v.format = c.format, v.algorithm = c.algorithm, v.threshold = c.threshold, v.gray = c.gray;
  v.binning = c.factor();
  v.truncate_to = c.truncateTo;
  v.reduction = c.lutMode;
  v.excess = c.excess;
  v.edges = c.edges;
  v.region = {c.roiX, c.roiY, c.roiWidth, c.roiHeight};
  Random random(c.seed + 11);
  for (uint32_t& black : v.black) black = random.below(c.black + 1);
  v.white_balance = c.balance;
  for (uint32_t& gain : v.gains) gain = 1 + random.below(random.oneIn(4) ? 65536 : 3 * 4096);
  v.destination = c.later;
  v.white = c.white;
  v.bin_mode = c.means;
  v.orientation = c.orientation;
  return v;
}

// A few hot pixels, some of them next to each other.
std::vector<vistrel_point> hotPixels(Random& random, const vistrel_frame& f) {
  std::vector<vistrel_point> pixels;
  for (uint32_t y = random.below(4); y < f.height; y += 1 + random.below(8))
    for (uint32_t x = random.below(6); x < f.width; x += 1 + random.below(random.oneIn(3) ? 3 : 20))
      pixels.push_back({x, y});
  return pixels;
}

void drawFinish(Random& random, uint32_t what, vistrel_finish& finish,
                std::vector<uint16_t>& transfer) {
  finish.highlights = what & kNeutral ? VISTREL_HIGHLIGHTS_NEUTRAL : VISTREL_HIGHLIGHTS_CLIP;
  finish.exposure =
      random.oneIn(3) ? 1 + random.below(VISTREL_EXPOSURE_MAX) : 1 + random.below(9000);
  for (int32_t& m : finish.matrix)
    m = what & kMatrix ? static_cast<int32_t>(random.below(21845)) - 10922 : 0;
  if (!(what & kTransfer)) return;
  transfer.resize(random.oneIn(3) ? 65536 : 2 + random.below(random.oneIn(2) ? 5 : 65000));
  for (uint16_t& point : transfer) point = static_cast<uint16_t>(random.below(65536));
  finish.transfer = transfer.data();
  finish.transfer_points = static_cast<uint32_t>(transfer.size());
}

uint32_t tableEntries(const Call& c) {
  const uint32_t all = 1u << reference::hostBits(frameOf(c), conversionOf(c));
  return c.lutMode != VISTREL_TABLE ? 0 : c.seed & 1 ? all : 1024;
}

size_t pitchOf(const Call& c) {
  if (c.place & kGuardPageRows) return GuardPageRows::kPitch;
  return reference::hostRowBytes(frameOf(c)) + c.sourceGap;
}

Shape imageShape(const Call& call, const std::array<uint32_t, 2>& size) {
  const size_t width = size[0], height = size[1];
  const size_t row = reference::hostImageRowBytes(call.format, width), pitch = row + call.gap;
  if (!hasPlanes(call.format)) return {0, height, row, pitch};
  const auto last = reference::hostPlanes(call.format, width, height, pitch).back();
  return Shape::contiguous(last.offset + (last.rows - 1) * last.stride + last.rowBytes);
}

// Samples as the frame stores them, from samples in the low bits of this machine's words.
void storeSamples(const Call& call, const Memory& memory) {
  const uint32_t shift = call.highBits ? 8 * call.sampleBytes - call.srcBits : 0;
  for (size_t y = 0; y < memory.source.shape.rows; ++y)
    for (size_t at = 0; at < memory.source.shape.rowBytes; at += 2) {
      uint8_t* const bytes = memory.source.row(y) + at;
      uint16_t sample;
      std::memcpy(&sample, bytes, 2);
      sample = static_cast<uint16_t>(sample << shift);
      std::memcpy(bytes, &sample, 2);
      if (call.packing == VISTREL_PACKING_BIG) std::swap(bytes[0], bytes[1]);
    }
}

// One sample with excess bits, somewhere.
void strewExcess(const Call& call, const Memory& memory) {
  Random random(call.seed + 13);
  const Shape& shape = memory.source.shape;
  uint8_t* const row = memory.source.row(random.below(static_cast<uint32_t>(shape.rows)));
  const size_t sample = random.below(static_cast<uint32_t>(shape.rowBytes / 2));
  const bool lowByte = (call.highBits != 0) != (call.packing == VISTREL_PACKING_BIG);
  row[2 * sample + (lowByte ? 0 : 1)] |= call.highBits ? 1 : 0x80;
}

constexpr HostDefect kDefects[] = {
    {VISTREL_SHORT_BUFFER, [](HostCall& h) { --h.image.size; }},
    {VISTREL_NULL_POINTER, [](HostCall& h) { h.image.pixels = nullptr; }},
    {VISTREL_BAD_PHASE, [](HostCall& h) { h.frame.phase = 5; }},
    {VISTREL_BAD_RESERVED, [](HostCall& h) { h.image.reserved[9] = 1; }},
    {VISTREL_BAD_RESERVED, [](HostCall& h) { h.frame.reserved[2] = 1; }},
    {VISTREL_BAD_RESERVED, [](HostCall& h) { h.conversion.reserved[6] = 1; }},
    {VISTREL_BAD_BINNING, [](HostCall& h) { h.conversion.binning = 0; }},
    {VISTREL_BAD_REGION,
     [](HostCall& h) {
       h.conversion.region = {1, 0, h.frame.width, 1};
     }},
    {VISTREL_BAD_EXCESS, [](HostCall& h) { h.conversion.excess = 2; }},
    {VISTREL_BAD_DESTINATION, [](HostCall& h) { h.conversion.destination = 2; }},
    {VISTREL_SHORT_BUFFER, [](HostCall& h) { --h.frame.size; }},
    {VISTREL_OVERLAP, [](HostCall& h) { h.image.pixels = const_cast<void*>(h.frame.samples); }}};
static_assert(std::size(kDefects) == kHostDefects);

}  // namespace

const HostDefect& hostDefect(uint32_t defect) { return kDefects[defect - 1]; }

bool hasPlanes(uint32_t format) { return format >= VISTREL_RGB24_PLANAR; }

uint32_t imageHeight(const Call& call) {
  return reference::hostImageSize(frameOf(call), conversionOf(call))[1];
}

HostLook::HostLook(const Call& call, const vistrel_frame& f) {
  Random random(call.seed + 19);
  const size_t gap = random.below(3), pixels = (f.width + gap) * size_t{f.height};
  if (call.calibrated & kDark)
    for (size_t i = 0; i < pixels; ++i)
      dark.push_back(static_cast<uint16_t>(random.below(1u << (f.bits - random.below(4)))));
  if (call.calibrated & kFlat)
    for (size_t i = 0; i < pixels; ++i)
      flat.push_back(static_cast<uint16_t>(random.below(random.oneIn(9) ? 65536 : 9000)));
  if (call.calibrated & kHotPixels) hot = hotPixels(random, f);
  const size_t stride = 2 * (f.width + gap);
  if (!dark.empty())
    calibration.dark = dark.data(), calibration.dark_size = 2 * pixels,
    calibration.dark_stride = stride;
  if (!flat.empty())
    calibration.flat = flat.data(), calibration.flat_size = 2 * pixels,
    calibration.flat_stride = stride;
  calibration.hot = hot.data();
  calibration.hot_count = hot.size();
  drawFinish(random, call.finished, finish, transfer);
}

HostCall::HostCall(const Call& call, const Memory& m)
    : frame(frameOf(call)), conversion(conversionOf(call)), look(call, frame) {
  if (call.calibrated) conversion.calibration = &look.calibration;
  if (call.finished) conversion.finish = &look.finish;
  frame.samples = m.source.begin;
  frame.size = m.source.shape.span();
  const bool hasGap = m.source.shape.pitch > m.source.shape.rowBytes;
  frame.stride = hasGap || call.seed & 2 ? m.source.shape.pitch : 0;
  conversion.table = m.table.as<uint16_t>();
  conversion.table_entries = tableEntries(call);
  const Shape& shape = m.destination.shape;
  const uint32_t width = reference::hostImageSize(frame, conversion)[0];
  const size_t pitch = reference::hostImageRowBytes(call.format, width) + call.gap;
  const auto stride = static_cast<ptrdiff_t>(pitch);
  image.pixels = m.destination.begin + (call.upward ? shape.span() - shape.rowBytes : 0);
  image.size = shape.span();
  image.stride = call.upward ? -stride : call.gap || call.seed & 4 ? stride : 0;
  if (call.defect) hostDefect(call.defect).make(*this);
}

Layout hostLayout(const Call& call) {
  const vistrel_frame frame = frameOf(call);
  const auto size = reference::hostImageSize(frame, conversionOf(call));
  Layout layout;
  layout.source = {0, frame.height, reference::hostRowBytes(frame), pitchOf(call)};
  layout.sampleBytes = call.packing > VISTREL_PACKING_BIG ? 1 : call.sampleBytes;
  layout.sourceBits = call.packing > VISTREL_PACKING_BIG ? 8 : call.srcBits;
  layout.destination = imageShape(call, size);
  if (!hasPlanes(call.format))
    layout.destinationRaster = {reference::hostSampleBytes(call.format),
                                reference::hostChannels(call.format), size[0]};
  layout.tableEntries = tableEntries(call);
  layout.pixels = uint64_t{frame.width} * frame.height;
  return layout;
}

void fillHostFrame(const Call& call, const Layout& layout, const Memory& memory) {
  fillWithFrame(memory.source, call, layout.sampleBytes, layout.sourceBits);
  if (layout.sampleBytes == 2) storeSamples(call, memory);
  if (call.stray) strewExcess(call, memory);
  uint16_t* const table = memory.table.as<uint16_t>();
  for (size_t i = 0; i < layout.tableEntries; ++i) table[i] &= 255;
}

}  // namespace vistrel::core::check
