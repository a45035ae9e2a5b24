// The pixels of a rectangle within two pixels of the frame's edge: plain means with mirrored
// coordinates, never directional.
#pragma once

#include "cfa/frame.h"

namespace vistrel::core {

// Convert the columns of srcRoi in one row of a frame, and the rows of srcRoi in one column. pDst
// points to their first pixel.
template <class T, int row>
void ownBayerBrdHrz(const CfaFrame<T>& rows, CfaRect srcRoi, T* pDst);
template <class T, int column>
void ownBayerBrdVrt(const CfaFrame<T>& columns, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep);

// The strips of a border. A strip gets the lines that it reads as a frame of three or two lines: it
// is the middle one of three, or the one of two that lies on the edge.
template <class T>
constexpr auto ownBayerBrdHrz3 = &ownBayerBrdHrz<T, 1>;
template <class T>
constexpr auto ownBayerBrdHrz2D = &ownBayerBrdHrz<T, 1>;
template <class T>
constexpr auto ownBayerBrdHrz2U = &ownBayerBrdHrz<T, 0>;
template <class T>
constexpr auto ownBayerBrdVrt3 = &ownBayerBrdVrt<T, 1>;
template <class T>
constexpr auto ownBayerBrdVrt2R = &ownBayerBrdVrt<T, 1>;
template <class T>
constexpr auto ownBayerBrdVrt2L = &ownBayerBrdVrt<T, 0>;

}  // namespace vistrel::core
