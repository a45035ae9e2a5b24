// Sinks for bytes of the caller's format: of one row, and of an image.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/rows/nontemporal.h"
#include "output/pixels.h"

namespace vistrel::core {

// Where a row goes.
struct DirectPlace {
  uint8_t* pixels;
  PairSums sums = {};  // of a row that chroma is made of
};

// A kernel stores a row at place() and reports its progress.
class DirectRowSink {
 public:
  explicit DirectRowSink(const DirectPlace& place) : place_(place) {}

  const DirectPlace& place() const { return place_; }

  // Pixels begin .. end - 1 and all before them are stored.
  void written(size_t begin, size_t end) const { source_.fetch(begin, end); }

  // The row to prefetch while this one is made: the one that is read next.
  void fetch(Prefetcher source) { source_ = source; }

 private:
  DirectPlace place_;
  Prefetcher source_;
};

// Hands out the sinks of an image's rows, in order.
class DirectImageSink {
 public:
  virtual DirectRowSink row(int y) = 0;
  // All of row y is stored.
  virtual void finish(int y) = 0;

 protected:
  ~DirectImageSink() = default;
};

}  // namespace vistrel::core
