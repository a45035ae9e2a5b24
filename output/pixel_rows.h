// The rows of the caller's image, which receive finished pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/rows/arena.h"
#include "output/pixels.h"
#include "output/plane_rows.h"

namespace vistrel::core {

// Rows are written one after the other, each from left to right.
class PixelRows {
 public:
  // Returns row y for callers that can store its final samples in place; null if that is not
  // possible.
  virtual void* inPlace(size_t y) = 0;

  virtual void begin(size_t y) = 0;
  // Returns where the next pixels of the row may be made before append() is called with them; null
  // if it converts them.
  virtual void* next() = 0;
  // Appends n pixels to the row.
  virtual void append(const void* pixels, size_t n) = 0;
  virtual void end() = 0;

 protected:
  ~PixelRows() = default;
};

// Pixels whose samples lie side by side.
class InterleavedRows final : public PixelRows {
 public:
  // convert: turns pixels of sourceBytes into pixels of pixelBytes; null if they stay as they are.
  // width: pixels per row.
  InterleavedRows(const PlaneMemory& image, size_t width, size_t sourceBytes, size_t pixelBytes,
                  PixelFunction convert, Arena& arena);

  void* inPlace(size_t y) override;
  void begin(size_t y) override;
  void* next() override;
  void append(const void* pixels, size_t n) override;
  void end() override;

 private:
  // Whether samples may be stored one by one there: rows of 16-bit ones may begin at odd addresses.
  bool isAligned(const void* pixels) const {
    return sourceBytes_ % 2 == 1 || reinterpret_cast<uintptr_t>(pixels) % 2 == 0;
  }

  PlaneRows rows_;
  size_t sourceBytes_, pixelBytes_;
  PixelFunction convert_;
};

// Pixels of three samples, each in a plane of its own, or what a kernel makes of them.
class PlanarRows final : public PixelRows {
 public:
  PlanarRows(const PlaneMemory (&planes)[3], size_t width, size_t sampleBytes,
             PlanesFunction convert, Arena& arena);

  void* inPlace(size_t) override { return nullptr; }
  void begin(size_t y) override;
  void* next() override { return nullptr; }
  void append(const void* pixels, size_t n) override;
  void end() override;

 private:
  PlaneRows planes_[3];
  size_t sampleBytes_;
  PlanesFunction convert_;
};

}  // namespace vistrel::core
