extern "C" {
#include <libswscale/swscale.h>
}

#include <stdexcept>

#include "bench/peers.h"

namespace vistrel::core::bench {

// It uses 16 bits as full scale: the source is scaled up to that once.
Task swscaleBilinear(const Conversion&, const Frame& frame) {
  const FrameSize size = frame.size;
  const int width = static_cast<int>(size.width), height = static_cast<int>(size.height);
  const auto source = allocate<uint16_t>(size.pixels());
  for (size_t i = 0; i < size.pixels(); ++i)
    source[i] = static_cast<uint16_t>(frame.samples16[i] << (16 - frame.significantBits));
  const auto result = allocate<uint8_t>(3 * size.pixels());
  const std::shared_ptr<SwsContext> context(
      sws_getContext(width, height, AV_PIX_FMT_BAYER_RGGB16LE, width, height, AV_PIX_FMT_RGB24,
                     SWS_BILINEAR, nullptr, nullptr, nullptr),
      sws_freeContext);
  if (!context) throw std::runtime_error("libswscale can't convert bayer_rggb16le to rgb24");
  const auto run = [=] {
    const auto* from = reinterpret_cast<const uint8_t*>(source.get());
    uint8_t* to = result.get();
    const int fromStride = 2 * width, toStride = 3 * width;
    sws_scale(context.get(), &from, &fromStride, 0, height, &to, &toStride);
  };
  return {run, {result.get(), size.width, size.height, kRgb24, 8}};
}

}  // namespace vistrel::core::bench
