// The frame of adaptive homogeneity-directed demosaicing: five rectangles, of which each begins its
// running choice anew.
#pragma once

#include "cfa/frame.h"

namespace vistrel {

// roi: clipped to the frame, not empty. pDst: its first pixel; dstStep in samples. shift: samples
// are scaled up by it, and the results down again. Returns false, with nothing written, where memory
// is not to be had.
template <class T>
bool demosaicAhd(const CfaFrame<T>& frame, CfaRect roi, T* pDst, ptrdiff_t dstStep, int shift);

}  // namespace vistrel
