// The rows of an image of luma, and of chroma that blocks of 2x2 pixels share.
#pragma once

#include "output/pixel_rows.h"

namespace vistrel::core {

struct Ycc420Planes {
  PlaneMemory luma;
  PlaneMemory chroma[2];  // Cb and Cr; if they come in pairs, only the first one
  bool inPairs;
};

// Takes pixels of bytes blue, green, red. The first row must be even.
class Ycc420Rows final : public PixelRows {
 public:
  Ycc420Rows(const Ycc420Planes& planes, size_t width, size_t height, Arena& arena);

  void* inPlace(size_t) override { return nullptr; }
  void begin(size_t y) override;
  void* next() override { return nullptr; }
  void append(const void* pixels, size_t n) override;
  void end() override;

 private:
  void repeatLast(const unsigned char* pixel);
  void appendLower(const unsigned char* pixels, size_t n);
  void makeChroma(size_t x, const unsigned char* lower, size_t n);

  const PixelFormatKernels& kernels_;
  bool inPairs_;
  size_t width_, height_;
  PlaneRows luma_, first_, second_;
  unsigned char* upper_;      // the upper row of a pair
  unsigned char waiting_[6];  // a block of the lower row, of which the left pixel may arrive first
  bool isLower_ = false;      // this row completes a pair; so does a last row without a partner
  bool isUpper_ = false;
  size_t x_ = 0;  // pixels of this row so far
};

}  // namespace vistrel::core
