#include <dc1394/dc1394.h>

#include "bench/peers.h"

namespace vistrel::core::bench {

namespace {

constexpr dc1394color_filter_t kPhase = DC1394_COLOR_FILTER_RGGB;

Task decoding8(const Frame& frame, dc1394bayer_method_t method) {
  const FrameSize size = frame.size;
  const auto result = allocate<uint8_t>(3 * size.pixels());
  const auto run = [=] {
    dc1394_bayer_decoding_8bit(frame.samples8.get(), result.get(), size.width, size.height, kPhase,
                               method);
  };
  return {run, {result.get(), size.width, size.height, kRgb24, 8}};
}

Task decoding16(const Frame& frame, dc1394bayer_method_t method) {
  const FrameSize size = frame.size;
  const auto result = allocate<uint16_t>(3 * size.pixels());
  const auto run = [=] {
    dc1394_bayer_decoding_16bit(frame.samples16.get(), result.get(), size.width, size.height,
                                kPhase, method, frame.significantBits);
  };
  return {run, {result.get(), size.width, size.height, kRgb48, frame.significantBits}};
}

Task decoding(const Conversion& c, const Frame& frame, dc1394bayer_method_t method) {
  return c.depth == 8 ? decoding8(frame, method) : decoding16(frame, method);
}

}  // namespace

Task dc1394Bilinear(const Conversion& c, const Frame& frame) {
  return decoding(c, frame, DC1394_BAYER_METHOD_BILINEAR);
}

Task dc1394HqLinear(const Conversion& c, const Frame& frame) {
  return decoding(c, frame, DC1394_BAYER_METHOD_HQLINEAR);
}

Task dc1394EdgeSense(const Conversion& c, const Frame& frame) {
  return decoding(c, frame, DC1394_BAYER_METHOD_EDGESENSE);
}

Task dc1394VariableGradients(const Conversion& c, const Frame& frame) {
  return decoding(c, frame, DC1394_BAYER_METHOD_VNG);
}

}  // namespace vistrel::core::bench
