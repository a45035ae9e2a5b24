// The colour filter mosaic and the region of interest.
#pragma once

#include <cstdint>

namespace vistrel::core {

constexpr int kBlue = 0, kGreen = 1, kRed = 2;

// A site by row parity r and column parity c. Rows of r = 0 hold green and red,
// rows of r = 1 blue and green; where r = c the site is green.
//
//        c = 0   c = 1
//  r = 0   GR      R
//  r = 1   B       GB
enum Site { SITE_GR = 0, SITE_R = 1, SITE_B = 2, SITE_GB = 3 };

constexpr Site siteAt(unsigned r, unsigned c) { return static_cast<Site>(2 * r + c); }
constexpr bool isGreen(Site s) { return s == SITE_GR || s == SITE_GB; }
constexpr int sensedChannel(Site s) { return s == SITE_R ? kRed : s == SITE_B ? kBlue : kGreen; }

// Bit 0 of a phase code shifts the rows of the mosaic, bit 1 its columns.
constexpr unsigned rowParity(unsigned nBayer, unsigned y) { return (nBayer + y) & 1; }
constexpr unsigned columnParity(unsigned nBayer, unsigned x) { return ((nBayer >> 1) + x) & 1; }

// The mosaic of a frame, as seen from its pixel (0, 0): the parities of its first row and first
// column as a site has them. Rows and columns may be negative.
class Mosaic {
 public:
  constexpr Mosaic(unsigned firstRow, unsigned firstColumn) : r0_(firstRow), c0_(firstColumn) {}

  // By phase code: 0 GRBG, 1 BGGR, 2 RGGB, 3 GBRG.
  static constexpr Mosaic ofPhase(unsigned nBayer) {
    return {rowParity(nBayer, 0), columnParity(nBayer, 0)};
  }

  // By the grid code of a filter-array primitive: 0 BGGR, 1 RGGB, 2 GBRG, 3 GRBG.
  static constexpr Mosaic ofGrid(unsigned grid) {
    const unsigned r0 = ~grid & 1;
    return {r0, grid >= 2 ? r0 : 1 - r0};
  }

  // The same mosaic, seen from pixel (x, y).
  constexpr Mosaic from(int x, int y) const { return {rowOf(y), columnOf(x)}; }

  constexpr Site siteAt(int x, int y) const { return core::siteAt(rowOf(y), columnOf(x)); }
  constexpr int colourAt(int x, int y) const { return sensedChannel(siteAt(x, y)); }
  constexpr bool isGreenAt(int x, int y) const { return rowOf(y) == columnOf(x); }

  // Whether row y has red sites; if not, it has blue ones.
  constexpr bool isRedRow(int y) const { return rowOf(y) == 0; }

  // The parity of the columns whose sites are green in row y.
  constexpr unsigned greenParity(int y) const { return rowOf(y) ^ c0_; }

  constexpr bool operator==(const Mosaic&) const = default;

 private:
  constexpr unsigned rowOf(int y) const { return (r0_ + static_cast<unsigned>(y)) & 1; }
  constexpr unsigned columnOf(int x) const { return (c0_ + static_cast<unsigned>(x)) & 1; }

  unsigned r0_, c0_;
};

// The region at full sensor resolution. Region pixel (0, 0) is sensor position
// (x0, y0); the functions that scatter the mosaic apply x0 to the source, y0
// only to the phase.
struct Region {
  uint32_t F;       // binning factor of either axis
  uint32_t Wf, Hf;  // size
  uint32_t x0, y0;  // origin
  unsigned r0, c0;  // parities of the first row and the first column

  Region(uint32_t nBayer, uint32_t nBinning, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
         uint32_t nRoiHeight)
      : F(nBinning + 1), Wf(F * nRoiWidth), Hf(F * nRoiHeight), x0(F * nRoiX), y0(F * nRoiY),
        r0(rowParity(nBayer, y0)), c0(columnParity(nBayer, x0)) {}
};

}  // namespace vistrel::core
