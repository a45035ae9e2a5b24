#include "cfa/near_rows.h"
#include "demosaic/finished_rows.h"
#include "demosaic/image_functions.h"
#include "demosaic/primitive_call.h"

namespace vistrel {

namespace {

template <class T>
void convertRows(const Conversion<T>& c, NearRows<T>& rows, int height) {
  for (int y = 0; y < height; ++y) rows.row(y, c.imageRow(y), nullptr);
  c.output.convert(c.work, c.pDst, c.nRoiHeight);
}

// All rows of the image are converted: the output can follow them.
template <class T>
void sweepRows(const Conversion<T>& c, NearRows<T>& rows) {
  const FinishedRows<T> finished(c);
  if (!finished) return;
  for (int y = 0; y < static_cast<int>(c.region.Hf); ++y) {
    RowCopies<T> copies = finished.copies(y);
    rows.row(y, finished.row(y), copies.plain);
    finished.finish(y, copies);
  }
  finished.finishAll();
}

template <class T>
void nearNeighbor(const Conversion<T>& c) {
  const CfaSize size = primitiveSize(c);
  const CfaRect roi = primitiveRoi(c);
  if (size.width < 2 || size.height < 2 || roi.width < 1 || roi.height < 1)
    return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  // The 16-bit twin works on samples scaled to all sixteen bits.
  const Rounding rounding = sizeof(T) == 1 ? Rounding() : Rounding(scaling(c));
  NearRows<T> rows({c.pSrc, ptrdiff_t(c.sourceStride), size,
                    static_cast<int>(VST2IPPBayerOffset(c.nBayer)), rounding},
                   roi);
  if (!rows) return;
  if (roi.width == int(c.region.Wf) && roi.height == int(c.region.Hf))
    sweepRows(c, rows);
  else
    convertRows(c, rows, roi.height);
}

}  // namespace

VISTREL_DEFINE_DEMOSAIC_IN(compactLayout, ImageColorNearNeighbor, nearNeighbor)

}  // namespace vistrel

unsigned VST2IPPBayerOffset(unsigned nBayer) {
  constexpr unsigned grids[] = {CFA_GRID_GBRG, CFA_GRID_RGGB, CFA_GRID_BGGR, CFA_GRID_GRBG};
  return nBayer < 4 ? grids[nBayer] : grids[0];
}
