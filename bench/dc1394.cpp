#include <dc1394/dc1394.h>

#include "bench/peers.h"

namespace vistrel::bench {

Task dc1394Bilinear(const Conversion&, const Frame& frame) {
  const FrameSize size = frame.size;
  const auto result = allocate<uint16_t>(3 * size.pixels());
  const auto run = [=] {
    dc1394_bayer_decoding_16bit(frame.words.get(), result.get(), size.width, size.height,
                                DC1394_COLOR_FILTER_RGGB, DC1394_BAYER_METHOD_BILINEAR,
                                Frame::kWordBits);
  };
  return {run, {result.get(), size.width, size.height, kRgb48, Frame::kWordBits}};
}

}  // namespace vistrel::bench
