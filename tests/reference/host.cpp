#include "tests/reference/host.h"

namespace reference {

namespace {

bool findsExcess(const vistrel_frame& frame, const vistrel_conversion& c) {
  const HostArea area = hostArea(frame, c);
  const size_t channels = frame.phase == VISTREL_BGR ? 3 : 1;
  const bool all = c.white_balance == VISTREL_BALANCE_GRAY_WORLD;
  for (int64_t y = 0; y < frame.height; ++y)
    for (int64_t x = 0; x < frame.width; ++x) {
      const bool isRead =
          x >= area.x && x < area.x + area.width && y >= area.y && y < area.y + area.height;
      for (size_t i = 0; (isRead || all) && i < channels; ++i)
        if (hasExcessBits(frame, hostStoredSample(frame, static_cast<size_t>(x) * channels + i,
                                                  static_cast<size_t>(y))))
          return true;
    }
  return false;
}

}  // namespace

int32_t hostConvert(const vistrel_frame& frame, const vistrel_conversion& c,
                    const vistrel_image& image) {
  if (c.excess == VISTREL_REJECT && findsExcess(frame, c)) return VISTREL_EXCESS_SAMPLE;
  const HostPixels pixels = hostPixels(frame, c);
  const auto least = static_cast<ptrdiff_t>(hostImageRowBytes(c.format, pixels.width));
  hostStore(pixels, c.format, static_cast<uint8_t*>(image.pixels),
            image.stride ? image.stride : least);
  return VISTREL_OK;
}

}  // namespace reference
