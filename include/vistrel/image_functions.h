// Exported image functions that have no algorithm code: a host calls them by name.
#pragma once

// Returns the grid code that makes a colour filter array primitive write blue, green, red. Since a
// primitive writes red first, it is the code of nBayer's mosaic with red and blue exchanged. For
// nBayer above 3 the result is the one for 0.
unsigned VST2IPPBayerOffset(unsigned nBayer);

// Adaptive homogeneity-directed demosaicing (Hirakawa and Parks, 2005). It converts the region into
// the work buffer of slot nIndex, and from there into pDst, as a conversion with the same arguments
// would. F is the binning factor: source rows begin at F * nRoiY, and only
// F * (nRoiHeight - nRoiY) of them are converted. nImgWidth and F * nRoiHeight must be at least 5.
// If allocation fails, pDst stays unchanged.
void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nRoiX, unsigned nRoiY, unsigned nRoiWidth,
                           unsigned nRoiHeight, unsigned char* pSrc, unsigned char* pDst);
void ImageColorDemosaicAHD(unsigned nIndex, unsigned nImgWidth, unsigned nBayer, unsigned nBinning,
                           unsigned nFormat, unsigned nLutMode, unsigned nRoiX, unsigned nRoiY,
                           unsigned nRoiWidth, unsigned nRoiHeight, unsigned short* pSrc,
                           unsigned char* pDst, unsigned nDstBits, unsigned nSrcBits);
