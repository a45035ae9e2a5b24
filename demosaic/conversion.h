// What the argument lists of the demosaic functions come to: a conversion through a work buffer.
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

  T* imageRow(ptrdiff_t y) const { return work + layout.row(y); }
};

// Wf or Hf of less than 2: the guard has copies of what the work buffer held, so that the work is
// done in it, pass after pass.
inline bool isDegenerate(const Region& region) { return region.Wf < 2 || region.Hf < 2; }

}  // namespace vistrel::core
