// Rows of an image whose pixels are finished for the eye before they are stored.
#pragma once

#include "finish/finish_rows.h"
#include "output/pixel_rows.h"

namespace vistrel::core {

// Takes pixels of 16-bit samples.
class FinishedRows final : public PixelRows {
 public:
  FinishedRows(const Finish& finish, PixelRows& rows, Arena& arena)
      : finish_(finish), rows_(rows), chunk_(arena.take<unsigned char>(kChunk * resultBytes())) {}

  void* inPlace(size_t) override { return nullptr; }
  void begin(size_t y) override { rows_.begin(y); }
  void* next() override { return nullptr; }
  void append(const void* pixels, size_t n) override;
  void end() override { rows_.end(); }

 private:
  static constexpr size_t kChunk = 256;  // pixels

  size_t resultBytes() const { return finish_.channels * finish_.sampleBytes; }

  const Finish finish_;
  PixelRows& rows_;
  unsigned char* chunk_;
};

}  // namespace vistrel::core
