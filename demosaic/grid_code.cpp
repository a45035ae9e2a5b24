#include "vistrel/cfa.h"
#include "vistrel/image_functions.h"

unsigned VST2IPPBayerOffset(unsigned nBayer) {
  constexpr unsigned grids[] = {CFA_GRID_GBRG, CFA_GRID_RGGB, CFA_GRID_BGGR, CFA_GRID_GRBG};
  return nBayer < 4 ? grids[nBayer] : grids[0];
}
