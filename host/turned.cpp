#include "host/turned.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "common/rows/nontemporal.h"
#include "host/image_pixels.h"

namespace vistrel::host {
namespace {

// Where the turned image's pixels are in the upright one, as distances in pixels.
struct Turn {
  ptrdiff_t first, right, down;  // to its first pixel; from one to the next in its row, its column
};

// width, height: of the upright image.
Turn turnOf(uint32_t orientation, ptrdiff_t width, ptrdiff_t height) {
  Turn turn{0, 1, width};
  const auto fromRight = [&] { turn.first += width - 1, turn.right = -1; };
  const auto fromBottom = [&] { turn.first += (height - 1) * width, turn.down = -width; };
  switch (orientation) {
    case VISTREL_MIRRORED:
    case VISTREL_TURNED_270: fromRight(); break;
    case VISTREL_FLIPPED:
    case VISTREL_TURNED_90: fromBottom(); break;
    case VISTREL_TURNED_180:
    case VISTREL_TRANSVERSE: fromRight(), fromBottom(); break;
    default: break;
  }
  if (orientation >= VISTREL_TRANSPOSED) std::swap(turn.right, turn.down);
  return turn;
}

// So many rows are made at a time that neighbours in a column of the upright image, which lie in
// one cache line, are used together.
constexpr uint32_t kRowsTogether = 16;

// Gathers `rows` rows of the turned image, each of `width` pixels. from: the first one's.
template <size_t pixelBytes>
void gather(const unsigned char* from, const Turn& turn, size_t rows, size_t width,
            unsigned char* lines) {
  const ptrdiff_t right = turn.right * ptrdiff_t{pixelBytes},
                  down = turn.down * ptrdiff_t{pixelBytes};
  for (size_t x = 0; x < width; ++x) {
    const unsigned char* const column = from + static_cast<ptrdiff_t>(x) * right;
    for (size_t i = 0; i < rows; ++i)
      std::memcpy(lines + (i * width + x) * pixelBytes, column + static_cast<ptrdiff_t>(i) * down,
                  pixelBytes);
  }
}

using Gather = void(const unsigned char*, const Turn&, size_t, size_t, unsigned char*);

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
  const Turn turn =
      turnOf(call.conversion.orientation, swaps ? l.height : l.width, swaps ? l.width : l.height);
  Gather* const gatherRows = gatherOf(pixelBytes);
  for (uint32_t y = rows.first; y < rows.end; y += kRowsTogether) {
    const uint32_t count = std::min(kRowsTogether, rows.end - y);
    const ptrdiff_t first = turn.first + static_cast<ptrdiff_t>(y) * turn.down;
    gatherRows(upright + first * static_cast<ptrdiff_t>(pixelBytes), turn, count, l.width, lines);
    for (uint32_t i = 0; i < count; ++i) {
      pixels.rows().begin(y + i);
      pixels.rows().append(lines + i * rowBytes, l.width);
      pixels.rows().end();
    }
  }
  core::storeFence();
}

}  // namespace vistrel::host
