// Images that need no demosaicing, and calls that the public entries reject.
#include "tests/check/conversion.h"
#include "tests/check/groups.h"
#include "vistrel/vistrel.h"

namespace vistrel::core::check {
namespace {

Call drawFinished(Draw& draw, bool wide) {
  Call call;
  draw.size(call);
  drawColour(draw, call, wide);
  call.bayer = draw.below(4);
  call.algorithm = draw.word();
  call.imgWidth = draw.below(2000);
  call.imgHeight = draw.below(2000);
  call.roiX = draw.below(100);
  call.roiY = draw.below(100);
  call.skip = draw.oneIn(2) ? 1 : draw.word() | 1;
  return call;
}

Layout finishedLayout(const Call& call, bool wide) {
  Layout layout = conversionLayout(call, wide);
  layout.source = imageShape(call, wide, false);
  return layout;
}

// An unknown algorithm, or a 16-bit format for 8-bit samples: neither frame nor buffers are read.
Call drawRejected(Draw& draw, bool wide) {
  Call call = drawFinished(draw, wide);
  call.algorithm = (call.algorithm & ~uint32_t{0xFF}) | (9 + draw.below(247));
  call.skip = 0;
  if (!wide && draw.oneIn(2)) {
    call.format = draw.pick({IMG_FMT_MONO16, IMG_FMT_GRAY16});
    call.algorithm = draw.word();
    call.skip = draw.below(2);
  }
  if (call.format <= IMG_FMT_MONO16 && wide) call.format = IMG_FMT_BGR24;
  return call;
}

void addDepth(Catalogue& all, const char* depth, bool wide) {
  all.add("skip",
          {std::string("skip-") + depth,
           [=](const Call& call) { return finishedLayout(call, wide); },
           conversions(wide),
           {}},
          [=](Draw& draw) {
            Call call = drawFinished(draw, wide);
            if (call.format == IMG_FMT_MONO16) call.format = 8;
            return call;
          });
  all.add("skip",
          {std::string("rejected-") + depth,
           [=](const Call& call) { return conversionLayout(call, wide); },
           conversions(wide),
           {}},
          [=](Draw& draw) { return drawRejected(draw, wide); });
}

}  // namespace

void addSkip(Catalogue& all) {
  addDepth(all, "8", false);
  addDepth(all, "16", true);
}

}  // namespace vistrel::core::check
