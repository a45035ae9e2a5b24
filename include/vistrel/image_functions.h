// Image functions that a host may call by name; no algorithm code leads to them (exported).
#pragma once

// The grid code that makes a filter-array primitive write blue, green, red: of nBayer's mosaic with
// red and blue exchanged, since a primitive writes red first. Codes above 3 give that of 0.
unsigned VST2IPPBayerOffset(unsigned nBayer);

// Adaptive homogeneity-directed demosaicing (Hirakawa and Parks, 2005) of the region into the work
// buffer of slot nIndex, and from there into pDst, as a conversion of the same arguments would.
// The source's rows begin at F * nRoiY, and only F * (nRoiHeight - nRoiY) of them are converted.
// nImgWidth and F * nRoiHeight must be at least 5. Where memory is not to be had, pDst stays.
void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst);
void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits);
