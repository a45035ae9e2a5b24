// A conversion through a work buffer, as the arguments of a demosaic function describe it.
#pragma once

#include "demosaic/work_buffer.h"
#include "output/colour_output.h"

namespace vistrel::core {

template <class T>
struct Conversion {
  Region region;
  uint32_t nBayer, nRoiX, nRoiY, nSrcBits;
  const T* pSrc;
  size_t sourceStride;
  T* work;
  WorkLayout layout;
  uint8_t* pDst;
  uint32_t nRoiHeight;
  const ColourOutput& output;
  uint32_t threshold = 0;
  const T* workEnd = nullptr;  // of the stream's work buffer; edge writes up to it

  T* imageRow(ptrdiff_t y) const { return work + layout.row(y); }
};

// If Wf or Hf is less than 2, the guard has copies of what the work buffer held. Then the algorithm
// works in the buffer itself, pass after pass.
inline bool isDegenerate(const Region& region) { return region.Wf < 2 || region.Hf < 2; }

}  // namespace vistrel::core
