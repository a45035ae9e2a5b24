#include "tests/check/mosaic_layout.h"

#include <algorithm>

#include "tests/check/conversion.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

constexpr uint32_t kNearestSmallest = 2, kHomogeneitySmallest = 5;

bool isCompact(MemoryLayout memoryLayout) {
  return memoryLayout == MemoryLayout::nearest || memoryLayout == MemoryLayout::homogeneity;
}
uint32_t smallest(MemoryLayout memoryLayout) {
  return memoryLayout == MemoryLayout::nearest ? kNearestSmallest : kHomogeneitySmallest;
}

// At the public entries.
bool isRejected(const Call& call, bool wide) {
  return !wide && (call.format == IMG_FMT_MONO16 || call.format == IMG_FMT_GRAY16);
}

Shape regionRows(const Call& call, size_t s) {
  if (call.roiWidth == 0 || call.roiHeight == 0) return {};
  return {s * call.originX(), call.fullHeight(), s * call.fullWidth(), s * call.imgWidth};
}

// The origin shifts the rows in the work buffer, not those of the source.
void setBlocks(Layout& layout, const Call& call) {
  const size_t s = layout.sampleBytes, width = call.fullWidth();
  const size_t rowsDown = call.factor() * call.roiY;
  const size_t lastRow = rowsDown + (call.fullHeight() + 1) / 2 * 2 + 3;
  const size_t columns = (width + 7) / 8 * 8 + 2;
  layout.source = regionRows(call, s);
  layout.workBytes = s * 3 * (lastRow * (width + 4) + columns);
  layout.stream = FrameSize{call.fullWidth(), call.fullHeight() + static_cast<uint32_t>(rowsDown)};
  layout.workRaster = {s, 3, width + 4, 2, 4};
}

// The number of the region's rows that a primitive converts: it skips the origin's rows of the
// source, but the frame's height does not include them.
size_t convertedRows(const Call& call, MemoryLayout memoryLayout) {
  const uint32_t y0 = call.factor() * call.roiY;
  const bool rejected =
      call.imgWidth < smallest(memoryLayout) || call.fullHeight() < smallest(memoryLayout);
  return rejected || call.fullWidth() == 0 || y0 >= call.fullHeight() ? 0 : call.fullHeight() - y0;
}

Shape compactSource(const Call& call, bool wide, MemoryLayout memoryLayout) {
  const size_t width = call.imgWidth, height = call.fullHeight();
  if (wide) return Shape::contiguous(2 * height * width);
  if (convertedRows(call, memoryLayout) == 0) return {};
  if (memoryLayout == MemoryLayout::homogeneity) return Shape::contiguous(height * width);
  const size_t x0 = call.originX(), y0 = call.factor() * call.roiY;
  const size_t left = x0 - std::min<size_t>(x0, 2), top = y0 - std::min<size_t>(y0, 2);
  const size_t right = std::min(width, x0 + call.fullWidth() + 2);
  return {top * width + left, height - top, right - left, width};
}

void setCompact(Layout& layout, const Call& call, bool wide, MemoryLayout memoryLayout) {
  const size_t s = layout.sampleBytes;
  const size_t row = 3 * s * call.fullWidth(), image = row * call.fullHeight();
  const size_t frame = wide ? 3 * s * call.imgWidth * call.fullHeight() : image;
  layout.source = compactSource(call, wide, memoryLayout);
  layout.workBytes = std::max(frame, imageShape(call, wide, false).span());
  layout.stream = FrameSize{wide ? call.imgWidth : call.fullWidth(), call.fullHeight()};
  layout.workRaster = {s, 3, call.fullWidth()};
  if (wide) layout.meaningless = {row * convertedRows(call, memoryLayout), frame};
}

// 16-bit samples go through a buffer as large as the frame. Its bytes after the image are
// unspecified, and must not reach the result.
void settle16Bit(Call& call, MemoryLayout memoryLayout) {
  call.roiY = 0;
  const bool sheared = isGray(call.format) && call.binning == 0;
  if (sheared) {
    call.roiX = 0;
    call.imgWidth = call.fullWidth();
  }
  if (convertedRows(call, memoryLayout) == 0 && hasOutput(call, true)) call.format = 8;
}

}  // namespace

void setGuarded(Layout& layout, const Call& call) {
  const size_t s = layout.sampleBytes, width = call.fullWidth(), height = call.fullHeight();
  layout.source = regionRows(call, s);
  layout.workBytes = s * (height + 4) * (3 * width + 12);
  layout.stream = FrameSize{call.fullWidth(), call.fullHeight()};
  layout.workRaster = {s, 3, width + 4, 2, 2};
}

Layout mosaicLayout(const Call& call, bool wide, MemoryLayout memoryLayout) {
  Layout layout = conversionLayout(call, wide);
  if (isRejected(call, wide) && memoryLayout != MemoryLayout::homogeneity) return layout;
  if (memoryLayout == MemoryLayout::guarded)
    setGuarded(layout, call);
  else if (memoryLayout == MemoryLayout::blocks)
    setBlocks(layout, call);
  else
    setCompact(layout, call, wide, memoryLayout);
  return layout;
}

Call drawMosaic(Draw& draw, bool wide, MemoryLayout memoryLayout) {
  Call call;
  draw.size(call, memoryLayout != MemoryLayout::blocks);
  drawColour(draw, call, wide);
  drawRegion(draw, call, wide, !(wide && isCompact(memoryLayout)));
  if (wide && call.format == IMG_FMT_MONO16) call.format = 8;
  if (wide && isCompact(memoryLayout)) settle16Bit(call, memoryLayout);
  return call;
}

}  // namespace vistrel::core::check
