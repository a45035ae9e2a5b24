#include "tests/check/conversion.h"

#include <algorithm>

#include "tests/check/sandbox.h"
#include "tests/reference/convert.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

struct PixelShape {
  size_t sampleBytes, channels;
};

// For unknown formats, the destination has the size of the largest pixel and must not change.
PixelShape pixelShape(uint32_t format) {
  switch (format) {
    case IMG_FMT_MONO8:
    case IMG_FMT_GRAY8: return {1, 1};
    case IMG_FMT_MONO16:
    case IMG_FMT_GRAY16: return {2, 1};
    case IMG_FMT_BGR24: return {1, 3};
    case IMG_FMT_ARGB32:
    case IMG_FMT_ARGB32_4: return {1, 4};
    default: return {2, 3};
  }
}

uint32_t drawFormat(Draw& draw) {
  if (draw.plain()) return IMG_FMT_BGR24;
  if (draw.oddly(24)) return draw.pick({1, 8, 9, 200, 0xFFFFFFFF});
  return draw.pick({2, 2, 3, 4, 5, 5, 6, 7});
}

}  // namespace

size_t sampleBytes(bool wide) { return wide ? 2 : 1; }

bool isGray(uint32_t format) { return format == IMG_FMT_GRAY8 || format == IMG_FMT_GRAY16; }

bool hasOutput(const Call& call, bool wide) {
  const bool branch = (call.format >= IMG_FMT_BGR24 && call.format <= IMG_FMT_GRAY8) ||
                      (wide && (call.format == IMG_FMT_GRAY16 || call.format == IMG_FMT_BGR48));
  return branch && call.binning <= 3 && call.roiWidth > 0 && call.roiHeight > 0;
}

void drawRegion(Draw& draw, Call& call, bool wide, bool guardPagesAllowed) {
  const uint32_t s = static_cast<uint32_t>(sampleBytes(wide));
  const uint32_t pitch = static_cast<uint32_t>(GuardPageRows::kPitch) / s;
  const bool fits =
      s * call.fullWidth() <= GuardPageRows::kPage && call.fullHeight() <= GuardPageRows::kRows;
  call.bayer = draw.oddly(40) ? draw.pick({4, 5, 6, 7, 0xFFFFFFFF}) : draw.below(4);
  call.roiX = draw.oddly(2) ? draw.below(9) : 0;
  call.roiY = draw.oddly(4) ? draw.below(5) : 0;
  const uint32_t rightEnd = call.factor() * (call.roiX + call.roiWidth);
  call.imgWidth = rightEnd + (draw.oddly(2) ? draw.below(20) : 0);
  call.imgHeight = call.factor() * (call.roiY + call.roiHeight) + draw.below(3);
  if (guardPagesAllowed && fits && rightEnd <= pitch && draw.oddly(4)) {
    call.place |= kGuardPageRows;
    call.imgWidth = pitch;
  }
}

void drawColour(Draw& draw, Call& call, bool wide) {
  call.format = drawFormat(draw);
  if (wide) {
    call.srcBits = draw.sourceBits();
    call.lutMode = draw.lutMode();
    const uint32_t bits = draw.sampleBits(call.srcBits);
    call.dstBits = isGray(call.format) ? bits : draw.oneIn(8) ? 32 : 3 * bits + draw.below(3);
  } else {
    call.srcBits = draw.below(20);
  }
  draw.memory(call, wide);
  if (call.lutMode == 10) call.place &= ~uint32_t{kNoTable};
}

Layout conversionLayout(const Call& call, bool wide) {
  const PixelShape pixel = pixelShape(call.format);
  Layout layout;
  layout.sampleBytes = sampleBytes(wide);
  layout.sourceBits = wide ? call.srcBits : 8;
  layout.destination =
      Shape::contiguous(pixel.sampleBytes * pixel.channels * call.roiWidth * call.roiHeight);
  layout.destinationRaster = {pixel.sampleBytes, pixel.channels, call.roiWidth};
  layout.tableEntries = wide ? kTableEntries16 : 0;
  layout.pixels = uint64_t{call.fullWidth()} * call.fullHeight();
  return layout;
}

Shape imageShape(const Call& call, bool wide, bool guarded) {
  if (!hasOutput(call, wide)) return {};
  const size_t s = sampleBytes(wide), row = call.fullWidth();
  const size_t stride = row + (guarded ? 4 : 0);
  size_t pitch = 3 * stride;
  if (isGray(call.format)) pitch = call.binning == 0 ? 3 * (size_t{call.roiWidth} + 4) : stride;
  Shape shape = {guarded ? s * (6 * row + 30) : 0, call.fullHeight(), s * 3 * row, s * pitch};
  if (shape.pitch < shape.rowBytes) shape = {shape.origin, 1, shape.span(), shape.span()};
  return shape;
}

Subject::Run running(Convert8* convert) {
  return [convert](const Call& c, const Memory& m) -> uint64_t {
    return convert(idOf(c), c.format, c.algorithm, c.bayer, c.binning, c.imgWidth, c.imgHeight,
                   c.roiX, c.roiY, c.roiWidth, c.roiHeight, m.source.as(), m.destination.as(),
                   c.srcBits, c.skip);
  };
}

Subject::Run running(Convert16* convert) {
  return [convert](const Call& c, const Memory& m) -> uint64_t {
    return convert(idOf(c), c.format, c.algorithm, c.bayer, c.binning, c.dstBits, c.lutMode,
                   c.imgWidth, c.imgHeight, c.roiX, c.roiY, c.roiWidth, c.roiHeight,
                   m.source.as<uint16_t>(), m.destination.as(), c.srcBits, c.skip);
  };
}

std::array<Subject::Run, 2> conversions(bool wide) {
  if (wide) return {running(ImgConvert16), running(reference::ImgConvert16)};
  return {running(ImgConvert8), running(reference::ImgConvert8)};
}

}  // namespace vistrel::core::check
