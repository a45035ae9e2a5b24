// The part of a rectangle within two pixels of the frame's edge: plain means, never directional,
// of mirrored coordinates.
#pragma once

#include "cfa/frame.h"

namespace vistrel {

// pDst: the rectangle's first pixel; dstStep in samples. The rectangle is clipped already.
void ownBayerBorder_8u(const CfaFrame<uint8_t>& frame, CfaRect srcRoi, uint8_t* pDst,
                       ptrdiff_t dstStep);
void ownBayerBorder_16u(const CfaFrame<uint16_t>& frame, CfaRect srcRoi, uint16_t* pDst,
                        ptrdiff_t dstStep);

}  // namespace vistrel
