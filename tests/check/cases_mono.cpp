// The monochrome formats, through the public entries.
#include "tests/check/conversion.h"
#include "tests/check/groups.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

Layout layoutOf(const Call& call, bool wide) {
  Layout layout = conversionLayout(call, wide);
  const size_t s = sampleBytes(wide);
  const size_t origin = call.factor() * (size_t{call.roiY} * call.imgWidth + call.roiX);
  if (call.binning <= 3 && call.roiWidth > 0 && call.roiHeight > 0)
    layout.source = {s * origin, call.fullHeight(), s * call.fullWidth(), s * call.imgWidth};
  return layout;
}

Call drawOne(Draw& draw, bool wide, uint32_t format) {
  Call call;
  draw.size(call);
  drawColour(draw, call, wide);
  drawRegion(draw, call, wide);
  call.format = format;
  if (format == IMG_FMT_MONO16) call.dstBits = draw.sampleBits(call.srcBits);
  call.algorithm = draw.word();
  call.skip = draw.below(2);
  call.unknown = draw.oneIn(8);
  return call;
}

void addOne(Catalogue& all, const char* name, bool wide, uint32_t format) {
  all.add("mono",
          {name, [=](const Call& call) { return layoutOf(call, wide); }, conversions(wide), {}},
          [=](Draw& draw) { return drawOne(draw, wide, format); });
}

}  // namespace

void addMono(Catalogue& all) {
  addOne(all, "mono-8to8", false, IMG_FMT_MONO8);
  addOne(all, "mono-16to8", true, IMG_FMT_MONO8);
  addOne(all, "mono-16to16", true, IMG_FMT_MONO16);
}

}  // namespace vistrel::core::check
