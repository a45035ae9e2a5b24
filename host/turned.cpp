#include "host/turned.h"

#include <algorithm>
#include <cstring>

#include "common/rows/nontemporal.h"
#include "host/image_pixels.h"

namespace vistrel::host {
namespace {

// Which pixel of the upright image is pixel (x, y) of the turned one.
class Turn {
 public:
  // width, height: of the upright image.
  Turn(uint32_t orientation, size_t width, size_t height)
      : swaps_(orientation >= VISTREL_TRANSPOSED), width_(width), height_(height) {
    switch (orientation) {
      case VISTREL_MIRRORED:
      case VISTREL_TURNED_270: fromRight_ = true; break;
      case VISTREL_FLIPPED:
      case VISTREL_TURNED_90: fromBottom_ = true; break;
      case VISTREL_TURNED_180:
      case VISTREL_TRANSVERSE: fromRight_ = fromBottom_ = true; break;
      default: break;
    }
  }

  size_t of(size_t x, size_t y) const {
    const size_t column = swaps_ ? y : x, row = swaps_ ? x : y;
    return (fromBottom_ ? height_ - 1 - row : row) * width_ +
           (fromRight_ ? width_ - 1 - column : column);
  }

 private:
  bool swaps_, fromRight_ = false, fromBottom_ = false;
  size_t width_, height_;
};

// So many rows are made at a time that neighbours in a column of the upright image, which lie in
// one cache line, are used together.
constexpr uint32_t kRowsTogether = 16;

template <size_t pixelBytes>
void gather(const unsigned char* upright, const Turn& turn, size_t y, size_t rows, size_t width,
            unsigned char* lines) {
  for (size_t x = 0; x < width; ++x)
    for (size_t i = 0; i < rows; ++i)
      std::memcpy(lines + (i * width + x) * pixelBytes, upright + turn.of(x, y + i) * pixelBytes,
                  pixelBytes);
}

using Gather = void(const unsigned char*, const Turn&, size_t, size_t, size_t, unsigned char*);

Gather* gatherOf(size_t pixelBytes) {
  switch (pixelBytes) {
    case 1: return gather<1>;
    case 2: return gather<2>;
    case 3: return gather<3>;
    default: return gather<6>;
  }
}

}  // namespace

vistrel_conversion uprightConversion(const Plan& plan, const vistrel_conversion& conversion) {
  vistrel_conversion upright = conversion;
  upright.orientation = VISTREL_UPRIGHT;
  const Format& format = *plan.format;
  if (format.mono || plan.rawGray) return upright;
  const bool isWide = format.bytes_per_sample == 2;
  upright.format = format.redFirst ? (isWide ? VISTREL_RGB48 : VISTREL_RGB24)
                                   : (isWide ? VISTREL_BGR48 : VISTREL_BGR24);
  return upright;
}

void storeTurned(const EngineCall& call, const unsigned char* upright, ImageRows rows,
                 core::Arena& arena) {
  const vistrel_layout& l = call.plan.layout;
  const size_t pixelBytes = call.plan.nativePixelBytes, rowBytes = l.width * pixelBytes;
  ImagePixels pixels(call, arena);
  auto* const lines = arena.take<unsigned char>(kRowsTogether * rowBytes);
  if (arena.counts()) return;
  const bool swaps = swapsSides(call.conversion);
  const Turn turn(call.conversion.orientation, swaps ? l.height : l.width,
                  swaps ? l.width : l.height);
  Gather* const gatherRows = gatherOf(pixelBytes);
  for (uint32_t y = rows.first; y < rows.end; y += kRowsTogether) {
    const uint32_t count = std::min(kRowsTogether, rows.end - y);
    gatherRows(upright, turn, y, count, l.width, lines);
    for (uint32_t i = 0; i < count; ++i) {
      pixels.rows().begin(y + i);
      pixels.rows().append(lines + i * rowBytes, l.width);
      pixels.rows().end();
    }
  }
  core::storeFence();
}

}  // namespace vistrel::host
