// What an algorithm is asked for, and what it is then: a sweep that waits for rows.
#pragma once

#include <new>
#include <type_traits>
#include <utility>

#include "cfa/frame.h"
#include "common/mosaic.h"
#include "common/rows/arena.h"
#include "common/rows/row_sink.h"
#include "common/rows/row_source.h"
#include "common/rows/sweep.h"

namespace vistrel::core {

template <class T>
class MosaicRing;

// What algorithms leave in a work buffer besides the image.
template <class T>
class WorkMargins {
 public:
  // Row y of the image is about to be made at `row`; the ring holds its mosaic.
  virtual void guard(int y, const MosaicRing<T>& ring, T* row) = 0;
  // n samples behind the end of row y, which is finished.
  virtual void beyond(int y, const T* samples, size_t n) = 0;

 protected:
  ~WorkMargins() = default;
};

template <class T>
struct DemosaicJob {
  RowSource<T>& source;
  Mosaic mosaic;          // of the source's pixel (0, 0)
  int columns, height;    // of the source
  CfaRect roi;            // what is wanted of it; some algorithms make all of it only
  RowInterval rows;       // those to make now, of the roi's
  ImageSink<T>& image;    // of the roi
  Mosaic order = mosaic;  // of the samples in a pixel: red and blue exchanged for red first
  unsigned bits;          // significant ones
  unsigned threshold = 0;
  WorkMargins<T>* margins = nullptr;
};

// An algorithm at work.
template <class T>
class Demosaic {
 public:
  // Makes what the source's rows before `end` allow.
  virtual void advance(int end) = 0;
  // The source's rows from first() to last() - 1 are read, as far as it has them.
  virtual int first() const = 0;
  virtual int last() const = 0;

 protected:
  ~Demosaic() = default;
};

// Algorithm(job, arena) takes its memory; sweep() then returns the Sweep that does the work.
template <class T, class Algorithm>
class RunningDemosaic final : public Demosaic<T> {
 public:
  RunningDemosaic(const DemosaicJob<T>& job, Arena& arena)
      : algorithm_(job, arena), sweep_(algorithm_.sweep()) {}
  RunningDemosaic(const RunningDemosaic&) = delete;
  RunningDemosaic& operator=(const RunningDemosaic&) = delete;

  void advance(int end) override { sweep_.advance(end); }
  int first() const override { return sweep_.first(); }
  int last() const override { return sweep_.last(); }

 private:
  Algorithm algorithm_;
  decltype(std::declval<Algorithm&>().sweep()) sweep_;
};

// Null from an arena that counts.
template <class T>
using MakeDemosaic = Demosaic<T>*(const DemosaicJob<T>& job, Arena& arena);

template <class T, template <class> class Algorithm>
Demosaic<T>* makeDemosaic(const DemosaicJob<T>& job, Arena& arena) {
  using Running = RunningDemosaic<T, Algorithm<T>>;
  static_assert(std::is_trivially_destructible_v<Running>, "its memory just ends with the arena");
  Running* const place = arena.take<Running>(1);
  if (place) return new (place) Running(job, arena);
  Running(job, arena);
  return nullptr;
}

}  // namespace vistrel::core
