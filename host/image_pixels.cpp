#include "host/image_pixels.h"

#include "host/planes.h"

namespace vistrel::host {
namespace {

using namespace core;

// By measurement: ordinary stores are faster for smaller results, non-temporal ones for larger
// results. If the result is read soon, the limit is higher: more of it is still in the caches.
constexpr size_t kBypassBeyond = size_t{12} << 20, kBypassBeyondUnlessRead = size_t{2} << 20;

bool bypassesCaches(const EngineCall& call) {
  const bool isReadSoon = call.conversion.destination == VISTREL_READ_SOON;
  if (isReadSoon && call.isPushed) return false;
  return call.plan.layout.bytes > (isReadSoon ? kBypassBeyond : kBypassBeyondUnlessRead);
}

InterleavedRows interleavedRows(const EngineCall& call, const PlaneMemory& image, Arena& arena) {
  const Plan& p = call.plan;
  const auto kernel = p.rawGray ? nullptr : p.format->convert;
  const auto convert = kernel ? pixelFormatKernels().*kernel : nullptr;
  return InterleavedRows(image, p.layout.width, p.nativePixelBytes, p.format->pixelBytes(), convert,
                         arena);
}

PlanesFunction planesKernel(const Format& format) {
  const PixelFormatKernels& kernels = pixelFormatKernels();
  if (format.arrangement == Arrangement::i444) return kernels.planes709;
  return format.bytes_per_sample == 1 ? kernels.planes8 : kernels.planes16;
}

}  // namespace

ImagePixels::Rows ImagePixels::rowsOf(const EngineCall& call, const PlaneMemory& firstPlane,
                                      Arena& arena) {
  const Format& format = *call.plan.format;
  const vistrel_layout& l = call.plan.layout;
  if (format.arrangement == Arrangement::interleaved)
    return interleavedRows(call, firstPlane, arena);
  const Planes planes = planesOf(format, l.width, l.height, static_cast<size_t>(call.stride));
  PlaneMemory memory[3];
  for (size_t i = 0; i < 3; ++i)
    memory[i] = {call.pixels + planes[i].offset, static_cast<ptrdiff_t>(planes[i].stride),
                 firstPlane.bypassesCaches};
  if (rowsPerChroma(format) == 1)
    return PlanarRows(memory, l.width, format.bytes_per_sample, planesKernel(format), arena);
  const bool inPairs = format.arrangement == Arrangement::nv12;
  return Ycc420Rows({memory[0], {memory[1], memory[2]}, inPairs}, l.width, l.height, arena);
}

ImagePixels::ImagePixels(const EngineCall& call, Arena& arena)
    : firstPlane_{call.pixels, call.stride, bypassesCaches(call)},
      rows_(rowsOf(call, firstPlane_, arena)) {}

PixelRows& ImagePixels::rows() {
  return std::visit([](auto& rows) -> PixelRows& { return rows; }, rows_);
}

}  // namespace vistrel::host
