// What stands between a source and its rows of output pixels: kernel, stride, reduction, table.
#pragma once

#include "output/rows.h"
#include "output/table.h"

namespace vistrel::core {

class RowWriter {
 public:
  RowWriter() = default;  // writes nothing

  // binning: 1..4. stride: distance of two source rows, in samples. The source that part()
  // and rows() take points to bytes or words, as depth says.
  RowWriter(Pack pack, Depth depth, unsigned binning, size_t stride, size_t width,
            Reduction reduction);

  // A source of words that each pass through `table` first, shifted right by `tableShift`.
  RowWriter(Pack pack, unsigned binning, size_t stride, size_t width, const uint8_t* table,
            uint32_t tableShift);

  // The first n pixels of a row of the result from the blocks that begin at source.
  void part(const void* source, void* destination, size_t n) const;

  size_t rowBytes() const { return width_ * pixelBytes_; }
  size_t pixelBytes() const { return pixelBytes_; }

  // The result is the source's samples as they are.
  bool copies() const { return copies_; }

  // All rows, packed; source: the first sample of the image.
  void rows(const void* source, void* destination, size_t height) const;

 private:
  void mapped(const uint16_t* source, uint8_t* destination, size_t n) const;

  RowFunction row_ = nullptr;
  MapFunction map_ = nullptr;
  const uint8_t* table_ = nullptr;
  uint32_t tableShift_ = 0;
  unsigned binning_ = 1;
  size_t stride_ = 0, width_ = 0;
  size_t sourcePixel_ = 0, sourceSample_ = 0;  // samples a source pixel, bytes a sample
  size_t pixelBytes_ = 0;
  Reduction reduction_{};
  bool copies_ = false;
};

}  // namespace vistrel::core
