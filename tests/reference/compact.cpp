// The algorithms that call a primitive, in the compact layout.
#include <vector>

#include "tests/reference/arith.h"
#include "tests/reference/cfa.h"
#include "tests/reference/guarded.h"

namespace reference {

namespace {

// The part that all four calls of a primitive share. The height of the size is the region's,
// although the rectangle includes the region's origin.
struct Call {
  CfaRect roi;
  CfaSize size;
  int grid;

  Call(const Region& a, uint32_t nImgWidth)
      : roi{static_cast<int32_t>(a.x0), static_cast<int32_t>(a.y0), static_cast<int32_t>(a.Wf),
            static_cast<int32_t>(a.Hf)},
        size{static_cast<int32_t>(nImgWidth), static_cast<int32_t>(a.Hf)},
        grid(static_cast<int>(VST2IPPBayerOffset(a.nBayer))) {}
};

// Scales the frame's rows to 16 bits, runs demosaic(mosaic, image), and scales the image back.
// Samples that it does not write become 0.
template <class Demosaic>
void scaledToSixteenBits(const Call& call, const uint16_t* pSrc, uint16_t* work, uint32_t nSrcBits,
                         Demosaic demosaic) {
  const int64_t samples = int64_t{call.size.height} * call.size.width;
  std::vector<uint16_t> temporary(samples > 0 ? static_cast<size_t>(3 * samples) : 0);
  const uint32_t n = 16 - nSrcBits;
  for (int64_t k = 0; k < samples; ++k) work[k] = static_cast<uint16_t>(shl(pSrc[k], n));
  demosaic(work, temporary.data());
  for (size_t k = 0; k < temporary.size(); ++k)
    work[k] = static_cast<uint16_t>(shr(temporary[k], n));
}

}  // namespace

void ImageColorNearNeighbor(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                            uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                            uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {
  uint8_t* const work = workBufferOf<uint8_t>(nIndex);
  const Call call(Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), nImgWidth);
  ippiCFAToRGB_8u_C1C3R(pSrc, call.roi, call.size, call.size.width, work, 3 * call.roi.width,
                        call.grid, 0);
  ConvertToOutputFormat8(work, nRoiWidth, nRoiHeight, pDst, nFormat, nBinning, 0);
}

void ImageColorNearNeighbor(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                            uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,
                            uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                            uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  uint16_t* const work = workBufferOf<uint16_t>(nIndex);
  const Call call(Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), nImgWidth);
  scaledToSixteenBits(call, pSrc, work, nSrcBits, [&](const uint16_t* mosaic, uint16_t* image) {
    ippiCFAToRGB_16u_C1C3R(mosaic, call.roi, call.size, 2 * call.size.width, image,
                           6 * call.roi.width, call.grid, 0);
  });
  ConvertToOutputFormat16(work, nRoiWidth, nRoiHeight, nSrcBits, pDst, nFormat, nLutMode,
                          g_pwUserLUT[nIndex], nBinning, nDstBits, 0);
}

void ImageColorDemosaicAHD(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                           uint32_t nFormat, uint32_t nRoiX, uint32_t nRoiY, uint32_t nRoiWidth,
                           uint32_t nRoiHeight, const uint8_t* pSrc, uint8_t* pDst) {
  uint8_t* const work = workBufferOf<uint8_t>(nIndex);
  const Call call(Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), nImgWidth);
  ippiDemosaicAHD_8u_C1C3R(pSrc, call.roi, call.size, call.size.width, work, 3 * call.roi.width,
                           call.grid, nullptr, 0);
  ConvertToOutputFormat8(work, nRoiWidth, nRoiHeight, pDst, nFormat, nBinning, 0);
}

void ImageColorDemosaicAHD(uint32_t nIndex, uint32_t nImgWidth, uint32_t nBayer, uint32_t nBinning,
                           uint32_t nFormat, uint32_t nLutMode, uint32_t nRoiX, uint32_t nRoiY,
                           uint32_t nRoiWidth, uint32_t nRoiHeight, const uint16_t* pSrc,
                           uint8_t* pDst, uint32_t nDstBits, uint32_t nSrcBits) {
  uint16_t* const work = workBufferOf<uint16_t>(nIndex);
  const Call call(Region(nBayer, nBinning, nRoiX, nRoiY, nRoiWidth, nRoiHeight), nImgWidth);
  scaledToSixteenBits(call, pSrc, work, nSrcBits, [&](const uint16_t* mosaic, uint16_t* image) {
    ippiDemosaicAHD_16u_C1C3R(mosaic, call.roi, call.size, 2 * call.size.width, image,
                              6 * call.roi.width, call.grid, nullptr, 0);
  });
  ConvertToOutputFormat16(work, nRoiWidth, nRoiHeight, nSrcBits, pDst, nFormat, nLutMode,
                          g_pwUserLUT[nIndex], nBinning, nDstBits, 0);
}

}  // namespace reference
