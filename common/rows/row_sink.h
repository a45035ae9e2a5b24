// Sinks for finished pixels: of one row, and of an image.
#pragma once

#include <cstddef>

#include "common/rows/nontemporal.h"

namespace vistrel::core {

// Is notified of a row's pixels while they are made, a chunk at a time.
class ChunkListener {
 public:
  static constexpr size_t kChunk = 256;  // pixels, approximately

  virtual void written(int y, size_t begin, size_t end) = 0;

 protected:
  ~ChunkListener() = default;
};

// A kernel stores a row's pixels, three samples each, at pixels() and, unless copy() is null, also
// at copy(), and reports its progress. The sink does the rest, as its owner has set it up.
//
// Measured: copying from pixels() a chunk at a time takes up to a fifth longer than storing twice.
template <class T>
class RowSink {
 public:
  explicit RowSink(T* pixels, T* copy = nullptr) : pixels_(pixels), copy_(copy) {}

  T* row() const { return pixels_; }
  T* pixels() const { return pixels_ + 3 * first_; }
  T* copy() const { return copy_ && !isHeld_ ? copy_ + 3 * first_ : nullptr; }

  // Pixels may still change until the row is completed.
  void hold() { isHeld_ = true; }

  // Moves pixel 0 to the right by n pixels.
  void skip(size_t n) { first_ += n; }

  // Reports a kernel's progress. It lives in registers: no store of a pixel can change it.
  class Progress {
   public:
    explicit Progress(RowSink& sink)
        : source_(sink.source_), first_(sink.first_),
          watched_(sink.isWatched_ && !sink.isHeld_ ? &sink : nullptr) {}

    // Pixels begin .. end - 1 and all before them are stored. The sink is notified once per chunk,
    // since a call costs as much as some twenty pixels.
    void written(size_t begin, size_t end) const {
      source_.fetch(first_ + begin, first_ + end);
      if (watched_ && begin / ChunkListener::kChunk != end / ChunkListener::kChunk)
        watched_->pass(first_ + end);
    }

   private:
    Prefetcher source_;
    size_t first_;
    RowSink* watched_;
  };
  Progress progress() { return Progress(*this); }

  // The whole row, which has `columns` pixels, is stored.
  void finish(size_t columns) {
    if (copy_ && isHeld_) std::memcpy(copy_, pixels_, 3 * columns * sizeof(T));
    work_.finish(workEnd_);
    result_.finish(pixels_ + 3 * columns);
    if (listener_) listener_->written(y_, passed_, columns);
  }

  // Copies pixels begin .. end - 1 from pixels() to copy(), if they are only stored at pixels().
  void copyPixels(size_t begin, size_t end) const {
    if (copy_) std::memcpy(copy() + 3 * begin, pixels() + 3 * begin, 3 * (end - begin) * sizeof(T));
  }

  // Rows to prefetch while this one is made: the one that is read next, and the result's row if
  // some of its bytes stay unchanged.
  void fetch(Prefetcher source) { source_ = source; }
  void fetchDestination(Prefetcher destination) { destination_ = destination, isWatched_ = true; }

  // Non-temporal copies. The first one ends at workEnd, the second one with the last pixel.
  void writeNonTemporal(NonTemporalCopy work, const T* workEnd) {
    work_ = work, workEnd_ = workEnd, isWatched_ = true;
  }
  void writeResultNonTemporal(NonTemporalCopy result) { result_ = result, isWatched_ = true; }

  void listen(ChunkListener* listener, int y) { listener_ = listener, y_ = y, isWatched_ = true; }

 private:
  // Never inlined, so that kernels stay small.
  [[gnu::noinline]] void pass(size_t end) {
    destination_.fetch(passed_, end);
    work_.upTo(pixels_ + 3 * end);
    result_.upTo(pixels_ + 3 * end);
    if (listener_) listener_->written(y_, passed_, end);
    passed_ = end;
  }

  T *pixels_, *copy_;
  size_t first_ = 0;
  bool isHeld_ = false;
  bool isWatched_ = false;  // whether anything below except source_ is set
  NonTemporalCopy work_, result_;
  const T* workEnd_ = nullptr;
  Prefetcher source_, destination_;
  ChunkListener* listener_ = nullptr;
  int y_ = 0;
  size_t passed_ = 0;  // pixels that pass() has seen
};

// Hands out the sinks of an image's rows, in order.
template <class T>
class ImageSink {
 public:
  virtual RowSink<T> row(int y) = 0;
  // All of row y is stored.
  virtual void finish(int y, RowSink<T>& sink) = 0;

 protected:
  ~ImageSink() = default;
};

// Rows in memory and nothing else. step: distance between two rows, in samples.
template <class T>
class PlainImage final : public ImageSink<T> {
 public:
  PlainImage(T* pixels, ptrdiff_t step) : pixels_(pixels), step_(step) {}

  RowSink<T> row(int y) override { return RowSink<T>(pixels_ + y * step_); }
  void finish(int, RowSink<T>&) override {}

 private:
  T* pixels_;
  ptrdiff_t step_;
};

}  // namespace vistrel::core
