#include "output/colour_output.h"

#include <optional>

#include "vistrel/vistrel.h"

namespace vistrel::core {

namespace {

// How to write a colour format. A channel has nDstBits / divisor bits.
struct Format {
  Pack pack;
  bool is16Bit;
  unsigned divisor;
};

std::optional<Format> formatOf(uint32_t nFormat) {
  switch (nFormat) {
    case IMG_FMT_BGR24: return Format{Pack::bgr, false, 3};
    case IMG_FMT_ARGB32:
    case IMG_FMT_ARGB32_4:
      return Format{Pack::argb, false, 3};  // quirk: argb-ten-bits. 32 bits give ten per channel.
    case IMG_FMT_GRAY8: return Format{Pack::gray, false, 1};
    case IMG_FMT_GRAY16: return Format{Pack::gray, true, 1};
    case IMG_FMT_BGR48: return Format{Pack::bgr, true, 3};
    default: return std::nullopt;
  }
}

}  // namespace

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nBinning, bool guarded)
    : width_(nRoiWidth), binning_(nBinning + 1),
      layout_(guarded ? WorkLayout::guarded(binning_ * nRoiWidth)
                      : WorkLayout::compact(binning_ * nRoiWidth)) {}

size_t ColourOutput::strideOf(Pack pack) const {
  return pack == Pack::gray ? grayStride(binning_, layout_.pixelStride(), width_) : layout_.S;
}

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nFormat, uint32_t nBinning, bool guarded)
    : ColourOutput(nRoiWidth, nBinning, guarded) {
  const auto format = formatOf(nFormat);
  if (!format || format->is16Bit || nBinning >= kMaxBinning) return;
  const size_t stride = strideOf(format->pack);
  followsRows_ = stride == layout_.S;
  writesEveryByte_ = format->pack != Pack::argb;
  writer_ = RowWriter(format->pack, Depth::from8to8, binning_, stride, width_,
                      reductionOf<uint8_t>(8, 8, 0));
}

ColourOutput::ColourOutput(uint32_t nRoiWidth, uint32_t nSrcBits, uint32_t nFormat,
                           uint32_t nLutMode, const uint16_t* pUserLut, uint32_t nBinning,
                           uint32_t nDstBits, bool guarded)
    : ColourOutput(nRoiWidth, nBinning, guarded) {
  const auto format = formatOf(nFormat);
  if (!format || nBinning >= kMaxBinning) return;
  const size_t stride = strideOf(format->pack);
  followsRows_ = stride == layout_.S;
  writesEveryByte_ = format->pack != Pack::argb;
  const uint32_t nChannelBits = nDstBits / format->divisor;
  if (format->is16Bit) {
    // quirk: no-table-for-16-bits. Every table mode moves the window up by one bit instead.
    const uint32_t nAdjust = isWindow(nLutMode) ? nLutMode : static_cast<uint32_t>(-1);
    writer_ = RowWriter(format->pack, Depth::from16to16, binning_, stride, width_,
                        reductionOf<uint16_t>(nSrcBits, nChannelBits, nAdjust));
  } else if (isWindow(nLutMode)) {
    writer_ = RowWriter(format->pack, Depth::from16to8, binning_, stride, width_,
                        reductionOf<uint8_t>(nSrcBits, nChannelBits, nLutMode));
  } else {
    Create10To8BitLUT(table_, nLutMode, pUserLut, static_cast<int32_t>(nSrcBits - 10));
    writer_ = RowWriter(format->pack, binning_, stride, width_, table_, nSrcBits - 10);
  }
}

}  // namespace vistrel::core
