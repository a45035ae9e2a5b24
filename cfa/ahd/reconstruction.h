// A strip of a frame, reconstructed twice: with green along rows and along columns.
#pragma once

#include "cfa/ahd/ahd_kernels.h"
#include "cfa/frame.h"
#include "common/rows/row_source.h"

namespace vistrel::core {

// Both images depend only on the mirrored frame, so one sweep serves every rectangle in the strip.
template <class T>
class AhdReconstruction {
 public:
  // first, columns: the strip's columns, including those that it only reads. shift: scales samples
  // up.
  AhdReconstruction(const CfaRows<T>& frame, int first, size_t columns, int shift,
                    const AhdKernels<T>& kernels, Arena& arena);

  void load(int y);
  void fillGreen(int y);    // from rows y - 2 .. y + 2
  void fillColours(int y);  // from rows y - 1 .. y + 1

  ImageHalves<T> halves(AhdImage image, int y) const;
  LumaChromaWindow<T> lumaChroma(AhdImage image, int y) const;

  // The index of row y in a ring; never negative for rows that are loaded.
  static unsigned placeOf(int y) { return static_cast<unsigned>(y + 16); }

  // The mosaic that begins at the strip's first column.
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
