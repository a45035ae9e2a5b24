// Writes rows of output pixels: the kernel, its strides, the reduction, the table.
#pragma once

#include "output/rows.h"
#include "output/table.h"

namespace vistrel::core {

class RowWriter {
 public:
  RowWriter() = default;  // writes nothing

  // binning: 1..4. stride: distance between two source rows, in samples. The source of part() and
  // rows() has 8-bit or 16-bit samples, as depth specifies.
  RowWriter(Pack pack, Depth depth, unsigned binning, size_t stride, size_t width,
            Reduction reduction);

  // For a source of 16-bit samples to map first: each is shifted right by `tableShift`, then
  // replaced by its entry in `table`.
  RowWriter(Pack pack, unsigned binning, size_t stride, size_t width, const uint8_t* table,
            uint32_t tableShift);

  // Writes the first n pixels of a row of the result; their blocks begin at source.
  void part(const void* source, void* destination, size_t n) const;

  size_t rowBytes() const { return width_ * pixelBytes_; }
  size_t pixelBytes() const { return pixelBytes_; }

  // True if the result is an unchanged copy of the source's samples.
  bool copies() const { return copies_; }

  // Writes all rows without gaps; source points to the first sample of the image.
  void rows(const void* source, void* destination, size_t height) const;

 private:
  void mapped(const uint16_t* source, uint8_t* destination, size_t n) const;

  RowKernel row_ = nullptr;
  MapKernel map_ = nullptr;
  const uint8_t* table_ = nullptr;
  uint32_t tableShift_ = 0;
  unsigned binning_ = 1;
  size_t stride_ = 0, width_ = 0;
  size_t sourcePixel_ = 0, sourceSample_ = 0;  // samples per source pixel, bytes per sample
  size_t pixelBytes_ = 0;
  Reduction reduction_{};
  bool copies_ = false;
};

}  // namespace vistrel::core
