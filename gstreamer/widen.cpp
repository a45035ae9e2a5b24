#include "gstreamer/widen.h"

#include <cstring>

namespace vistrel::gstreamer {
namespace {

uint16_t swapped(uint16_t sample) { return static_cast<uint16_t>(sample << 8 | sample >> 8); }

// A pixel is stored below the ones that are still to be read.
template <bool kSwapped>
void widen(uint8_t* row, size_t pixels, const WideOrder& order) {
  const uint8_t* from = row + 2 * pixels;
  for (size_t i = 0; i < pixels; ++i, from += 6, row += 8) {
    uint16_t rgb[3], wide[4];
    std::memcpy(rgb, from, sizeof rgb);
    wide[order.red] = kSwapped ? swapped(rgb[0]) : rgb[0];
    wide[order.green] = kSwapped ? swapped(rgb[1]) : rgb[1];
    wide[order.blue] = kSwapped ? swapped(rgb[2]) : rgb[2];
    wide[order.alpha] = 0xFFFF;
    std::memcpy(row, wide, sizeof wide);
  }
}

}  // namespace

void widenRow(uint8_t* row, size_t pixels, const WideOrder& order) {
  (order.swapped ? widen<true> : widen<false>)(row, pixels, order);
}

}  // namespace vistrel::gstreamer
