// Defines the binning members of by_name.h: one body, and the list of its instances.
#pragma once

#include <type_traits>

#include "output/by_name.h"
#include "output/row_writer.h"

namespace vistrel::core {

// stride: distance between two source rows, in samples.
template <class Source, class Sample>
void binImage(Pack pack, unsigned binning, Source source, size_t stride, uint32_t nSrcBits,
              Sample* destination, uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits,
              uint32_t nShiftAdjust) {
  if constexpr (std::is_same_v<Source, CLutTransform>)
    RowWriter(pack, binning, stride, nWidth, source.pLut, source.nShift)
        .rows(source.pSrc, destination, nHeight);
  else
    RowWriter(pack, depthOf<std::remove_pointer_t<Source>, Sample>(), binning, stride, nWidth,
              reductionOf<Sample>(nSrcBits, nDstBits, nShiftAdjust))
        .rows(source, destination, nHeight);
}

#define VISTREL_INSTANCE(name, Source, Sample) \
  template void name(Source, uint32_t, uint32_t, Sample*, uint32_t, uint32_t, uint32_t, uint32_t);

#define VISTREL_INSTANCES_TO_8(name)               \
  VISTREL_INSTANCE(name, const uint8_t*, uint8_t)  \
  VISTREL_INSTANCE(name, const uint16_t*, uint8_t) \
  VISTREL_INSTANCE(name, CLutTransform, uint8_t)

#define VISTREL_INSTANCES(name) \
  VISTREL_INSTANCES_TO_8(name)  \
  VISTREL_INSTANCE(name, const uint16_t*, uint16_t)

}  // namespace vistrel::core
