// The choice of output for a colour image: its layout, format, binning and table.
#pragma once

#include <cstdint>

#include "output/row_writer.h"
#include "output/table.h"

namespace vistrel::core {

// quirk: gray-stride. Rows of a gray block lie nStride samples apart, a third of what colour rows
// do; at binning 1 they lie a guarded row of the output's width apart, whatever the layout.
constexpr size_t grayStride(unsigned binning, uint32_t nStride, uint32_t nWidth) {
  return binning == 1 ? size_t{3} * (nWidth + 4) : nStride;
}

class ColourOutput {
 public:
  // Of an 8-bit image.
  ColourOutput(uint32_t nRoiWidth, uint32_t nFormat, uint32_t nBinning, bool guarded);

  // Of a 16-bit image.
  ColourOutput(uint32_t nRoiWidth, uint32_t nSrcBits, uint32_t nFormat, uint32_t nLutMode,
               const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits, bool guarded);

  ColourOutput(const ColourOutput&) = delete;
  ColourOutput& operator=(const ColourOutput&) = delete;

  // True when row y of the result needs just the image rows of block row y: the result can then
  // follow the image row by row.
  bool followsRows() const { return followsRows_; }

  // True when rows of the result are image rows as they are.
  bool copiesRows() const { return followsRows_ && writer_.copies(); }

  // False when bytes of the result stay as the caller had them.
  bool writesEveryByte() const { return writesEveryByte_; }

  size_t rowBytes() const { return writer_.rowBytes(); }
  size_t pixelBytes() const { return writer_.pixelBytes(); }

  // n pixels of a row of the result from the image's block row, where the first block begins.
  void part(const void* blockRow, void* destination, size_t n) const {
    writer_.part(blockRow, destination, n);
  }

  // All rows from the layout's first sample. Nothing at all where there is no such format or
  // binning.
  template <class T>
  void convert(const T* image, void* destination, uint32_t nRoiHeight) const {
    writer_.rows(image + start_, destination, nRoiHeight);
  }

 private:
  ColourOutput(uint32_t nRoiWidth, uint32_t nBinning, bool guarded);
  size_t strideOf(Pack pack) const;

  uint32_t width_, binning_;
  uint32_t pixelStride_;  // of the image, in pixels
  size_t start_;          // of the image, in samples
  bool followsRows_ = false;
  bool writesEveryByte_ = true;
  RowWriter writer_;
  uint8_t table_[kTableEntries];
};

}  // namespace vistrel::core
