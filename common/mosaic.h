// The colour filter mosaic and the region of interest.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vistrel::core {

constexpr int kBlue = 0, kGreen = 1, kRed = 2;

// A site is given by row parity r and column parity c. Rows with r = 0 have green and red sites,
// rows with r = 1 blue and green ones; sites with r = c are green.
//
//        c = 0   c = 1
//  r = 0   GR      R
//  r = 1   B       GB
enum Site { SITE_GR = 0, SITE_R = 1, SITE_B = 2, SITE_GB = 3 };

constexpr bool isGreen(Site s) { return s == SITE_GR || s == SITE_GB; }
constexpr int sensedChannel(Site s) { return s == SITE_R ? kRed : s == SITE_B ? kBlue : kGreen; }

// The bits of a phase code: whether GRBG is shifted by a row and by a column.
constexpr unsigned kRowShift = 1, kColumnShift = 2;

// The mosaic of a frame, given by the site of its pixel (0, 0). Rows and columns may be negative.
class Mosaic {
 public:
  constexpr explicit Mosaic(Site origin) : Mosaic(origin >> 1 & 1, origin & 1) {}

  // From a phase code: 0 GRBG, 1 BGGR, 2 RGGB, 3 GBRG; higher bits are ignored.
  static constexpr Mosaic ofPhase(unsigned nBayer) {
    return {(nBayer & kRowShift) != 0, (nBayer & kColumnShift) != 0};
  }

  // From the grid code of a colour filter array primitive: 0 BGGR, 1 RGGB, 2 GBRG, 3 GRBG.
  static constexpr Mosaic ofGrid(unsigned grid) {
    constexpr Site kOrigins[] = {SITE_B, SITE_R, SITE_GB, SITE_GR};
    return Mosaic(kOrigins[grid & 3]);
  }

  // The mosaic of the frame that begins at pixel (x, y).
  constexpr Mosaic from(ptrdiff_t x, ptrdiff_t y) const { return {rowParity(y), columnParity(x)}; }

  // The mosaic with red and blue exchanged.
  constexpr Mosaic exchanged() const { return from(1, 1); }

  constexpr Site siteAt(ptrdiff_t x, ptrdiff_t y) const {
    return static_cast<Site>(2 * rowParity(y) + columnParity(x));
  }
  constexpr int colourAt(ptrdiff_t x, ptrdiff_t y) const { return sensedChannel(siteAt(x, y)); }
  constexpr bool isGreenAt(ptrdiff_t x, ptrdiff_t y) const {
    return rowParity(y) == columnParity(x);
  }

  // Whether row y has red sites; if not, it has blue ones.
  constexpr bool isRedRow(ptrdiff_t y) const { return rowParity(y) == 0; }

  // The column parity of the green sites in row y, and that of its red or blue sites.
  constexpr unsigned greenParity(ptrdiff_t y) const { return rowParity(y) ^ c0_; }
  constexpr unsigned colourParity(ptrdiff_t y) const { return 1 - greenParity(y); }

  constexpr bool operator==(const Mosaic&) const = default;

 private:
  constexpr Mosaic(unsigned r0, unsigned c0) : r0_(r0), c0_(c0) {}

  constexpr unsigned rowParity(ptrdiff_t y) const { return (r0_ + static_cast<unsigned>(y)) & 1; }
  constexpr unsigned columnParity(ptrdiff_t x) const {
    return (c0_ + static_cast<unsigned>(x)) & 1;
  }

  unsigned r0_, c0_;  // parities of row 0 and of column 0
};

// The region at full sensor resolution. Region pixel (0, 0) is sensor position
// (x0, y0); the functions that scatter the mosaic apply x0 to the source, y0
// only to the phase.
struct Region {
  uint32_t F;       // binning factor of either axis
  uint32_t Wf, Hf;  // size
  uint32_t x0, y0;  // origin
  Mosaic mosaic;    // that begins at region pixel (0, 0)

  Region(uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
         uint32_t nRoiHeight)
      : F(nBinning + 1), Wf(F * nRoiWidth), Hf(F * nRoiHeight), x0(F * nRoiX), y0(F * nRoiY),
        mosaic(Mosaic::ofPhase(nBayer).from(x0, y0)) {}
};

}  // namespace vistrel::core
