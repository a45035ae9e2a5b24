// How a conversion hands the demosaic to a filter-array primitive.
#pragma once

#include "cfa/frame.h"
#include "demosaic/work_image.h"
#include "vistrel/image_functions.h"

namespace vistrel::core {

// By how many bits the 16-bit twins scale samples up to all 16 bits.
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
              Mosaic::ofGrid(VST2IPPBayerOffset(c.nBayer))},
        roi(clipped({int(c.region.x0), int(c.region.y0), int(c.region.Wf), int(c.region.Hf)},
                    frame.size)) {}

  bool isRefused(int smallestSide) const {
    return frame.size.width < smallestSide || frame.size.height < smallestSide || roi.width < 1 ||
           roi.height < 1;
  }
};

// Region: has makeInto(image). The output can follow its rows where they are the whole image.
template <class T, class Region>
void convertRegion(const Conversion<T>& c, CfaRect roi, Region& region) {
  if (!region) return;
  if (roi.width != int(c.region.Wf) || roi.height != int(c.region.Hf)) {
    PlainImage<T> image(c.imageRow(0), static_cast<ptrdiff_t>(c.layout.S));
    region.makeInto(image);
    return c.output.convert(c.work, c.pDst, c.nRoiHeight);
  }
  WorkImage<T> image(c);
  if (!image) return;
  region.makeInto(image);
  image.finish();
}

}  // namespace vistrel::core
