// Monochrome frames: cut out, binned, reduced and clamped in one pass.
#pragma once

#include <cstdint>

#include "output/table.h"

namespace vistrel::core {

// The binning members: sums blocks of N x N samples, each shifted right first, divides by N,
// clamps. nStride counts samples. Source is const uint8_t*, const uint16_t* or CLutTransform.
template <class Source, class Sample>
void ImageBinning1x1(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                     uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust);
template <class Source, class Sample>
void ImageBinning2x2(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                     uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust);
template <class Source, class Sample>
void ImageBinning3x3(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                     uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust);
template <class Source, class Sample>
void ImageBinning4x4(Source source, uint32_t nStride, uint32_t nSrcBits, Sample* destination,
                     uint32_t nWidth, uint32_t nHeight, uint32_t nDstBits, uint32_t nShiftAdjust);

// 8-bit source, 8-bit result.
void Image8BitGrayScale(const uint8_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning);

// 16-bit source, 8-bit result.
void Image8BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                        uint32_t nSrcBits, uint8_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                        uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nBinning,
                        uint32_t nLutMode, const uint16_t* pUserLut);

// 16-bit source, 16-bit result.
void Image16BitGrayScale(const uint16_t* pSrc, uint32_t nImgWidth, uint32_t nImgHeight,
                         uint32_t nSrcBits, uint16_t* pDst, uint32_t nRoiX, uint32_t nRoiY,
                         uint32_t nRoiWidth, uint32_t nRoiHeight, uint32_t nDstBits,
                         uint32_t nBinning, uint32_t nLutMode);

}  // namespace vistrel::core
