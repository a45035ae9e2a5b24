#include "output/colour_output.h"

#include <optional>

#include "output/colour.h"

namespace vistrel {

namespace {

// How a format of colour images is written; bits of a channel = nDstBits / divisor.
struct Format {
  Pack pack;
  bool words;
  unsigned divisor;
};

std::optional<Format> formatOf(uint32_t nFormat) {
  switch (nFormat) {
    case 2: return Format{Pack::bgr, false, 3};
    case 3:
    case 4: return Format{Pack::argb, false, 3};  // quirk: argb-ten-bits. 32 bits make ten each.
    case 5: return Format{Pack::gray, false, 1};
    case 6: return Format{Pack::gray, true, 1};
    case 7: return Format{Pack::bgr, true, 3};
    default: return std::nullopt;
  }
}

}  // namespace

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nBinning, bool guarded)
    : m_width(nRoiWidth), m_binning(nBinning + 1) {
  const uint32_t P = m_binning * nRoiWidth;
  m_pixelStride = guarded ? P + 4 : P;
  m_start = guarded ? 6 * P + 24 + 6 : 0;
}

size_t ColourOutput::strideOf(Pack pack) const {
  return pack == Pack::gray ? grayStride(m_binning, m_pixelStride, m_width)
                            : size_t{3} * m_pixelStride;
}

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nFormat, uint32_t nBinning, bool guarded)
    : ColourOutput(nRoiWidth, nBinning, guarded) {
  const auto format = formatOf(nFormat);
  if (!format || format->words || nBinning >= kMaxBinning) return;
  const size_t stride = strideOf(format->pack);
  m_followsRows = stride == size_t{3} * m_pixelStride;
  m_writesEveryByte = format->pack != Pack::argb;
  m_writer = RowWriter(format->pack, Depth::from8to8, m_binning, stride, m_width,
                       reductionOf<uint8_t>(8, 8, 0));
}

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nSrcBits, uint32_t nFormat,
                           uint32_t nLutMode, const uint16_t* pUserLut, uint32_t nBinning,
                           uint32_t nDstBits, bool guarded)
    : ColourOutput(nRoiWidth, nBinning, guarded) {
  const auto format = formatOf(nFormat);
  if (!format || nBinning >= kMaxBinning) return;
  const size_t stride = strideOf(format->pack);
  m_followsRows = stride == size_t{3} * m_pixelStride;
  m_writesEveryByte = format->pack != Pack::argb;
  const uint32_t nChannelBits = nDstBits / format->divisor;
  if (format->words) {
    // quirk: words-have-no-table. Every table mode moves the window one place up instead.
    const uint32_t nAdjust = isWindow(nLutMode) ? nLutMode : uint32_t(-1);
    m_writer = RowWriter(format->pack, Depth::from16to16, m_binning, stride, m_width,
                         reductionOf<uint16_t>(nSrcBits, nChannelBits, nAdjust));
  } else if (isWindow(nLutMode)) {
    m_writer = RowWriter(format->pack, Depth::from16to8, m_binning, stride, m_width,
                         reductionOf<uint8_t>(nSrcBits, nChannelBits, nLutMode));
  } else {
    Create10To8BitLUT(m_table, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
    m_writer = RowWriter(format->pack, m_binning, stride, m_width, m_table, nSrcBits - 10);
  }
}

void ConvertToOutputFormat8(const uint8_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                            uint8_t* pDst, uint32_t nFormat, uint32_t nBinning, int32_t bGuarded) {
  ColourOutput(nRoiWidth, nFormat, nBinning, bGuarded).convert(pImage, pDst, nRoiHeight);
}

void ConvertToOutputFormat16(const uint16_t* pImage, uint32_t nRoiWidth, uint32_t nRoiHeight,
                             uint32_t nSrcBits, void* pDst, uint32_t nFormat, uint32_t nLutMode,
                             const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits,
                             int32_t bGuarded) {
  ColourOutput(nRoiWidth, nSrcBits, nFormat, nLutMode, pUserLut, nBinning, nDstBits, bGuarded)
      .convert(pImage, pDst, nRoiHeight);
}

}  // namespace vistrel
