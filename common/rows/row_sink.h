// Where finished pixels go: one row, and an image of them.
#pragma once

#include <cstddef>

#include "common/rows/nontemporal.h"

namespace vistrel::core {

// Hears of a row's pixels while they are made, a chunk at a time.
class ChunkListener {
 public:
  static constexpr size_t kChunk = 256;  // pixels, about

  virtual void written(int y, size_t begin, size_t end) = 0;

 protected:
  ~ChunkListener() = default;
};

// A kernel stores a row's pixels, three samples each, at pixels() and, unless it is null, at copy()
// too, and says how far it has come. The rest is the sink's affair, as its owner has set it up.
template <class T>
class RowSink {
 public:
  explicit RowSink(T* pixels, T* copy = nullptr) : pixels_(pixels), copy_(copy) {}

  T* row() const { return pixels_; }
  T* pixels() const { return pixels_ + 3 * first_; }
  T* copy() const { return copy_ && !isHeld_ ? copy_ + 3 * first_ : nullptr; }

  // Pixels may still change until the row is finished.
  void hold() { isHeld_ = true; }

  // From here on pixels are counted from the n-th on.
  void skip(size_t n) { first_ += n; }

  // How a kernel says how far it has come. It lies in registers: no store of a pixel can change it.
  class Progress {
   public:
    explicit Progress(RowSink& sink)
        : source_(sink.source_), first_(sink.first_),
          watched_(sink.isWatched_ && !sink.isHeld_ ? &sink : nullptr) {}

    // Pixels begin .. end - 1 are stored, and all before them. The sink hears of it a chunk at a
    // time: a call costs as much as some twenty pixels.
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

  // The whole row is stored, which has so many pixels.
  void finish(size_t columns) {
    if (copy_ && isHeld_) std::memcpy(copy_, pixels_, 3 * columns * sizeof(T));
    work_.finish(workEnd_);
    result_.finish(pixels_ + 3 * columns);
    if (listener_) listener_->written(y_, passed_, columns);
  }

  // Copies pixels begin .. end - 1 from pixels() to copy(): those that were stored there alone.
  void copyPixels(size_t begin, size_t end) const {
    if (copy_) std::memcpy(copy() + 3 * begin, pixels() + 3 * begin, 3 * (end - begin) * sizeof(T));
  }

  // What is fetched while the row is made: a row that is read next, and the result's row where some
  // of its bytes stay.
  void fetch(Prefetcher source) { source_ = source; }
  void fetchDestination(Prefetcher destination) { destination_ = destination, isWatched_ = true; }

  // Copies past the caches. The first ends at workEnd, the second with the last pixel.
  void stream(NonTemporalCopy work, const T* workEnd) {
    work_ = work, workEnd_ = workEnd, isWatched_ = true;
  }
  void streamResult(NonTemporalCopy result) { result_ = result, isWatched_ = true; }

  void listen(ChunkListener* listener, int y) { listener_ = listener, y_ = y, isWatched_ = true; }

 private:
  // A call, so that kernels stay small.
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
  bool isWatched_ = false;  // anything below but the source is set
  NonTemporalCopy work_, result_;
  const T* workEnd_ = nullptr;
  Prefetcher source_, destination_;
  ChunkListener* listener_ = nullptr;
  int y_ = 0;
  size_t passed_ = 0;  // pixels that pass() has seen
};

// Hands out the sinks of an image's rows, one after the other.
template <class T>
class ImageSink {
 public:
  virtual RowSink<T> row(int y) = 0;
  // Row y is stored, all of it.
  virtual void finish(int y, RowSink<T>& sink) = 0;

 protected:
  ~ImageSink() = default;
};

// Rows in memory, and nothing else. step: from row to row, in samples.
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
