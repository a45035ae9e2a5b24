// The demosaic algorithms through the public entries, and the spreading of the mosaic.
#include "demosaic/work_buffer.h"
#include "frontend/vistrel.h"
#include "tests/check/conversion.h"
#include "tests/check/rooms.h"
#include "tests/reference/demosaic.h"

namespace vistrel::check {
namespace {

enum class Road { guarded };

struct Algorithm {
  const char* name;
  uint32_t code;
  Road road;
};

// One line an algorithm.
constexpr Algorithm kAlgorithms[] = {
    {"bilinear", DM_BILINEAR, Road::guarded},
};

bool refused(const Call& call, bool wide) {
  return !wide && (call.format == IMG_FMT_MONO16 || call.format == IMG_FMT_GRAY16);
}

void setGuarded(Layout& layout, const Call& call) {
  const size_t s = layout.sampleBytes, width = call.fullWidth(), height = call.fullHeight();
  if (width > 0 && height > 0)
    layout.source = {s * call.originX(), height, s * width, s * call.imgWidth};
  layout.workBytes = s * (height + 4) * (3 * width + 12);
  layout.stream = FrameSize{call.fullWidth(), call.fullHeight()};
  layout.work = {s, 3, width + 4, 2};
}

Layout layoutOf(const Call& call, bool wide) {
  Layout layout = conversionLayout(call, wide);
  if (!refused(call, wide)) setGuarded(layout, call);
  return layout;
}

Call drawOne(Draw& draw, bool wide, const Algorithm& algorithm) {
  Call call;
  draw.size(call);
  drawColour(draw, call, wide);
  drawRegion(draw, call, wide);
  if (wide && call.format == IMG_FMT_MONO16) call.format = 8;
  call.algorithm = (draw.word() & ~uint32_t{0xFF}) | algorithm.code;
  return call;
}

void addAlgorithm(Catalogue& all, const Algorithm& algorithm, bool wide) {
  all.add("demosaic",
          {std::string(algorithm.name) + (wide ? "-16" : "-8"),
           [=](const Call& call) { return layoutOf(call, wide); },
           conversions(wide),
           {}},
          [=](Draw& draw) { return drawOne(draw, wide, algorithm); });
}

template <class T>
using Prepare = void(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, const T*,
                     T*);

template <class T>
Subject::Run preparing(Prepare<T>* prepare) {
  return [prepare](const Call& c, const Memory& m) -> uint64_t {
    prepare(c.imgWidth, c.bayer, c.binning, c.roiX, c.roiY, c.roiWidth, c.roiHeight,
            m.source.as<T>(), m.work.as<T>());
    return 0;
  };
}

template <class T>
void addPrepare(Catalogue& all, const char* name) {
  const bool wide = sizeof(T) == 2;
  const auto layout = [=](const Call& call) {
    Layout l;
    l.sampleBytes = sizeof(T);
    l.sourceBits = wide ? call.srcBits : 8;
    l.pixels = uint64_t{call.fullWidth()} * call.fullHeight();
    setGuarded(l, call);
    return l;
  };
  all.add("demosaic",
          {name,
           layout,
           {preparing<T>(PrepareBGRBuffer), preparing<T>(reference::PrepareBGRBuffer)},
           {}},
          [=](Draw& draw) {
            Call call;
            draw.size(call);
            draw.memory(call, wide);
            drawRegion(draw, call, wide);
            call.srcBits = wide ? draw.sourceBits() : 0;
            call.place |= kWorkExact;
            return call;
          });
}

}  // namespace

void addDemosaic(Catalogue& all) {
  addPrepare<uint8_t>(all, "PrepareBGRBuffer-8");
  addPrepare<uint16_t>(all, "PrepareBGRBuffer-16");
  for (const Algorithm& algorithm : kAlgorithms)
    for (const bool wide : {false, true}) addAlgorithm(all, algorithm, wide);
}

}  // namespace vistrel::check
