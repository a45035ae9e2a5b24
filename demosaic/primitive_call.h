// Passes a conversion's demosaicing on to a colour filter array primitive.
#pragma once

#include "cfa/frame.h"
#include "demosaic/conversion.h"
#include "demosaic/job.h"
#include "vistrel/image_functions.h"

namespace vistrel::core {

// The frame and the rectangle that the primitive gets.
// quirk: rows-below-origin. The frame is as high as the region, so the region's first row cuts off
// the last ones.
template <class T>
class PrimitiveCall {
 public:
  explicit PrimitiveCall(const Conversion<T>& c)
      : size_{static_cast<int32_t>(c.sourceStride), static_cast<int32_t>(c.region.Hf)},
        source_(c.pSrc, static_cast<ptrdiff_t>(c.sourceStride), size_.height),
        mosaic_(Mosaic::ofGrid(VST2IPPBayerOffset(c.nBayer)).exchanged()), bits_(c.nSrcBits),
        roi(clipped({static_cast<int>(c.region.x0), static_cast<int>(c.region.y0),
                     static_cast<int>(c.region.Wf), static_cast<int>(c.region.Hf)},
                    size_)) {}

  bool isRejected(int smallestSide) const {
    return size_.width < smallestSide || size_.height < smallestSide || roi.width < 1 ||
           roi.height < 1;
  }

  DemosaicJob<T> job(ImageSink<T>& image) {
    return {.source = source_,
            .mosaic = mosaic_,
            .columns = size_.width,
            .height = size_.height,
            .roi = roi,
            .rows = rowsOf(roi),
            .image = &image,
            .bits = bits_};
  }

 private:
  CfaSize size_;
  PlainRows<T> source_;
  Mosaic mosaic_;
  unsigned bits_;

 public:
  const CfaRect roi;
};

}  // namespace vistrel::core
