// What stands between a source and its rows of output pixels: kernel, stride, reduction, table.
#pragma once

#include "output/rows.h"
#include "output/table.h"

namespace vistrel {

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

  size_t rowBytes() const { return m_width * m_pixelBytes; }
  size_t pixelBytes() const { return m_pixelBytes; }

  // The result is the source's samples as they are.
  bool copies() const { return m_copies; }

  // All rows, packed; source: the first sample of the image.
  void rows(const void* source, void* destination, size_t height) const;

 private:
  void mapped(const uint16_t* source, uint8_t* destination, size_t n) const;

  RowFunction m_row = nullptr;
  MapFunction m_map = nullptr;
  const uint8_t* m_table = nullptr;
  uint32_t m_tableShift = 0;
  unsigned m_binning = 1;
  size_t m_stride = 0, m_width = 0;
  size_t m_sourcePixel = 0, m_sourceSample = 0;  // samples a source pixel, bytes a sample
  size_t m_pixelBytes = 0;
  Reduction m_reduction{};
  bool m_copies = false;
};

}  // namespace vistrel
