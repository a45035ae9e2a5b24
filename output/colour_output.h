// Chooses how to write a colour image, by its layout, format, binning and table.
#pragma once

#include <cstdint>

#include "common/work_layout.h"
#include "output/row_writer.h"
#include "output/table.h"

namespace vistrel::core {

class ColourOutput {
 public:
  // For an 8-bit image.
  ColourOutput(uint32_t nRoiWidth, uint32_t nFormat, uint32_t nBinning, bool guarded);

  // For a 16-bit image.
  ColourOutput(uint32_t nRoiWidth, uint32_t nSrcBits, uint32_t nFormat, uint32_t nLutMode,
               const uint16_t* pUserLut, uint32_t nBinning, uint32_t nDstBits, bool guarded);

  ColourOutput(const ColourOutput&) = delete;
  ColourOutput& operator=(const ColourOutput&) = delete;

  // True if row y of the result needs only the image rows of block row y. Rows of the result can
  // then be written as soon as their image rows are completed.
  bool followsRows() const { return followsRows_; }

  // True if rows of the result are unchanged image rows.
  bool copiesRows() const { return followsRows_ && writer_.copies(); }

  // False if some bytes of the result keep the caller's values.
  bool writesEveryByte() const { return writesEveryByte_; }

  size_t rowBytes() const { return writer_.rowBytes(); }
  size_t pixelBytes() const { return writer_.pixelBytes(); }

  // Writes n pixels of a row of the result; blockRow points to the first pixel's block.
  void part(const void* blockRow, void* destination, size_t n) const {
    writer_.part(blockRow, destination, n);
  }

  // Writes all rows; `image` points to the layout's first sample. Writes nothing if the format or
  // the binning is unknown.
  template <class T>
  void convert(const T* image, void* destination, uint32_t nRoiHeight) const {
    writer_.rows(image + layout_.row(0), destination, nRoiHeight);
  }

 private:
  ColourOutput(uint32_t nRoiWidth, uint32_t nBinning, bool guarded);
  size_t strideOf(Pack pack) const;

  uint32_t width_, binning_;
  WorkLayout layout_;  // the layout of the image
  bool followsRows_ = false;
  bool writesEveryByte_ = true;
  RowWriter writer_;
  uint8_t table_[kTableEntries];
};

}  // namespace vistrel::core
