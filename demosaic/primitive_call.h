// How a conversion hands the demosaic to a filter-array primitive.
#pragma once

#include "cfa/frame.h"
#include "demosaic/finished_rows.h"
#include "vistrel/image_functions.h"

namespace vistrel::core {

// By how many bits the 16-bit twins scale samples up to all of their word.
template <class T>
uint32_t scaling(const Conversion<T>& c) {
  return sizeof(T) == 1 ? 0 : (16 - c.nSrcBits) & 31;
}

// What the primitive sees.
// quirk: rows-below-origin. A frame as high as the region, whose first row cuts off the last ones.
template <class T>
struct PrimitiveCall {
  CfaFrame<T> frame;
  CfaRect roi;

  explicit PrimitiveCall(const Conversion<T>& c)
      : frame{c.pSrc,
              ptrdiff_t(c.sourceStride),
              {static_cast<int32_t>(c.sourceStride), static_cast<int32_t>(c.region.Hf)},
              static_cast<int>(VST2IPPBayerOffset(c.nBayer))},
        roi(clipped({int(c.region.x0), int(c.region.y0), int(c.region.Wf), int(c.region.Hf)},
                    frame.size)) {}

  bool isRefused(int smallestSide) const {
    return frame.size.width < smallestSide || frame.size.height < smallestSide || roi.width < 1 ||
           roi.height < 1;
  }
};

// Rows: has row(y, pixels, copies), in ascending order. The output can follow them where they are
// the whole image.
template <class T, class Rows>
void convertRows(const Conversion<T>& c, CfaRect roi, Rows& rows) {
  if (roi.width != int(c.region.Wf) || roi.height != int(c.region.Hf)) {
    RowCopies<T> none;
    for (int y = 0; y < roi.height; ++y) rows.row(y, c.imageRow(y), none);
    return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  }
  const FinishedRows<T> finished(c);
  if (!finished) return;
  for (int y = 0; y < roi.height; ++y) {
    RowCopies<T> copies = finished.copies(y);
    rows.row(y, finished.row(y), copies);
    finished.finish(y, copies);
  }
  finished.finishAll();
}

}  // namespace vistrel::core
