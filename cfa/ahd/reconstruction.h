// A strip of a frame, rebuilt twice: with green along rows and along columns.
#pragma once

#include "cfa/ahd/ahd_rows.h"
#include "cfa/frame.h"
#include "common/rows/row_source.h"

namespace vistrel::core {

// Both images are functions of the mirrored frame alone, so that one sweep serves every rectangle
// that the strip holds.
template <class T>
class AhdReconstruction {
 public:
  // first, columns: of the strip with all that it reads on either side. shift: samples are scaled
  // up by it.
  AhdReconstruction(const CfaRows<T>& frame, int first, size_t columns, int shift,
                    const AhdKernels<T>& kernels, Arena& arena);

  void load(int y);
  void fillGreen(int y);    // of rows y - 2 .. y + 2
  void fillColours(int y);  // of rows y - 1 .. y + 1

  ImageHalves<T> halves(AhdImage image, int y) const;
  LumaChromaWindow<T> lumaChroma(AhdImage image, int y) const;

  // Of a row in a ring: not negative from the first row that is loaded on.
  static unsigned slot(int y) { return static_cast<unsigned>(y + 16); }

  // As seen from the strip's first column.
  Mosaic mosaic() const { return frame_.mosaic.from(first_, 0); }
  size_t halfSize() const { return (columns_ + 1) / 2; }

 private:
  AhdGreen<T> greenOf(AhdImage image, int y) const;
  AhdColours<T> coloursOf(AhdImage image, int y) const;

  CfaRows<T> frame_;
  int first_;  // the frame column of element 0 of the even halves
  size_t columns_;
  int shift_;
  const AhdKernels<T>& kernels_;
  LumaChromaWeights<T> weights_;
  HalfRowRing<T> mosaic_, green_, colours_;
  HalfRowRing<Widened<T>> differences_, lumaChroma_;
};

}  // namespace vistrel::core
