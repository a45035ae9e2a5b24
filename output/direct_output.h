// The sinks of algorithms that store bytes of the caller's format directly.
#pragma once

#include "common/rows/arena.h"
#include "output/direct_sink.h"
#include "output/plane_rows.h"
#include "output/ycc420_rows.h"

namespace vistrel::core {

// The rows of an image of one plane.
class DirectOutput final : public DirectImageSink {
 public:
  // top: the engine's row that becomes row 0 of the image. first: the first row that is kept.
  DirectOutput(const PlaneMemory& image, size_t rowBytes, int top, int first, Arena& arena)
      : image_(image), rowBytes_(rowBytes), top_(top), first_(first),
        line_(arena.take<unsigned char>(rowBytes)) {}

  DirectRowSink row(int y) override {
    const bool isDirect = y >= first_ && !image_.bypassesCaches;
    return DirectRowSink({isDirect ? placeOf(y) : line_});
  }

  void finish(int y) override {
    if (y >= first_ && image_.bypassesCaches)
      NonTemporalCopy(placeOf(y), line_).finish(line_ + rowBytes_);
  }

 private:
  unsigned char* placeOf(int y) const { return image_.first + (y - top_) * image_.stride; }

  PlaneMemory image_;
  size_t rowBytes_;
  int top_, first_;
  unsigned char* line_;  // a row that does not go straight to the image
};

// The same for luma and sums of pairs of pixels: rows of an even width.
class DirectYcc420 final : public DirectImageSink {
 public:
  DirectYcc420(Ycc420Rows& rows, size_t width, int top, int first, Arena& arena)
      : rows_(rows), width_(width), top_(top), first_(first),
        line_(arena.take<unsigned char>(width)) {}

  // The sums of a row that is dropped are overwritten by those of the first row that is kept.
  DirectRowSink row(int y) override {
    if (y < first_) return DirectRowSink({line_, rows_.sums()});
    rows_.begin(static_cast<size_t>(y - top_));
    return DirectRowSink({rows_.luma(), rows_.sums()});
  }

  void finish(int y) override {
    if (y < first_) return;
    rows_.converted(width_ / 2);
    rows_.end();
  }

 private:
  Ycc420Rows& rows_;
  size_t width_;
  int top_, first_;
  unsigned char* line_;  // a row that is dropped
};

}  // namespace vistrel::core
