// Rows of samples at any place of a headerless file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vistrel::app {

// A packing, the bits that its samples have at most, and those from one sample to the next.
struct Packing {
  uint32_t code, bits, stored;
};

// Those that have names. 16-bit samples of fewer bits are found as those of 16.
std::vector<Packing> allPackings();

// How rows lie in a file.
struct Layout {
  Packing packing;
  uint32_t width;
  size_t stride;  // bytes from row to row; 0: no byte boundary between rows
  size_t skip;    // bytes before the first row
};

double bytesPerRow(const Layout& layout);

// The bytes of a row without padding.
size_t rowBytesOf(const Packing& packing, size_t width);

// The widest row that fits.
uint32_t widthOf(const Packing& packing, size_t rowBytes);

class RowReader {
 public:
  RowReader(const std::vector<uint8_t>& bytes, const Layout& layout);

  // Complete rows from the first one to the end of the file; the last one may lack padding.
  size_t rows() const { return rows_; }

  // The same with the fraction that is left.
  double span() const { return span_; }

  // Reads samples `first` to `first + count - 1` of row y.
  void read(size_t y, uint32_t first, uint32_t count, uint16_t* to);

 private:
  const std::vector<uint8_t>& bytes_;
  Layout layout_;
  size_t rows_ = 0;
  double span_ = 0;
  std::vector<uint16_t> unpacked_;
};

}  // namespace vistrel::app
