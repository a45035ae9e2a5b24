// The colour filter array primitives, called directly.
#include <algorithm>

#include "tests/check/groups.h"
#include "tests/reference/cfa.h"
#include "vistrel/cfa.h"
#include "vistrel/image_functions.h"

namespace vistrel::core::check {
namespace {

// bayer is the grid; stride and `a` are the steps of source and destination in bytes; `b` says
// which pointer is null: 1 the source, 2 the destination. The rectangle may begin left of or above
// the frame if the function moves such a rectangle into the frame.
struct Primitive {
  int32_t smallest;  // side of a frame
  int32_t reach;     // samples read around the rectangle; 0: the whole frame
};
constexpr Primitive kNearest = {2, 2}, kHomogeneity = {5, 0};

int32_t asInt(uint32_t v) { return static_cast<int32_t>(v); }

CfaRect rectOf(const Call& call) {
  return {asInt(call.roiX), asInt(call.roiY), asInt(call.roiWidth), asInt(call.roiHeight)};
}

// The part of the rectangle inside the frame. Empty if the function returns an error.
CfaRect clipped(const Call& call, const Primitive& primitive) {
  const int32_t width = asInt(call.imgWidth), height = asInt(call.imgHeight);
  CfaRect r = rectOf(call);
  r.x = std::max(r.x, 0);
  r.y = std::max(r.y, 0);
  r.width = std::min(r.width, width - r.x);
  r.height = std::min(r.height, height - r.y);
  const bool rejected = std::min(width, height) < primitive.smallest || call.bayer > 3 || call.b;
  if (rejected || r.width < 1 || r.height < 1) return {};
  return r;
}

template <class T>
Layout layoutOf(const Call& call, const Primitive& primitive) {
  Layout layout;
  layout.sampleBytes = sizeof(T);
  layout.sourceBits = call.srcBits;
  const CfaRect r = clipped(call, primitive);
  if (r.width == 0) return layout;
  const int32_t reach = primitive.reach ? primitive.reach : INT16_MAX;
  const size_t left = std::max(r.x - reach, 0), top = std::max(r.y - reach, 0);
  const size_t right = std::min(r.x + r.width + reach, asInt(call.imgWidth));
  const size_t bottom = std::min(r.y + r.height + reach, asInt(call.imgHeight));
  const size_t s = sizeof(T), sourcePitch = call.stride / s * s, pitch = call.a / s * s;
  layout.source = {top * sourcePitch + s * left, bottom - top, s * (right - left), sourcePitch};
  layout.destination = {0, static_cast<size_t>(r.height), 3 * s * r.width, pitch};
  layout.destinationRaster = {s, 3, static_cast<size_t>(r.width)};
  layout.pixels = uint64_t{1} * r.width * r.height;
  return layout;
}

template <class T>
Call drawOne(Draw& draw, const Primitive& primitive) {
  Call call;
  draw.size(call, false);
  call.binning = 0;
  draw.memory(call, sizeof(T) == 2);
  call.srcBits = sizeof(T) == 2 ? draw.pick({10, 16, 16}) : 8;
  call.bayer = draw.oddly(40) ? draw.pick({4, 0xFFFFFFFF}) : draw.below(4);
  call.b = draw.oddly(40) ? 1 + draw.below(2) : 0;
  call.imgWidth = call.roiWidth;
  call.imgHeight = call.roiHeight;
  if (draw.oddly(2)) {
    call.roiX = draw.below(call.imgWidth + 2);
    call.roiY = draw.below(call.imgHeight + 2);
    call.roiWidth = draw.below(call.imgWidth + 2);
    call.roiHeight = draw.below(call.imgHeight + 2);
  }
  if (primitive.reach == 0 && draw.oddly(8)) call.roiX -= draw.below(10);
  if (primitive.reach == 0 && draw.oddly(8)) call.roiY -= draw.below(10);
  call.stride = static_cast<uint32_t>(sizeof(T)) * call.imgWidth + draw.below(9);
  call.a = static_cast<uint32_t>(3 * sizeof(T)) * call.imgWidth + draw.below(9);
  return call;
}

template <class T, class Function>
Subject::Run running(Function function) {
  return [function](const Call& c, const Memory& m) {
    const T* const source = c.b == 1 ? nullptr : m.source.as<T>();
    T* const destination = c.b == 2 ? nullptr : m.destination.as<T>();
    const int32_t status = function(source, c, asInt(c.stride), destination, asInt(c.a));
    return static_cast<uint64_t>(int64_t{status});
  };
}

// Calls a primitive of either side with that side's own rectangle and size types.
#define VISTREL_PRIMITIVE(space, Function, T, ...)                                                \
  running<T>([](const T* source, const Call& c, int step, T* destination, int dstStep) {          \
    return space::Function(source,                                                                \
                           {asInt(c.roiX), asInt(c.roiY), asInt(c.roiWidth), asInt(c.roiHeight)}, \
                           {asInt(c.imgWidth), asInt(c.imgHeight)}, step, destination, dstStep,   \
                           asInt(c.bayer), __VA_ARGS__);                                          \
  })

template <class T>
void addOne(Catalogue& all, const char* name, const Primitive& primitive,
            std::array<Subject::Run, 2> run) {
  all.add(
      "cfa",
      {name, [=](const Call& call) { return layoutOf<T>(call, primitive); }, std::move(run), {}},
      [=](Draw& draw) { return drawOne<T>(draw, primitive); });
}

#define VISTREL_ADD(Function, T, primitive, ...)            \
  addOne<T>(all, #Function, primitive,                      \
            {VISTREL_PRIMITIVE(, Function, T, __VA_ARGS__), \
             VISTREL_PRIMITIVE(reference, Function, T, __VA_ARGS__)})

void addOffset(Catalogue& all) {
  const auto run = [](unsigned (*function)(unsigned)) -> Subject::Run {
    return [function](const Call& c, const Memory&) -> uint64_t { return function(c.bayer); };
  };
  all.add("cfa",
          {"VST2IPPBayerOffset",
           [](const Call&) { return Layout{}; },
           {run(VST2IPPBayerOffset), run(reference::VST2IPPBayerOffset)},
           {}},
          [](Draw& draw) {
            Call call;
            call.bayer = draw.oneIn(4) ? draw.word() : draw.below(6);
            return call;
          });
}

}  // namespace

void addCfa(Catalogue& all) {
  VISTREL_ADD(ippiCFAToRGB_8u_C1C3R, uint8_t, kNearest, asInt(c.seed));
  VISTREL_ADD(ippiCFAToRGB_16u_C1C3R, uint16_t, kNearest, asInt(c.seed));
  VISTREL_ADD(ippiDemosaicAHD_8u_C1C3R, uint8_t, kHomogeneity, nullptr, 0);
  VISTREL_ADD(ippiDemosaicAHD_16u_C1C3R, uint16_t, kHomogeneity, nullptr, 0);
  addOffset(all);
}

}  // namespace vistrel::core::check
