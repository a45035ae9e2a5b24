// The job that an algorithm gets, and the algorithm at work: a sweep that waits for rows.
#pragma once

#include <new>
#include <optional>
#include <type_traits>
#include <utility>

#include "cfa/frame.h"
#include "common/mosaic.h"
#include "common/rows/arena.h"
#include "common/rows/row_sink.h"
#include "common/rows/row_source.h"
#include "common/rows/sweep.h"
#include "demosaic/direct_rows.h"

namespace vistrel::core {

template <class T>
class MosaicRing;

// Receives what algorithms leave in a work buffer besides the image.
template <class T>
class WorkMargins {
 public:
  // Called before row y of the image is made at `row`, while the ring holds its mosaic.
  virtual void guard(int y, const MosaicRing<T>& ring, T* row) = 0;
  // Called with the n samples after the end of row y, which is completed.
  virtual void beyond(int y, const T* samples, size_t n) = 0;

 protected:
  ~WorkMargins() = default;
};

template <class T>
struct DemosaicJob {
  RowSource<T>& source;
  Mosaic mosaic;                  // of the source's pixel (0, 0)
  int columns, height;            // of the source
  CfaRect roi;                    // the wanted rectangle; some algorithms only make the whole frame
  RowInterval rows;               // the rows of the roi to make now
  ImageSink<T>* image = nullptr;  // of the roi, unless the algorithm stores directly
  // The order of a pixel's samples: red comes first if red and blue are exchanged.
  Mosaic order = mosaic;
  unsigned bits;  // significant bits
  unsigned threshold = 0;
  WorkMargins<T>* margins = nullptr;
  std::optional<DirectJob> direct = {};
};

// Makes rows as its source gets them: a running algorithm, or ReadyRows.
template <class T>
class RowProcess {
 public:
  // Makes all rows that the source's rows before `end` allow.
  virtual void advance(int end) = 0;
  // Reads the source's rows first() .. last() - 1, as far as they exist.
  virtual int first() const = 0;
  virtual int last() const = 0;

 protected:
  ~RowProcess() = default;
};

// Algorithm(job, arena) takes its memory from the arena; its sweep() returns the Sweep to run.
template <class T, class Algorithm>
class RunningDemosaic final : public RowProcess<T> {
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

// Returns null if the arena only counts.
template <class T>
using MakeDemosaic = RowProcess<T>*(const DemosaicJob<T>& job, Arena& arena);

template <class T, class Algorithm>
RowProcess<T>* makeDemosaic(const DemosaicJob<T>& job, Arena& arena) {
  using Running = RunningDemosaic<T, Algorithm>;
  static_assert(std::is_trivially_destructible_v<Running>, "its memory just ends with the arena");
  Running* const place = arena.take<Running>(1);
  if (place) return new (place) Running(job, arena);
  Running(job, arena);
  return nullptr;
}

}  // namespace vistrel::core
