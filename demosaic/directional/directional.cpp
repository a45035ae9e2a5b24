#include "common/simd/simd.h"
#include "cpu/level.h"
#include "demosaic/algorithm.h"
#include "demosaic/directional/directional_rings.h"

#define VISTREL_BODY "demosaic/directional/directional_rows-inl.h"
#include "common/simd/each_level.h"

namespace vistrel::core {

namespace {

template <class T, class Lane>
class Directional {
 public:
  Directional(const DemosaicJob<T>& job, Arena& arena)
      : job_(job), columns_(static_cast<size_t>(job.columns)),
        rings_({columns_, job.height}, arena) {}

  auto sweep() {
    return Sweep(job_.rows, {0, job_.height}, stage(0, [this](int y) { load(y); }),
                 stage(2, [this](int y) { takeDifferences(y); }),
                 stage(1, [this](int y) { takeChanges(y); }),
                 stage(1, [this](int y) { measureRoughness(y); }),
                 stage(1, [this](int y) { blendDirections(y); }),
                 stage(2, [this](int y) { settle(y); }), stage(2, [this](int y) { fill(y); }));
  }

 private:
  size_t halfSize() const { return (columns_ + 1) / 2; }
  unsigned greenParity(int y) const { return job_.mosaic.greenParity(y); }
  unsigned colourParity(int y) const { return job_.mosaic.colourParity(y); }

  void load(int y) const {
    const MirroredRing<Lane>& samples = rings_.samples;
    kernels_.split(job_.source.row(y), columns_, samples.half(y, 0), samples.half(y, 1));
    samples.mirrorEnds(y);
  }

  void takeDifferences(int y) const {
    const DirectionRings<Lane>&h = rings_.alongRow, &v = rings_.alongColumn;
    kernels_.differences[greenParity(y)](rings_.samples.template window<2>(y), halfSize(),
                                         {h.differences.half(y, 0), h.differences.half(y, 1)},
                                         {v.differences.half(y, 0), v.differences.half(y, 1)});
    h.differences.mirrorEnds(y);
    takeChanges(kernels_.changesAlongRow, h, y);
  }

  void takeChanges(int y) const { takeChanges(kernels_.changesAlongColumn, rings_.alongColumn, y); }

  template <class Kernels>
  void takeChanges(const Kernels& kernels, const DirectionRings<Lane>& rings, int y) const {
    kernels[greenParity(y)](rings.differences.template window<1>(y), halfSize(),
                            {rings.changes.half(y, 0), rings.changes.half(y, 1)},
                            rings.means.half(y));
    rings.changes.mirrorEnds(y);
    rings.means.mirrorEnds(y, greenParity(y));
  }

  void measureRoughness(int y) const {
    for (const DirectionRings<Lane>* rings : {&rings_.alongRow, &rings_.alongColumn}) {
      kernels_.logs[greenParity(y)](rings->changes.template window<1>(y), halfSize(),
                                    rings->logs.half(y));
      rings->logs.mirrorEnds(y, greenParity(y));
    }
  }

  void blendDirections(int y) const {
    kernels_.blends[greenParity(y)](rings_.alongRow.window(y), rings_.alongColumn.window(y),
                                    halfSize(), rings_.blends.half(y),
                                    rings_.sharesOfColumn.half(y));
    rings_.blends.mirrorEnds(y, colourParity(y));
  }

  void settle(int y) const {
    kernels_.settle[greenParity(y)](
        rings_.samples.template window<2>(y), rings_.blends.template window<2>(y),
        rings_.sharesOfColumn.half(y), halfSize(), rings_.settled.half(y));
    rings_.settled.mirrorEnds(y, colourParity(y));
    takeColourChanges(kernels_.colourChangesAlongRow, rings_.changesAlongRow, y);
  }

  template <class Kernels>
  void takeColourChanges(const Kernels& kernels, const ColourChangeRings<Lane>& to, int y) const {
    kernels[greenParity(y)](rings_.samples.template window<1>(y),
                            rings_.settled.template window<1>(y), halfSize(), to.row(y));
    to.differences.mirrorEnds(y, greenParity(y));
    to.samples.mirrorEnds(y, greenParity(y));
  }

  void fill(int y) const {
    takeColourChanges(kernels_.colourChangesAlongColumn, rings_.changesAlongColumn, y);
    const ColourChangeRings<Lane>& h = rings_.changesAlongRow;
    RowSink<T> sink = job_.image->row(y);
    sink.fetch(job_.source.next());
    kernels_.pixels.ofRow(job_.order, y)({rings_.samples.template window<1>(y),
                                          rings_.settled.template window<1>(y),
                                          {h.row(y - 2), h.row(y), h.row(y + 2)},
                                          rings_.changesAlongColumn.row(y),
                                          (1 << job_.bits) - 1},
                                         columns_, sink);
    job_.image->finish(y, sink);
  }

  DemosaicJob<T> job_;
  size_t columns_;
  DirectionalRings<Lane> rings_;
  const DirectionalKernels<T, Lane>& kernels_ = *VISTREL_BY_LEVEL(kDirectionalKernels<T, Lane>);
};

// Lanes of 16 bits have room for samples of twelve.
template <class T>
RowProcess<T>* makeDirectional(const DemosaicJob<T>& job, Arena& arena) {
  if constexpr (sizeof(T) == 2)
    if (job.bits > 12) return makeDemosaic<T, Directional<T, int32_t>>(job, arena);
  return makeDemosaic<T, Directional<T, int16_t>>(job, arena);
}

}  // namespace

template <class T>
DemosaicAlgorithm<T> directional() {
  return {makeDirectional<T>};
}
VISTREL_DEMOSAIC_ALGORITHM(directional);

}  // namespace vistrel::core
