// The part of a rectangle within two pixels of the frame's edge: plain means, never directional,
// of mirrored coordinates.
#pragma once

#include "cfa/frame.h"

namespace vistrel::core {

// srcRoi: clipped to the frame. pDst: its first pixel; dstStep in samples.
template <class T>
void ownBayerBorder(const CfaFrame<T>& frame, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep);

// The columns of srcRoi in a row of a frame, the rows of srcRoi in a column of a frame; pDst: their
// first pixel.
template <class T, int row>
void ownBayerBrdHrz(const CfaFrame<T>& rows, CfaRect srcRoi, T* pDst);
template <class T, int column>
void ownBayerBrdVrt(const CfaFrame<T>& columns, CfaRect srcRoi, T* pDst, ptrdiff_t dstStep);

// The strips that a border consists of. A strip is given the lines that it reads, as a frame of
// three or two lines: of three it is the middle one, of two the one on the edge.
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
