// The choice of output for a colour image: its layout, format, binning and table.
#pragma once

#include <cstdint>

#include "common/work_layout.h"
#include "output/row_writer.h"
#include "output/table.h"

namespace vistrel::core {

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
    writer_.rows(image + layout_.row(0), destination, nRoiHeight);
  }

 private:
  ColourOutput(uint32_t nRoiWidth, uint32_t nBinning, bool guarded);
  size_t strideOf(Pack pack) const;

  uint32_t width_, binning_;
  WorkLayout layout_;  // of the image
  bool followsRows_ = false;
  bool writesEveryByte_ = true;
  RowWriter writer_;
  uint8_t table_[kTableEntries];
};

}  // namespace vistrel::core
