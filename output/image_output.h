// Turns the engine's rows of samples into rows of finished pixels.
#pragma once

#include <algorithm>
#include <cstdint>

#include "common/rows/row_sink.h"
#include "output/means.h"
#include "output/pixel_rows.h"
#include "output/row_writer.h"

namespace vistrel::core {

// How to turn the engine's rows into those of the image.
struct OutputShape {
  RowWriter writer;    // bins and reduces; PixelRows take its result
  bool changes;        // whether it changes anything
  bool swapsRedBlue;   // in reduced pixels
  unsigned binning;    // rows and columns per pixel
  size_t left, width;  // columns before the first one that is kept; pixels of the result
  int top;             // the first of the engine's rows that is kept
  size_t pixelBytes;   // per pixel that PixelRows take
  // Makes the means of bins, which the writer then takes as pixels; null if the writer bins.
  MeanFunction mean = nullptr;
  size_t pitch = 0;      // samples from one row of a bin to the next
  uint32_t ceiling = 0;  // of samples in means
  size_t meanBytes = 0;  // per mean
};

// Collects the rows of a bin, then reduces them a chunk at a time, so that everything stays in the
// nearest cache.
class ChunkedOutput {
 public:
  static constexpr size_t kChunk = ChunkListener::kChunk;  // pixels

  ChunkedOutput(const OutputShape& shape, PixelRows& rows, Arena& arena)
      : shape_(shape), rows_(rows), chunk_(arena.take<unsigned char>(kChunk * shape.pixelBytes)),
        means_(arena.take<unsigned char>(kChunk * shape.meanBytes)) {}

  // Adds n pixels to the row that was begun. bins: the first sample of the first bin.
  void append(const void* bins, size_t n, size_t bytesABin) {
    const auto* from = static_cast<const unsigned char*>(bins);
    if (!shape_.changes && !shape_.mean) return rows_.append(from, n);
    for (size_t done = 0; done < n; done += kChunk) {
      const size_t count = std::min(n - done, kChunk);
      appendChunk(from + done * bytesABin, count);
    }
  }

 private:
  void appendChunk(const unsigned char* bins, size_t n) {
    if (shape_.mean) shape_.mean(bins, shape_.pitch, n, shape_.ceiling, means_);
    const unsigned char* const from = shape_.mean ? means_ : bins;
    if (!shape_.changes) return rows_.append(from, n);
    void* const place = rows_.next();
    auto* const pixels = place ? static_cast<unsigned char*>(place) : chunk_;
    shape_.writer.part(from, pixels, n);
    if (shape_.swapsRedBlue) swapRedBlue(pixels, n);
    rows_.append(pixels, n);
  }

  void swapRedBlue(unsigned char* pixel, size_t n) const {
    const size_t bytes = shape_.pixelBytes / 3;
    for (; n > 0; --n, pixel += shape_.pixelBytes)
      std::swap_ranges(pixel, pixel + bytes, pixel + 2 * bytes);
  }

  const OutputShape shape_;
  PixelRows& rows_;
  unsigned char *chunk_, *means_;
};

// The sink of a demosaic algorithm.
template <class T>
class ImageOutput final : public ImageSink<T>, private ChunkListener {
 public:
  // columns: those of the engine's rows, which may leave some out. first: the first row that is
  // kept.
  ImageOutput(const OutputShape& shape, size_t columns, int first, PixelRows& rows, Arena& arena)
      : shape_(shape), columns_(columns), first_(first), rows_(rows), chunks_(shape, rows, arena),
        stage_(arena.take<T>(shape.binning * pitchOf(columns))) {}

  // The distance between two rows of a bin, in samples.
  static size_t pitchOf(size_t columns) { return (3 * columns + 63) / 64 * 64; }

  RowSink<T> row(int y) override {
    if (y < first_) return RowSink<T>(stage_);
    const int row = y - shape_.top;
    if (!shape_.changes && !shape_.mean && columns_ == shape_.width)
      if (void* const pixels = rows_.inPlace(static_cast<size_t>(row)))
        return RowSink<T>(static_cast<T*>(pixels));
    RowSink<T> sink(stage_ + static_cast<size_t>(placeOf(row)) * pitchOf(columns_));
    if (!endsBin(row)) return sink;
    rows_.begin(static_cast<size_t>(row) / shape_.binning);
    done_ = 0;
    sink.listen(this, row);
    return sink;
  }

  void finish(int y, RowSink<T>& sink) override {
    sink.finish(columns_);
    if (y >= first_ && isStaged(sink) && endsBin(y - shape_.top)) rows_.end();
  }

 private:
  int placeOf(int row) const { return row % static_cast<int>(shape_.binning); }  // in its bin
  bool endsBin(int row) const { return placeOf(row) + 1 == static_cast<int>(shape_.binning); }
  bool isStaged(const RowSink<T>& sink) const {
    return stage_ <= sink.row() && sink.row() < stage_ + shape_.binning * pitchOf(columns_);
  }

  // The last row of a bin is stored up to column `end`.
  void written(int, size_t, size_t end) override {
    const size_t bin = shape_.binning, wanted = shape_.left + shape_.width * bin;
    const size_t until = (std::clamp(end, shape_.left, wanted) - shape_.left) / bin;
    if (until == done_) return;
    chunks_.append(stage_ + 3 * (shape_.left + bin * done_), until - done_, 3 * bin * sizeof(T));
    done_ = until;
  }

  const OutputShape shape_;
  size_t columns_;
  int first_;
  PixelRows& rows_;
  ChunkedOutput chunks_;
  T* stage_;
  size_t done_ = 0;  // pixels of the row that was begun
};

}  // namespace vistrel::core
