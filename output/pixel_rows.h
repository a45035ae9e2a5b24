// The rows of the caller's image, as finished pixels reach them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/rows/arena.h"
#include "common/rows/nontemporal.h"
#include "output/pixels.h"

namespace vistrel::core {

// Rows are written one after the other, each from left to right.
class PixelRows {
 public:
  // Row y in place, for whoever can make its final bytes there; null where that is not possible.
  virtual void* inPlace(size_t y) = 0;

  virtual void begin(size_t y) = 0;
  // The next n pixels of the row.
  virtual void append(const void* pixels, size_t n) = 0;
  virtual void end() = 0;

 protected:
  ~PixelRows() = default;
};

struct ImageMemory {
  unsigned char* pixels;  // row 0
  ptrdiff_t stride;       // bytes from row to row
  bool bypassesCaches;    // nobody reads it soon
};

// Pixels that lie side by side.
class PackedRows final : public PixelRows {
 public:
  // convert: from pixels of sourceBytes to such of pixelBytes; null if they stay as they are.
  // width: pixels of a row.
  PackedRows(const ImageMemory& image, size_t width, size_t sourceBytes, size_t pixelBytes,
             PixelFunction convert, Arena& arena);

  void* inPlace(size_t y) override;
  void begin(size_t y) override;
  void append(const void* pixels, size_t n) override;
  void end() override;

 private:
  unsigned char* row(size_t y) const {
    return image_.pixels + static_cast<ptrdiff_t>(y) * image_.stride;
  }

  ImageMemory image_;
  size_t sourceBytes_, pixelBytes_;
  PixelFunction convert_;
  unsigned char* line_ = nullptr;  // a row, before it goes past the caches
  unsigned char* next_ = nullptr;
  NonTemporalCopy copy_;
};

}  // namespace vistrel::core
